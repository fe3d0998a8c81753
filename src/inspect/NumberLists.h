// The lists of inputs and panels, which the configuration keeps as texts of one character per entry.
#pragma once

#include "model/Panels.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vek {

/// Which character stands for which number.
struct NumberCharacters {
    std::string_view Characters; ///< in ascending order of their numbers
    int First;                   ///< number of the first character

    int Last() const { return First + static_cast<int>(Characters.size()) - 1; }
};

/// Inputs 1 … 8, 0 for off.
inline constexpr NumberCharacters inputNumbers = {inputCharacters, 0};
/// Remote panels 1 … 16.
inline constexpr NumberCharacters panelNumbers = {panelCharacters, 1};

/// The text without the blanks that pad it on the right.
std::string_view WithoutPadding(std::string_view padded);

/// The numbers of a padded text, nothing when it holds anything but their characters and the padding: small
/// letters, blanks in between and the like.
std::optional<std::vector<int>> ListedNumbers(std::string_view padded, const NumberCharacters& numbers);

/// The character of a number within First … Last.
char NumberCharacter(int number, const NumberCharacters& numbers);

} // namespace vek
