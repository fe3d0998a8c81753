#include "controls/Contrast.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace vek {

namespace {

constexpr int parts = 20; // tried of the way from one colour to another
// Styles draw the panes of tabs and group boxes in shades of the background, up to so much nearer to the
// text.
constexpr double shade = 0.15;

constexpr int levels = 256; // of a colour's channel

/// Of 0 … 1, by Newton's steps from above: the compiler knows no std::pow.
constexpr double FifthRoot(double value) {
    double root = 1;
    double nearer = (4 + value) / 5;
    while (nearer < root) {
        root = nearer;
        nearer = (4 * root + value / (root * root * root * root)) / 5;
    }
    return root;
}

/// Linear light of each level of a channel, to the power of 2.4.
constexpr auto linear = [] {
    std::array<double, levels> table = {};
    for (int level = 0; level < levels; ++level) {
        const double value = static_cast<double>(level) / (levels - 1);
        const double base = (value + 0.055) / 1.055;
        table[static_cast<std::size_t>(level)] =
            value <= 0.04045 ? value / 12.92 : base * base * FifthRoot(base * base);
    }
    return table;
}();

double Luminance(const QColor& colour) {
    const auto light = [](int level) { return linear[static_cast<std::size_t>(level)]; };
    return 0.2126 * light(colour.red()) + 0.7152 * light(colour.green()) + 0.0722 * light(colour.blue());
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

QColor ReadableOn(const QColor& colour, const QColor& other) {
    const bool bright = ContrastRatio(other, Qt::black) > ContrastRatio(other, Qt::white);
    const QColor farther = bright ? Qt::black : Qt::white;
    QColor readable = colour;
    for (int part = 1; part < parts && ContrastRatio(readable, other) < readableContrast; ++part)
        readable = Blended(farther, colour, static_cast<double>(part) / parts);
    return readable;
}

} // namespace vek
