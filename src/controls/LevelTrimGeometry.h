// Where the knob of a fader stands for a level, and which level a knob position means.
#pragma once

#include "model/Levels.h"

#include <array>

namespace vek {

/// Limits of a fader in dB.
struct LevelRange {
    float Max = trimMaximum;
    float Min = trimMinimum;

    bool operator==(const LevelRange&) const = default;
};

/// The track of a fader, in any unit; y grows downwards.
struct FaderTrack {
    float Top = 0.0F;
    float Bottom = 0.0F;
    float KnobHeight = 0.0F;

    /// How far the knob's top edge can travel.
    float Span() const { return Bottom - Top - KnobHeight; }
};

/// The knob's top edge, kept on the track.
float LimitKnobTop(const FaderTrack& track, float top);

/// The whole number of decibels (halves to even) that the knob's top edge means. A track without travel means
/// the maximum.
float LevelAtKnobTop(const FaderTrack& track, const LevelRange& range, float top);

/// Where the knob's top edge stands for a level; a level outside the limits stands at the nearest end.
float KnobTopAtLevel(const FaderTrack& track, const LevelRange& range, float level);

/// A level that a user entered, as a whole number of decibels (halves to even) within the limits.
float WholeLevel(const LevelRange& range, double level);

/// Where a click beside the knob takes the level: towards `top`, where the pointer wants the knob's top edge,
/// but not past it and no further than faderPageStep; at least one decibel.
float LevelAfterClick(const FaderTrack& track, const LevelRange& range, float level, float top);

/// Whether ticks for every decibel would stand far enough apart to be told from each other. The track is in
/// logical pixels.
bool HasDecibelTicks(const FaderTrack& track, const LevelRange& range);

/// The four levels printed beside the track, from the top down: the limits and two between them in equal
/// steps.
std::array<float, 4> ScaleLevels(const LevelRange& range);

} // namespace vek
