#include "reports/TextReport.h"

#include "base/Numbers.h"
#include "model/Levels.h"
#include "reports/AddressList.h"
#include "reports/Rs232Codes.h"

#include <span>
#include <string_view>

namespace vek {

namespace {

constexpr std::string_view lineEnd = "\r\n";
constexpr std::string_view line4 = "\r\n    ";
constexpr std::string_view line8 = "\r\n        ";
constexpr std::size_t usualLength = std::size_t{48} * 1024;

/// The number (1 … 8) of the first output of each link group, 0 while none is known.
using FirstOutputs = std::array<std::size_t, linkGroupCount + 1>;

std::size_t& Entry(FirstOutputs& firstOutputs, std::int16_t group) {
    return firstOutputs[CheckedIndex(group, firstOutputs.size())];
}

void AppendNumbered(std::string& report, std::string_view words, std::size_t number) {
    report += words;
    report += std::to_string(number);
}

void AppendInputSequence(std::string& report, const PanelRecord& panels) {
    report += line8;
    report += "Input sequence = ";
    for (const char input : panels.PanelInputs.Trimmed()) {
        if (input == '0')
            report += "OFF";
        else
            report += input;
        report += ',';
    }
    report += IsSet(panels.UsePreviousRoute) ? " Start route uses  previous route" : " Start route is first";
}

void AppendPanels(std::string& report, std::string_view panels) {
    for (std::size_t i = 0; i < panels.size(); ++i) {
        if (i > 0)
            report += ',';
        report += panels[i];
    }
}

void AppendVolumePanels(std::string& report, std::string_view panels) {
    report += line8;
    report += "Volume remote panels = ";
    if (panels.empty())
        report += "none";
    AppendPanels(report, panels);
}

void AppendSelectorPanels(std::string& report, std::string_view panels, std::int16_t group,
                          FirstOutputs& firstOutputs) {
    report += line8;
    report += "Input selector remote panels = ";
    if (panels.empty() && group != 0) {
        AppendNumbered(report, "Linked to ", Entry(firstOutputs, group));
        report += ',';
    } else if (panels.empty()) {
        report += "none";
    }
    AppendPanels(report, panels);
}

void AppendLevel(std::string& report, std::string_view start, std::string_view words, float level) {
    report += start;
    report += words;
    report += FormatLevelText(level);
}

void AppendLevels(std::string& report, const OutputLevelRecord& levels) {
    AppendLevel(report, line8, "Maximum level = ", levels.MaximumLevel);
    AppendLevel(report, line8, "Minimum level = ", levels.MinimumLevel);
    report += line8;
    report +=
        IsSet(levels.MuteOnMin) ? "Minimum level will mute output " : "Minimum level will not mute output ";
    if (IsSet(levels.PreviousNotSetStartLevel)) {
        report += line8;
        report += "Start level uses  previous level";
    } else {
        AppendLevel(report, line8, "Start level = ", levels.StartLevel);
    }
    AppendLevel(report, line8, "Panel Step level = ", levels.StepLevel);
}

/// The entry that is filled is the one of the grouping shown in the window, which may be another mode's.
void NoteFirstOutputs(FirstOutputs& firstOutputs, const ModeRecord& mode, const ReportSelection& selection) {
    for (std::size_t output = 0; output < outputCount; ++output) {
        const std::int16_t group = mode.LinkGroup[output];
        if (group != 0 && Entry(firstOutputs, group) == 0)
            Entry(firstOutputs, selection.LinkGroup[output]) = output + 1;
    }
}

void AppendUsedMode(std::string& report, const ModeRecord& mode, FirstOutputs& firstOutputs) {
    for (std::size_t output = 0; output < outputCount; ++output) {
        const PanelRecord& panels = mode.OutputPanels[output];
        report += line4;
        AppendNumbered(report, "Output ", output + 1);
        AppendInputSequence(report, panels);
        AppendVolumePanels(report, panels.PanelVolumes.Trimmed());
        AppendSelectorPanels(report, panels.PanelSelects.Trimmed(), mode.LinkGroup[output], firstOutputs);
        AppendLevels(report, mode.OutputLevels[output]);
    }
    report += lineEnd;
}

void AppendModes(std::string& report, const MatrixConfig& config, const ReportSelection& selection) {
    // Not cleared between the modes: a group keeps the first output that an earlier mode gave it.
    FirstOutputs firstOutputs = {};
    for (std::size_t m = 0; m < modeCount; ++m) {
        const ModeRecord& mode = config.Modes[m];
        report += lineEnd;
        AppendNumbered(report, "Mode ", m + 1);
        if (!IsUsedMode(mode)) {
            report += " is unused";
            continue;
        }
        NoteFirstOutputs(firstOutputs, mode, selection);
        AppendUsedMode(report, mode, firstOutputs);
    }
}

/// Trims are numbered from 0, unlike everything else in the report.
void AppendTrims(std::string& report, std::string_view title, std::string_view words,
                 std::span<const float> trims) {
    report += lineEnd;
    report += lineEnd;
    report += title;
    for (std::size_t i = 0; i < trims.size(); ++i) {
        report += line4;
        AppendNumbered(report, words, i);
        AppendLevel(report, " = ", "", trims[i]);
    }
}

void AppendNotes(std::string& report, std::string_view notes) {
    report += "\r\n\r\nNotes";
    std::size_t start = 0;
    for (std::size_t end = notes.find(lineEnd); end != notes.npos; end = notes.find(lineEnd, start)) {
        report += line4;
        report += notes.substr(start, end - start);
        start = end + lineEnd.size();
    }
    // The position (from 1) is compared with the length of the report, which is always ahead of it: even an
    // empty rest gets its line. Kept, so that a report equals those made before.
    if (start + 1 != report.size()) {
        report += line4;
        report += notes.substr(start);
    }
}

} // namespace

ReportSelection SelectionOf(const MatrixConfig& config, std::size_t mode, std::size_t output) {
    return {output, config.Modes[CheckedIndex(static_cast<long long>(mode), modeCount)].LinkGroup};
}

std::string BuildReport(const MatrixConfig& config, const PrintingOptions& options,
                        const ReportSelection& selection) {
    std::string report;
    report.reserve(usualLength);
    if (options.IncludeVekNet) {
        report += BuildAddressList(config, selection.CurrentOutput, AddressListOptions());
        report += lineEnd;
    }
    if (options.IncludeRS232)
        AppendRs232Section(report);
    if (options.IncludeOutputs)
        AppendModes(report, config, selection);
    if (options.IncludeInputTrims)
        AppendTrims(report, "Input trims        ", "Input ", config.InputTrim);
    if (options.IncludeOutputTrims)
        AppendTrims(report, "Output trims        ", "Output ", config.OutputTrim);
    if (options.IncludeNotes)
        AppendNotes(report, config.Notes.Padded());
    return report;
}

} // namespace vek
