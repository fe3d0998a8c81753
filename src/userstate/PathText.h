// Paths in lines of text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vek {

/// A path in the system's own bytes on one line: control characters and "%" become "%" and two hexadecimal
/// digits.
std::string EscapedPath(std::string_view path);

/// The path; nothing when a "%" is not followed by two hexadecimal digits.
std::optional<std::string> UnescapedPath(std::string_view text);

} // namespace vek
