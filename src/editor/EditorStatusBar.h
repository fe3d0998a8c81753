// The status bar: file, unsaved changes, problems, the block of addresses and the online state.
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
    /// empty for a new one; `onlinePort` is empty while offline, when `left` is shown: what became of the
    /// last dealings with a device, empty for nothing.
    void ShowState(const std::string& readFrom, const QString& onlinePort, const QString& left);
    /// "2 errors, 1 warning"
    void ShowProblems(const QString& text);

  Q_SIGNALS:
    void ChangesClicked();
    void ProblemsClicked();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void ShowFile(const std::string& readFrom);
    void MakeRoom();
    QLabel* AddField(const QString& name, int stretch, bool elided);

    QLabel* file_;
    QLabel* changes_;
    QLabel* problems_;
    QLabel* base_;
    QLabel* link_;
};

} // namespace vek
