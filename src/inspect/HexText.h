// Bytes as pairs of hexadecimal digits.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vek {

std::string HexText(std::span<const std::byte> bytes);

/// Digits in either case; nothing for any other character or half a pair.
std::optional<std::vector<std::byte>> BytesOfHex(std::string_view text);

} // namespace vek
