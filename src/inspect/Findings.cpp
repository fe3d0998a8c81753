#include "inspect/Findings.h"

#include "base/Numbers.h"
#include "inspect/FieldTexts.h"

namespace vek {

std::string ModeName(std::size_t mode) { return "Mode " + std::to_string(mode + 1); }

std::string OutputName(std::size_t mode, std::size_t output) {
    return ModeName(mode) + ", Output " + std::to_string(output + 1);
}

void CheckLevel(const std::string& where, std::string_view caption, float level, const LevelRange& range,
                Findings& findings) {
    std::string text(caption);
    text += ' ' + ExactLevelText(level);
    const auto taken = static_cast<float>(RoundHalfEven(codesPerDb * level) / codesPerDb);
    if (level < range.Lowest || level > range.Highest)
        findings.Add(Severity::Error, where,
                     text + " is outside " + FormatLevelText(range.Lowest) + " to " +
                         FormatLevelText(range.Highest));
    else if (taken != level)
        findings.Add(Severity::Note, where,
                     text + " is no multiple of half a dB: the device takes " + FormatLevelText(taken));
}

std::string_view SeverityName(Severity severity) {
    switch (severity) {
    case Severity::Error:
        return "error";
    case Severity::Warning:
        return "warning";
    default:
        return "note";
    }
}

} // namespace vek
