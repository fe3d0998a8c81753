// The half-decibel grid of the dB entry boxes.
#pragma once

namespace vek {

/// The level on the half-decibel grid. Whole tenths of a dB are snapped towards zero (1.3 gives 1, -1.7 gives
/// -1.5); finer values keep what they have beyond the tenth (2.26 gives 1.96). Never gives a negative zero;
/// infinite values stay, not-a-number gives 0. Single precision, step by step.
float SnapHalfDecibels(float level);

/// The level within the limits; the maximum wins when they contradict each other.
float LimitLevel(float level, float maxLevel, float minLevel);

} // namespace vek
