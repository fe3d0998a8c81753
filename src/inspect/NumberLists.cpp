#include "inspect/NumberLists.h"

namespace vek {

std::string_view WithoutPadding(std::string_view padded) {
    return padded.substr(0, padded.find_last_not_of(' ') + 1);
}

std::optional<std::vector<int>> ListedNumbers(std::string_view padded, const NumberCharacters& numbers) {
    std::vector<int> listed;
    for (const char character : WithoutPadding(padded)) {
        const std::size_t index = numbers.Characters.find(character);
        if (index == std::string_view::npos)
            return std::nullopt;
        listed.push_back(numbers.First + static_cast<int>(index));
    }
    return listed;
}

char NumberCharacter(int number, const NumberCharacters& numbers) {
    return numbers.Characters.at(static_cast<std::size_t>(number - numbers.First));
}

} // namespace vek
