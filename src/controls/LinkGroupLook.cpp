#include "controls/LinkGroupLook.h"

#include "model/Config.h"

#include <QPalette>

#include <array>

namespace vek {

namespace {

/// Far from each other and from the highlight of most palettes; the letter says the same without them.
constexpr std::array<int, linkGroupCount> hues = {265, 25, 150, 330};
constexpr int saturation = 170;
constexpr int lightnessOnDark = 170;
constexpr int lightnessOnLight = 85;

bool IsGroup(int group) { return group >= 1 && group <= linkGroupCount; }

} // namespace

QChar GroupLetter(int group) { return IsGroup(group) ? QChar(u'A' + group - 1) : QChar(u'?'); }

QColor GroupColour(int group, const QPalette& palette) {
    const QColor text = palette.color(QPalette::WindowText);
    if (!IsGroup(group))
        return text;
    const bool dark = palette.color(QPalette::Window).lightness() < text.lightness();
    return QColor::fromHsl(hues[static_cast<std::size_t>(group - 1)], saturation,
                           dark ? lightnessOnDark : lightnessOnLight);
}

} // namespace vek
