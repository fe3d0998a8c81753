// What can be done with the programming history: the window, and what its buttons do.
#pragma once

#include <QObject>

#include <functional>
#include <string>

class QMainWindow;

namespace vek {

class Dialogs;
class FileCommands;
class HistoryWindow;
class Programmer;
class WindowMessages;
struct KeptAttempt;

class HistoryCommands : public QObject {
    Q_OBJECT

  public:
    /// Runs an action that replaces the configuration, or asks to, with the controls taken over before.
    using Replace = std::function<void(const std::function<void()>& action)>;

    /// All must outlive this object, which belongs to the window.
    HistoryCommands(QMainWindow& window, Dialogs& boxes, FileCommands& files, Programmer& programmer,
                    Replace replace);

    /// Shows the window, or brings it to the front.
    void Show();
    void SetOnline(bool online);

  Q_SIGNALS:
    /// For the status bar.
    void Told(const QString& text);

  private:
    void MakeWindow();
    void OpenCopy(const KeptAttempt& attempt);
    void ShowChanges(const KeptAttempt& attempt);
    void ProgramAgain(const KeptAttempt& attempt);
    void Export(const KeptAttempt& attempt);
    bool MayWrite(const std::string& path);

    QMainWindow& window_;
    Dialogs& boxes_;
    FileCommands& files_;
    Programmer& programmer_;
    const Replace replace_;
    HistoryWindow* history_ = nullptr; ///< made when it is first wanted
    bool online_ = false;
};

} // namespace vek
