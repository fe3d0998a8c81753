#include "editor/HistoryCommands.h"

#include "base/Bytes.h"
#include "base/DurableFile.h"
#include "base/Errors.h"
#include "device/HistoryWindow.h"
#include "device/Programmer.h"
#include "device/VekComms.h"
#include "dialogs/ChangesForm.h"
#include "editor/FileCommands.h"
#include "inspect/ConfigDiff.h"
#include "model/ConfigFile.h"
#include "model/ProgramState.h"
#include "model/RecordLayout.h"

#include <QMainWindow>

#include <filesystem>
#include <utility>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

/// "hall.VMC of 2026-11-22 11:24"
QString NameOf(const JournalEntry& entry) {
    const QString name = entry.File.empty() ? HistoryCommands::tr("the configuration")
                                            : QString::fromStdString(FileNameOf(entry.File));
    const QString time = QString::fromStdString(JournalTime(entry)).left(16).replace(u'T', u' ');
    return HistoryCommands::tr("%1 of %2").arg(name, time);
}

} // namespace

HistoryCommands::HistoryCommands(QMainWindow& window, Dialogs& boxes, FileCommands& files,
                                 Programmer& programmer, Replace replace)
    : QObject(&window), window_(window), boxes_(boxes), files_(files), programmer_(programmer),
      replace_(std::move(replace)) {}

void HistoryCommands::Show() {
    if (history_ == nullptr)
        MakeWindow();
    history_->Look();
    history_->show();
    history_->raise();
    history_->activateWindow();
}

void HistoryCommands::MakeWindow() {
    history_ = new HistoryWindow(programmer_.Journal(), &window_);
    history_->SetOnline(online_);
    connect(history_, &HistoryWindow::CopyWanted, this, &HistoryCommands::OpenCopy);
    connect(history_, &HistoryWindow::ChangesWanted, this, &HistoryCommands::ShowChanges);
    connect(history_, &HistoryWindow::ProgramWanted, this, &HistoryCommands::ProgramAgain);
    connect(history_, &HistoryWindow::ExportWanted, this, &HistoryCommands::Export);
}

void HistoryCommands::SetOnline(bool online) {
    online_ = online;
    if (history_ != nullptr)
        history_->SetOnline(online);
}

void HistoryCommands::OpenCopy(const KeptAttempt& attempt) {
    replace_([&] {
        const QString name = NameOf(attempt.Entry);
        if (files_.NewFromTemplate(attempt.ConfigPath(), name))
            Q_EMIT Told(tr("This is a copy of %1: Save As keeps it").arg(name));
    });
}

void HistoryCommands::ShowChanges(const KeptAttempt& attempt) {
    replace_([&] {
        try {
            QStringList lines;
            for (const std::string& line : Differences({LoadConfig(attempt.ConfigPath()), {}}, {Config, {}}))
                lines += QString::fromStdString(line);
            auto* form =
                new ChangesForm(tr("What changed since %1").arg(NameOf(attempt.Entry)), lines, history_);
            form->setAttribute(Qt::WA_DeleteOnClose);
            form->open();
        } catch (const FileError& error) {
            TellUnreadable(boxes_, history_, NameOf(attempt.Entry), attempt.ConfigPath(), error);
        }
    });
}

void HistoryCommands::ProgramAgain(const KeptAttempt& attempt) {
    const JournalEntry& entry = attempt.Entry;
    const QString question = tr("Do you wish to program %1 again?").arg(NameOf(entry));
    const QString about = tr("It was sent to %1. The window that opens now asks for the port.")
                              .arg(QString::fromStdString(entry.Port));
    if (boxes_.AskYesNo(history_, tr("Program again"), question, Answer::No, about) != Answer::Yes)
        return;
    replace_([&] {
        try {
            const EncodedImage encoded = EncodeImage(LoadConfig(attempt.ConfigPath()));
            programmer_.Program({encoded.Image, encoded.Config, entry.File});
        } catch (const FileError& error) {
            TellUnreadable(boxes_, history_, NameOf(entry), attempt.ConfigPath(), error);
        }
    });
}

bool HistoryCommands::MayWrite(const std::string& path) {
    std::error_code error;
    return !std::filesystem::exists(path, error) ||
           boxes_.AskYesNo(history_, tr("Export"), tr("Do you wish to replace this file?"), Answer::No,
                           QString::fromStdString(path)) == Answer::Yes;
}

void HistoryCommands::Export(const KeptAttempt& attempt) {
    const std::string proposed = std::filesystem::path(attempt.Stem).filename().string();
    const auto name = boxes_.SaveFile(history_, QString::fromStdString(proposed + KeptAttempt::RecordSuffix),
                                      ConfigurationFiles());
    if (!name || name->isEmpty())
        return;
    const std::filesystem::path config = name->toStdString();
    const std::string text =
        std::filesystem::path(config).replace_extension(KeptAttempt::TextSuffix).string();
    // The dialog has asked for the configuration only.
    if (!MayWrite(text))
        return;
    QString problem = tr("Nothing was written: ");
    try {
        WriteFileDurably(config.string(), ReadRegularFile(attempt.ConfigPath(), recordSize),
                         ExistingTail::Drop);
        problem = tr("%1 is exported, but not its text: ").arg(*name);
        WriteFileDurably(text, AsBytes(EncodeJournalEntry(attempt.Entry)), ExistingTail::Drop);
        Q_EMIT Told(tr("%1 is exported, with its text beside it").arg(*name));
    } catch (const FileError& error) {
        boxes_.Message(history_, MessageIcon::Exclamation, tr("Error!"),
                       problem + QString::fromStdString(error.what()));
    }
}

} // namespace vek
