#include "device/OnlineControl.h"

#include "base/DurableFile.h"
#include "base/Errors.h"
#include "controls/LevelTrim.h"
#include "controls/TextConversion.h"
#include "device/LastWords.h"
#include "device/PortTurns.h"
#include "device/ProgrammingTexts.h"
#include "dialogs/WindowMessages.h"
#include "editing/ModelView.h"
#include "link/OutcomeTexts.h"
#include "model/ProgramState.h"
#include "pages/EditorPages.h"
#include "pages/OnlinePage.h"
#include "pages/OnlineStrip.h"
#include "pages/PortRows.h"
#include "pages/TrimPage.h"
#include "userstate/UserSettings.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

#include <algorithm>
#include <optional>
#include <utility>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

constexpr QKeyCombination muteKey = Qt::CTRL | Qt::Key_M;

/// Pages that edit what the device does not hear at once.
constexpr int offlinePages[] = {RemotePanelsTab, AddressesTab, Rs232Tab, NotesTab};

bool IsOfflinePage(int page) {
    return std::find(std::begin(offlinePages), std::end(offlinePages), page) != std::end(offlinePages);
}

/// The controls of a page give the levels; the others leave the choice as it is.
std::optional<LevelSource> LevelsOf(int page) {
    switch (page) {
    case LevelsTab:
        return LevelSource::Level;
    case InputTrimsTab:
        return LevelSource::InputTrims;
    case OutputTrimsTab:
        return LevelSource::OutputTrims;
    default:
        return std::nullopt;
    }
}

bool IsRestart(const Failure& failure) {
    return failure.Kind == FailureKind::RestartNoReply || failure.Kind == FailureKind::RestartRefused;
}

QString StillPlaying(const QString& port) {
    return QObject::tr("%1 still plays the levels of the online session: switch it off and on").arg(port);
}

} // namespace

OnlineControl::OnlineControl(const OnlineParts& parts, const EditorServices& services, PortTurns& turns,
                             const DeviceTypeList& types, WindowMessages& messages)
    : parts_(parts), turns_(turns), messages_(messages), OnlineMSComm_(services.MakeSerialControl()),
      OnlineTimer_(services.MakeTimer()), session_(*OnlineMSComm_, *OnlineTimer_, types, *this, *this),
      truth_(parts, session_, *this, [this] { return conversation_.Running(); }),
      muteAll_(new QAction(tr("&Mute all"), parts.SSTab1.window())), boxes_(services.Boxes) {
    muteAll_->setObjectName(u"MuteAllOutputs"_s);
    muteAll_->setShortcut(muteKey);
    muteAll_->setAutoRepeat(false);
    muteAll_->setEnabled(false);
    parts_.SSTab1.window()->addAction(muteAll_);
    parts_.Strip.setVisible(false);
    Connect();
}

OnlineControl::~OnlineControl() {
    if (silent_ && IsOnline())
        SayStillPlaying();
}

void OnlineControl::SayStillPlaying() const {
    if (session_.Touched())
        SayOnStandardError(StillPlaying(PortName()));
}

void OnlineControl::Connect() {
    connect(parts_.Page.OnlineSearch, &QPushButton::clicked, this, &OnlineControl::Search);
    connect(muteAll_, &QAction::triggered, this, &OnlineControl::MuteAll);
    connect(parts_.Strip.MuteAll, &QPushButton::clicked, this, &OnlineControl::MuteAll);
    connect(parts_.Strip.SendAllAgain, &QPushButton::clicked, this, &OnlineControl::SendAllAgain);
    parts_.Strip.SafeLevels->setChecked(parts_.Settings.SafeLevels());
    connect(parts_.Strip.SafeLevels, &QCheckBox::clicked, this, [this](bool safe) {
        parts_.Settings.SetSafeLevels(safe);
        // A device that plays as it was programmed goes on with that.
        if (session_.Touched())
            LevelsChanged();
        truth_.Changed();
    });
    connect(parts_.Page.SaveTranscript, &QPushButton::clicked, this, &OnlineControl::SaveTranscript);
    connect(parts_.Page.OnlineCancel, &QPushButton::clicked, this, &OnlineControl::Disconnect);
    connect(&Ports(), &PortRows::Chosen, this, &OnlineControl::Choose);
    connect(&parts_.SSTab1, &QTabWidget::currentChanged, this, &OnlineControl::TabChanged);
    connect(&parts_.Strip, &OnlineStrip::RouteClicked, this, &OnlineControl::RouteClicked);
    connect(&parts_.Strip, &OnlineStrip::OffsetChanged, this, &OnlineControl::LevelsChanged);
    connect(&parts_.Strip, &OnlineStrip::MuteClicked, this, &OnlineControl::LevelsChanged);
}

void OnlineControl::Converse(Task<> task) {
    asking_ = false; // a conversation that was cancelled may have been
    conversation_.Start(std::move(task), [this](const std::exception_ptr& failure) {
        if (failure) {
            if (std::exchange(searching_, false))
                Ports().EndSearch();
            messages_.ShowFailure(failure);
        }
        if (closing_)
            Q_EMIT ReadyToClose();
        else
            Serve();
        truth_.Changed();
    });
    truth_.Changed();
}

void OnlineControl::Serve() {
    if (!closing_ && !conversation_.Running() && session_.Wanting())
        Converse(session_.Serve());
}

void OnlineControl::Search() {
    if (!conversation_.Running() && !IsOnline())
        Converse(SearchAllPorts());
}

Task<> OnlineControl::SearchAllPorts() {
    parts_.Page.WhatIsWrong->setVisible(false);
    Ports().RefreshDevices();
    if (!turns_.Free())
        Ports().BeginWait(tr("Waiting for the programming window, which uses the same ports"));
    PortTurns::Turn turn(turns_);
    co_await turn;
    Ports().BeginSearch();
    searching_ = true;
    co_await session_.Online_search_for_vek();
    searching_ = false;
    Ports().EndSearch();
    parts_.Page.WhatIsWrong->setVisible(!Ports().AnyMatrixVek());
    // Whoever has gone on to something else meanwhile is left there.
    if (parts_.Page.window()->focusWidget() == parts_.Page.OnlineSearch)
        Ports().FocusFirstFound();
}

void OnlineControl::Choose(std::size_t row) {
    if (conversation_.Running() || IsOnline())
        return;
    Ports().LockChoice(true);
    Converse(GoOnline(row));
}

Task<> OnlineControl::GoOnline(std::size_t row) {
    PortTurns::Turn turn(turns_);
    co_await turn;
    searching_ = false; // a search that was cancelled has not said so
    remains_.clear();
    transcript_.Begin(tr("Online session on %1").arg(PortName()));
    co_await session_.ChoosePort(row);
}

QString OnlineControl::PortName() const {
    const auto row = Ports().ChosenRow();
    return row ? Ports().PortName(*row) : QString();
}

void OnlineControl::LevelsChanged() {
    session_.WantLevels();
    Serve();
}

void OnlineControl::RoutesChanged() {
    session_.WantRoutes();
    Serve();
}

void OnlineControl::RouteClicked() {
    const int page = parts_.SSTab1.currentIndex();
    if (page == LevelsTab || page == OutputTrimsTab)
        RoutesChanged();
    truth_.Changed();
}

void OnlineControl::MuteAll() {
    if (!session_.IsOnline())
        return;
    for (QCheckBox* check : parts_.Strip.OutPutSelectCheck)
        check->setChecked(true);
    session_.WantMutes();
    messages_.TakeNoteOfAll();
    if (levelView_ == LevelSource::Level) {
        // Mutes are not heard there.
        levelView_ = LevelSource::OutputTrims;
        parts_.SSTab1.setCurrentIndex(OutputTrimsTab);
    }
    Serve();
    truth_.Changed();
}

void OnlineControl::SendAllAgain() {
    session_.WantAllAgain();
    Serve();
}

bool OnlineControl::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType())
        return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool elsewhere = static_cast<QWidget*>(watched)->window() != parts_.SSTab1.window();
    if (!elsewhere || QKeySequence(key->keyCombination()) != muteKey)
        return false;
    if (!key->isAutoRepeat())
        MuteAll();
    return true;
}

void OnlineControl::SaveTranscript() {
    QWidget* window = parts_.SSTab1.window();
    const auto name = boxes_.SaveFile(window, {}, {tr("Text Document (*.txt)"), u"txt"_s});
    if (!name || name->isEmpty())
        return;
    try {
        WriteFileDurably(name->toStdString(), transcript_.Text(), ExistingTail::Drop);
    } catch (const FileError& error) {
        messages_.Show(MessageIcon::Exclamation, tr("Error!"),
                       tr("Nothing was written: ") + QString::fromStdString(error.what()));
    }
}

void OnlineControl::SelectInput(std::size_t input) {
    if (!session_.IsOnline())
        return;
    parts_.Strip.RouteOption[input]->setChecked(true);
    RoutesChanged();
}

void OnlineControl::TabChanged() {
    FollowTab();
    const int page = parts_.SSTab1.currentIndex();
    if (page == InputTrimsTab || page == OutputTrimsTab)
        session_.WantRoutes();
    LevelsChanged();
}

void OnlineControl::FollowTab() {
    truth_.Changed();
    if (const auto levels = LevelsOf(parts_.SSTab1.currentIndex()))
        levelView_ = *levels;
}

void OnlineControl::Disconnect() {
    session_.WantDisconnect();
    messages_.TakeNoteOfAll();
    Serve();
}

bool OnlineControl::ShutdownSilently() {
    silent_ = true;
    return Shutdown();
}

bool OnlineControl::Shutdown() {
    if (closing_ && conversation_.Running())
        return false;
    closing_ = true;
    if (conversation_.Running() && session_.IsOnline() && !asking_) {
        // The reply to the packet under way must not pass for the restart's.
        session_.WantDisconnect();
        return false;
    }
    conversation_.Cancel();
    if (session_.IsOnline())
        Converse(session_.Disconnect());
    return !conversation_.Running();
}

void OnlineControl::CheckPort() {
    session_.LookForLostPort();
    Serve();
}

PortRows& OnlineControl::Ports() const { return *parts_.Page.Ports; }

void OnlineControl::UpdateTabs() {
    const bool online = session_.IsOnline();
    if (online && IsOfflinePage(parts_.SSTab1.currentIndex()))
        parts_.SSTab1.setCurrentIndex(InputTrimsTab);
    for (const int page : offlinePages)
        parts_.SSTab1.setTabEnabled(page, !online);
    FollowTab();
    Q_EMIT OnlineChanged();
}

void OnlineControl::ShowConnection() {
    const bool online = session_.IsOnline();
    parts_.Page.OnlineSearch->setVisible(!online);
    parts_.Page.OnlineCancel->setVisible(online);
    parts_.Page.SearchHint->setVisible(!online);
    parts_.Page.SaveTranscript->setEnabled(transcript_.Any());
    parts_.Strip.setVisible(online);
    muteAll_->setEnabled(online);
    if (online)
        qApp->installEventFilter(this);
    else
        qApp->removeEventFilter(this);
}

void OnlineControl::Searching(const SearchStep& step) {
    if (searching_)
        Ports().ShowSearch(searchedRow_, SearchText(step));
}

void OnlineControl::PortSearched(std::size_t row, const PortFinding& finding) {
    Ports().ShowFinding(row, finding);
}

Task<> OnlineControl::Failed(Failure failure) {
    if (silent_) {
        if (IsRestart(failure))
            SayStillPlaying();
        co_return;
    }
    if (closing_ && !IsRestart(failure))
        co_return;
    truth_.Changed();
    const MessageText message = TextOf(failure);
    const QString title = FromConstant(message.Title);
    const QString text = FromConstant(message.Text);
    asking_ = true;
    if (IsRestart(failure)) {
        if (session_.Touched())
            remains_ = StillPlaying(ShortPortName(PortName()));
        co_await messages_.Shown(MessageIcon::Exclamation, title, text);
    } else {
        const bool disconnect =
            co_await messages_.ShownWith(tr("Disconnect"), MessageIcon::Exclamation, title, text);
        if (disconnect)
            session_.WantDisconnect();
    }
    asking_ = false;
}

Task<> OnlineControl::WentOnline() {
    ShowConnection();
    truth_.Begin(PortName());
    asking_ = true;
    co_await messages_.Shown(MessageIcon::None, tr("Online"), tr("Matrix Vek is now online."));
    asking_ = false;
    UpdateTabs();
}

void OnlineControl::Disconnected() {
    truth_.End();
    ShowConnection();
    UpdateTabs();
    Ports().Clear();
    Ports().LockChoice(false);
}

void OnlineControl::Tell(const QString& lines) {
    if (parts_.Page.DiagnosticsOn())
        parts_.Page.AppendDiagnostics(lines);
}

void OnlineControl::PassBegins() {
    truth_.PassBegins();
    transcript_.BeginPass();
    Tell(u"\n"_s);
}

void OnlineControl::SendingVolume(int output, float level) {
    const QString line = FromConstant(VolumeLine(output, level));
    transcript_.Explain(line);
    Tell(line);
}

void OnlineControl::SendingRoute(int output, int input) {
    const QString line = FromConstant(RouteLine(output, input));
    transcript_.Explain(line);
    Tell(line);
}

void OnlineControl::Sending(std::span<const std::uint8_t> packet) {
    if (searching_)
        return;
    transcript_.Sending(packet);
    truth_.Changed();
}

void OnlineControl::Replied(std::span<const std::uint8_t> reply) {
    if (searching_)
        return;
    transcript_.Replied(reply);
    truth_.Changed();
}

std::size_t OnlineControl::OnlineInput() const { return parts_.Strip.Input(); }

bool OnlineControl::MutedOutput(std::size_t output) const {
    return parts_.Strip.OutPutSelectCheck[output]->isChecked();
}

std::size_t OnlineControl::CurrentOutput() const { return parts_.View.Output(); }

float OnlineControl::LevelTrim1() const { return parts_.Level.Level(); }

float OnlineControl::InputLevelTrim(std::size_t input) const {
    return parts_.InputTrims.Trims[input]->Level();
}

float OnlineControl::OutputLevelTrim(std::size_t output) const {
    return parts_.OutputTrims.Trims[output]->Level();
}

float OnlineControl::OnlineLevelOffset() const { return parts_.Strip.OnlineLevelOffset->Level(); }

bool OnlineControl::SafeLevels() const { return parts_.Strip.SafeLevels->isChecked(); }

float OnlineControl::MaximumLevel(std::size_t output) const {
    const auto mode = static_cast<std::size_t>(parts_.View.CurrentMode());
    return Config.Modes[mode].OutputLevels[output].MaximumLevel;
}

} // namespace vek
