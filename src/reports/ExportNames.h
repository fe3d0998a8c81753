// The file names that the export dialogs propose.
#pragma once

#include <string>
#include <string_view>

namespace vek {

inline constexpr std::string_view textSuffix = "TXT";
inline constexpr std::string_view addressListSuffix = "CSV";
inline constexpr std::string_view deviceExportSuffix = "VEX";

/// The current file name (UTF-8) with its last three characters replaced by the suffix; empty for a name of
/// fewer than 5 characters.
std::string ProposedExportName(std::string_view currentFileName, std::string_view suffix);

} // namespace vek
