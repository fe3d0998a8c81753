#include "inspect/HexText.h"

#include <charconv>

namespace vek {

namespace {

constexpr int hexadecimal = 16;

} // namespace

std::string HexText(std::span<const std::byte> bytes) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    text.reserve(2 * bytes.size());
    for (const std::byte byte : bytes) {
        text += digits[std::to_integer<std::size_t>(byte >> 4)];
        text += digits[std::to_integer<std::size_t>(byte & std::byte{0x0F})];
    }
    return text;
}

std::optional<std::vector<std::byte>> BytesOfHex(std::string_view text) {
    if (text.size() % 2 != 0)
        return std::nullopt;
    std::vector<std::byte> bytes;
    bytes.reserve(text.size() / 2);
    for (std::size_t at = 0; at < text.size(); at += 2) {
        unsigned value = 0;
        const char* const end = text.data() + at + 2;
        const auto result = std::from_chars(text.data() + at, end, value, hexadecimal);
        if (result.ec != std::errc() || result.ptr != end)
            return std::nullopt;
        bytes.push_back(static_cast<std::byte>(value));
    }
    return bytes;
}

} // namespace vek
