// Levels in dB: the ranges in which they can be set, how they are rounded and written, and the volume chip's
// codes for them.
#pragma once

#include <string>

namespace vek {

// The volume chip: a code per half decibel.
inline constexpr float codesPerDb = 2.0F;
inline constexpr float zeroDbCode = 210.0F;

/// Code of the volume chip for a level in dB, neither limited nor rounded.
constexpr float VolumeChipCode(float level) { return codesPerDb * level + zeroDbCode; }

// All in dB.
/// What the chip can take, and thus the range of an output's maximum, minimum and start level.
inline constexpr float levelMaximum = 22.0F;
inline constexpr float levelMinimum = -96.0F;
/// What a muted output is set to.
inline constexpr float mutedLevel = levelMinimum;
/// The levels of an output and its steps are set in steps of the chip.
inline constexpr float levelStep = 1.0F / codesPerDb;
/// The size of one volume step from a remote panel.
inline constexpr float stepMaximum = 20.0F;
inline constexpr float stepMinimum = levelStep;
/// Input trims, output trims and the online offset.
inline constexpr float trimMaximum = 6.0F;
inline constexpr float trimMinimum = -18.0F;
/// The volume slider, to which an input trim and an output trim are added. At the lower end such a sum can
/// pass what the chip takes, but never what its code can tell: it still fits a byte.
inline constexpr float sliderMaximum = levelMaximum - 2.0F * trimMaximum;
inline constexpr float sliderMinimum = -62.0F;
static_assert(VolumeChipCode(sliderMaximum + 2.0F * trimMaximum) <= 255.0F &&
              VolumeChipCode(sliderMinimum + 2.0F * trimMinimum) >= 0.0F);
/// Faders give whole decibels.
inline constexpr float faderStep = 1.0F;
/// How far a page key or a click beside the knob takes a fader.
inline constexpr float faderPageStep = 6.0F;

/// True for a level that can be computed with: neither infinite nor not-a-number.
bool IsValidLevel(float level);

/// The level on the half-decibel grid. Whole tenths of a dB are snapped towards zero (1.3 gives 1, -1.7 gives
/// -1.5); finer values keep what they have beyond the tenth (2.26 gives 1.96). Never gives a negative zero;
/// infinite values stay, not-a-number gives 0. Single precision, step by step.
float SnapHalfDecibels(float level);

/// The level within the limits; the maximum wins when they contradict each other.
float LimitLevel(float level, float maxLevel, float minLevel);

/// A level as the user reads it: "+6dB", "0dB", "-12.5dB".
std::string FormatLevelText(float level);

} // namespace vek
