// The status bar: file, unsaved changes, the block of addresses and the online state.
#pragma once

#include <QStatusBar>

#include <string>

class QLabel;

namespace vek {

class EditorStatusBar : public QStatusBar {
    Q_OBJECT

  public:
    explicit EditorStatusBar(QWidget* parent = nullptr);

    /// Shows the program's state. `readFrom` is the file that a configuration without a name was read from,
    /// empty for a new one; `onlinePort` is empty while offline.
    void ShowState(const std::string& readFrom, const QString& onlinePort);

  private:
    void ShowFile(const std::string& readFrom);
    QLabel* AddField(const QString& name, int stretch, bool elided);

    QLabel* file_;
    QLabel* changes_;
    QLabel* addresses_;
    QLabel* onlineState_;
};

} // namespace vek
