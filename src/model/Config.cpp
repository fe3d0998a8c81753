#include "model/Config.h"

#include <algorithm>
#include <string>

namespace vek {

bool IsBlankMode(const ModeRecord& mode) {
    for (std::size_t output = 0; output < outputCount; ++output) {
        const OutputLevelRecord& levels = mode.OutputLevels[output];
        const PanelRecord& panels = mode.OutputPanels[output];
        OutputLevelRecord blankLevels;
        blankLevels.MuteOnMin = IsSet(levels.MuteOnMin) ? levels.MuteOnMin : flagTrue;
        if (mode.LinkGroup[output] != 0 || !panels.PanelSelects.Trimmed().empty() ||
            !panels.PanelVolumes.Trimmed().empty() || !panels.PanelInputs.Trimmed().empty() ||
            IsSet(panels.UsePreviousRoute) || levels != blankLevels)
            return false;
    }
    return true;
}

ModeRecord DefaultMode() {
    ModeRecord mode;
    for (std::size_t output = 0; output < outputCount; ++output) {
        const std::string number = std::to_string(output + 1);
        mode.OutputPanels[output].PanelInputs = inputCharacters;
        mode.OutputPanels[output].PanelVolumes = number;
        mode.OutputPanels[output].PanelSelects = number;
    }
    return mode;
}

bool IsUsedMode(const ModeRecord& mode) {
    return std::any_of(mode.OutputPanels.begin(), mode.OutputPanels.end(),
                       [](const PanelRecord& panels) { return !panels.PanelInputs.Trimmed().empty(); });
}

std::size_t LinkLeader(const ModeRecord& mode, std::int16_t group) {
    return static_cast<std::size_t>(std::find(mode.LinkGroup.begin(), mode.LinkGroup.end(), group) -
                                    mode.LinkGroup.begin());
}

bool IsFollower(const ModeRecord& mode, std::size_t output) {
    const std::int16_t group = mode.LinkGroup[output];
    return group != 0 && LinkLeader(mode, group) != output;
}

bool DifferInFollowersOnly(const MatrixConfig& a, const MatrixConfig& b) {
    MatrixConfig alike = a;
    for (std::size_t mode = 0; mode < modeCount; ++mode) {
        for (std::size_t output = 0; output < outputCount; ++output) {
            if (!IsFollower(b.Modes[mode], output))
                continue;
            PanelRecord& panels = alike.Modes[mode].OutputPanels[output];
            const PanelRecord& others = b.Modes[mode].OutputPanels[output];
            panels.PanelInputs = others.PanelInputs;
            panels.PanelSelects = others.PanelSelects;
            panels.UsePreviousRoute = others.UsePreviousRoute;
        }
    }
    return alike == b;
}

std::optional<std::size_t> OutputUsingPanel(const ModeRecord& mode, NumberList list, std::size_t panel,
                                            std::size_t output) {
    for (std::size_t other = 0; other < outputCount; ++other) {
        const PanelRecord& panels = mode.OutputPanels[other];
        const bool volumes = list == NumberList::VolumePanels;
        // A follower's selector panels have given way to its leader's.
        if (!volumes && IsFollower(mode, other))
            continue;
        const std::string_view text = volumes ? panels.PanelVolumes.Trimmed() : panels.PanelSelects.Trimmed();
        const bool uses =
            std::any_of(text.begin(), text.end(), [panel](char c) { return PanelCharToIndex(c) == panel; });
        if (other != output && uses)
            return other;
    }
    return std::nullopt;
}

} // namespace vek
