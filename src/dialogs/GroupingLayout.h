// Where frames and output numbers stand in the grouping dialog.
#pragma once

#include "model/Config.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace vek {

/// The link group of each output: 0 = not linked, 1 … 4.
using LinkGroups = std::array<std::int16_t, outputCount>;

/// Frame 0 holds the individual outputs, frames 1 … 4 the groups.
inline constexpr std::size_t groupFrameCount = static_cast<std::size_t>(linkGroupCount) + 1;

/// A rectangle in whole pixels.
struct PixelRect {
    int Left = 0;
    int Top = 0;
    int Width = 0;
    int Height = 0;

    bool operator==(const PixelRect&) const = default;
};

/// True when the inner rectangle does not reach beyond the outer one; touching edges count as inside.
bool Contains(const PixelRect& outer, const PixelRect& inner);

/// What the drawing is made of, in pixels.
struct GroupingSizes {
    int LabelWidth;
    int LabelHeight;
    int CaptionHeight; ///< at most LabelHeight
};

/// The drawing: the individual outputs in a column on the left, the groups as rows beside it, each frame
/// below its caption.
class GroupingLayout {
  public:
    explicit GroupingLayout(const GroupingSizes& sizes) : sizes_(sizes) {}

    /// The width of the labels that makes the drawing at most so wide, for labels of this height.
    static int LabelWidthFor(int drawingWidth, int labelHeight);
    /// How high the drawing is.
    static int HeightFor(int labelHeight, int captionHeight);

    PixelRect Frame(std::size_t frame) const;
    /// Where the caption of a frame stands.
    PixelRect Caption(std::size_t frame) const;
    /// The rectangles of the output numbers: those of a group follow each other from the group's origin in
    /// the order of the outputs, in a column for the individual ones and in a row for a group. Throws
    /// SubscriptError for a group outside 0 … 4.
    std::array<PixelRect, outputCount> Labels(const LinkGroups& groups) const;
    /// The first frame that contains the rectangle.
    std::optional<std::size_t> FrameAround(const PixelRect& label) const;
    /// The whole drawing, frames and captions, from the origin.
    PixelRect Bounds() const;

  private:
    GroupingSizes sizes_;
};

} // namespace vek
