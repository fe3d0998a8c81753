#include "editor/FileCommands.h"

#include "base/Errors.h"
#include "dialogs/Dialogs.h"
#include "editor/EditHistory.h"
#include "editor/ModelView.h"
#include "model/ConfigFile.h"
#include "model/ProgramState.h"

#include <QWidget>

#include <filesystem>
#include <string_view>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

FileKind ConfigurationFiles() { return {QObject::tr("Vorn Matrix File (*.VMC)"), u"VMC"_s}; }

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

QString CurrentName() { return QString::fromStdString(CurrentFileName); }

} // namespace

FileCommands::FileCommands(QWidget& window, ModelView& view, Dialogs& dialogs)
    : QObject(&window), window_(window), view_(view), dialogs_(dialogs) {}

void FileCommands::NewCommand() {
    if (!AskToSaveChanges())
        return;
    Forget();
    view_.ShowAll();
    view_.History().Begin(Config);
    ConfigChanged = false;
}

void FileCommands::Forget() {
    NewConfiguration();
    readFrom_.clear();
    view_.ResetSliderLevels();
}

QString FileCommands::ProposedName() const {
    return QString::fromStdString(CurrentFileName.empty() ? readFrom_ : CurrentFileName);
}

void FileCommands::OpenFileCommand() {
    if (!AskToSaveChanges())
        return;
    const auto name = dialogs_.OpenFile(&window_, ProposedName(), ConfigurationFiles());
    if (name)
        Read(name->toStdString(), name->toStdString());
}

void FileCommands::OpenFileAtStartup(const std::string& commandLine) {
    const std::string path = Exists(commandLine) ? commandLine : WithoutQuotes(commandLine);
    if (path.empty())
        return;
    const QString name = QString::fromStdString(FileNameOf(path));
    if (!path.ends_with("VMC")) {
        Q_EMIT Failed(tr("%1 was not opened: its name does not end in \"VMC\"").arg(name));
        return;
    }
    if (!Exists(path)) {
        Q_EMIT Failed(tr("%1 was not opened: there is no such file").arg(name));
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
        if (CurrentFileName.empty())
            readFrom_ = std::filesystem::absolute(path).string();
        view_.TakeStartLevels();
    } catch (const FileError& error) {
        FileFailed(error.what());
    }
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

void FileCommands::Write(const std::string& path) {
    WriteConfigFile(path);
    CurrentFileName = path;
    readFrom_.clear();
    ConfigChanged = false;
    SavedConfig = Config;
    view_.History().SetSaved();
    dialogs_.Message(&window_, MessageIcon::None, tr("File Saved."),
                     tr("Configuration saved to ") + QString::fromStdString(FileNameOf(CurrentFileName)));
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
        Q_EMIT Failed(QString::fromStdString(error.what()));
        return false;
    }
    return true;
}

void FileCommands::FileFailed(const std::string& reason) {
    Q_EMIT Failed(QString::fromStdString(reason));
    dialogs_.Message(&window_, MessageIcon::Exclamation, tr("Sorry File Error!"),
                     tr("Sorry there was an error the file ") + CurrentName() + u'!');
}

} // namespace vek
