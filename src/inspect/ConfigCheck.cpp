#include "inspect/ConfigCheck.h"

#include "base/Errors.h"
#include "inspect/OutputCheck.h"
#include "link/DownloadImage.h"
#include "model/Panels.h"
#include "model/VekNetAddresses.h"

#include <algorithm>
#include <numeric>
#include <optional>
#include <span>

namespace vek {

namespace {

constexpr const char* noInputs = "no output has inputs";

void CheckBase(const MatrixConfig& config, Findings& findings) {
    const int last = LastVekNetAddress(config.VekNetBase);
    const bool low = config.VekNetBase < lowestVekNetAddress;
    if (!low && last <= highestVekNetAddress)
        return;
    findings.Add(Severity::Error,
                 {"VekNet base address " + std::to_string(config.VekNetBase), {FieldKind::Base, {}, {}}},
                 (low ? "the addresses begin at " + std::to_string(config.VekNetBase)
                      : "the addresses reach to " + std::to_string(last)) +
                     ", they must stay within " + std::to_string(lowestVekNetAddress) + " to " +
                     std::to_string(highestVekNetAddress));
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

void CheckSharedPanels(const Subject& subject, const ModeRecord& mode, std::string_view caption,
                       FixedText<16> PanelRecord::*list, Findings& findings) {
    for (std::size_t panel = 0; panel < panelCount; ++panel) {
        const auto outputs = OutputsOfPanel(mode, list, panel);
        if (outputs.size() < 2)
            continue;
        std::string text(caption);
        text += ' ';
        text += PanelIndexToChar(panel);
        text += " is given to outputs ";
        for (const std::size_t output : outputs) {
            text += output == outputs.front() ? "" : ", ";
            text += std::to_string(output + 1);
        }
        text += "; it will only work for output " + findings.Numbers.Number(NameKind::Output, outputs.back());
        findings.Add(Severity::Error, subject, text);
    }
}

/// A mode without inputs is left out of the device's modes; that matters when something leads to it.
void CheckUnusedMode(const MatrixConfig& config, std::size_t number, Findings& findings) {
    const ModeRecord& mode = config.Modes[number];
    if (std::any_of(mode.OutputPanels.begin(), mode.OutputPanels.end(), HasPanels))
        findings.Add(Severity::Warning, ModeSubject(findings.Numbers, number, FieldKind::Panels),
                     std::string("has remote panels, but ") + noInputs);
    const std::span recall = config.Addresses.ModeAddressEnable;
    for (const auto& [side, enable] :
         {std::pair("(In)", recall[number]), std::pair("(Out)", recall[modeCount + number])}) {
        if (IsSet(enable))
            findings.Add(Severity::Warning, ModeSubject(findings.Numbers, number, FieldKind::Addresses),
                         std::string("its recall address ") + side + " is enabled, but " + noInputs);
    }
}

void CheckGroups(const ModeRecord& mode, std::size_t number, Findings& findings) {
    for (std::int16_t group = 1; group <= linkGroupCount; ++group) {
        if (std::count(mode.LinkGroup.begin(), mode.LinkGroup.end(), group) == 1)
            findings.Add(Severity::Warning, ModeSubject(findings.Numbers, number, FieldKind::LinkGroups),
                         "link group " + std::to_string(group) + " has no output but " +
                             findings.Numbers.Number(NameKind::Output, LinkLeader(mode, group)));
    }
}

void CheckMode(const MatrixConfig& config, std::size_t number, Findings& findings) {
    const ModeRecord& mode = config.Modes[number];
    if (!IsUsedMode(mode))
        CheckUnusedMode(config, number, findings);
    for (std::size_t output = 0; output < outputCount; ++output)
        CheckOutput(config, number, output, findings);
    CheckGroups(mode, number, findings);
    const Subject panels = ModeSubject(findings.Numbers, number, FieldKind::Panels);
    CheckSharedPanels(panels, mode, "Volume remote panel", &PanelRecord::PanelVolumes, findings);
    CheckSharedPanels(panels, mode, "Input selector remote panel", &PanelRecord::PanelSelects, findings);
}

void CheckTrims(NameKind numbered, FieldKind kind, std::span<const float> trims, Findings& findings) {
    for (std::size_t i = 0; i < trims.size(); ++i) {
        CheckLevel({findings.Numbers.Text(numbered, i), {kind, {}, {}, i}}, "Trim", trims[i], trimRange,
                   findings);
    }
}

/// Why no image can be built, nothing when one can.
std::optional<std::string> ImageFault(const MatrixConfig& config) {
    try {
        EncodeImage(config);
        return std::nullopt;
    } catch (const RunTimeError& error) {
        return std::string("the download image cannot be built: ") + error.what();
    }
}

/// The build stops at the first value that it cannot take; here each output is tried by itself.
void CheckImage(const MatrixConfig& config, Findings& findings) {
    const auto fault = ImageFault(config);
    if (!fault)
        return;
    bool located = false;
    for (std::size_t mode = 0; mode < modeCount; ++mode) {
        for (std::size_t output = 0; output < outputCount; ++output) {
            MatrixConfig alone;
            alone.Modes[0].OutputLevels[0] = config.Modes[mode].OutputLevels[output];
            const auto own = ImageFault(alone);
            if (own)
                findings.Add(Severity::Error,
                             OutputSubject(findings.Numbers, mode, output, FieldKind::Levels), *own);
            located = located || own;
        }
    }
    if (!located)
        findings.Add(Severity::Error, {"Link groups", {FieldKind::LinkGroups, {}, {}}}, *fault);
}

} // namespace

std::vector<Finding> CheckConfig(const StoredConfig& stored) {
    const MatrixConfig& config = stored.Config;
    Findings findings(config);
    CheckBase(config, findings);
    if (std::none_of(config.Modes.begin(), config.Modes.end(), IsUsedMode))
        findings.Add(Severity::Warning, {"No mode is in use", {FieldKind::Panels, {}, {}}},
                     std::string(noInputs) + " in any mode");
    for (std::size_t mode = 0; mode < modeCount; ++mode)
        CheckMode(config, mode, findings);
    CheckTrims(NameKind::Input, FieldKind::InputTrims, config.InputTrim, findings);
    CheckTrims(NameKind::Output, FieldKind::OutputTrims, config.OutputTrim, findings);
    CheckImage(config, findings);
    if (!stored.Tail.empty())
        findings.Add(Severity::Note, {"Data after the record", {FieldKind::Tail, {}, {}}},
                     std::to_string(stored.Tail.size()) + " bytes, which stay in the file and are not used");
    return findings.List;
}

std::vector<FileFinding> CheckTogether(const std::vector<NamedUnit>& units) {
    // By address, so that each has to be compared with the one before only: all are equally long.
    std::vector<std::size_t> order(units.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return units[a].VekNetBase < units[b].VekNetBase; });
    const auto range = [](const NamedUnit& unit) {
        return std::to_string(unit.VekNetBase) + " to " + std::to_string(LastVekNetAddress(unit.VekNetBase));
    };
    std::vector<FileFinding> findings;
    for (std::size_t i = 1; i < order.size(); ++i) {
        const NamedUnit& before = units[order[i - 1]];
        const NamedUnit& unit = units[order[i]];
        if (unit.VekNetBase <= LastVekNetAddress(before.VekNetBase))
            findings.push_back({unit.Name,
                                {Severity::Warning,
                                 "VekNet addresses " + range(unit) + " overlap those of " + before.Name +
                                     " (" + range(before) + ")",
                                 {FieldKind::Base, {}, {}}}});
    }
    return findings;
}

} // namespace vek
