// Modes and outputs as clipboard texts. Texts are Windows-1252 bytes.
#pragma once

#include "model/Config.h"

#include <optional>
#include <string>
#include <string_view>

namespace vek {

/// | "VornMatrixPoint" | T/F mute | T/F previous | maximum, | minimum, | start, | step, |
std::string CopyPointText(const OutputLevelRecord& levels);

/// | "VornMatrixMode" | 8 link group digits | 8 × (T/F | inputs 9 | selects 16 | volumes 16) | 8 × (output
/// text "#") |
std::string CopyModeText(const ModeRecord& mode);

/// Nothing when the text is not an output text, is cut short or holds a level that is not finite.
std::optional<OutputLevelRecord> PastePointText(std::string_view text);

/// Nothing when the text is not a mode text, is cut short, or holds a link group outside 0 … 4 or a bad
/// output text.
std::optional<ModeRecord> PasteModeText(std::string_view text);

} // namespace vek
