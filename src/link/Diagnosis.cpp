#include "link/Diagnosis.h"

#include "base/LineRates.h"
#include "link/OutcomeTexts.h"
#include "link/Packets.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>
#include <optional>

namespace vek {

namespace {

struct CauseWords {
    Cause Of;
    const char* Text; ///< "%" stands for what is known besides
    const char* Advice;
};

constexpr CauseWords causeWords[] = {
    {Cause::MatrixVek, "%: the link is in order",
     "Search again. If the search does not find it, switch the device off and on first."},
    {Cause::Disturbed, "% answers, but bytes come without being asked as well",
     "Take everything but the Matrix Vek off the line: what comes unasked can pass for its answers."},
    {Cause::OtherRate, "The device answers at another rate: what came %",
     "Switch the device off and on. If it stays so, its rate or that of a converter in between is set "
     "wrongly."},
    {Cause::WrongSum, "The answer of a device came, but with a wrong sum: bytes were changed on the way",
     "Look for a long, unshielded or badly earthed cable and loose plugs; try another cable and another "
     "adapter."},
    {Cause::BehindBytes, "What came is %",
     "Take everything but the Matrix Vek off the line; when a converter is in between, switch off its echo."},
    {Cause::Echo, "What is sent comes back: transmit and receive are joined",
     "Look for a looped or wrongly crossed cable, a test plug, or a two-wire converter that hears itself."},
    {Cause::Chatter, "Something sends without being asked",
     "Another device is on this port. Connect the Matrix Vek to it, alone."},
    {Cause::NotUnderstood, "Something answers, but not as a known device does",
     "Another kind of device is on this port, or the line is disturbed. Check what the cable leads to, then "
     "the "
     "cable."},
    {Cause::InUse, "Another program uses the port: %", "End that program, then search again."},
    {Cause::Forbidden, "You may not use the port%", "%"},
    {Cause::RefusesSettings, "The adapter cannot be set as a Matrix Vek needs it: it refuses %",
     "Use another adapter."},
    {Cause::Shared, "Another program has the port open too and may take the answers: %",
     "End that program, then search again."},
    {Cause::Vanished, "The adapter went away while it was examined",
     "Plug it in again, at another socket or with another cable, and without a hub in between."},
    {Cause::OtherDevice, "Another device is on this port: %",
     "Connect the Matrix Vek to this port, or look for the port that leads to it."},
    {Cause::Silent, "Nothing answers",
     "Check that the Matrix Vek has power, that the cable leads to its RS232 plug, and that transmit and "
     "receive are "
     "not exchanged."},
    {Cause::NotSerial, "This is no serial port", "Choose another device."},
    {Cause::NotThere, "There is no such port", "Plug in the adapter, or choose another port."},
};

constexpr bool TableInOrder() {
    for (std::size_t i = 0; i < std::size(causeWords); ++i) {
        if (static_cast<std::size_t>(causeWords[i].Of) != i)
            return false;
    }
    return true;
}
static_assert(TableInOrder());

std::string Filled(std::string text, const std::string& detail) {
    const std::size_t place = text.find('%');
    return place == std::string::npos ? text : text.replace(place, 1, detail);
}

std::string DeviceText(const DeviceTypeList& types, std::uint32_t found) {
    const auto code = static_cast<std::uint8_t>(found & 0xFF);
    const DeviceType* type = FindDeviceType(types, code);
    return (type != nullptr ? type->Name : "a device with the unknown code " + std::to_string(code)) + ' ' +
           VersionText(found);
}

bool IsReadable(std::span<const std::uint8_t> bytes) {
    return std::ranges::all_of(bytes, [](std::uint8_t byte) {
        return (byte >= ' ' && byte <= '~') || byte == '\r' || byte == '\n' || byte == '\t';
    });
}

int RateOf(std::string_view settings) {
    int baud = 0;
    std::from_chars(settings.data(), settings.data() + settings.size(), baud);
    return baud;
}

/// The answer of a Matrix Vek at another rate that would be read as these bytes: "Matrix Vek 2.5 at 4800
/// baud".
std::optional<std::string> FittingRate(const ByteVector& bytes, int readBaud, const DeviceTypeList& types) {
    // Fewer bytes would fit too many answers.
    constexpr std::size_t leastBytes = 4;
    constexpr int highestVersion = 32; // of each part
    if (bytes.size() < leastBytes)
        return std::nullopt;
    for (const char* const settings : searchSettings) {
        const int sentBaud = RateOf(settings);
        for (int version = 0; sentBaud != readBaud && version < highestVersion * highestVersion; ++version) {
            ByteVector answer = {matrixVekReply, static_cast<std::uint8_t>(version / highestVersion),
                                 static_cast<std::uint8_t>(version % highestVersion)};
            answer.push_back(CheckByte(answer));
            const std::uint32_t found = *DecodeFindReply(answer);
            for (const int more : {0, 1}) {
                if (more == 1)
                    answer.push_back('\r');
                const auto read = MisreadBytes(answer, sentBaud, readBaud);
                // The search may have taken the beginning only.
                if (read.size() >= bytes.size() && std::equal(bytes.begin(), bytes.end(), read.begin()))
                    return DeviceText(types, found) + " at " + std::to_string(sentBaud) + " baud";
            }
        }
    }
    return std::nullopt;
}

Cause CauseOf(const PortExamination& port, const DeviceTypeList& types) {
    if (!port.Facts.Exists)
        return Cause::NotThere;
    if (!port.Facts.IsSerial)
        return Cause::NotSerial;
    switch (port.Finding.State) {
    case PortState::NotThere:
        return Cause::NotThere;
    case PortState::NotPermitted:
        return Cause::Forbidden;
    case PortState::InUse:
        return Cause::InUse;
    case PortState::MatrixVek:
        return port.Unasked.empty() ? Cause::MatrixVek : Cause::Disturbed;
    case PortState::OtherDevice:
        return Cause::OtherDevice;
    case PortState::Silent:
    case PortState::NotUnderstood:
        break;
    }
    Cause cause = port.Unasked.empty() ? Cause::Silent : Cause::Chatter;
    for (const RateAnswer& answer : port.Answers)
        cause = std::min(cause, MeaningOf(answer, types).Suggests);
    if (cause != Cause::Silent)
        return cause;
    if (port.Vanished)
        return Cause::Vanished;
    const auto refuses = [&](const NeededSettings& needed) {
        return needed.ToBeFound &&
               std::ranges::find(port.RefusedSettings, needed.Settings) != port.RefusedSettings.end();
    };
    // A pseudo-terminal has no line, so that nothing hangs on what it refuses.
    if (!port.Facts.IsPseudoTerminal && std::ranges::any_of(neededSettings, refuses))
        return Cause::RefusesSettings;
    return port.Facts.Holders.empty() ? Cause::Silent : Cause::Shared;
}

/// What the words of the cause leave open.
std::string DetailOf(Cause cause, const PortExamination& port, const DeviceTypeList& types) {
    switch (cause) {
    case Cause::InUse:
        if (!port.Facts.Holders.empty())
            return NamesOf(port.Facts.Holders);
        if (!port.Facts.Grabbers.empty())
            return "perhaps " + NamesOf(port.Facts.Grabbers);
        return "which one cannot be told";
    case Cause::Disturbed:
        return DetailOf(Cause::MatrixVek, port, types);
    case Cause::Shared:
        return NamesOf(port.Facts.Holders);
    case Cause::Forbidden:
        return port.Facts.Rights.Group.empty() ? "" : ": it belongs to the group " + port.Facts.Rights.Group;
    case Cause::RefusesSettings:
        return RefusedText(port);
    default:
        for (const RateAnswer& answer : port.Answers) {
            if (const AnswerMeaning meaning = MeaningOf(answer, types); meaning.Suggests == cause)
                return meaning.Text;
        }
        return {};
    }
}

std::string AccessAdvice(const PortRights& rights) {
    if (rights.GroupToJoin.empty())
        return "Ask whoever looks after this computer for the right to read and write it.";
    if (rights.JoinedSinceLogin)
        return "You have joined the group since you logged in: log out and in again.";
    return "Join the group: sudo usermod -aG " + rights.GroupToJoin + " $USER, then log out and in again.";
}

} // namespace

AnswerMeaning MeaningOf(const RateAnswer& answer, const DeviceTypeList& types) {
    ByteVector all = answer.Early;
    all.insert(all.end(), answer.Answer.begin(), answer.Answer.end());
    if (all.empty())
        return {};
    const auto echo = std::search(all.begin(), all.end(), searchRequest.begin(), searchRequest.end());
    if (echo != all.end()) {
        const auto behind = DecodeFindReply({echo + std::ssize(searchRequest), all.end()});
        return {Cause::Echo,
                "what was sent" +
                    (behind ? ", and behind it the answer of " + DeviceText(types, *behind) : "")};
    }
    const auto found = DecodeFindReply(answer.Answer);
    if (found && FindDeviceType(types, answer.Answer.front()) != nullptr)
        return {(*found & 0xFF) == matrixVekReply ? Cause::MatrixVek : Cause::OtherDevice,
                DeviceText(types, *found)};
    if (found && answer.Answer.size() > findReplyLength + 1)
        return {Cause::BehindBytes, "the answer of " + DeviceText(types, *found) + " behind other bytes"};
    if (found)
        return {Cause::OtherDevice, DeviceText(types, *found)};
    if (const auto fitting = FittingRate(answer.Answer, RateOf(answer.Settings), types))
        return {Cause::OtherRate, "fits " + *fitting};
    const DeviceType* first = answer.Answer.empty() ? nullptr : FindDeviceType(types, answer.Answer.front());
    if (first != nullptr && answer.Answer.size() >= findReplyLength)
        return {Cause::WrongSum, "begins as the answer of " + first->Name + ", but its sum is wrong"};
    if (IsReadable(all))
        return {Cause::NotUnderstood, "text, as another kind of device sends it"};
    if (answer.Answer.empty())
        return {Cause::NotUnderstood, "came before the question was complete"};
    if (all.size() < findReplyLength)
        return {Cause::NotUnderstood, "too short for an answer"};
    return {Cause::NotUnderstood, "no known answer: another device, another rate or a disturbed line"};
}

Diagnosis Diagnose(const PortExamination& port, const DeviceTypeList& types) {
    const Cause cause = CauseOf(port, types);
    const CauseWords& words = causeWords[static_cast<std::size_t>(cause)];
    return {cause, Filled(words.Text, DetailOf(cause, port, types)),
            Filled(words.Advice, AccessAdvice(port.Facts.Rights))};
}

Diagnosis DiagnoseAll(std::span<const PortExamination> ports, const DeviceTypeList& types) {
    Diagnosis nearest;
    for (const PortExamination& port : ports) {
        Diagnosis own = Diagnose(port, types);
        if (!nearest.Text.empty() && own.Likeliest >= nearest.Likeliest)
            continue;
        nearest = std::move(own);
        nearest.Text = port.Title + ": " + nearest.Text;
    }
    if (nearest.Text.empty())
        return {Cause::NotThere, "This computer has no serial port",
                "Plug in an adapter, then search again."};
    return nearest;
}

std::string RefusedText(const PortExamination& port) {
    std::string text;
    for (const NeededSettings& needed : neededSettings) {
        if (std::ranges::find(port.RefusedSettings, needed.Settings) != port.RefusedSettings.end())
            text.append(text.empty() ? "" : ", ").append(needed.What);
    }
    return text;
}

} // namespace vek
