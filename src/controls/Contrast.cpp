#include "controls/Contrast.h"

#include <algorithm>
#include <cmath>

namespace vek {

namespace {

constexpr double lightest = 0.6; // of the text colour, where the palette has contrast to spare
constexpr double step = 0.05;
// The blended colour is rounded to whole steps of each channel.
constexpr double wanted = readableContrast + 0.2;

double Linear(float channel) {
    const double value = channel;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& colour) {
    return 0.2126 * Linear(colour.redF()) + 0.7152 * Linear(colour.greenF()) +
           0.0722 * Linear(colour.blueF());
}

} // namespace

double ContrastRatio(const QColor& one, const QColor& other) {
    const auto [darker, brighter] = std::minmax({Luminance(one), Luminance(other)});
    return (brighter + 0.05) / (darker + 0.05);
}

QColor Blended(const QColor& text, const QColor& background, double part) {
    const auto mix = [part](int over, int under) {
        return static_cast<int>(std::lround(under + (over - under) * part));
    };
    return {mix(text.red(), background.red()), mix(text.green(), background.green()),
            mix(text.blue(), background.blue())};
}

QColor LighterText(const QColor& text, const QColor& background) {
    for (double part = lightest; part < 1.0; part += step) {
        const QColor colour = Blended(text, background, part);
        if (ContrastRatio(colour, background) >= wanted)
            return colour;
    }
    return text;
}

} // namespace vek
