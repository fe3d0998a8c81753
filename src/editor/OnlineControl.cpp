#include "editor/OnlineControl.h"

#include "controls/LevelTrim.h"
#include "controls/TextConversion.h"
#include "dialogs/Guarded.h"
#include "editor/ModelView.h"
#include "pages/EditorPages.h"
#include "pages/OnlinePage.h"
#include "pages/OnlineStrip.h"
#include "pages/TrimPage.h"

#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

#include <algorithm>
#include <optional>

namespace vek {

namespace {

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

} // namespace

OnlineControl::OnlineControl(QWidget& window, const OnlineParts& parts, const EditorServices& services,
                             const DeviceTypeList& types)
    : QObject(&window), window(window), parts(parts), dialogs(services.Boxes),
      OnlineMSComm(services.MakeSerialControl()), OnlineTimer(services.MakeTimer()),
      session(*OnlineMSComm, *OnlineTimer, types, *this, *this) {
    parts.Strip.setVisible(false);
    Connect();
}

OnlineControl::~OnlineControl() = default;

void OnlineControl::Connect() {
    connect(parts.Page.OnlineSearch, &QPushButton::clicked, this, [this] {
        parts.Page.Ports->RefreshDevices();
        Run([this] { session.Online_search_for_vek(); });
    });
    connect(parts.Page.OnlineCancel, &QPushButton::clicked, this,
            [this] { Run([this] { session.Disconnect(); }); });
    connect(parts.Page.Ports, &PortRows::Chosen, this, [this] { Run([this] { session.ChoosePort(); }); });
    connect(&parts.SSTab1, &QTabWidget::currentChanged, this, &OnlineControl::TabChanged);
    connect(&parts.Strip, &OnlineStrip::RouteClicked, this, &OnlineControl::RouteClicked);
    connect(&parts.Strip, &OnlineStrip::OffsetChanged, this, &OnlineControl::LevelsChanged);
    connect(&parts.Strip, &OnlineStrip::MuteClicked, this, [this] {
        session.MutedOutputs = parts.Strip.Muted();
        LevelsChanged();
    });
}

template <typename Operation>
void OnlineControl::Run(Operation operation) {
    if (closing)
        return;
    const bool outermost = !session.Busy();
    Guarded(dialogs, &window, operation);
    if (outermost && closing)
        Q_EMIT Unwound();
}

QString OnlineControl::PortName() const {
    for (std::size_t row = 0; row < portCount; ++row) {
        if (OptionSelected(row))
            return Ports().PortName(row);
    }
    return {};
}

void OnlineControl::LevelsChanged() {
    Run([this] { session.ApplyOnlineLevels(); });
}

void OnlineControl::RouteAndApply() {
    Run([this] { session.SendRoutes(); });
}

void OnlineControl::RouteClicked(std::size_t input) {
    session.OnlineInput = input;
    const int page = parts.SSTab1.currentIndex();
    if (page == LevelsTab || page == OutputTrimsTab)
        RouteAndApply();
}

void OnlineControl::SelectInput(std::size_t input) {
    if (!session.IsOnline())
        return;
    parts.Strip.RouteOption[input]->setChecked(true);
    session.OnlineInput = input;
    RouteAndApply();
}

void OnlineControl::TabChanged() {
    FollowTab();
    if (!session.IsOnline())
        return;
    const int page = parts.SSTab1.currentIndex();
    if (page == InputTrimsTab || page == OutputTrimsTab) {
        session.MutedOutputs = parts.Strip.Muted();
        RouteAndApply();
    }
    LevelsChanged();
}

void OnlineControl::FollowTab() {
    if (const auto levels = LevelsOf(parts.SSTab1.currentIndex()))
        session.LevelView = *levels;
}

bool OnlineControl::Shutdown() {
    closing = true;
    bool done = false;
    Guarded(dialogs, &window, [&] { done = session.Shutdown(); });
    return done;
}

void OnlineControl::CheckPort() {
    if (session.IsOnline())
        Run([this] { session.DisconnectIfPortLost(); });
}

PortRows& OnlineControl::Ports() const { return *parts.Page.Ports; }

void OnlineControl::ShowOnlineSearch(bool visible) { parts.Page.OnlineSearch->setVisible(visible); }

void OnlineControl::ShowOnlineCancel(bool visible) { parts.Page.OnlineCancel->setVisible(visible); }

void OnlineControl::ShowOnlineLevelOffset(bool visible) { parts.Strip.setVisible(visible); }

void OnlineControl::UpdateTabs() {
    const bool online = session.IsOnline();
    if (online) {
        session.MutedOutputs = parts.Strip.Muted();
        if (IsOfflinePage(parts.SSTab1.currentIndex()))
            parts.SSTab1.setCurrentIndex(InputTrimsTab);
    }
    for (const int page : offlinePages)
        parts.SSTab1.setTabEnabled(page, !online);
    FollowTab();
    Q_EMIT OnlineChanged();
}

bool OnlineControl::Text2Visible() const { return parts.Page.DiagnosticsOn(); }

void OnlineControl::AppendText2(const std::string& text) { parts.Page.AppendDiagnostics(FromConstant(text)); }

void OnlineControl::ErrorMessage(const std::string& title, const std::string& text) {
    dialogs.Message(&window, MessageIcon::Exclamation, FromConstant(title), FromConstant(text));
}

void OnlineControl::Message(const std::string& title, const std::string& text) {
    dialogs.Message(&window, MessageIcon::None, FromConstant(title), FromConstant(text));
}

std::size_t OnlineControl::CurrentOutput() const { return parts.View.Output(); }

float OnlineControl::LevelTrim1() const { return parts.Level.Level(); }

float OnlineControl::InputLevelTrim(std::size_t input) const {
    return parts.InputTrims.Trims[input]->Level();
}

float OnlineControl::OutputLevelTrim(std::size_t output) const {
    return parts.OutputTrims.Trims[output]->Level();
}

float OnlineControl::OnlineLevelOffset() const { return parts.Strip.OnlineLevelOffset->Level(); }

} // namespace vek
