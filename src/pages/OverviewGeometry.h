// Where everything in the overview stands, and what is at a point. Whole logical pixels; the drawing begins
// at (0, 0) with the corner between the headers.
#pragma once

#include "model/Config.h"

#include <QPoint>
#include <QRect>
#include <QSize>

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vek {

/// What a cell is drawn of; Cell is what lies between the others, and a whole header.
enum class OverviewPart { Cell, Inputs, Group, Levels, Volumes, Selects, Mute };

/// Something in the overview: a cell, or the header of a row (no output) or of a column (no mode).
struct OverviewPlace {
    std::optional<std::size_t> Mode;
    std::optional<std::size_t> Output;
    OverviewPart Part = OverviewPart::Cell;

    bool operator==(const OverviewPlace&) const = default;
};

/// What the sizes follow from.
struct OverviewMetrics {
    int LineHeight;     ///< of the cells' font
    int CharacterWidth; ///< average
    int Width;          ///< what the columns are to fill, when they need no more
};

/// What needs room in a cell only when it is there.
struct OverviewSigns {
    bool Linked = false;
    bool Marked = false; ///< has problems
};

/// The rectangles of a cell's parts.
struct OverviewCellParts {
    QRect Group; ///< the stripe in the colour of the link group, with its letter
    QRect Inputs;
    QRect Levels;
    QRect Volumes;
    QRect Selects;
    QRect Mute;
    QRect Mark; ///< of problems, empty without
};

class OverviewGeometry {
  public:
    /// Rows of modes that are not used are low.
    OverviewGeometry(const OverviewMetrics& metrics, const std::array<bool, modeCount>& used);

    QSize HeaderSize() const { return {headerWidth_, headerHeight_}; }
    /// Everything, without the legend.
    QSize Size() const;

    QRect RowHeader(std::size_t mode) const;
    QRect ColumnHeader(std::size_t output) const;
    QRect Cell(std::size_t mode, std::size_t output) const;
    OverviewCellParts Parts(const QRect& cell, OverviewSigns signs) const;
    /// The track of the levels bar within its part, and where a level (dB) stands on it. A level outside of
    /// what the device has stands at the nearest end.
    QRect Track(const QRect& levels) const;
    int LevelX(const QRect& track, float level) const;

    /// The cell or header at the point, nothing in the corner and between them.
    std::optional<OverviewPlace> At(QPoint point) const;
    OverviewPart PartAt(const QRect& cell, OverviewSigns signs, QPoint point) const;

  private:
    int line_;
    int pad_;
    int gap_;
    int headerWidth_;
    int headerHeight_;
    int cellWidth_;
    std::array<int, modeCount + 1> tops_; ///< of the rows; the last is the end
};

/// A chip of an input sequence.
struct InputChip {
    char First;
    char Last;         ///< other than First for a run: "2" to "8"
    bool More = false; ///< stands for all that had no room

    bool operator==(const InputChip&) const = default;
};

/// The chips of a sequence in `room` pixels, `width` telling what each takes. The first input stands alone;
/// when there is too little room for one chip each, runs of three and more become one, and what still has no
/// room becomes a last chip that says so.
std::vector<InputChip> FittingChips(std::string_view inputs, int room,
                                    const std::function<int(const InputChip&)>& width);

} // namespace vek
