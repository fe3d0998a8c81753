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

    /// Enables what may be used while online, or everything. SAVE has a rule of its own and is left alone.
    void SetOnline(bool online);

  Q_SIGNALS:
    void Triggered(std::string_view key);

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void ShowIcons();
};

} // namespace vek
