// What the overview says about every output of every mode: values that can be compared, so that only what
// has changed is painted again, and the same in words.
#pragma once

#include "inspect/Findings.h"
#include "model/Config.h"
#include "model/Names.h"

#include <QString>
#include <QStringList>

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace vek {

/// What the checks say about one place.
struct OverviewProblems {
    std::optional<Severity> Mark; ///< the worst; notes alone give none
    std::vector<std::string> Texts;

    bool operator==(const OverviewProblems&) const = default;
};

/// One output in one mode, as the device will treat it.
struct OverviewCell {
    bool Used = false;  ///< has inputs, its own or its leader's
    std::string Inputs; ///< characters of model/Panels.h; a follower has none of its own
    bool PreviousRoute = false;
    std::optional<std::size_t> Leader; ///< the output (0 … 7) that it follows
    std::int16_t Group = 0;            ///< 0 = not linked, 1 … 4
    OutputLevelRecord Levels;
    std::string VolumePanels;
    std::string SelectorPanels; ///< none for a follower
    OverviewProblems Problems;

    bool operator==(const OverviewCell&) const = default;
};

struct OverviewRow {
    bool Used = false;         ///< the mode has inputs
    OverviewProblems Problems; ///< of the mode as a whole
    std::array<OverviewCell, outputCount> Cells;

    bool operator==(const OverviewRow&) const = default;
};

struct OverviewContent {
    std::array<OverviewRow, modeCount> Rows;
    Names Called;
};

OverviewContent MakeOverviewContent(const MatrixConfig& config, const Names& names,
                                    const std::vector<Finding>& findings);

/// Whether two cells of an output do the same, whatever the checks say of them.
bool SameSettings(const OverviewCell& a, const OverviewCell& b);

// In words. Modes and outputs from 0.

/// "Mode 2 Evening", "Output 3".
QString PlaceWords(const Names& names, NameKind kind, std::size_t index);
/// A mode as a whole, a line for each fact.
QStringList RowWords(const OverviewContent& content, std::size_t mode);
/// Everything that a cell shows, a line for each fact.
QStringList CellWords(const OverviewContent& content, std::size_t mode, std::size_t output);

} // namespace vek
