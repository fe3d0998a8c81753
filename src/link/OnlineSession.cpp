#include "link/OnlineSession.h"

#include "link/PortSearch.h"
#include "model/Levels.h"

#include <limits>
#include <utility>

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
                             const OnlineInputs& inputs, OnlineOutcomes& outcomes)
    : exchange_(port, timer), types_(types), inputs_(inputs), outcomes_(outcomes) {}

Task<> OnlineSession::Online_search_for_vek() {
    co_await SearchPorts(exchange_, outcomes_, [this] { return OnlineFind_vek(true); });
}

Task<> OnlineSession::ChoosePort(std::size_t row) {
    PortCloser closer(exchange_);
    OpenPort(exchange_, row);
    const PortFinding finding = co_await OnlineFind_vek(false);
    if (finding.State != PortState::MatrixVek) {
        co_await Disconnect();
        co_return;
    }
    closer.Release();
    // The unit was restarted since it was last online, so its routes are not known.
    LastRoutedInput_.reset();
    truths_ = {};
    lowest_.fill(mutedLevel);
    unanswered_ = 0;
    touched_ = restartFailed_ = false;
    online_ = true;
    co_await outcomes_.WentOnline();
}

void OnlineSession::LookForLostPort() {
    if (online_ && !exchange_.PortOpen())
        WantDisconnect();
}

Task<> OnlineSession::Serve() {
    while (Wanting()) {
        if (disconnectWanted_) {
            co_await Disconnect();
        } else if (std::exchange(mutesWanted_, false)) {
            co_await SendMutes();
        } else if (std::exchange(routesWanted_, false)) {
            co_await SendRoutes();
        } else {
            levelsWanted_ = false;
            co_await ApplyOnlineLevels();
        }
    }
}

/// However disconnecting ends, the port is closed afterwards.
class OnlineSession::GoingOffline {
  public:
    explicit GoingOffline(OnlineSession& session) : session_(session) {}
    GoingOffline(const GoingOffline&) = delete;
    GoingOffline& operator=(const GoingOffline&) = delete;
    ~GoingOffline() {
        session_.exchange_.Close();
        session_.online_ = false;
    }

  private:
    OnlineSession& session_;
};

Task<> OnlineSession::Disconnect() {
    if (online_) {
        const GoingOffline ending(*this);
        co_await OnlineRestart_unit();
    }
    exchange_.Close();
    lossReported_ = disconnectWanted_ = mutesWanted_ = routesWanted_ = againWanted_ = levelsWanted_ = false;
    outcomes_.Disconnected();
}

void OnlineSession::RestartBlindly() {
    if (online_)
        exchange_.SendWithoutWaiting(RestartPacket());
}

Task<ByteVector> OnlineSession::Request(std::span<const std::uint8_t> packet, std::size_t replyLength) {
    exchange_.DiscardInput();
    outcomes_.Sending(packet);
    co_await exchange_.Send(packet);
    ByteVector reply = co_await exchange_.Reply(replyWait, replyLength, replyLength);
    unanswered_ = reply.empty() ? unanswered_ + 1 : 0;
    outcomes_.Replied(reply);
    co_return reply;
}

Task<PortFinding> OnlineSession::OnlineFind_vek(bool restart) {
    constexpr auto noLimit = std::numeric_limits<std::size_t>::max();
    PortFinding finding = Silent();
    exchange_.SetSettings(onlineSettings);
    for (int attempt = 0; attempt < findAttempts; ++attempt) {
        outcomes_.Searching(
            {.Settings = onlineSettings, .Number = attempt + 1, .Count = findAttempts, .Pass = 1});
        ByteVector reply = co_await Request(onlineFindRequest, findReplyLength);
        if (reply.empty())
            continue;
        const ByteVector rest = co_await exchange_.Reply(findRestWait, noLimit, 1);
        if (!exchange_.PortOpen())
            continue;
        reply.insert(reply.end(), rest.begin(), rest.end());
        finding = NotUnderstood(onlineSettings, reply);
        const auto found = DecodeFindReply(reply);
        if (!found)
            continue;
        const PortFinding understood = Understood(types_, *found, onlineSettings, reply);
        if (understood.Type == nullptr)
            continue;
        if (restart)
            co_await OnlineRestart_unit();
        co_return understood;
    }
    co_return finding;
}

Task<bool> OnlineSession::OnlineRestart_unit() {
    bool replied = false;
    for (int attempt = 0; attempt < restartAttempts; ++attempt) {
        const OnlinePacket packet = RestartPacket();
        const ByteVector reply = co_await Request(packet, onlineReplyLength);
        if (IsAccepted(reply))
            co_return true;
        replied = !reply.empty();
    }
    restartFailed_ = true;
    if (!lossReported_) {
        const Failure failure = {replied ? FailureKind::RestartRefused : FailureKind::RestartNoReply};
        co_await outcomes_.Failed(failure);
    }
    co_return false;
}

} // namespace vek
