// Remote-panel characters and level texts.
#pragma once

#include "model/Config.h"

#include <optional>
#include <string>

namespace vek {

/// Panel index 0 … 15 of a panel character ("1" – "9", then "A" – "G" in either case); any other character is
/// 0.
std::size_t PanelCharToIndex(char character);

/// The panel character of an index 0 … 15.
char PanelIndexToChar(std::size_t index);

/// True for the 16 panel characters, letters in either case.
bool IsPanelChar(char character);

/// A level as the user reads it: "+6dB", "0dB", "-12.5dB".
std::string FormatLevelText(float level);

/// The two texts of PanelRecord that give panels to outputs.
enum class PanelList { Volumes, Selects };

/// The output (0 … 7) other than `output` whose list in this mode names the panel (index 0 … 15), the lowest
/// first.
std::optional<std::size_t> OutputUsingPanel(const ModeRecord& mode, PanelList list, std::size_t panel,
                                            std::size_t output);

} // namespace vek
