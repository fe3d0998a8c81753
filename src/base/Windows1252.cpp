#include "base/Windows1252.h"

#include <array>

namespace vek {

namespace {

constexpr std::array<char16_t, 32> highControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr char32_t notACharacter = 0xFFFFFFFF;

/// Takes one UTF-8 character from the front of the text. notACharacter when it is malformed: all of an
/// overlong form is taken then, of anything else one byte.
char32_t TakeUtf8(std::string_view& text) {
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t length = lead < 0x80           ? 1
                               : (lead >> 5) == 0x06 ? 2
                               : (lead >> 4) == 0x0E ? 3
                               : (lead >> 3) == 0x1E ? 4
                                                     : 0;
    if (length == 0 || length > text.size()) {
        text.remove_prefix(1);
        return notACharacter;
    }
    char32_t value = length == 1 ? lead : lead & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[i]);
        if ((next & 0xC0) != 0x80) {
            text.remove_prefix(1);
            return notACharacter;
        }
        value = (value << 6) | (next & 0x3FU);
    }
    constexpr std::array<char32_t, 5> smallest = {0, 0, 0x80, 0x800, 0x10000};
    text.remove_prefix(length);
    return value < smallest[length] ? notACharacter : value;
}

void AppendUtf8(std::string& text, char16_t character) {
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += static_cast<char>(0xC0 | (character >> 6));
        text += static_cast<char>(0x80 | (character & 0x3F));
    } else {
        text += static_cast<char>(0xE0 | (character >> 12));
        text += static_cast<char>(0x80 | ((character >> 6) & 0x3F));
        text += static_cast<char>(0x80 | (character & 0x3F));
    }
}

} // namespace

char16_t FromWindows1252(unsigned char byte) {
    return byte >= 0x80 && byte < 0xA0 ? highControls[byte - 0x80U] : char16_t{byte};
}

std::optional<unsigned char> ToWindows1252(char32_t character) {
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF))
        return static_cast<unsigned char>(character);
    for (std::size_t i = 0; i < highControls.size(); ++i) {
        if (highControls[i] == character)
            return static_cast<unsigned char>(0x80 + i);
    }
    return std::nullopt;
}

std::string Windows1252ToUtf8(std::string_view bytes) {
    std::string utf8;
    utf8.reserve(bytes.size());
    for (const char byte : bytes)
        AppendUtf8(utf8, FromWindows1252(static_cast<unsigned char>(byte)));
    return utf8;
}

std::string Utf8ToWindows1252(std::string_view utf8) {
    std::string bytes;
    bytes.reserve(utf8.size());
    while (!utf8.empty())
        bytes += static_cast<char>(ToWindows1252(TakeUtf8(utf8)).value_or('?'));
    return bytes;
}

std::optional<std::string> ExactUtf8ToWindows1252(std::string_view utf8) {
    std::string bytes;
    bytes.reserve(utf8.size());
    while (!utf8.empty()) {
        const auto byte = ToWindows1252(TakeUtf8(utf8));
        if (!byte)
            return std::nullopt;
        bytes += static_cast<char>(*byte);
    }
    return bytes;
}

} // namespace vek
