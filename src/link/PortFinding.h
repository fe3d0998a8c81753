// What stands behind a serial port.
#pragma once

#include "link/DeviceTypes.h"
#include "link/SerialControl.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace vek {

enum class PortState {
    NotThere,
    NotPermitted,
    InUse,
    Silent,
    NotUnderstood, ///< something answered, but not as a device of the list does
    OtherDevice,
    MatrixVek, ///< the device that this program configures
};

struct PortFinding {
    PortState State = PortState::NotThere;
    /// Reply code + version part 1 × 256 + version part 2 × 65536; 0 without a valid answer.
    std::uint32_t Found = 0;
    const DeviceType* Type = nullptr; ///< of the searched list; nullptr when the reply code is not in it
    // The last answer, understood or not; empty when silent.
    std::string Settings; ///< of the port when it came, such as "9600,n,8,2"
    ByteVector Answer;

    bool Opened() const { return State >= PortState::Silent; }
    /// True when something answered as a device does, also one that the list does not know.
    bool Answered() const { return Found != 0; }
};

/// The first byte of the answer, by which devices are told apart; 0 without a valid one.
constexpr int DeviceCode(const PortFinding& finding) { return static_cast<int>(finding.Found & 0xFF); }

/// A finding for a port that did not open.
PortFinding NotOpened(OpenFailure why);
/// A finding for a port that opened, where nothing answers.
PortFinding Silent();
/// An answer that is no device's.
PortFinding NotUnderstood(std::string_view settings, const ByteVector& answer);
/// A valid answer with this search result.
PortFinding Understood(const DeviceTypeList& types, std::uint32_t found, std::string_view settings,
                       const ByteVector& answer);

} // namespace vek
