// The whole configuration as one text, for a file or a printer.
#pragma once

#include "model/Config.h"
#include "model/ReportOptions.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace vek {

inline constexpr PrintingOptions allSections = {true, true, true, true, true, true};

/// What the window shows, as far as the report reads it.
struct ReportSelection {
    std::size_t CurrentOutput = 0;                        ///< 0 … 7
    std::array<std::int16_t, outputCount> LinkGroup = {}; ///< working array of the mode shown
};

/// The selection while mode 0 … 7 and output 0 … 7 are shown. Throws SubscriptError for another mode.
ReportSelection SelectionOf(const MatrixConfig& config, std::size_t mode, std::size_t output);

/// Windows-1252 bytes; every line begins with CR LF. Empty when no section is chosen. Throws SubscriptError
/// for a link group outside 0 … 4 or an output outside 0 … 7 that a chosen section has to look up.
std::string BuildReport(const MatrixConfig& config, const PrintingOptions& options,
                        const ReportSelection& selection);

} // namespace vek
