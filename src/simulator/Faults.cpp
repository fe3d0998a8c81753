#include "simulator/Faults.h"

#include "base/LineRates.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>

namespace vek {

namespace {

constexpr std::uint8_t noiseByte = 0x55;

struct KindName {
    std::string_view Name;
    FaultKind Kind;
    int DefaultParameter;
    std::string_view ParameterMeaning; ///< empty: it has none
};

constexpr KindName kindNames[] = {
    {"no-reply", FaultKind::NoReply, 0, ""},
    {"wrong-reply", FaultKind::WrongReply, 0, ""},
    {"half-reply", FaultKind::HalfReply, 0, ""},
    {"late-reply", FaultKind::LateReply, 700, "ms"},
    {"noise", FaultKind::Noise, 3, "bytes"},
    {"echo", FaultKind::Echo, 0, ""},
    {"flood", FaultKind::Flood, 2000, "ms"},
    {"hang-up", FaultKind::HangUp, 0, ""},
    {"wrong-rate", FaultKind::WrongRate, 4800, "baud"},
    {"wrong-sum", FaultKind::WrongSum, 0, ""},
    {"chatter", FaultKind::Chatter, 100, "ms"},
    {"mute", FaultKind::Mute, 0, ""},
};

struct EventName {
    std::string_view Name;
    std::optional<DeviceEventKind> Event;
};

constexpr EventName eventNames[] = {
    {"search", DeviceEventKind::Search},
    {"block", DeviceEventKind::Block},
    {"restart", DeviceEventKind::Restart},
    {"find", DeviceEventKind::OnlineFind},
    {"volume", DeviceEventKind::Volume},
    {"route", DeviceEventKind::Route},
    {"online-restart", DeviceEventKind::OnlineRestart},
    {"any", std::nullopt},
};

[[noreturn]] void Fail(std::string_view what, std::string_view text) {
    std::string message(what);
    message += " \"";
    message += text;
    message += '"';
    throw std::invalid_argument(message);
}

template <typename Table>
const auto& Named(const Table& table, std::string_view name, std::string_view what) {
    const auto* found = std::find_if(std::begin(table), std::end(table),
                                     [&](const auto& entry) { return entry.Name == name; });
    if (found == std::end(table))
        Fail(what, name);
    return *found;
}

int Number(std::string_view text) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value < 0)
        Fail("not a number:", text);
    return value;
}

/// Cuts `text` before the separator and returns what follows it, nothing when there is none.
std::optional<std::string_view> CutAfter(std::string_view& text, char separator) {
    const std::size_t position = text.rfind(separator);
    if (position == std::string_view::npos)
        return std::nullopt;
    const std::string_view after = text.substr(position + 1);
    text = text.substr(0, position);
    return after;
}

bool Applies(const Fault& fault, const DeviceEvent& event) {
    if (fault.Kind == FaultKind::Chatter || event.Reply.empty() || fault.Count == 0 ||
        (fault.Event && *fault.Event != event.Kind))
        return false;
    if (!fault.At)
        return true;
    return event.Kind == DeviceEventKind::Block ? event.Number == *fault.At : event.Number >= *fault.At;
}

} // namespace

Fault ParseFault(std::string_view text) {
    std::string_view kindPart = text;
    std::string_view eventPart = CutAfter(kindPart, '@').value_or("anyx*");

    Fault fault;
    if (const auto count = CutAfter(eventPart, 'x'))
        fault.Count = *count == "*" ? std::nullopt : std::optional(Number(*count));
    if (const auto at = CutAfter(eventPart, ':'))
        fault.At = Number(*at);
    fault.Event = Named(eventNames, eventPart, "unknown event").Event;

    const auto parameter = CutAfter(kindPart, ':');
    const KindName& kind = Named(kindNames, kindPart, "unknown fault");
    if (parameter && kind.ParameterMeaning.empty())
        Fail("no number belongs to", kindPart);
    fault.Kind = kind.Kind;
    fault.Parameter = parameter ? Number(*parameter) : kind.DefaultParameter;
    if (kind.Kind == FaultKind::WrongRate && fault.Parameter == 0)
        Fail("no rate:", text);
    return fault;
}

std::string FaultNotation() {
    std::string text = "A fault is KIND[:PARAMETER]@EVENT[:AT][xCOUNT], for example no-reply@block:12x2,\nor "
                       "KIND[:PARAMETER] for "
                       "always\n  KIND  ";
    for (const KindName& kind : kindNames) {
        (text += ' ') += kind.Name;
        if (!kind.ParameterMeaning.empty())
            ((text += "[:") += kind.ParameterMeaning) += ']';
    }
    text += "\n  EVENT ";
    for (const EventName& event : eventNames)
        (text += ' ') += event.Name;
    text += "\n  AT     the number of the block from 0, for other events the first that fails, from 1"
            "\n  COUNT  how many times (1), * for always";
    return text;
}

std::optional<std::chrono::milliseconds> FaultPlan::Chatter() const {
    const auto chatter = std::ranges::find(faults_, FaultKind::Chatter, &Fault::Kind);
    if (chatter == faults_.end())
        return std::nullopt;
    return std::chrono::milliseconds(std::max(chatter->Parameter, 1));
}

Delivery FaultPlan::DeliveryOf(const DeviceEvent& event) {
    Delivery delivery;
    delivery.Bytes = event.Reply;
    const auto fault = std::find_if(faults_.begin(), faults_.end(),
                                    [&](const Fault& candidate) { return Applies(candidate, event); });
    if (fault == faults_.end())
        return delivery;
    if (fault->Count)
        --*fault->Count;
    auto& bytes = delivery.Bytes;
    switch (fault->Kind) {
    case FaultKind::NoReply:
    case FaultKind::Mute:
        bytes.clear();
        break;
    case FaultKind::WrongReply:
        bytes.front() = static_cast<std::uint8_t>(~bytes.front());
        break;
    case FaultKind::HalfReply:
        bytes.resize(bytes.size() / 2);
        break;
    case FaultKind::LateReply:
        delivery.Delay = std::chrono::milliseconds(fault->Parameter);
        break;
    case FaultKind::Noise:
        bytes.insert(bytes.begin(), static_cast<std::size_t>(fault->Parameter), noiseByte);
        break;
    case FaultKind::Echo:
        bytes.insert(bytes.begin(), event.Request.begin(), event.Request.end());
        break;
    case FaultKind::WrongRate:
        bytes = MisreadBytes(bytes, fault->Parameter, event.Baud);
        break;
    case FaultKind::WrongSum:
        if (bytes.size() > 1)
            ++bytes[1];
        break;
    case FaultKind::Chatter: // applies to no reply
        break;
    case FaultKind::Flood:
        bytes.clear();
        delivery.Flood = std::chrono::milliseconds(fault->Parameter);
        break;
    case FaultKind::HangUp:
        bytes.clear();
        delivery.HangUp = true;
        break;
    }
    delivery.Note = std::find_if(std::begin(kindNames), std::end(kindNames), [&](const KindName& kind) {
                        return kind.Kind == fault->Kind;
                    })->Name;
    return delivery;
}

} // namespace vek
