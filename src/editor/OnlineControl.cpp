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
    : QObject(&window), window_(window), parts_(parts), dialogs_(services.Boxes),
      OnlineMSComm_(services.MakeSerialControl()), OnlineTimer_(services.MakeTimer()),
      session_(*OnlineMSComm_, *OnlineTimer_, types, *this, *this) {
    parts.Strip.setVisible(false);
    Connect();
}

OnlineControl::~OnlineControl() = default;

void OnlineControl::Connect() {
    connect(parts_.Page.OnlineSearch, &QPushButton::clicked, this, [this] {
        parts_.Page.Ports->RefreshDevices();
        Run([this] { session_.Online_search_for_vek(); });
    });
    connect(parts_.Page.OnlineCancel, &QPushButton::clicked, this,
            [this] { Run([this] { session_.Disconnect(); }); });
    connect(parts_.Page.Ports, &PortRows::Chosen, this, [this] { Run([this] { session_.ChoosePort(); }); });
    connect(&parts_.SSTab1, &QTabWidget::currentChanged, this, &OnlineControl::TabChanged);
    connect(&parts_.Strip, &OnlineStrip::RouteClicked, this, &OnlineControl::RouteClicked);
    connect(&parts_.Strip, &OnlineStrip::OffsetChanged, this, &OnlineControl::LevelsChanged);
    connect(&parts_.Strip, &OnlineStrip::MuteClicked, this, [this] {
        session_.MutedOutputs = parts_.Strip.Muted();
        LevelsChanged();
    });
}

template <typename Operation>
void OnlineControl::Run(Operation operation) {
    if (closing_)
        return;
    const bool outermost = !session_.Busy();
    Guarded(dialogs_, &window_, operation);
    if (outermost && closing_)
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
    Run([this] { session_.ApplyOnlineLevels(); });
}

void OnlineControl::RouteAndApply() {
    Run([this] { session_.SendRoutes(); });
}

void OnlineControl::RouteClicked(std::size_t input) {
    session_.OnlineInput = input;
    const int page = parts_.SSTab1.currentIndex();
    if (page == LevelsTab || page == OutputTrimsTab)
        RouteAndApply();
}

void OnlineControl::SelectInput(std::size_t input) {
    if (!session_.IsOnline())
        return;
    parts_.Strip.RouteOption[input]->setChecked(true);
    session_.OnlineInput = input;
    RouteAndApply();
}

void OnlineControl::TabChanged() {
    FollowTab();
    if (!session_.IsOnline())
        return;
    const int page = parts_.SSTab1.currentIndex();
    if (page == InputTrimsTab || page == OutputTrimsTab) {
        session_.MutedOutputs = parts_.Strip.Muted();
        RouteAndApply();
    }
    LevelsChanged();
}

void OnlineControl::FollowTab() {
    if (const auto levels = LevelsOf(parts_.SSTab1.currentIndex()))
        session_.LevelView = *levels;
}

bool OnlineControl::Shutdown() {
    closing_ = true;
    bool done = false;
    Guarded(dialogs_, &window_, [&] { done = session_.Shutdown(); });
    return done;
}

void OnlineControl::CheckPort() {
    if (session_.IsOnline())
        Run([this] { session_.DisconnectIfPortLost(); });
}

PortRows& OnlineControl::Ports() const { return *parts_.Page.Ports; }

void OnlineControl::ShowOnlineSearch(bool visible) { parts_.Page.OnlineSearch->setVisible(visible); }

void OnlineControl::ShowOnlineCancel(bool visible) { parts_.Page.OnlineCancel->setVisible(visible); }

void OnlineControl::ShowOnlineLevelOffset(bool visible) { parts_.Strip.setVisible(visible); }

void OnlineControl::UpdateTabs() {
    const bool online = session_.IsOnline();
    if (online) {
        session_.MutedOutputs = parts_.Strip.Muted();
        if (IsOfflinePage(parts_.SSTab1.currentIndex()))
            parts_.SSTab1.setCurrentIndex(InputTrimsTab);
    }
    for (const int page : offlinePages)
        parts_.SSTab1.setTabEnabled(page, !online);
    FollowTab();
    Q_EMIT OnlineChanged();
}

bool OnlineControl::Text2Visible() const { return parts_.Page.DiagnosticsOn(); }

void OnlineControl::AppendText2(const std::string& text) {
    parts_.Page.AppendDiagnostics(FromConstant(text));
}

void OnlineControl::ErrorMessage(const std::string& title, const std::string& text) {
    dialogs_.Message(&window_, MessageIcon::Exclamation, FromConstant(title), FromConstant(text));
}

void OnlineControl::Message(const std::string& title, const std::string& text) {
    dialogs_.Message(&window_, MessageIcon::None, FromConstant(title), FromConstant(text));
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

} // namespace vek
