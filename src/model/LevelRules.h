// The rules among the three levels of an output: minimum < maximum, minimum <= start <= maximum.
#pragma once

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

} // namespace vek
