// Windows-1252, the code page of every fixed text. The five bytes that the code page leaves undefined (0x81,
// 0x8D, 0x8F, 0x90, 0x9D) stand for the control characters of the same number, so that every byte survives a
// round trip.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vek {

char16_t FromWindows1252(unsigned char byte);

/// The byte of a character, nothing when the code page lacks it.
std::optional<unsigned char> ToWindows1252(char32_t character);

std::string Windows1252ToUtf8(std::string_view bytes);

/// Characters outside the code page, and bytes that are not UTF-8, become "?".
std::string Utf8ToWindows1252(std::string_view utf8);

/// As above, but nothing when a character has no byte or the text is not valid UTF-8.
std::optional<std::string> ExactUtf8ToWindows1252(std::string_view utf8);

} // namespace vek
