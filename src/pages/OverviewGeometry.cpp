#include "pages/OverviewGeometry.h"

#include "model/Levels.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace vek {

namespace {

// In characters of average width.
constexpr int leastCell = 11;
constexpr int comfortableCell = 15;
constexpr int leastHeader = 13;
constexpr int mostHeader = 22;
constexpr int headerShare = 8; // of the width, when there is plenty

// As on a fader, the levels that are hardly heard share little of the track.
constexpr float lawBreak = -48.0F; // dB
constexpr float lawBreakShare = 0.12F;

constexpr std::size_t shortestRun = 3;

/// The chip of the longest run of ascending inputs from `begin`.
InputChip RunFrom(std::string_view inputs, std::size_t begin) {
    std::size_t end = begin + 1;
    const bool input = IsInputChar(inputs[begin]) && inputs[begin] != inputCharacters.front();
    while (input && end < inputs.size() && IsInputChar(inputs[end]) && inputs[end] == inputs[end - 1] + 1)
        ++end;
    return {inputs[begin], inputs[end - begin < shortestRun ? begin : end - 1]};
}

std::vector<InputChip> WithRuns(std::string_view inputs) {
    std::vector<InputChip> chips = {{inputs.front(), inputs.front()}};
    for (std::size_t next = 1; next < inputs.size();) {
        const InputChip chip = RunFrom(inputs, next);
        next += static_cast<std::size_t>(chip.Last - chip.First) + 1;
        chips.push_back(chip);
    }
    return chips;
}

} // namespace

OverviewGeometry::OverviewGeometry(const OverviewMetrics& metrics, const std::array<bool, modeCount>& used)
    : line_(metrics.LineHeight), pad_(std::max(3, line_ / 3)), gap_(std::max(3, line_ / 4)) {
    constexpr int columns = static_cast<int>(outputCount);
    headerWidth_ = std::clamp(metrics.Width / headerShare, leastHeader * metrics.CharacterWidth,
                              mostHeader * metrics.CharacterWidth);
    headerHeight_ = line_ + pad_;
    const int fitting = (metrics.Width - headerWidth_ - gap_) / columns - gap_;
    // What has to be scrolled anyhow need not be tight.
    cellWidth_ =
        fitting >= leastCell * metrics.CharacterWidth ? fitting : comfortableCell * metrics.CharacterWidth;
    const int high = 3 * line_ + 2 * pad_ + 2 * gap_;
    const int low = line_ + pad_;
    tops_[0] = headerHeight_ + gap_;
    for (std::size_t mode = 0; mode < modeCount; ++mode)
        tops_[mode + 1] = tops_[mode] + (used[mode] ? high : low) + gap_;
}

QSize OverviewGeometry::Size() const {
    return {headerWidth_ + static_cast<int>(outputCount) * (cellWidth_ + gap_) + gap_, tops_.back()};
}

QRect OverviewGeometry::RowHeader(std::size_t mode) const {
    return {0, tops_[mode], headerWidth_, tops_[mode + 1] - tops_[mode] - gap_};
}

QRect OverviewGeometry::ColumnHeader(std::size_t output) const {
    return {headerWidth_ + static_cast<int>(output) * (cellWidth_ + gap_), 0, cellWidth_, headerHeight_};
}

QRect OverviewGeometry::Cell(std::size_t mode, std::size_t output) const {
    const QRect row = RowHeader(mode);
    const QRect column = ColumnHeader(output);
    return {column.left(), row.top(), column.width(), row.height()};
}

OverviewCellParts OverviewGeometry::Parts(const QRect& cell, OverviewSigns signs) const {
    const int stripe = line_ * 3 / 4;
    const QRect inner = cell.adjusted(signs.Linked ? stripe + gap_ : pad_, pad_, -pad_, -pad_);
    const QRect top(inner.left(), inner.top(), inner.width(), line_);
    const QRect bottom = top.translated(0, inner.height() - line_);
    OverviewCellParts parts;
    if (signs.Linked)
        parts.Group = {cell.left(), cell.top(), stripe, cell.height()};
    if (signs.Marked)
        parts.Mark = {bottom.right() + 1 - line_, bottom.top(), line_, line_};
    parts.Mute = {bottom.right() + 1 - line_ - parts.Mark.width(), bottom.top(), line_, line_};
    const int half = (parts.Mute.left() - bottom.left()) / 2;
    parts.Volumes = {bottom.left(), bottom.top(), half, line_};
    parts.Selects = parts.Volumes.translated(half, 0);
    parts.Inputs = top;
    // In every cell of a column the same, so that the bars can be compared.
    parts.Levels = {cell.left() + stripe + gap_, top.bottom() + 1 + gap_, cell.width() - stripe - gap_ - pad_,
                    line_};
    return parts;
}

QRect OverviewGeometry::Track(const QRect& levels) const {
    const int height = std::max(3, line_ / 4);
    const int radius = line_ / 3; // of the dot, which stays inside
    return {levels.left() + radius, levels.center().y() - height / 2, levels.width() - 2 * radius, height};
}

int OverviewGeometry::LevelX(const QRect& track, float level) const {
    const float valid = std::clamp(level, levelMinimum, levelMaximum);
    const float share = valid < lawBreak ? lawBreakShare * (valid - levelMinimum) / (lawBreak - levelMinimum)
                                         : lawBreakShare + (1 - lawBreakShare) * (valid - lawBreak) /
                                                               (levelMaximum - lawBreak);
    return track.left() + static_cast<int>(std::lround(share * static_cast<float>(track.width())));
}

OverviewPart OverviewGeometry::PartAt(const QRect& cell, OverviewSigns signs, QPoint point) const {
    const OverviewCellParts parts = Parts(cell, signs);
    const std::pair<QRect, OverviewPart> areas[] = {
        {parts.Group, OverviewPart::Group},     {parts.Inputs, OverviewPart::Inputs},
        {parts.Levels, OverviewPart::Levels},   {parts.Volumes, OverviewPart::Volumes},
        {parts.Selects, OverviewPart::Selects}, {parts.Mute, OverviewPart::Mute}};
    for (const auto& [area, part] : areas) {
        if (area.contains(point))
            return part;
    }
    return OverviewPart::Cell;
}

std::optional<OverviewPlace> OverviewGeometry::At(QPoint point) const {
    OverviewPlace place;
    for (std::size_t i = 0; i < modeCount; ++i) {
        const QRect row = RowHeader(i);
        if (point.y() >= row.top() && point.y() <= row.bottom())
            place.Mode = i;
    }
    for (std::size_t i = 0; i < outputCount; ++i) {
        const QRect column = ColumnHeader(i);
        if (point.x() >= column.left() && point.x() <= column.right())
            place.Output = i;
    }
    const bool inHeader = (place.Mode && point.x() >= 0 && point.x() < headerWidth_) ||
                          (place.Output && point.y() >= 0 && point.y() < headerHeight_);
    if (inHeader || (place.Mode && place.Output))
        return place;
    return std::nullopt;
}

std::vector<InputChip> FittingChips(std::string_view inputs, int room,
                                    const std::function<int(const InputChip&)>& width) {
    const auto total = [&](const std::vector<InputChip>& chips) {
        return std::accumulate(chips.begin(), chips.end(), 0,
                               [&](int sum, const InputChip& chip) { return sum + width(chip); });
    };
    if (inputs.empty())
        return {};
    std::vector<InputChip> chips;
    for (const char input : inputs)
        chips.push_back({input, input});
    if (total(chips) <= room)
        return chips;
    chips = WithRuns(inputs);
    if (total(chips) <= room || chips.size() < 2)
        return chips;
    while (chips.size() > 1 && total(chips) + width({.First = ' ', .Last = ' ', .More = true}) > room)
        chips.pop_back();
    chips.push_back({.First = ' ', .Last = ' ', .More = true});
    return chips;
}

} // namespace vek
