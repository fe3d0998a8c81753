#include "link/OutcomeTexts.h"

#include "base/Numbers.h"
#include "link/Packets.h"

#include <string_view>

namespace vek {

namespace {

constexpr const char* errorTitle = "Error!";
constexpr const char* nothingFound = "--------------";

struct FailureWords {
    FailureKind Kind;
    const char* Text;
};

constexpr FailureWords failureWords[] = {
    {FailureKind::PortNotOpen, "Port not open"},
    {FailureKind::NotResponding, "Vek not responding"},
    {FailureKind::DownloadNoReply, "No reply to download"},
    {FailureKind::DownloadRefused, "Reply to download failed"},
    {FailureKind::RestartNoReply, "No reply to restart"},
    {FailureKind::RestartRefused, "Reply fail to restart"},
    {FailureKind::ProgramFailed, "Program failed, Vekule will fail to operate correctly until reprogrammmed, "
                                 "Try powering the vek off/wait/on and reprogram again"},
    {FailureKind::VolumeNoReply, "Reply fail to Volume"},
    {FailureKind::VolumeRefused, "Reply ERROR to Volume"},
    {FailureKind::RouteNoReply, "Reply fail to Matrix"},
    {FailureKind::RouteRefused, "Reply ERROR to Matrix"},
};

constexpr bool TableInOrder() {
    for (std::size_t i = 0; i < std::size(failureWords); ++i) {
        if (static_cast<std::size_t>(failureWords[i].Kind) != i)
            return false;
    }
    return true;
}
static_assert(TableInOrder());

/// Upper case, without leading zeros.
std::string Hexadecimal(std::int16_t value) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    for (unsigned rest = static_cast<std::uint16_t>(value); rest != 0 || text.empty(); rest >>= 4)
        text.insert(text.begin(), digits[rest & 0xF]);
    return text;
}

} // namespace

MessageText TextOf(const Failure& failure) {
    std::string title = errorTitle;
    // A positive number stands behind the place of its sign.
    if (failure.Block >= 0)
        title.append("  ").append(std::to_string(failure.Block));
    return {title, failureWords[static_cast<std::size_t>(failure.Kind)].Text};
}

std::string TextOf(const PortFinding& finding) {
    std::string text = finding.Type != nullptr ? finding.Type->Name : nothingFound;
    if (finding.Answered())
        text += VersionText(finding.Found);
    return text;
}

namespace {

std::string NotPermittedText(const PortRights& rights) {
    constexpr const char* text = "may not be opened";
    if (rights.GroupToJoin.empty())
        return text;
    if (rights.JoinedSinceLogin)
        return std::string(text) + ": log out and in again, to be in the group " + rights.GroupToJoin;
    return std::string(text) + ": your user is not in the group " + rights.GroupToJoin;
}

std::string InUseText(const std::vector<PortHolder>& holders) {
    if (holders.empty())
        return "in use by another program, or does not work";
    return "in use by " + NamesOf(holders);
}

std::string DeviceText(const PortFinding& finding) {
    const std::string version = ' ' + VersionText(finding.Found);
    if (finding.State == PortState::MatrixVek)
        return finding.Type->Name + version;
    if (finding.Type != nullptr)
        return "another device: " + finding.Type->Name + version;
    return "another device: code " + std::to_string(DeviceCode(finding)) + ", version" + version;
}

} // namespace

std::string NamesOf(std::span<const PortHolder> programs) {
    std::string text;
    for (const PortHolder& program : programs)
        text.append(text.empty() ? "" : ", ")
            .append(program.Program)
            .append(" (")
            .append(std::to_string(program.Pid))
            .append(")");
    return text;
}

std::string FindingText(const PortFinding& finding, const PortFacts& facts) {
    if (finding.Answered())
        return DeviceText(finding);
    switch (finding.State) {
    case PortState::NotThere:
        return "not there";
    case PortState::NotPermitted:
        return NotPermittedText(facts.Rights);
    case PortState::InUse:
        return InUseText(facts.Holders);
    case PortState::Silent:
        return "silent";
    default:
        return "answers that are not understood";
    }
}

std::string WhyNotOpened(const PortFinding& finding) {
    switch (finding.State) {
    case PortState::NotThere:
        return "there is no such port";
    case PortState::NotPermitted:
        return "you are not allowed to use it, serial ports belong to the group dialout";
    default:
        return "another program is using it, or it does not work";
    }
}

std::string VersionText(std::uint32_t found) {
    // The first mask keeps bit 20 as well, which belongs to the second part: kept, as it is what users know.
    constexpr std::uint32_t firstPartMask = 0x10FF00;
    constexpr std::uint32_t secondPartMask = 0xFF0000;
    std::string text = std::to_string((found & firstPartMask) >> 8);
    text += '.';
    text += std::to_string((found & secondPartMask) >> 16);
    return text;
}

int TenthsOf(const DownloadProgress& progress) {
    if (progress.Acknowledged == progress.Blocks)
        return fullProgress;
    if (progress.Acknowledged == 0)
        return 0;
    return static_cast<int>(static_cast<double>(progress.Acknowledged - 1) / progress.Blocks * fullProgress);
}

std::string PercentText(const DownloadProgress& progress) {
    const int tenths = TenthsOf(progress);
    if (progress.Acknowledged == 0 || tenths == fullProgress)
        return std::to_string(tenths / 10) + '%';
    return std::to_string(tenths / 10) + '.' + std::to_string(tenths % 10) + '%';
}

std::string VolumeLine(int output, float level) {
    const float value = VolumeRegister(level);
    std::string line = "V,";
    line += GeneralNumber(output);
    line += ',';
    line += GeneralNumber(value);
    line += " Volume Output = ";
    line += GeneralNumber(output + 1);
    line += ',';
    line += GeneralNumber(level);
    line += "dB, CS3318 = ";
    line += GeneralNumber(value);
    line += "/&H";
    line += Hexadecimal(ToInteger(value));
    line += "\r\n";
    return line;
}

std::string RouteLine(int output, int input) {
    std::string line = "M,";
    line += GeneralNumber(output);
    line += ',';
    line += GeneralNumber(input);
    line += " Route Output ";
    line += GeneralNumber(output + 1);
    line += " to Input ";
    line += GeneralNumber(input + 1);
    line += "\r\n";
    return line;
}

} // namespace vek
