// The overview on paper.
#pragma once

#include "editor/ReportPrinter.h"

namespace vek {

struct OverviewContent;

/// Prints everything on one landscape page, in dark on white whatever the window's colours are. False when
/// the printer cannot be used.
bool PrintOverview(QPrinter& printer, const OverviewContent& content, const PrintHeader& header);

} // namespace vek
