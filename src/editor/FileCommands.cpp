#include "editor/FileCommands.h"

#include "base/Errors.h"
#include "dialogs/Dialogs.h"
#include "editing/EditHistory.h"
#include "editing/ModelView.h"
#include "editor/RecoveryKeeper.h"
#include "model/ConfigFile.h"
#include "model/ProgramState.h"
#include "model/RecordLayout.h"
#include "userstate/UserSettings.h"

#include <QWidget>

#include <cstdint>
#include <filesystem>
#include <string_view>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

bool Exists(const std::string& path) {
    std::error_code error;
    return std::filesystem::exists(path, error);
}

/// A desktop may hand over a path in double quotes.
std::string WithoutQuotes(std::string_view path) {
    if (path.starts_with('"'))
        path.remove_prefix(1);
    if (path.ends_with('"'))
        path.remove_suffix(1);
    return std::string(path);
}

std::uint64_t DigestOf(const MatrixConfig& config) { return RecordDigest(EncodeRecord(config)); }

QString NotThere(const std::string& path) {
    return FileCommands::tr("%1 was not opened: there is no such file")
        .arg(QString::fromStdString(FileNameOf(path)));
}

QString CurrentName() { return QString::fromStdString(CurrentFileName); }

} // namespace

FileKind ConfigurationFiles() { return {QObject::tr("Vorn Matrix File (*.VMC)"), u"VMC"_s}; }

void TellUnreadable(Dialogs& dialogs, QWidget* parent, const QString& called, const std::string& path,
                    const FileError& error) {
    const QString text = QObject::tr("%1 cannot be read: %2");
    dialogs.Message(parent, MessageIcon::Exclamation, QObject::tr("Error!"),
                    text.arg(called, QString::fromStdString(error.Reason())) + "\n\n"_L1 +
                        QString::fromStdString(path));
}

FileCommands::FileCommands(QWidget& window, ModelView& view, Dialogs& dialogs, FileOnDisk& file,
                           RecoveryKeeper& recovery, UserSettings& settings)
    : QObject(&window), window_(window), view_(view), dialogs_(dialogs), file_(file), recovery_(recovery),
      settings_(settings) {}

const std::string& FileCommands::Path() const {
    return CurrentFileName.empty() ? file_.Path() : CurrentFileName;
}

void FileCommands::NewCommand() {
    if (!AskToSaveChanges())
        return;
    Forget();
    view_.ShowAll();
    view_.History().Begin(Config);
    ConfigChanged = false;
}

bool FileCommands::NewFromTemplate(const std::string& path, const QString& called) {
    const QString name = called.isEmpty() ? QString::fromStdString(FileNameOf(path)) : called;
    MatrixConfig contents;
    try {
        contents = LoadConfig(path);
    } catch (const FileError& error) {
        TellUnreadable(dialogs_, &window_, name, path, error);
        return false;
    }
    if (!AskToSaveChanges())
        return false;
    Forget();
    Config = SavedConfig = contents;
    ConfigOrigin = tr("Copy of %1").arg(name).toStdString();
    view_.TakeStartLevels();
    ShowRead();
    return true;
}

void FileCommands::Forget() {
    NewConfiguration();
    file_.Forget();
    view_.ResetSliderLevels();
}

QString FileCommands::ProposedName() const {
    if (!CurrentFileName.empty())
        return QString::fromStdString(CurrentFileName);
    if (!file_.Path().empty())
        return QString::fromStdString(file_.Path());
    const QString folder = QString::fromStdString(settings_.LastFolder());
    return folder.isEmpty() || folder.endsWith(u'/') ? folder : folder + u'/';
}

void FileCommands::OpenFileCommand() {
    if (!AskToSaveChanges())
        return;
    const auto name = dialogs_.OpenFile(&window_, ProposedName(), ConfigurationFiles());
    if (name)
        Read(name->toStdString(), name->toStdString());
}

void FileCommands::OpenNamed(const std::string& path) {
    if (!Exists(path)) {
        Q_EMIT Told(NotThere(path));
        settings_.ForgetFile(path);
        return;
    }
    if (AskToSaveChanges())
        Read(path, path);
}

void FileCommands::OpenFileAtStartup(const std::string& commandLine) {
    const std::string path = Exists(commandLine) ? commandLine : WithoutQuotes(commandLine);
    if (path.empty())
        return;
    const QString name = QString::fromStdString(FileNameOf(path));
    if (!path.ends_with("VMC")) {
        Q_EMIT Told(tr("%1 was not opened: its name does not end in \"VMC\"").arg(name));
        return;
    }
    if (!Exists(path)) {
        Q_EMIT Told(NotThere(path));
        return;
    }
    try {
        // This start asks nothing, but somebody may have been quicker.
        if (ConfigDiffers())
            recovery_.LeaveBehind();
    } catch (const FileError& error) {
        Q_EMIT Told(tr("%1 was not opened: %2").arg(name, QString::fromStdString(error.what())));
        return;
    }
    Read(path, {});
}

void FileCommands::Read(const std::string& path, const std::string& nameAfterwards) {
    Forget();
    try {
        ReadConfigFile(path);
        SavedConfig = Config;
        CurrentFileName = nameAfterwards;
        ConfigOrigin = FileNameOf(path);
        file_.Follow(path, !nameAfterwards.empty(), DigestOf(SavedConfig));
        settings_.FileUsed(path);
    } catch (const FileError& error) {
        FileFailed(error.what());
    }
    ShowRead();
}

void FileCommands::ShowRead() {
    if (!file_.Path().empty())
        view_.TakeStartLevels();
    view_.ShowAll();
    view_.History().Begin(Config);
    ConfigChanged = false;
}

void FileCommands::SaveCommand() {
    if (CurrentFileName.empty())
        return;
    try {
        Write(CurrentFileName);
    } catch (const FileError& error) {
        FileFailed(error.what());
    }
}

void FileCommands::SaveAsCommand() {
    const auto name = dialogs_.SaveFile(&window_, ProposedName(), ConfigurationFiles());
    if (!name || name->isEmpty())
        return;
    try {
        Write(name->toStdString());
    } catch (const FileError& error) {
        FileFailed(error.what());
    }
}

void FileCommands::KeepOtherVersion(const std::string& path) {
    const auto other = file_.OtherVersion(path);
    if (!other)
        return;
    const QString name = QString::fromStdString(FileNameOf(path));
    try {
        recovery_.LeaveOtherVersion(*other);
        Q_EMIT Told(tr("What another program wrote into %1 is kept as a recovery copy").arg(name));
    } catch (const FileError& error) {
        Q_EMIT Told(tr("What another program wrote into %1 could not be kept: %2")
                        .arg(name, QString::fromStdString(error.what())));
    }
}

void FileCommands::Write(const std::string& path) {
    KeepOtherVersion(path);
    WriteConfigFile(path);
    CurrentFileName = path;
    ConfigChanged = false;
    SavedConfig = Config;
    file_.Follow(path, true, DigestOf(SavedConfig));
    settings_.FileUsed(path);
    view_.History().SetSaved();
    dialogs_.Message(&window_, MessageIcon::None, tr("File Saved."),
                     tr("Configuration saved to ") + QString::fromStdString(FileNameOf(CurrentFileName)));
}

bool FileCommands::Restore(const RecoveryCopy& copy) {
    const RecoveryOrigin origin = copy.Origin();
    MatrixConfig recovered;
    try {
        recovered = LoadConfig(copy.Path());
    } catch (const FileError& error) {
        Q_EMIT Told(QString::fromStdString(error.what()));
        return false;
    }
    if (!AskToSaveChanges())
        return false;
    Forget();
    Config = recovered;
    SavedConfig = LoadConfigOrDefault(origin.File);
    if (!origin.File.empty())
        file_.Follow(origin.File, origin.Named, origin.SavedDigest.value_or(DigestOf(SavedConfig)));
    ConfigOrigin = FileNameOf(origin.File);
    if (origin.Named)
        CurrentFileName = origin.File;
    ShowRead();
    ConfigChanged = ConfigDiffers();
    return true;
}

void FileCommands::Reload() {
    const std::string path = file_.Path();
    try {
        const MatrixConfig read = LoadConfig(path);
        if (ConfigDiffers())
            recovery_.LeaveBehind();
        Config = read;
    } catch (const FileError& error) {
        FileFailed(error.what());
        return;
    }
    SavedConfig = Config;
    file_.Follow(path, file_.Named(), DigestOf(SavedConfig));
    ShowRead();
}

void FileCommands::KeepMine() {
    SavedConfig = LoadConfigOrDefault(file_.Path());
    ConfigChanged = ConfigDiffers();
    file_.Accept();
}

bool FileCommands::AskToSaveChanges() {
    if (!ConfigDiffers())
        return true;
    const Answer answer =
        dialogs_.AskYesNoCancel(&window_, tr("Config Changed!"),
                                tr("Current cofiguration has changed,\r\nDo you wish to save changes?"));
    if (answer != Answer::Yes)
        return answer == Answer::No;
    const auto name = dialogs_.SaveFile(&window_, ProposedName(), ConfigurationFiles());
    if (!name || name->isEmpty())
        return false;
    try {
        Write(name->toStdString());
    } catch (const FileError& error) {
        // The command that asked is given up; everything stays as it is in the editor.
        Q_EMIT Told(QString::fromStdString(error.what()));
        return false;
    }
    return true;
}

void FileCommands::FileFailed(const std::string& reason) {
    Q_EMIT Told(QString::fromStdString(reason));
    dialogs_.Message(&window_, MessageIcon::Exclamation, tr("Sorry File Error!"),
                     tr("Sorry there was an error the file ") + CurrentName() + u'!');
}

} // namespace vek
