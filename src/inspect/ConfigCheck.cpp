#include "inspect/ConfigCheck.h"

#include "base/Errors.h"
#include "inspect/FieldTexts.h"
#include "link/DownloadImage.h"
#include "model/Levels.h"
#include "model/Panels.h"
#include "model/VekNetAddresses.h"

#include <algorithm>
#include <span>

namespace vek {

namespace {

/// What can be set in the editor, in dB.
struct Range {
    float Lowest;
    float Highest;
};
constexpr Range levelRange = {levelMinimum, levelMaximum};
constexpr Range stepRange = {stepMinimum, stepMaximum};
constexpr Range trimRange = {trimMinimum, trimMaximum};

class Findings {
  public:
    void Add(Severity severity, const std::string& where, const std::string& text) {
        List.push_back({severity, where + ": " + text});
    }
    std::vector<Finding> List;
};

std::string ModeName(std::size_t mode) { return "Mode " + std::to_string(mode + 1); }

std::string OutputName(std::size_t mode, std::size_t output) {
    return ModeName(mode) + ", Output " + std::to_string(output + 1);
}

void CheckBase(const MatrixConfig& config, Findings& findings) {
    const int last = LastVekNetAddress(config.VekNetBase);
    if (config.VekNetBase < lowestVekNetAddress || last > highestVekNetAddress)
        findings.Add(Severity::Error, "VekNet base address " + std::to_string(config.VekNetBase),
                     "the addresses reach to " + std::to_string(last) + ", they must stay within " +
                         std::to_string(lowestVekNetAddress) + " to " + std::to_string(highestVekNetAddress));
}

void CheckRange(const std::string& where, std::string_view caption, float level, const Range& range,
                Findings& findings) {
    if (level >= range.Lowest && level <= range.Highest)
        return;
    std::string text(caption);
    text += ' ' + ExactLevelText(level) + " is outside " + FormatLevelText(range.Lowest) + " to " +
            FormatLevelText(range.Highest);
    findings.Add(Severity::Error, where, text);
}

void CheckOrder(const std::string& where, const OutputLevelRecord& levels, Findings& findings) {
    const std::string maximum = "the maximum level " + ExactLevelText(levels.MaximumLevel);
    const std::string minimum = "the minimum level " + ExactLevelText(levels.MinimumLevel);
    if (levels.MinimumLevel >= levels.MaximumLevel)
        findings.Add(Severity::Error, where, minimum + " is not below " + maximum);
    const bool above = levels.StartLevel > levels.MaximumLevel;
    if (!above && levels.StartLevel >= levels.MinimumLevel)
        return;
    std::string text = "the start level " + ExactLevelText(levels.StartLevel);
    text += above ? " is above " + maximum : " is below " + minimum;
    const bool used = !IsSet(levels.PreviousNotSetStartLevel);
    findings.Add(used ? Severity::Error : Severity::Warning, where,
                 used ? text : text + " (not used: the output starts at its previous level)");
}

void CheckLevels(const std::string& where, const OutputLevelRecord& levels, Findings& findings) {
    CheckRange(where, "Maximum level", levels.MaximumLevel, levelRange, findings);
    CheckRange(where, "Minimum level", levels.MinimumLevel, levelRange, findings);
    CheckRange(where, "Start level", levels.StartLevel, levelRange, findings);
    CheckRange(where, "Level steps", levels.StepLevel, stepRange, findings);
    CheckOrder(where, levels, findings);
}

void CheckCharacters(const std::string& where, std::string_view caption, std::string_view text,
                     bool (*allowed)(char), std::string_view consequence, Findings& findings) {
    for (const char character : text) {
        if (allowed(character))
            continue;
        std::string message(caption);
        message += " " + QuotedText(text) + ": the device takes " + QuotedText({&character, 1}) + " for ";
        message += consequence;
        findings.Add(Severity::Warning, where, message);
    }
}

void CheckTexts(const std::string& where, const PanelRecord& panels, Findings& findings) {
    CheckCharacters(where, "Input sequence", panels.PanelInputs.Trimmed(), IsInputChar,
                    "no input that it has", findings);
    CheckCharacters(where, "Volume remote panels", panels.PanelVolumes.Trimmed(), IsPanelChar, "panel 1",
                    findings);
    CheckCharacters(where, "Input selector remote panels", panels.PanelSelects.Trimmed(), IsPanelChar,
                    "panel 1", findings);
}

bool HasPanels(const PanelRecord& panels) {
    return !panels.PanelVolumes.Trimmed().empty() || !panels.PanelSelects.Trimmed().empty();
}

/// The first output of the group that the output follows, the output itself when it follows none.
std::size_t Leader(const ModeRecord& mode, std::size_t output) {
    const std::int16_t group = mode.LinkGroup[output];
    return group == 0 ? output : LinkLeader(mode, group);
}

void CheckFollower(const std::string& where, const PanelRecord& panels, std::size_t leader,
                   Findings& findings) {
    if (!panels.PanelSelects.Trimmed().empty())
        findings.Add(Severity::Warning, where,
                     "linked to output " + std::to_string(leader + 1) +
                         ", but has input selector remote panels of its own (" +
                         ListText(panels.PanelSelects.Padded(), panelNumbers) + ")");
}

void CheckInputs(const std::string& where, const PanelRecord& panels, Findings& findings) {
    if (!panels.PanelInputs.Trimmed().empty())
        return;
    if (HasPanels(panels))
        findings.Add(Severity::Warning, where, "has remote panels, but no inputs");
    else
        findings.Add(Severity::Note, where, "has no inputs");
}

std::vector<std::size_t> OutputsOfPanel(const ModeRecord& mode, FixedText<16> PanelRecord::*list,
                                        std::size_t panel) {
    std::vector<std::size_t> outputs;
    for (std::size_t output = 0; output < outputCount; ++output) {
        const std::string_view text = (mode.OutputPanels[output].*list).Trimmed();
        if (std::any_of(text.begin(), text.end(), [=](char c) { return PanelCharToIndex(c) == panel; }))
            outputs.push_back(output);
    }
    return outputs;
}

void CheckSharedPanels(const std::string& where, const ModeRecord& mode, std::string_view caption,
                       FixedText<16> PanelRecord::*list, Findings& findings) {
    for (std::size_t panel = 0; panel < panelCount; ++panel) {
        const auto outputs = OutputsOfPanel(mode, list, panel);
        if (outputs.size() < 2)
            continue;
        std::string text(caption);
        text += ' ';
        text += PanelIndexToChar(panel);
        text += " is given to outputs ";
        for (const std::size_t output : outputs)
            text += (output == outputs.front() ? "" : ", ") + std::to_string(output + 1);
        text += "; it will only work for output " + std::to_string(outputs.back() + 1);
        findings.Add(Severity::Error, where, text);
    }
}

/// A mode without inputs is left out of the device's modes; that matters when something leads to it.
void CheckUnusedMode(const MatrixConfig& config, std::size_t number, Findings& findings) {
    const ModeRecord& mode = config.Modes[number];
    if (std::any_of(mode.OutputPanels.begin(), mode.OutputPanels.end(), HasPanels))
        findings.Add(Severity::Warning, ModeName(number), "has remote panels, but no output has inputs");
    if (IsSet(config.Addresses.ModeAddressEnable[number]))
        findings.Add(Severity::Warning, ModeName(number),
                     "its recall address is enabled, but no output has inputs");
}

void CheckMode(const MatrixConfig& config, std::size_t number, Findings& findings) {
    const ModeRecord& mode = config.Modes[number];
    const bool used = IsUsedMode(mode);
    if (!used)
        CheckUnusedMode(config, number, findings);
    for (std::size_t output = 0; output < outputCount; ++output) {
        const std::string where = OutputName(number, output);
        const PanelRecord& panels = mode.OutputPanels[output];
        const std::size_t leader = Leader(mode, output);
        CheckLevels(where, mode.OutputLevels[output], findings);
        CheckTexts(where, panels, findings);
        if (leader != output)
            CheckFollower(where, panels, leader, findings);
        else if (used)
            CheckInputs(where, panels, findings);
    }
    CheckSharedPanels(ModeName(number), mode, "Volume remote panel", &PanelRecord::PanelVolumes, findings);
    CheckSharedPanels(ModeName(number), mode, "Input selector remote panel", &PanelRecord::PanelSelects,
                      findings);
}

void CheckTrims(std::string_view caption, std::span<const float> trims, Findings& findings) {
    for (std::size_t i = 0; i < trims.size(); ++i) {
        std::string where(caption);
        where += ' ' + std::to_string(i + 1);
        CheckRange(where, "Trim", trims[i], trimRange, findings);
    }
}

void CheckImage(const MatrixConfig& config, Findings& findings) {
    try {
        EncodeImage(config);
    } catch (const RunTimeError& error) {
        findings.Add(Severity::Error, "The download image cannot be built", error.what());
    }
}

} // namespace

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

std::vector<Finding> CheckConfig(const MatrixConfig& config) {
    Findings findings;
    CheckBase(config, findings);
    for (std::size_t mode = 0; mode < modeCount; ++mode)
        CheckMode(config, mode, findings);
    CheckTrims("Input", config.InputTrim, findings);
    CheckTrims("Output", config.OutputTrim, findings);
    CheckImage(config, findings);
    return findings.List;
}

} // namespace vek
