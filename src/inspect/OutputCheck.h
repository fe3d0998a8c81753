// The findings about one output in one mode.
#pragma once

#include "inspect/Findings.h"
#include "model/Config.h"

#include <cstddef>

namespace vek {

/// Panels for its volume or its input.
bool HasPanels(const PanelRecord& panels);

/// Mode and output count from 0.
void CheckOutput(const MatrixConfig& config, std::size_t modeNumber, std::size_t output, Findings& findings);

} // namespace vek
