// The toolbar with the commands of CommandTable.h.
#pragma once

#include <QToolBar>

#include <string_view>

namespace vek {

/// Has no texts below its icons where there is no room for them; the tool tips say the same.
class EditorToolBar : public QToolBar {
    Q_OBJECT

  public:
    /// Of that window, by whose size it fits its texts.
    explicit EditorToolBar(QWidget* parent);

    QAction* Action(std::string_view key) const;

    /// Draws the icons, whose places are empty to begin with: to read and draw them takes as long as all else
    /// that the window shows at first.
    void ShowIcons();

    /// Enables what may be used while online, or everything. SAVE has a rule of its own and is left alone.
    void SetOnline(bool online);

  Q_SIGNALS:
    void Triggered(std::string_view key);

  protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void FitTexts();

    bool iconsShown_ = false;
    int widthWithTexts_ = 0; ///< 0 before it is known
};

} // namespace vek
