#include "editor/FileBars.h"

#include "base/Errors.h"
#include "controls/NoticeBar.h"
#include "dialogs/ChangesForm.h"
#include "editor/FileCommands.h"
#include "editor/FileOnDisk.h"
#include "editor/RecoveryKeeper.h"
#include "inspect/ConfigDiff.h"
#include "model/ConfigFile.h"
#include "model/ProgramState.h"

#include <QBoxLayout>
#include <QDateTime>
#include <QPushButton>

#include <utility>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

/// The time of day; with the date unless it is today.
QString TimeText(std::int64_t seconds) {
    const QDateTime time = QDateTime::fromSecsSinceEpoch(seconds);
    return time.toString(time.date() == QDate::currentDate() ? u"HH:mm"_s : u"yyyy-MM-dd HH:mm"_s);
}

QString TextOf(const RecoveryOrigin& origin) {
    const QString name = QString::fromStdString(FileNameOf(origin.File));
    const QString time = TimeText(origin.Time);
    if (origin.Kind == RecoveryKind::OtherVersion)
        return QObject::tr("Another program's version of %1 from %2").arg(name, time);
    return origin.File.empty() ? QObject::tr("Unsaved changes to a new configuration from %1").arg(time)
                               : QObject::tr("Unsaved changes to %1 from %2").arg(name, time);
}

QStringList LinesBetween(const MatrixConfig& before, const MatrixConfig& after) {
    QStringList lines;
    for (const std::string& line : Differences({before, {}}, {after, {}}))
        lines += QString::fromStdString(line);
    return lines;
}

/// What differs between a configuration and the one in a file, or why the file cannot be read.
QStringList LinesTo(const MatrixConfig& before, const std::string& path) {
    try {
        return LinesBetween(before, LoadConfig(path));
    } catch (const FileError& error) {
        return {QString::fromStdString(error.what())};
    }
}

void AllowOffline(QPushButton& button, bool online) {
    button.setEnabled(!online);
    button.setToolTip(online ? QObject::tr("Not while online") : QString());
}

} // namespace

FileBars::FileBars(QWidget& window, QBoxLayout& place, FileCommands& files, FileOnDisk& file,
                   RecoveryKeeper& recovery, Runner run)
    : QObject(&window), window_(window), files_(files), file_(file), recovery_(recovery),
      run_(std::move(run)) {
    MakeRecoveryBar(place);
    MakeFileChangedBar(place);
}

void FileBars::MakeRecoveryBar(QBoxLayout& place) {
    recoveryBar_ = new NoticeBar(u"RecoveryBar"_s, &window_);
    restore_ = recoveryBar_->AddButton(u"Restore"_s, tr("Restore"));
    auto* show = recoveryBar_->AddButton(u"ShowRecovered"_s, tr("Show changes"));
    auto* discard = recoveryBar_->AddButton(u"Discard"_s, tr("Discard"));
    connect(restore_, &QPushButton::clicked, this, [this] { run_([this] { RestoreFound(); }); });
    connect(show, &QPushButton::clicked, this, &FileBars::ShowFound);
    connect(discard, &QPushButton::clicked, this, &FileBars::DiscardFound);
    place.addWidget(recoveryBar_);
}

void FileBars::MakeFileChangedBar(QBoxLayout& place) {
    fileChangedBar_ = new NoticeBar(u"FileChangedBar"_s, &window_);
    auto* show = fileChangedBar_->AddButton(u"ShowFileChanges"_s, tr("Show changes"));
    reload_ = fileChangedBar_->AddButton(u"Reload"_s, tr("Reload"));
    auto* keep = fileChangedBar_->AddButton(u"KeepMine"_s, tr("Keep mine"));
    connect(show, &QPushButton::clicked, this, &FileBars::ShowFileChanges);
    connect(reload_, &QPushButton::clicked, this, [this] {
        run_([this] {
            const bool leaves = ConfigDiffers();
            files_.Reload();
            // What was there before can be had back.
            if (leaves && !found_)
                OfferRecovered();
        });
        LookAtFile();
    });
    connect(keep, &QPushButton::clicked, this, [this] {
        files_.KeepMine();
        LookAtFile();
    });
    place.addWidget(fileChangedBar_);
}

void FileBars::OfferRecovered() {
    found_.reset();
    if (auto copy = recovery_.TakeFound())
        found_.emplace(std::move(*copy));
    if (found_)
        recoveryBar_->Tell(TextOf(found_->Origin()));
    else
        Close(*recoveryBar_);
}

void FileBars::RestoreFound() {
    if (!found_ || !files_.Restore(*found_))
        return;
    recovery_.Adopt(std::move(*found_));
    found_.reset();
    Close(*recoveryBar_);
}

void FileBars::ShowFound() {
    if (!found_)
        return;
    const RecoveryOrigin origin = found_->Origin();
    ShowLines(TextOf(origin), LinesTo(LoadConfigOrDefault(origin.File), found_->Path()));
}

void FileBars::DiscardFound() {
    if (found_)
        found_->Remove();
    OfferRecovered();
}

void FileBars::LookAtFile() {
    if (!file_.Changed()) {
        Close(*fileChangedBar_);
        return;
    }
    const QString name = QString::fromStdString(FileNameOf(file_.Path()));
    fileChangedBar_->Tell(
        tr("%1 was changed by another program at %2").arg(name, TimeText(file_.ChangeTime())));
}

void FileBars::ShowFileChanges() {
    const QString name = QString::fromStdString(FileNameOf(file_.Path()));
    ShowLines(tr("Reloading %1 changes").arg(name), LinesTo(Config, file_.Path()));
}

void FileBars::ShowLines(const QString& title, const QStringList& lines) {
    auto* form = new ChangesForm(title, lines, &window_);
    form->setAttribute(Qt::WA_DeleteOnClose);
    form->open();
}

void FileBars::SetOnline(bool online) {
    AllowOffline(*restore_, online);
    AllowOffline(*reload_, online);
}

void FileBars::Close(NoticeBar& bar) {
    // Its focus would go on to whatever comes next, which the next key would press.
    if (QWidget* focused = window_.focusWidget(); focused != nullptr && bar.isAncestorOf(focused))
        window_.setFocus();
    bar.setVisible(false);
}

} // namespace vek
