// The bars above the pages: unsaved changes that an earlier editor left, and a file that changed underneath.
#pragma once

#include "userstate/RecoveryCopies.h"

#include <QObject>
#include <QStringList>

#include <functional>
#include <optional>

class QBoxLayout;
class QPushButton;
class QWidget;

namespace vek {

class FileCommands;
class FileOnDisk;
class NoticeBar;
class RecoveryKeeper;

/// `RecoveryBar` and `FileChangedBar`. Both wait until the user turns to them.
class FileBars : public QObject {
    Q_OBJECT

  public:
    /// Runs an action that replaces the configuration, with what is being typed taken over first.
    using Runner = std::function<void(const std::function<void()>& action)>;

    /// All must outlive this object; the bars belong to the window and go to the layout.
    FileBars(QWidget& window, QBoxLayout& place, FileCommands& files, FileOnDisk& file,
             RecoveryKeeper& recovery, Runner run);

    /// Shows the newest copy that no editor holds, if there is one.
    void OfferRecovered();
    /// Looks whether the file was changed by another program.
    void LookAtFile();
    /// What replaces the configuration has to wait until the session is over.
    void SetOnline(bool online);

  private:
    void MakeRecoveryBar(QBoxLayout& place);
    void MakeFileChangedBar(QBoxLayout& place);
    void RestoreFound();
    void ShowFound();
    void DiscardFound();
    void ShowFileChanges();
    void ShowLines(const QString& title, const QStringList& lines);
    void Close(NoticeBar& bar);

    QWidget& window_;
    FileCommands& files_;
    FileOnDisk& file_;
    RecoveryKeeper& recovery_;
    Runner run_;
    NoticeBar* recoveryBar_ = nullptr;
    NoticeBar* fileChangedBar_ = nullptr;
    QPushButton* restore_ = nullptr;
    QPushButton* reload_ = nullptr;
    std::optional<RecoveryCopy> found_;
};

} // namespace vek
