// A configuration file as a page for a person to read, and for version control to compare.
#pragma once

#include "inspect/StoredConfig.h"

#include <string>

namespace vek {

/// UTF-8 lines. Two configurations that differ in any field have different summaries; of the data after the
/// record only its length is told, and a line end that closes the notes is left out.
std::string SummaryOf(const StoredConfig& stored);

} // namespace vek
