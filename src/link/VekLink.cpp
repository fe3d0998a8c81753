#include "link/VekLink.h"

#include "link/Packets.h"

#include <array>

namespace vek {

namespace {

// Search. A device listens at its own rate, so each is tried.
constexpr const char* wakePulseSettings = "110,n,8,2";
constexpr std::array<const char*, 7> searchSettings = {
    "9600,n,8,2", "38400,n,8,2", "28800,n,8,2", "19200,n,8,2", "14400,n,8,2", "4800,n,8,2", "2400,n,8,2"};
constexpr int searchPasses = 3;
constexpr std::uint8_t attentionByte = 255;
constexpr std::string_view wakeWord = "SETVEK";
constexpr std::size_t longestSearchReply = 5;

// Commands. The parity bit marks the first byte as a command: odd parity sets it for both commands.
constexpr const char* commandSettings = "9600,o,8,1";
constexpr const char* argumentSettings = "9600,e,8,1";
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

constexpr int fullProgress = 1000;

/// "12.5%" for 125 tenths.
std::string PercentText(int tenths) {
    std::string text = std::to_string(tenths / 10);
    text += '.';
    text += std::to_string(tenths % 10);
    text += '%';
    return text;
}

/// A positive number stands behind the place of its sign.
std::string BlockErrorTitle(int number) { return std::string("Error!  ") += std::to_string(number); }

} // namespace

VekLink::VekLink(SerialControl& port, OneShotTimer& timer, const DeviceTypeList& types, VekLinkView& view)
    : exchange_(port, timer), types_(types), view_(view) {}

void VekLink::Activate() {
    if (busy_)
        return;
    view_.EnableProgramVek(false);
    view_.SetProgressBar1(0);
    view_.ShowPleaseWait(false);
    search_for_vek();
}

void VekLink::search_for_vek() {
    if (busy_)
        return;
    const RunningScope running(busy_);
    view_.EnableProgramVek(false);
    SearchPorts(exchange_, types_, view_, [this] { return Find_vek(true); });
}

ConfigureResult VekLink::ProgramVek(const DownloadImage& image) {
    ConfigureResult result = ConfigureResult::Finished;
    if (busy_)
        return result;
    const RunningScope running(busy_);
    do {
        set_active_port();
        view_.SetLabel3("Please wait programing vek");
        view_.ShowPleaseWait(true);
        result = Configure_Vek(image);
    } while (result == ConfigureResult::ProgramAnother);
    exchange_.Close();
    return result;
}

void VekLink::set_active_port() {
    if (OpenSelectedPort(exchange_, view_))
        exchange_.Wait(portOpenWait);
}

void VekLink::send_wake_pulse() {
    exchange_.SetSettings(wakePulseSettings);
    exchange_.Send(0);
    exchange_.Wait(wakePulseWait);
}

ByteVector VekLink::SearchAt(std::string_view settings) {
    exchange_.DiscardInput();
    exchange_.SetSettings(settings);
    exchange_.Send(attentionByte);
    exchange_.Wait(byteWait);
    for (const char letter : wakeWord) {
        if (letter == wakeWord.back())
            exchange_.DiscardInput();
        exchange_.Send(static_cast<std::uint8_t>(letter));
        exchange_.Wait(byteWait);
    }
    return exchange_.WaitForReply(searchReplyWait, longestSearchReply, findReplyLength);
}

std::uint32_t VekLink::Find_vek(bool restart) {
    send_wake_pulse();
    bool replySeen = false;
    for (int pass = 0; pass < searchPasses; ++pass) {
        for (const char* settings : searchSettings) {
            const ByteVector reply = SearchAt(settings);
            if (exchange_.Ended())
                return 0;
            replySeen = replySeen || !reply.empty();
            const auto found = DecodeFindReply(reply);
            // The type is that of the first byte received, even when the answer starts behind noise.
            if (!found || FindDeviceType(types_, reply.front()) == nullptr)
                continue;
            if (restart)
                restart_unit();
            return *found;
        }
        if (!replySeen)
            return 0;
        if (restart)
            dumb_restart_unit();
    }
    return 0;
}

void VekLink::SendCommand(std::uint8_t command, std::span<const std::uint8_t> argument) {
    exchange_.SetSettings(commandSettings);
    exchange_.Send(command);
    exchange_.Wait(byteWait);
    exchange_.SetSettings(argumentSettings);
    exchange_.Send(argument);
}

bool VekLink::dumb_restart_unit() {
    exchange_.DiscardInput();
    SendCommand(restartCommand, restartArgument);
    exchange_.Wait(dumbRestartWait);
    return false;
}

VekLink::Reply VekLink::Command(std::uint8_t command, std::span<const std::uint8_t> argument) {
    SendCommand(command, argument);
    const ByteVector reply = exchange_.WaitForReply(commandReplyWait, commandReplyLength, commandReplyLength);
    if (IsAccepted(reply))
        return Reply::Accepted;
    return reply.empty() ? Reply::None : Reply::Refused;
}

bool VekLink::restart_unit() {
    Reply reply = Reply::None;
    for (int attempt = 0; attempt < commandAttempts; ++attempt) {
        exchange_.DiscardInput();
        reply = Command(restartCommand, restartArgument);
        if (reply == Reply::Accepted)
            return true;
    }
    if (!exchange_.Cancelled())
        view_.ErrorMessage(errorTitle,
                           reply == Reply::Refused ? "Reply fail to restart" : "No reply to restart");
    return false;
}

bool VekLink::SendBlock(const DownloadImage& image, int number) {
    const DownloadBlock block = BuildBlock(image, number);
    Reply reply = Reply::None;
    for (int attempt = 0; attempt < commandAttempts; ++attempt) {
        reply = Command(downloadCommand, block);
        if (reply == Reply::Accepted)
            return true;
    }
    if (!exchange_.Cancelled())
        view_.ErrorMessage(BlockErrorTitle(number),
                           reply == Reply::Refused ? "Reply to download failed" : "No reply to download");
    return false;
}

void VekLink::ShowProgress(const std::string& percentage, int value) {
    view_.SetLabel2(percentage);
    view_.SetProgressBar1(value);
}

void VekLink::send_download(const DownloadImage& image, bool& success) {
    success = false;
    const int blocks = BlockCount(image.Length);
    exchange_.DiscardInput();
    for (int number = 0; number < blocks; ++number) {
        if (!SendBlock(image, number))
            return;
        const int value = static_cast<int>(static_cast<double>(number) / blocks * fullProgress);
        ShowProgress(PercentText(value), value);
    }
    ShowProgress("100%", fullProgress);
    success = true;
}

ConfigureResult VekLink::Configure_Vek(const DownloadImage& image) {
    ShowProgress("0%", 0);
    view_.ShowPleaseWait(true);
    if (exchange_.Cancelled())
        return ConfigureResult::Finished;
    if (!exchange_.PortOpen()) {
        view_.ErrorMessage(errorTitle, "Port not open");
        return ConfigureResult::PortNotOpen;
    }
    const std::uint32_t found = Find_vek(false);
    if (exchange_.Cancelled())
        return ConfigureResult::Finished;
    if (found == 0) {
        view_.ErrorMessage(errorTitle, "Vek not responding");
        return ConfigureResult::NotResponding;
    }
    bool success = false;
    send_download(image, success);
    if (!success)
        return ConfigureResult::Finished;
    if (restart_unit())
        return view_.AskYesNo("All sent ok", "Program another vek") ? ConfigureResult::ProgramAnother
                                                                    : ConfigureResult::Finished;
    if (!exchange_.Cancelled())
        view_.ErrorMessage(errorTitle,
                           "Program failed, Vekule will fail to operate correctly until reprogrammmed, "
                           "Try powering the vek off/wait/on and reprogram again");
    return ConfigureResult::RestartFailed;
}

} // namespace vek
