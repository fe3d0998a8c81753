#include "model/Panels.h"

#include "base/Numbers.h"

namespace vek {

namespace {

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

} // namespace vek
