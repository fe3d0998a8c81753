#include "link/VekLink.h"

#include "link/Packets.h"
#include "link/PortSearch.h"
#include "link/ProtocolSettings.h"

#include <array>

namespace vek {

namespace {

// Search.
constexpr int searchPasses = 3;
constexpr std::size_t longestSearchReply = 5;

// Commands.
constexpr std::uint8_t restartCommand = 51;
constexpr std::array<std::uint8_t, 1> restartArgument = {255};
constexpr std::uint8_t downloadCommand = 17;
constexpr std::size_t commandReplyLength = 2;
constexpr int commandAttempts = 4;

// Waits in milliseconds.
constexpr int portOpenWait = 100;
constexpr int wakePulseWait = 200;
constexpr int byteWait = 10;
constexpr int searchReplyWait = 100;
constexpr int commandReplyWait = 500;
constexpr int dumbRestartWait = 3000;

} // namespace

VekLink::VekLink(SerialControl& port, OneShotTimer& timer, const DeviceTypeList& types,
                 LinkOutcomes& outcomes)
    : exchange_(port, timer), types_(types), outcomes_(outcomes) {}

Task<> VekLink::search_for_vek() {
    co_await SearchPorts(exchange_, outcomes_, [this] { return Find_vek(true); });
}

Task<ConfigureResult> VekLink::ProgramVek(std::size_t row, const DownloadImage& image,
                                          ProgrammingOutcomes& programming) {
    const PortCloser closer(exchange_);
    while (true) {
        co_await set_active_port(row);
        const ConfigureResult result = co_await Configure_Vek(image, programming);
        if (result != ConfigureResult::ProgramAnother)
            co_return result;
    }
}

Task<> VekLink::set_active_port(std::size_t row) {
    OpenPort(exchange_, row);
    co_await exchange_.Wait(portOpenWait);
}

Task<ByteVector> VekLink::Listen(int milliseconds) {
    exchange_.SetSettings(searchSettings.front());
    exchange_.DiscardInput();
    co_await exchange_.Wait(milliseconds);
    co_return exchange_.TakeInput();
}

Task<> VekLink::send_wake_pulse() {
    exchange_.SetSettings(wakePulseSettings);
    co_await exchange_.Send(0);
    co_await exchange_.Wait(wakePulseWait);
}

Task<ByteVector> VekLink::SearchAt(std::string_view settings) {
    RateAnswer heard = {.Settings = std::string(settings), .Early = {}, .Answer = {}};
    exchange_.DiscardInput();
    exchange_.SetSettings(settings);
    for (const std::uint8_t& byte : searchRequest) {
        if (&byte == &searchRequest.back())
            heard.Early = exchange_.TakeInput();
        co_await exchange_.Send(byte);
        co_await exchange_.Wait(byteWait);
    }
    ByteVector reply = co_await exchange_.Reply(searchReplyWait, longestSearchReply, findReplyLength);
    heard.Answer = reply.empty() ? exchange_.TakeInput() : reply;
    outcomes_.Heard(heard);
    co_return reply;
}

Task<PortFinding> VekLink::Find_vek(bool restart) {
    PortFinding finding = Silent();
    co_await send_wake_pulse();
    for (int pass = 0; pass < searchPasses; ++pass) {
        int number = 0;
        for (const char* settings : searchSettings) {
            outcomes_.Searching({settings, ++number, static_cast<int>(searchSettings.size()), pass + 1});
            const ByteVector reply = co_await SearchAt(settings);
            if (!exchange_.PortOpen())
                co_return Silent();
            if (reply.empty())
                continue;
            finding = NotUnderstood(settings, reply);
            const auto found = DecodeFindReply(reply);
            // The type is that of the first byte received, even when the answer starts behind noise.
            if (!found || FindDeviceType(types_, reply.front()) == nullptr)
                continue;
            if (restart)
                co_await restart_unit();
            co_return Understood(types_, *found, settings, reply);
        }
        if (finding.State == PortState::Silent)
            co_return finding;
        if (restart)
            co_await dumb_restart_unit();
    }
    co_return finding;
}

Task<> VekLink::SendRequest(std::uint8_t command, std::span<const std::uint8_t> argument) {
    exchange_.SetSettings(commandSettings);
    co_await exchange_.Send(command);
    co_await exchange_.Wait(byteWait);
    exchange_.SetSettings(argumentSettings);
    co_await exchange_.Send(argument);
}

Task<bool> VekLink::dumb_restart_unit() {
    exchange_.DiscardInput();
    co_await SendRequest(restartCommand, restartArgument);
    co_await exchange_.Wait(dumbRestartWait);
    co_return false;
}

Task<VekLink::Reply> VekLink::Request(std::uint8_t command, std::span<const std::uint8_t> argument) {
    co_await SendRequest(command, argument);
    const ByteVector reply =
        co_await exchange_.Reply(commandReplyWait, commandReplyLength, commandReplyLength);
    if (IsAccepted(reply))
        co_return Reply::Accepted;
    co_return reply.empty() ? Reply::None : Reply::Refused;
}

Task<bool> VekLink::restart_unit() {
    Reply reply = Reply::None;
    for (int attempt = 0; attempt < commandAttempts; ++attempt) {
        exchange_.DiscardInput();
        const Reply latest = co_await Request(restartCommand, restartArgument);
        if (latest == Reply::Accepted)
            co_return true;
        reply = latest;
    }
    const Failure failure = {reply == Reply::Refused ? FailureKind::RestartRefused
                                                     : FailureKind::RestartNoReply};
    co_await outcomes_.Failed(failure);
    co_return false;
}

Task<bool> VekLink::SendBlock(const DownloadImage& image, DownloadProgress& progress,
                              ProgrammingOutcomes& programming) {
    const int number = progress.Acknowledged;
    const DownloadBlock block = BuildBlock(image, number);
    Reply reply = Reply::None;
    for (int attempt = 0; attempt < commandAttempts; ++attempt) {
        if (attempt > 0) {
            ++progress.Retries;
            programming.Progress(progress);
        }
        const Reply latest = co_await Request(downloadCommand, block);
        if (latest == Reply::Accepted)
            co_return true;
        if (endWanted_)
            co_return false;
        reply = latest;
    }
    const Failure failure = {
        reply == Reply::Refused ? FailureKind::DownloadRefused : FailureKind::DownloadNoReply, number};
    co_await outcomes_.Failed(failure);
    co_return false;
}

Task<bool> VekLink::send_download(const DownloadImage& image, ProgrammingOutcomes& programming) {
    DownloadProgress progress = {.Blocks = BlockCount(image.Length)};
    exchange_.DiscardInput();
    programming.DownloadBegins();
    while (progress.Acknowledged < progress.Blocks && !endWanted_) {
        const bool acknowledged = co_await SendBlock(image, progress, programming);
        if (!acknowledged)
            co_return false;
        ++progress.Acknowledged;
        programming.Progress(progress);
    }
    co_return !endWanted_;
}

Task<ConfigureResult> VekLink::Configure_Vek(const DownloadImage& image, ProgrammingOutcomes& programming) {
    programming.Progress({.Blocks = BlockCount(image.Length)});
    if (!exchange_.PortOpen()) {
        co_await outcomes_.Failed({FailureKind::PortNotOpen});
        co_return ConfigureResult::PortNotOpen;
    }
    const PortFinding finding = co_await Find_vek(false);
    if (!finding.Answered()) {
        co_await outcomes_.Failed({FailureKind::NotResponding});
        co_return ConfigureResult::NotResponding;
    }
    programming.DeviceFound(finding);
    const bool downloaded = co_await send_download(image, programming);
    if (endWanted_) {
        co_await restart_unit();
        co_return ConfigureResult::EndedEarly;
    }
    if (!downloaded)
        co_return ConfigureResult::DownloadFailed;
    const bool restarted = co_await restart_unit();
    if (!restarted) {
        co_await outcomes_.Failed({FailureKind::ProgramFailed});
        co_return ConfigureResult::RestartFailed;
    }
    const bool another = co_await programming.WantsAnother();
    co_return another ? ConfigureResult::ProgramAnother : ConfigureResult::Done;
}

} // namespace vek
