// Texts of a fixed number of single-byte characters (Windows-1252), padded with blanks on the right.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace vek {

/// The text without blanks (0x20 only) at either end.
constexpr std::string_view TrimBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// Exactly N characters. Longer values are cut when assigned, shorter ones padded with blanks.
template <std::size_t N>
class FixedText {
  public:
    static constexpr std::size_t Length = N;

    FixedText() { characters_.fill(' '); }
    FixedText(std::string_view text) { *this = text; }

    FixedText& operator=(std::string_view text) {
        const std::size_t used = std::min(text.size(), N);
        // The text may be a view of this object's own characters.
        std::copy_n(std::string(text.substr(0, used)).begin(), used, characters_.begin());
        std::fill(characters_.begin() + used, characters_.end(), ' ');
        return *this;
    }

    /// All N characters, padding included.
    std::string_view Padded() const { return {characters_.data(), N}; }
    /// The text that readers use: without the blanks at either end.
    std::string_view Trimmed() const { return TrimBlanks(Padded()); }

    bool operator==(const FixedText&) const = default;

  private:
    std::array<char, N> characters_;
};

} // namespace vek
