#include "inspect/Findings.h"

#include "base/Numbers.h"
#include "inspect/FieldTexts.h"

#include <algorithm>

namespace vek {

Subject ModeSubject(const NamedNumbers& numbers, std::size_t mode, FieldKind kind) {
    return {numbers.Text(NameKind::Mode, mode), {kind, mode, {}}};
}

Subject OutputSubject(const NamedNumbers& numbers, std::size_t mode, std::size_t output, FieldKind kind) {
    return {numbers.OutputOfMode(mode, output), {kind, mode, output}};
}

Subject FieldOf(Subject subject, std::string_view caption) {
    subject.Place.Caption = caption;
    return subject;
}

void CheckLevel(const Subject& subject, std::string_view caption, float level, const SettableLevels& range,
                Findings& findings) {
    std::string text(caption);
    text += ' ' + ExactLevelText(level);
    const auto taken = static_cast<float>(RoundHalfEven(codesPerDb * level) / codesPerDb);
    if (level < range.Lowest || level > range.Highest)
        findings.Add(Severity::Error, FieldOf(subject, caption),
                     text + " is outside " + FormatLevelText(range.Lowest) + " to " +
                         FormatLevelText(range.Highest));
    else if (taken != level)
        findings.Add(Severity::Note, FieldOf(subject, caption),
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

std::string CountText(const std::vector<Finding>& findings) {
    const auto count = [&findings](Severity severity, const std::string& name) {
        const auto number = std::ranges::count(findings, severity, &Finding::Level);
        return number == 0 ? std::string() : std::to_string(number) + ' ' + name + (number == 1 ? "" : "s");
    };
    const std::string errors = count(Severity::Error, "error");
    const std::string warnings = count(Severity::Warning, "warning");
    const std::string notes = count(Severity::Note, "note");
    if (errors.empty() && warnings.empty())
        return notes.empty() ? "No problems" : "No problems, " + notes;
    return errors + (errors.empty() || warnings.empty() ? "" : ", ") + warnings;
}

} // namespace vek
