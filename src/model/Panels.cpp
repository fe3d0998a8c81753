#include "model/Panels.h"

#include "base/Numbers.h"

#include <algorithm>
#include <string_view>

namespace vek {

namespace {

constexpr std::string_view panelCharacters = "123456789ABCDEFG";
static_assert(panelCharacters.size() == panelCount);

std::size_t FindPanel(char character) {
    const bool lowerCase = character >= 'a' && character <= 'z';
    return panelCharacters.find(lowerCase ? static_cast<char>(character - 'a' + 'A') : character);
}

} // namespace

std::size_t PanelCharToIndex(char character) {
    const std::size_t index = FindPanel(character);
    return index == std::string_view::npos ? 0 : index;
}

char PanelIndexToChar(std::size_t index) {
    return panelCharacters[CheckedIndex(static_cast<int>(index), panelCount)];
}

bool IsPanelChar(char character) { return FindPanel(character) != std::string_view::npos; }

std::string FormatLevelText(float level) {
    std::string text = level > 0 ? "+" : "";
    text += GeneralNumber(level);
    text += "dB";
    return text;
}

std::optional<std::size_t> OutputUsingPanel(const ModeRecord& mode, PanelList list, std::size_t panel,
                                            std::size_t output) {
    for (std::size_t other = 0; other < outputCount; ++other) {
        const PanelRecord& panels = mode.OutputPanels[other];
        const std::string_view text =
            list == PanelList::Volumes ? panels.PanelVolumes.Trimmed() : panels.PanelSelects.Trimmed();
        const bool uses =
            std::any_of(text.begin(), text.end(), [panel](char c) { return PanelCharToIndex(c) == panel; });
        if (other != output && uses)
            return other;
    }
    return std::nullopt;
}

} // namespace vek
