#include "controls/LevelTrimGeometry.h"

#include "base/Numbers.h"

#include <algorithm>
#include <cmath>

namespace vek {

float LimitKnobTop(const FaderTrack& track, float top) {
    if (top + track.KnobHeight > track.Bottom)
        top = track.Bottom - track.KnobHeight;
    return top < track.Top ? track.Top : top;
}

float LevelAtKnobTop(const FaderTrack& track, const LevelRange& range, float top) {
    const float travel = std::fabs(track.Span());
    if (travel == 0.0F)
        return static_cast<float>(RoundHalfEven(range.Max));
    const float level = range.Max - ((top - track.Top) / travel) * (range.Max - range.Min);
    return static_cast<float>(RoundHalfEven(level));
}

float KnobTopAtLevel(const FaderTrack& track, const LevelRange& range, float level) {
    const float height = range.Max - range.Min;
    if (height == 0.0F)
        return track.Top;
    return LimitKnobTop(track, track.Top + track.Span() * (range.Max - level) / height);
}

float WholeLevel(const LevelRange& range, double level) {
    const double whole = RoundHalfEven(level);
    if (whole > range.Max)
        return range.Max;
    return whole < range.Min ? range.Min : static_cast<float>(whole);
}

float LevelAfterClick(const FaderTrack& track, const LevelRange& range, float level, float top) {
    const float from = LimitLevel(level, range.Max, range.Min);
    const float direction = top < KnobTopAtLevel(track, range, from) ? 1.0F : -1.0F;
    const float wanted = LevelAtKnobTop(track, range, LimitKnobTop(track, top));
    const float way = std::clamp(direction * (wanted - from), faderStep, faderPageStep);
    return WholeLevel(range, from + direction * way);
}

bool HasDecibelTicks(const FaderTrack& track, const LevelRange& range) {
    constexpr float leastDistance = 4.0F;
    return track.Span() >= leastDistance * (range.Max - range.Min);
}

std::array<float, 4> ScaleLevels(const LevelRange& range) {
    const float step = (range.Max - range.Min) / 3.0F;
    return {range.Max, range.Max - step, range.Max - 2.0F * step, range.Min};
}

} // namespace vek
