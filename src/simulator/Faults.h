// Ways in which a simulated device can fail on request.
#pragma once

#include "simulator/MatrixVek.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vek {

enum class FaultKind {
    NoReply,
    Mute,       ///< the same under the name of a device that never answers
    WrongReply, ///< the first byte of the reply inverted
    HalfReply,  ///< the first half of the reply, rounded down
    LateReply,  ///< the reply after Parameter milliseconds
    Noise,      ///< Parameter senseless bytes before the reply
    Echo,       ///< the request's own bytes before the reply, as from a converter that hears itself
    WrongRate,  ///< the reply at Parameter baud, misread at the rate of the line
    WrongSum,   ///< the second byte of the reply one too large
    Chatter,    ///< no reply is changed: bytes come unasked every Parameter milliseconds
    Flood,      ///< instead of the reply, senseless bytes as fast as the line takes them for Parameter ms
    HangUp,     ///< instead of the reply, the line breaks
};

/// One fault: what happens, at which event, how often.
struct Fault {
    FaultKind Kind = FaultKind::NoReply;
    int Parameter = 0;
    std::optional<DeviceEventKind> Event; ///< nothing: whatever the device would answer to
    /// For blocks the number of the block; for other events the first occurrence that fails, from 1. Nothing:
    /// from the first one on.
    std::optional<int> At;
    std::optional<int> Count = 1; ///< how many times; nothing: always
};

/// Reads "KIND[:PARAMETER]@EVENT[:AT][xCOUNT]": "no-reply@block:12x2", "late-reply:700@search", "noise@any
/// x*" without the blank. COUNT "*" means always; KIND[:PARAMETER] alone is the same as with "@anyx*". Throws
/// std::invalid_argument with a text that names what is wrong.
Fault ParseFault(std::string_view text);

/// Explains the notation of ParseFault in a few lines, for a usage text.
std::string FaultNotation();

/// How a reply goes out.
struct Delivery {
    std::vector<std::uint8_t> Bytes = {};
    std::chrono::milliseconds Delay = {};
    std::chrono::milliseconds Flood = {};
    bool HangUp = false;
    std::string Note = {}; ///< the name of the fault, empty without one
};

/// Chooses the fault, if any, for each event.
class FaultPlan {
  public:
    explicit FaultPlan(std::vector<Fault> faults) : faults_(std::move(faults)) {}

    /// The event's reply, changed by the first fault that applies; counts that fault's use.
    Delivery DeliveryOf(const DeviceEvent& event);

    /// The time between the bytes that come unasked; nothing when none do.
    std::optional<std::chrono::milliseconds> Chatter() const;

  private:
    std::vector<Fault> faults_; ///< with the uses that are left
};

} // namespace vek
