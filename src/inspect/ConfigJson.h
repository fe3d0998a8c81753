// A configuration file as JSON: every field by name, levels in dB, panels and inputs as lists of numbers.
#pragma once

#include "inspect/StoredConfig.h"

#include <string>
#include <string_view>

namespace vek {

/// No document of a file that can be opened is longer: two digits for a byte after the record, and all else.
inline constexpr std::size_t largestDocument = 2 * largestStoredFile + std::size_t{1024} * 1024;

/// UTF-8. Nothing of the file is lost: Booleans other than -1 and 0 are numbers, texts that are no plain
/// lists of inputs or panels are texts, notes with other line ends than CR LF are marked, bytes after the
/// record are hexadecimal.
std::string ConfigToJson(const StoredConfig& stored);

/// The file that the document describes. Throws JsonError when a name is unknown, missing or given twice, or
/// a value has the wrong type or range. Line ends of unmarked notes become CR LF.
StoredConfig ConfigFromJson(std::string_view text);

} // namespace vek
