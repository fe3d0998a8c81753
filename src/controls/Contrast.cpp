#include "controls/Contrast.h"

#include <algorithm>
#include <cmath>

namespace vek {

namespace {

constexpr int parts = 20; // tried of the way from one colour to another
// Styles draw the panes of tabs and group boxes in shades of the background, up to so much nearer to the
// text.
constexpr double shade = 0.15;

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

QColor LighterText(const QColor& text, const QColor& background, double contrast) {
    const QColor nearest = Blended(text, background, shade);
    for (int part = 1; part < parts; ++part) {
        const QColor colour = Blended(text, background, static_cast<double>(part) / parts);
        if (ContrastRatio(colour, nearest) >= contrast)
            return colour;
    }
    return text;
}

QColor ReadableFill(const QColor& background, const QColor& text) {
    const bool bright = ContrastRatio(text, Qt::black) > ContrastRatio(text, Qt::white);
    const QColor farther = bright ? Qt::black : Qt::white;
    QColor fill = background;
    for (int part = 1; part < parts && ContrastRatio(fill, text) < readableContrast; ++part)
        fill = Blended(farther, background, static_cast<double>(part) / parts);
    return fill;
}

} // namespace vek
