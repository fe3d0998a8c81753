// The rules among the three levels of an output: minimum < maximum, minimum <= start <= maximum.
#pragma once

#include "model/Config.h"

#include <optional>
#include <string_view>

namespace vek {

/// Which of the levels the user has just set.
enum class LevelLimit { Maximum, Minimum, Start };

/// The levels as the user sees them, the new value included; dB.
struct LevelLimitValues {
    float Maximum;
    float Minimum;
    float Start;
};

/// What becomes of a new level. A refusal has a title and a reason for its message.
struct LevelDecision {
    bool Accepted = true;
    bool DragStart = false; ///< accepted, and the start level has to follow to the new value
    std::string_view Title = {};
    std::string_view Reason = {};
};

/// `fixedStart` tells whether the output starts at its start level (which then stands in the way of the
/// limits) or at its previous level (the start level then follows them).
LevelDecision DecideLevel(LevelLimit changed, const LevelLimitValues& levels, bool fixedStart);

/// Settings of an output that the user enters; what is empty stays as it is. Levels in dB, as boxes give
/// them: snapped to half decibels and within their range.
struct LevelEntry {
    std::optional<float> MaximumLevel = {};
    std::optional<float> StartLevel = {};
    std::optional<float> MinimumLevel = {};
    std::optional<float> StepLevel = {};
    std::optional<bool> MuteOnMin = {};
    std::optional<bool> PreviousNotSetStartLevel = {};

    bool operator==(const LevelEntry&) const = default;
};

/// Enters all of it, and decides on the levels as they are together then. Refused, nothing is entered.
/// Levels that are not entered count as they are shown, and keep what is between half decibels.
LevelDecision EnterLevels(OutputLevelRecord& levels, const LevelEntry& entry);

} // namespace vek
