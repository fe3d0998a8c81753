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
    : exchange_(port, timer), types_(types), levels_(levels), view_(view) {}

void OnlineSession::Online_search_for_vek() {
    if (busy_ || online_)
        return;
    const RunningScope running(busy_);
    SearchPorts(exchange_, types_, view_, [this] {
        exchange_.SetSettings(onlineSettings);
        return OnlineFind_vek(true);
    });
    Serve();
}

void OnlineSession::ChoosePort() {
    if (busy_ || online_)
        return;
    const RunningScope running(busy_);
    if (Online_set_active_port() && IsMatrixVek(OnlineFind_vek(false)))
        GoOnline();
    else
        DisconnectNow();
    Serve();
}

void OnlineSession::Disconnect() {
    disconnectWanted_ = true;
    ServeUnlessBusy();
}

void OnlineSession::DisconnectIfPortLost() {
    if (online_ && !exchange_.PortOpen())
        Disconnect();
}

void OnlineSession::ApplyOnlineLevels() {
    if (!online_)
        return;
    levelsWanted_ = true;
    ServeUnlessBusy();
}

void OnlineSession::SendRoutes() {
    if (!online_) {
        LastRoutedInput_ = OnlineInput;
        return;
    }
    routesWanted_ = true;
    ServeUnlessBusy();
}

bool OnlineSession::Shutdown() {
    if (busy_) {
        Cancel();
        return false;
    }
    exchange_.ClearCancel();
    Disconnect();
    Cancel();
    return true;
}

void OnlineSession::ServeUnlessBusy() {
    if (busy_)
        return;
    const RunningScope running(busy_);
    Serve();
}

void OnlineSession::Serve() {
    while (!exchange_.Cancelled()) {
        if (disconnectWanted_)
            DisconnectNow();
        else if (routesWanted_)
            RoutePass();
        else if (levelsWanted_)
            LevelPass();
        else
            return;
    }
}

bool OnlineSession::Online_set_active_port() {
    const bool ok = OpenSelectedPort(exchange_, view_);
    exchange_.SetSettings(onlineSettings);
    return ok;
}

void OnlineSession::GoOnline() {
    for (std::size_t row = 0; row < portCount; ++row) {
        if (!view_.OptionSelected(row))
            view_.EnableOption(row, false);
    }
    // The unit was restarted since it was last online, so its routes are not known.
    LastRoutedInput_.reset();
    online_ = true;
    view_.ShowOnlineSearch(false);
    view_.ShowOnlineCancel(true);
    view_.ShowOnlineLevelOffset(true);
    view_.Message("Online", "Matrix Vek is now online.");
    view_.UpdateTabs();
}

void OnlineSession::DisconnectNow() {
    if (online_)
        OnlineRestart_unit();
    online_ = false;
    exchange_.Close();
    lossReported_ = false;
    disconnectWanted_ = false;
    routesWanted_ = false;
    levelsWanted_ = false;
    view_.ShowOnlineCancel(false);
    view_.ShowOnlineLevelOffset(false);
    view_.UpdateTabs();
    for (std::size_t row = 0; row < portCount; ++row) {
        view_.ShowBlanking(row, false);
        view_.SelectOption(row, false);
        view_.EnableOption(row, false);
        view_.SetVekType(row, "");
    }
    view_.ShowOnlineSearch(true);
}

ByteVector OnlineSession::Request(std::span<const std::uint8_t> packet, std::size_t replyLength) {
    exchange_.DiscardInput();
    exchange_.Send(packet);
    return exchange_.WaitForReply(replyWait, replyLength, replyLength);
}

std::uint32_t OnlineSession::OnlineFind_vek(bool restart) {
    constexpr auto noLimit = std::numeric_limits<std::size_t>::max();
    for (int attempt = 0; attempt < findAttempts; ++attempt) {
        ByteVector reply = Request(onlineFindRequest, findReplyLength);
        if (reply.empty())
            continue;
        const ByteVector rest = exchange_.WaitForReply(findRestWait, noLimit, 1);
        reply.insert(reply.end(), rest.begin(), rest.end());
        const auto found = DecodeFindReply(reply);
        if (exchange_.Ended() || !found || FoundType(types_, *found) == nullptr)
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
    if (!exchange_.Cancelled() && !lossReported_)
        view_.ErrorMessage(errorTitle, reply.empty() ? "No reply to restart" : "Reply fail to restart");
    return false;
}

} // namespace vek
