// The characters that stand for inputs and remote panels in the texts of a configuration.
#pragma once

#include <cstddef>
#include <string_view>

namespace vek {

/// Off, then inputs 1 … 8.
inline constexpr std::string_view inputCharacters = "012345678";
/// Remote panels 1 … 16.
inline constexpr std::string_view panelCharacters = "123456789ABCDEFG";
inline constexpr std::size_t panelCount = panelCharacters.size();

/// The three texts of an output that list numbers.
enum class NumberList {
    VolumePanels = 0,   ///< remote panels that control the output's volume
    InputSequence = 1,  ///< inputs "1" to "8" and "0" for off, in the user's order
    SelectorPanels = 2, ///< remote panels that select the output's input
};

/// Panel index 0 … 15 of a panel character ("1" – "9", then "A" – "G" in either case); any other character is
/// 0.
std::size_t PanelCharToIndex(char character);

/// The panel character of an index 0 … 15.
char PanelIndexToChar(std::size_t index);

/// True for the 16 panel characters, letters in either case.
bool IsPanelChar(char character);

/// True for "0" … "8".
constexpr bool IsInputChar(char character) {
    return inputCharacters.find(character) != std::string_view::npos;
}

} // namespace vek
