#include "dialogs/GroupingLayout.h"

#include "base/Numbers.h"

#include <algorithm>

namespace vek {

namespace {

constexpr double twipsPerPixel = 15.0;

// All in twips.
constexpr int labelWidth = 240;
constexpr int labelHeight = 300;

/// Where the labels of a group begin and how far apart they stand.
struct Row {
    int Left;
    int Top;
    int StepRight;
    int StepDown;
};
constexpr std::array<Row, groupFrameCount> rows = {{
    {480, 360, 0, 360},
    {1320, 240, 240, 0},
    {1320, 1080, 240, 0},
    {1320, 1920, 240, 0},
    {1320, 2760, 240, 0},
}};

// Each frame encloses a column or a row of all eight labels with room around it.
constexpr int rowMarginX = 120;
constexpr int rowMarginY = 105;
constexpr int columnMargin = 90;
constexpr int captionGap = 150;
constexpr int captionWidth = 1080;
constexpr int columnCaptionHeight = 255;

constexpr int lastLabel = static_cast<int>(outputCount) - 1;

struct TwipRect {
    int Left;
    int Top;
    int Width;
    int Height;
};

constexpr TwipRect FrameTwips(std::size_t frame) {
    const Row& row = rows[frame];
    const int marginX = row.StepRight == 0 ? columnMargin : rowMarginX;
    const int marginY = row.StepDown == 0 ? rowMarginY : columnMargin;
    return {row.Left - marginX, row.Top - marginY, lastLabel * row.StepRight + labelWidth + 2 * marginX,
            lastLabel * row.StepDown + labelHeight + 2 * marginY};
}

constexpr TwipRect CaptionTwips(std::size_t frame) {
    const TwipRect beside = FrameTwips(frame);
    if (rows[frame].StepRight == 0) {
        const int middle = beside.Left + beside.Width / 2;
        return {middle - captionWidth / 2, beside.Top - columnCaptionHeight, captionWidth,
                columnCaptionHeight};
    }
    return {beside.Left + beside.Width + captionGap, beside.Top, captionWidth, beside.Height};
}

PixelRect Scaled(const TwipRect& rect, double scale) {
    const auto pixels = [scale](int twips) {
        return static_cast<int>(RoundHalfEven(twips * scale / twipsPerPixel));
    };
    return {pixels(rect.Left), pixels(rect.Top), pixels(rect.Width), pixels(rect.Height)};
}

} // namespace

bool Contains(const PixelRect& outer, const PixelRect& inner) {
    return inner.Left >= outer.Left && inner.Top >= outer.Top &&
           inner.Left + inner.Width <= outer.Left + outer.Width &&
           inner.Top + inner.Height <= outer.Top + outer.Height;
}

PixelRect GroupingLayout::Frame(std::size_t frame) const { return Scaled(FrameTwips(frame), scale_); }

PixelRect GroupingLayout::Caption(std::size_t frame) const { return Scaled(CaptionTwips(frame), scale_); }

std::array<PixelRect, outputCount> GroupingLayout::Labels(const LinkGroups& groups) const {
    std::array<PixelRect, outputCount> labels;
    std::array<Row, groupFrameCount> origins = rows;
    for (std::size_t output = 0; output < outputCount; ++output) {
        Row& origin = origins[CheckedIndex(groups[output], groupFrameCount)];
        labels[output] = Scaled({origin.Left, origin.Top, labelWidth, labelHeight}, scale_);
        origin.Left += origin.StepRight;
        origin.Top += origin.StepDown;
    }
    return labels;
}

std::optional<std::size_t> GroupingLayout::FrameAround(const PixelRect& label) const {
    for (std::size_t frame = 0; frame < groupFrameCount; ++frame)
        if (Contains(Frame(frame), label))
            return frame;
    return std::nullopt;
}

PixelRect GroupingLayout::Bounds() const {
    PixelRect bounds;
    for (std::size_t frame = 0; frame < groupFrameCount; ++frame)
        for (const PixelRect& part : {Frame(frame), Caption(frame)}) {
            bounds.Width = std::max(bounds.Width, part.Left + part.Width);
            bounds.Height = std::max(bounds.Height, part.Top + part.Height);
        }
    return bounds;
}

} // namespace vek
