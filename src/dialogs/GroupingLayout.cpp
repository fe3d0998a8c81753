#include "dialogs/GroupingLayout.h"

#include "base/Numbers.h"

namespace vek {

namespace {

constexpr int labels = static_cast<int>(outputCount);

/// Between two labels.
constexpr int Gap(int labelHeight) { return labelHeight / 6 + 1; }
/// Between a frame and its labels.
constexpr int Margin(int labelHeight) { return labelHeight / 4 + 1; }
/// The length of a frame around eight labels in a line, each so long.
constexpr int FrameLength(int label, int labelHeight) {
    return labels * label + (labels - 1) * Gap(labelHeight) + 2 * Margin(labelHeight);
}
constexpr int FrameBreadth(int label, int labelHeight) { return label + 2 * Margin(labelHeight); }
/// Between the column and the rows.
constexpr int RowsGap(int labelHeight) { return labelHeight / 2; }

} // namespace

bool Contains(const PixelRect& outer, const PixelRect& inner) {
    return inner.Left >= outer.Left && inner.Top >= outer.Top &&
           inner.Left + inner.Width <= outer.Left + outer.Width &&
           inner.Top + inner.Height <= outer.Top + outer.Height;
}

int GroupingLayout::LabelWidthFor(int drawingWidth, int labelHeight) {
    const int others = FrameBreadth(0, labelHeight) + RowsGap(labelHeight) + FrameLength(0, labelHeight);
    return (drawingWidth - others) / (labels + 1);
}

int GroupingLayout::HeightFor(int labelHeight, int captionHeight) {
    return captionHeight + FrameLength(labelHeight, labelHeight);
}

PixelRect GroupingLayout::Frame(std::size_t frame) const {
    const int height = sizes_.LabelHeight;
    const int columnWidth = FrameBreadth(sizes_.LabelWidth, height);
    const int columnHeight = FrameLength(height, height);
    if (frame == 0)
        return {0, sizes_.CaptionHeight, columnWidth, columnHeight};
    // The last row ends where the column does.
    const int rowHeight = FrameBreadth(height, height);
    const int step = (columnHeight - rowHeight) / (linkGroupCount - 1);
    const int below = (linkGroupCount - static_cast<int>(frame)) * step;
    return {columnWidth + RowsGap(height), sizes_.CaptionHeight + columnHeight - rowHeight - below,
            FrameLength(sizes_.LabelWidth, height), rowHeight};
}

PixelRect GroupingLayout::Caption(std::size_t frame) const {
    const PixelRect below = Frame(frame);
    return {below.Left, below.Top - sizes_.CaptionHeight, below.Width, sizes_.CaptionHeight};
}

std::array<PixelRect, outputCount> GroupingLayout::Labels(const LinkGroups& groups) const {
    const int margin = Margin(sizes_.LabelHeight);
    const int gap = Gap(sizes_.LabelHeight);
    std::array<PixelRect, groupFrameCount> next;
    for (std::size_t frame = 0; frame < groupFrameCount; ++frame) {
        const PixelRect around = Frame(frame);
        next[frame] = {around.Left + margin, around.Top + margin, sizes_.LabelWidth, sizes_.LabelHeight};
    }
    std::array<PixelRect, outputCount> rects;
    for (std::size_t output = 0; output < outputCount; ++output) {
        const std::size_t group = CheckedIndex(groups[output], groupFrameCount);
        PixelRect& place = next[group];
        rects[output] = place;
        if (group == 0)
            place.Top += place.Height + gap;
        else
            place.Left += place.Width + gap;
    }
    return rects;
}

std::optional<std::size_t> GroupingLayout::FrameAround(const PixelRect& label) const {
    for (std::size_t frame = 0; frame < groupFrameCount; ++frame)
        if (Contains(Frame(frame), label))
            return frame;
    return std::nullopt;
}

PixelRect GroupingLayout::Bounds() const {
    const PixelRect last = Frame(groupFrameCount - 1);
    return {0, 0, last.Left + last.Width, HeightFor(sizes_.LabelHeight, sizes_.CaptionHeight)};
}

} // namespace vek
