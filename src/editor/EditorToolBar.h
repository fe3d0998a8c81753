// The toolbar with the commands of CommandTable.h.
#pragma once

#include <QToolBar>

#include <string_view>

namespace vek {

class EditorToolBar : public QToolBar {
    Q_OBJECT

  public:
    explicit EditorToolBar(QWidget* parent = nullptr);

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

  private:
    bool iconsShown_ = false;
};

} // namespace vek
