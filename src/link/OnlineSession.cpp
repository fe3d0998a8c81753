#include "link/OnlineSession.h"

#include <limits>

namespace vek {

namespace {

constexpr const char* onlineSettings = "9600,n,8,2";

constexpr int findAttempts = 3;
constexpr int restartAttempts = 4;

// Waits in milliseconds.
constexpr int replyWait = 500;
/// After the first bytes of an answer to a search: what belongs to it follows within one delivery of a
/// serial adapter.
constexpr int findRestWait = 20;

} // namespace

OnlineSession::OnlineSession(SerialControl& port, OneShotTimer& timer, const DeviceTypeList& types,
                             const OnlineLevels& levels, OnlineView& view)
    : exchange(port, timer), types(types), levels(levels), view(view) {}

void OnlineSession::Online_search_for_vek() {
    if (busy || online)
        return;
    const RunningScope running(busy);
    SearchPorts(exchange, types, view, [this] {
        exchange.SetSettings(onlineSettings);
        return OnlineFind_vek(true);
    });
    Serve();
}

void OnlineSession::ChoosePort() {
    if (busy || online)
        return;
    const RunningScope running(busy);
    if (Online_set_active_port() && IsMatrixVek(OnlineFind_vek(false)))
        GoOnline();
    else
        DisconnectNow();
    Serve();
}

void OnlineSession::Disconnect() {
    disconnectWanted = true;
    ServeUnlessBusy();
}

void OnlineSession::DisconnectIfPortLost() {
    if (online && !exchange.PortOpen())
        Disconnect();
}

void OnlineSession::ApplyOnlineLevels() {
    if (!online)
        return;
    levelsWanted = true;
    ServeUnlessBusy();
}

void OnlineSession::SendRoutes() {
    if (!online) {
        LastRoutedInput = OnlineInput;
        return;
    }
    routesWanted = true;
    ServeUnlessBusy();
}

bool OnlineSession::Shutdown() {
    if (busy) {
        Cancel();
        return false;
    }
    exchange.ClearCancel();
    Disconnect();
    Cancel();
    return true;
}

void OnlineSession::ServeUnlessBusy() {
    if (busy)
        return;
    const RunningScope running(busy);
    Serve();
}

void OnlineSession::Serve() {
    while (!exchange.Cancelled()) {
        if (disconnectWanted)
            DisconnectNow();
        else if (routesWanted)
            RoutePass();
        else if (levelsWanted)
            LevelPass();
        else
            return;
    }
}

bool OnlineSession::Online_set_active_port() {
    const bool ok = OpenSelectedPort(exchange, view);
    exchange.SetSettings(onlineSettings);
    return ok;
}

void OnlineSession::GoOnline() {
    for (std::size_t row = 0; row < portCount; ++row) {
        if (!view.OptionSelected(row))
            view.EnableOption(row, false);
    }
    // The unit was restarted since it was last online, so its routes are not known.
    LastRoutedInput.reset();
    online = true;
    view.ShowOnlineSearch(false);
    view.ShowOnlineCancel(true);
    view.ShowOnlineLevelOffset(true);
    view.Message("Online", "Matrix Vek is now online.");
    view.UpdateTabs();
}

void OnlineSession::DisconnectNow() {
    if (online)
        OnlineRestart_unit();
    online = false;
    exchange.Close();
    lossReported = false;
    disconnectWanted = false;
    routesWanted = false;
    levelsWanted = false;
    view.ShowOnlineCancel(false);
    view.ShowOnlineLevelOffset(false);
    view.UpdateTabs();
    for (std::size_t row = 0; row < portCount; ++row) {
        view.ShowBlanking(row, false);
        view.SelectOption(row, false);
        view.EnableOption(row, false);
        view.SetVekType(row, "");
    }
    view.ShowOnlineSearch(true);
}

ByteVector OnlineSession::Request(std::span<const std::uint8_t> packet, std::size_t replyLength) {
    exchange.DiscardInput();
    exchange.Send(packet);
    return exchange.WaitForReply(replyWait, replyLength, replyLength);
}

std::uint32_t OnlineSession::OnlineFind_vek(bool restart) {
    constexpr auto noLimit = std::numeric_limits<std::size_t>::max();
    for (int attempt = 0; attempt < findAttempts; ++attempt) {
        ByteVector reply = Request(onlineFindRequest, findReplyLength);
        if (reply.empty())
            continue;
        const ByteVector rest = exchange.WaitForReply(findRestWait, noLimit, 1);
        reply.insert(reply.end(), rest.begin(), rest.end());
        const auto found = DecodeFindReply(reply);
        if (exchange.Ended() || !found || FoundType(types, *found) == nullptr)
            continue;
        if (restart)
            OnlineRestart_unit();
        return *found;
    }
    return 0;
}

bool OnlineSession::OnlineRestart_unit() {
    ByteVector reply;
    for (int attempt = 0; attempt < restartAttempts; ++attempt) {
        reply = Request(RestartPacket(), onlineReplyLength);
        if (IsAccepted(reply))
            return true;
    }
    if (!exchange.Cancelled() && !lossReported)
        view.ErrorMessage(errorTitle, reply.empty() ? "No reply to restart" : "Reply fail to restart");
    return false;
}

} // namespace vek
