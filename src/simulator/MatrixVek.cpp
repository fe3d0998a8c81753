#include "simulator/MatrixVek.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <numeric>
#include <span>
#include <string_view>
#include <utility>

namespace vek {

namespace {

constexpr int wakeRate = 110;
constexpr int programRate = 9600;
constexpr std::uint8_t restartCommand = 51;
constexpr std::uint8_t restartArgument = 255;
constexpr std::uint8_t downloadCommand = 17;
constexpr std::uint8_t accepted = 240;

/// A request whose bytes come further apart than this was given up by its sender.
constexpr std::chrono::milliseconds longestGap(300);

/// | k high | k low | eight image bytes | check |
constexpr std::size_t blockHeaderSize = 2;
constexpr std::size_t blockFrameSize = blockHeaderSize + deviceBlockSize + 1;

/// What a byte can mean with the line set like this.
enum class Framing { Wake, Plain, Command, Argument, Other };

Framing FramingOf(const LineSettings& line) {
    if (line.StopBits == 2 && !line.OddParity)
        return line.Baud == wakeRate ? Framing::Wake : Framing::Plain;
    if (line.StopBits == 1 && line.Baud == programRate)
        return line.OddParity ? Framing::Command : Framing::Argument;
    return Framing::Other;
}

/// Every checked group of bytes sums up to 255, modulo 256.
bool SumIsRight(std::span<const std::uint8_t> bytes) {
    return std::accumulate(bytes.begin(), bytes.end(), 0U) % 256 == 255;
}

std::vector<std::uint8_t> WithCheckByte(std::vector<std::uint8_t> bytes) {
    const unsigned sum = std::accumulate(bytes.begin(), bytes.end(), 0U);
    bytes.push_back(static_cast<std::uint8_t>(255 - sum % 256));
    return bytes;
}

/// Programming requests are acknowledged by two bytes, online packets by one.
std::vector<std::uint8_t> Acknowledgement() { return WithCheckByte({accepted}); }

template <typename... Values>
std::string Text(const char* format, Values... values) {
    std::array<char, 120> text = {};
    std::snprintf(text.data(), text.size(), format, values...);
    return text.data();
}

} // namespace

/// A request without parity: told by its first byte, complete after `Length` bytes.
struct MatrixVek::PlainRequest {
    std::uint8_t First;
    std::size_t Length;
    std::string_view Words; ///< all its bytes, where they are always the same
    bool AtSearchRate;
    void (MatrixVek::*Handle)();
};

const MatrixVek::PlainRequest MatrixVek::plainRequests[] = {
    {255, 7, "\xFFSETVEK", true, &MatrixVek::OnSearch}, {'D', 6, "DiReCt", false, &MatrixVek::OnFind},
    {'V', 4, {}, false, &MatrixVek::OnVolume},          {'M', 4, {}, false, &MatrixVek::OnRoute},
    {'R', 4, {}, false, &MatrixVek::OnOnlineRestart},
};

std::vector<DeviceEvent> MatrixVek::Receive(std::uint8_t byte, const LineSettings& line, DeviceTime now) {
    events_.clear();
    const Framing framing = FramingOf(line);
    const bool argumentFollows = framing == Framing::Argument && FramingOf(lastLine_) == Framing::Command;
    const bool sameLine = line == lastLine_ || argumentFollows;
    if (!sameLine || now - lastTime_ > longestGap) {
        DropPartial(sameLine ? "nothing more came" : "the line's settings changed");
        inNoise_ = false;
    }
    lastLine_ = line;
    lastTime_ = now;

    switch (framing) {
    case Framing::Wake:
        ReceivePulse(byte);
        break;
    case Framing::Plain:
        ReceivePlain(byte);
        break;
    case Framing::Command:
        ReceiveCommand(byte);
        break;
    case Framing::Argument:
        ReceiveArgument(byte);
        break;
    case Framing::Other:
        RefuseNoise(byte);
        break;
    }
    return std::exchange(events_, {});
}

void MatrixVek::ReceivePulse(std::uint8_t byte) {
    if (byte != 0)
        return RefuseNoise(byte);
    partial_ = {byte};
    awake_ = true;
    Report(DeviceEventKind::WakePulse, "wake pulse", {});
}

void MatrixVek::ReceivePlain(std::uint8_t byte) {
    const std::uint8_t first = partial_.empty() ? byte : partial_.front();
    const auto* request =
        std::find_if(std::begin(plainRequests), std::end(plainRequests), [&](const PlainRequest& candidate) {
            return candidate.First == first &&
                   lastLine_.Baud == (candidate.AtSearchRate ? options_.SearchRate : programRate);
        });
    if (request == std::end(plainRequests))
        return RefuseNoise(byte);
    if (!request->Words.empty() && static_cast<std::uint8_t>(request->Words[partial_.size()]) != byte) {
        DropPartial("it went on differently");
        return ReceivePlain(byte);
    }
    partial_.push_back(byte);
    if (partial_.size() == request->Length)
        (this->*request->Handle)();
}

void MatrixVek::ReceiveCommand(std::uint8_t byte) {
    DropPartial("a new command came");
    if (byte != restartCommand && byte != downloadCommand)
        return RefuseNoise(byte);
    partial_ = {byte};
}

void MatrixVek::ReceiveArgument(std::uint8_t byte) {
    if (partial_.empty())
        return RefuseNoise(byte);
    partial_.push_back(byte);
    if (partial_.front() == restartCommand)
        OnRestart();
    else if (partial_.size() == 1 + blockFrameSize)
        OnBlock();
}

void MatrixVek::OnSearch() {
    if (options_.NeedsWakePulse && !awake_)
        return Refuse("a search without a wake pulse");
    identified_ = true;
    answerSpoilt_ = false;
    nextBlock_ = 0;
    auto reply = Identity();
    if (options_.SearchReplyLength > static_cast<int>(reply.size()))
        reply.push_back('\r');
    Report(DeviceEventKind::Search, Text("search at %d baud", lastLine_.Baud), std::move(reply));
}

void MatrixVek::OnFind() {
    online_ = true;
    Report(DeviceEventKind::OnlineFind, "online find", Identity());
}

void MatrixVek::OnVolume() {
    if (!TakesPacket("volume") || !NamesChannels("volume", 1))
        return;
    const int code = partial_[2];
    Report(DeviceEventKind::Volume,
           Text("volume: output %d, code %d (%g dB)", partial_[1] + 1, code, (code - 210) / 2.0), {accepted});
}

void MatrixVek::OnRoute() {
    if (!TakesPacket("route") || !NamesChannels("route", 2))
        return;
    Report(DeviceEventKind::Route, Text("route: output %d, input %d", partial_[1] + 1, partial_[2] + 1),
           {accepted});
}

void MatrixVek::OnOnlineRestart() {
    // Taken without a find request too: when its acknowledgement is lost, the editor repeats it to a device
    // that has restarted already.
    if (!SumIsRight(partial_))
        return Refuse("online restart packet with a wrong sum");
    if (partial_[1] != restartArgument || partial_[2] != restartArgument)
        return Refuse("an online restart with other bytes than FF FF");
    Report(DeviceEventKind::OnlineRestart, "online restart", {accepted});
    Restarted();
}

void MatrixVek::OnBlock() {
    const auto frame = std::span(partial_).subspan(1);
    const int number = frame[0] * 256 + frame[1];
    if (!identified_)
        return Refuse(Text("block %d without a search before", number));
    if (!SumIsRight(frame))
        return Refuse(Text("block %d with a wrong sum", number));
    if (number >= deviceBlockCount || (number != nextBlock_ && number + 1 != nextBlock_))
        return Refuse(Text("block %d where block %d was due", number, nextBlock_));
    const auto content = frame.subspan(blockHeaderSize, deviceBlockSize);
    std::copy(content.begin(), content.end(), &received_[static_cast<std::size_t>(number) * deviceBlockSize]);
    const bool repeated = number != nextBlock_;
    nextBlock_ = number + 1;
    Report(DeviceEventKind::Block, Text("block %d%s", number, repeated ? " (repeated)" : ""),
           Acknowledgement());
    events_.back().Number = number;
}

void MatrixVek::OnRestart() {
    if (partial_[1] != restartArgument)
        return Refuse("a restart with another argument than FF");
    Report(DeviceEventKind::Restart, "restart", Acknowledgement());
    if (nextBlock_ == deviceBlockCount) {
        std::copy_n(received_.begin(), deviceImageSize, image_.emplace().begin());
        Report(DeviceEventKind::Programmed, Text("programmed: %zu bytes in use", deviceImageSize), {});
    } else if (nextBlock_ > 0) {
        Refuse(Text("a download of %d of %d blocks, dropped", nextBlock_, deviceBlockCount));
    }
    Restarted();
}

bool MatrixVek::TakesPacket(const char* what) {
    if (!SumIsRight(partial_))
        Refuse(Text("%s packet with a wrong sum", what));
    else if (!online_)
        Refuse(Text("%s packet without a find request before", what));
    else
        return true;
    return false;
}

bool MatrixVek::NamesChannels(const char* what, std::size_t count) {
    const auto channels = std::span(partial_).subspan(1, count);
    const bool named = std::all_of(channels.begin(), channels.end(),
                                   [](std::uint8_t channel) { return channel < deviceChannelCount; });
    if (!named)
        Refuse(Text("%s packet for a channel that does not exist", what));
    return named;
}

void MatrixVek::DropPartial(const char* why) {
    if (!partial_.empty())
        Refuse(Text("%zu bytes of a request: %s", partial_.size(), why));
}

void MatrixVek::RefuseNoise(std::uint8_t byte) {
    if (!std::exchange(inNoise_, true)) {
        partial_ = {byte};
        Refuse(Text("byte %02X begins nothing at %s", byte, Describe(lastLine_).c_str()));
    }
}

void MatrixVek::Refuse(std::string why) { Report(DeviceEventKind::Refused, std::move(why), {}); }

void MatrixVek::Report(DeviceEventKind kind, std::string text, std::vector<std::uint8_t> reply) {
    if (kind != DeviceEventKind::Refused)
        inNoise_ = false;
    events_.push_back({kind, ++counts_[kind], std::exchange(partial_, {}), std::move(reply), std::move(text),
                       lastLine_.Baud});
}

void MatrixVek::Restarted() {
    awake_ = awake_ && answerSpoilt_;
    answerSpoilt_ = identified_ = online_ = false;
    nextBlock_ = 0;
}

std::vector<std::uint8_t> MatrixVek::Identity() const {
    return WithCheckByte({options_.ReplyCode, options_.FirmwareMajor, options_.FirmwareMinor});
}

} // namespace vek
