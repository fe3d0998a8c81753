#include "editor/FileCommands.h"

#include "base/Errors.h"
#include "dialogs/Dialogs.h"
#include "editor/ModelView.h"
#include "model/ConfigFile.h"
#include "model/ProgramState.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QWidget>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

FileKind ConfigurationFiles() { return {QObject::tr("Vorn Matrix File (*.VMC)"), u"VMC"_s}; }

QString CurrentName() { return QString::fromStdString(CurrentFileName); }

} // namespace

FileCommands::FileCommands(QWidget& window, ModelView& view, Dialogs& dialogs)
    : QObject(&window), window_(window), view_(view), dialogs_(dialogs) {}

void FileCommands::NewCommand() {
    if (!AskToSaveChanges())
        return;
    NewConfiguration();
    view_.ResetSliderLevels();
    view_.ShowAll();
    ConfigChanged = false;
}

void FileCommands::OpenFileCommand() {
    if (!AskToSaveChanges())
        return;
    const auto name = dialogs_.OpenFile(&window_, CurrentName(), ConfigurationFiles());
    if (name)
        Read(name->toStdString(), name->toStdString());
}

void FileCommands::OpenFileAtStartup(QString commandLine) {
    if (commandLine.startsWith(u'"'))
        commandLine.remove(0, 1);
    if (commandLine.endsWith(u'"'))
        commandLine.chop(1);
    if (!commandLine.endsWith("VMC"_L1) || !QFileInfo::exists(commandLine))
        return;
    Read(commandLine.toStdString(), {});
}

void FileCommands::Read(const std::string& path, const std::string& nameAfterwards) {
    NewConfiguration();
    view_.ResetSliderLevels();
    try {
        ReadConfigFile(path);
        SavedConfig = Config;
        CurrentFileName = nameAfterwards;
        view_.TakeStartLevels();
    } catch (const FileError& error) {
        FileFailed(error.what());
    }
    view_.ShowAll();
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
    const auto name = dialogs_.SaveFile(&window_, CurrentName(), ConfigurationFiles());
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
    ConfigChanged = false;
    SavedConfig = Config;
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
    const auto name = dialogs_.SaveFile(&window_, CurrentName(), ConfigurationFiles());
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
