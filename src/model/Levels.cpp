#include "model/Levels.h"

#include "base/Numbers.h"

#include <cmath>

namespace vek {

bool IsValidLevel(float level) { return std::isfinite(level); }

float SnapHalfDecibels(float level) {
    if (std::isnan(level))
        return 0.0F;
    if (std::isinf(level))
        return level;
    const float tenths = std::fabs(level) * 10.0F;
    if (std::isinf(tenths))
        return level;
    // The remainder comes from the whole tenths, but is taken off the tenths as they are.
    const auto rest = static_cast<float>(std::fmod(RoundHalfEven(tenths), 10.0));
    float snapped = tenths - rest;
    if (rest >= 5.0F)
        snapped += 5.0F;
    snapped /= 10.0F;
    return level < 0.0F && snapped != 0.0F ? -snapped : snapped;
}

float LimitLevel(float level, float maxLevel, float minLevel) {
    if (level > maxLevel)
        return maxLevel;
    return level < minLevel ? minLevel : level;
}

std::string FormatLevelText(float level) {
    std::string text = level > 0 ? "+" : "";
    text += GeneralNumber(level);
    text += "dB";
    return text;
}

} // namespace vek
