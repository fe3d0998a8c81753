// The status bar: file, unsaved changes, the block of addresses and the online state.
#pragma once

#include <QStatusBar>

class QLabel;

namespace vek {

class EditorStatusBar : public QStatusBar {
    Q_OBJECT

  public:
    explicit EditorStatusBar(QWidget* parent = nullptr);

    /// Shows the program's state; `onlinePort` is empty while offline.
    void ShowState(const QString& onlinePort);

  private:
    QLabel* AddField(const QString& name, int stretch, bool elided);

    QLabel* file_;
    QLabel* changes_;
    QLabel* addresses_;
    QLabel* onlineState_;
};

} // namespace vek
