// What an examination of a serial port has brought to light.
#pragma once

#include "link/Outcomes.h"
#include "link/PortFacts.h"
#include "link/ProtocolSettings.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vek {

/// Settings that the protocol uses, and what a port that refuses them cannot do.
struct NeededSettings {
    std::string_view Settings; ///< of the port, such as "9600,n,8,2"
    const char* What;
    bool ToBeFound; ///< without them no Matrix Vek is found or programmed
};

inline constexpr NeededSettings neededSettings[] = {
    {"9600,n,8,1", "9600 baud", true},     {searchSettings.front(), "two stop bits", true},
    {commandSettings, "odd parity", true}, {argumentSettings, "even parity", true},
    {"38400,n,8,2", "38400 baud", false},  {wakePulseSettings, "110 baud", false},
};

/// How far an examination is; what belongs to a step is known when the next one begins.
enum class ExaminationStep { System, Settings, Listening, Asking, Done };

struct PortExamination {
    std::string Title; ///< the port as the user knows it: "COM1 (ttyUSB0)"
    ExaminationStep Step = ExaminationStep::System;
    PortFacts Facts;
    std::vector<std::string> RefusedSettings; ///< of neededSettings
    ByteVector Unasked;                       ///< what came before anything was sent
    /// The latest of each rate, in the order of the search; rates at which nothing came included.
    std::vector<RateAnswer> Answers;
    PortFinding Finding;            ///< as a search shows it
    bool Vanished = false;          ///< while it was examined
    std::optional<Failure> Restart; ///< why the device that was found was not restarted
};

} // namespace vek
