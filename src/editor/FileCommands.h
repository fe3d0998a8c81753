// NEW, OPEN, SAVE and SAVEAS, templates and recent files, the question about unsaved changes, the file named
// on the command line, and what was left unsaved or written by others.
#pragma once

#include "dialogs/Dialogs.h"
#include "editor/FileOnDisk.h"

#include <QObject>
#include <QString>

#include <string>

class QWidget;

namespace vek {

class Dialogs;
class FileError;
class ModelView;
class RecoveryCopy;
class RecoveryKeeper;
class UserSettings;

/// What the dialogs for configuration files offer.
FileKind ConfigurationFiles();

/// A box that says which file holds no configuration that can be read, what the user calls it, and why.
void TellUnreadable(Dialogs& dialogs, QWidget* parent, const QString& called, const std::string& path,
                    const FileError& error);

class FileCommands : public QObject {
    Q_OBJECT

  public:
    /// All must outlive this object; `window` is the parent of the boxes.
    FileCommands(QWidget& window, ModelView& view, Dialogs& dialogs, FileOnDisk& file,
                 RecoveryKeeper& recovery, UserSettings& settings);

    void NewCommand();
    /// A new configuration with the contents of a file, which stays as it is: without a name, nothing
    /// unsaved. `called` is what the user calls the file, its name unless given. False when the user keeps
    /// what is there or the file cannot be read.
    bool NewFromTemplate(const std::string& path, const QString& called = {});
    void OpenFileCommand();
    /// Opens a file as OPEN does when it is chosen there. One that is gone is told, and forgotten among the
    /// recent files.
    void OpenNamed(const std::string& path);
    /// Does nothing for a configuration without a name.
    void SaveCommand();
    void SaveAsCommand();

    /// Opens the file that the command line names, if it names an existing *.VMC. The configuration stays
    /// unnamed; SAVEAS proposes the file's own name. A path in the system's own bytes.
    void OpenFileAtStartup(const std::string& commandLine);

    /// Makes a recovered configuration the present one, with its file and unsaved; false when the user keeps
    /// what is there or the copy cannot be read.
    bool Restore(const RecoveryCopy& copy);
    /// Reads the file again; changes that are not saved are left as a recovery copy.
    void Reload();
    /// What another program wrote into the file counts as saved last, so that the present configuration is
    /// unsaved.
    void KeepMine();

    /// Of the file that the configuration belongs to, named or not; empty for a new one.
    const std::string& Path() const;

    /// True when the caller may go on: nothing unsaved, saved now, or not to be saved.
    bool AskToSaveChanges();

  Q_SIGNALS:
    /// Why a file was not read or written, and what became of another program's version.
    void Told(const QString& text);

  private:
    void Read(const std::string& path, const std::string& nameAfterwards);
    void Forget();
    /// Config has been read from the file that is followed.
    void ShowRead();
    void KeepOtherVersion(const std::string& path);
    /// Where a file dialog starts.
    QString ProposedName() const;
    void Write(const std::string& path);
    void FileFailed(const std::string& reason);

    QWidget& window_;
    ModelView& view_;
    Dialogs& dialogs_;
    FileOnDisk& file_;
    RecoveryKeeper& recovery_;
    UserSettings& settings_;
};

} // namespace vek
