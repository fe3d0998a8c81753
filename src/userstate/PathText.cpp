#include "userstate/PathText.h"

#include <charconv>
#include <cstdio>

namespace vek {

namespace {

constexpr int hexadecimal = 16;
constexpr std::size_t escapeLength = 3;

} // namespace

std::string EscapedPath(std::string_view path) {
    std::string text;
    for (const char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= ' ' && c != '%' && c != '\x7F') {
            text += c;
            continue;
        }
        char escape[escapeLength + 1];
        std::snprintf(escape, sizeof escape, "%%%02X", static_cast<unsigned>(byte));
        text += escape;
    }
    return text;
}

std::optional<std::string> UnescapedPath(std::string_view text) {
    std::string path;
    while (!text.empty()) {
        if (text.front() != '%') {
            path += text.front();
            text.remove_prefix(1);
            continue;
        }
        unsigned char byte = 0;
        const std::string_view escape = text.substr(0, escapeLength);
        const char* const last = escape.data() + escape.size();
        const auto [end, error] = std::from_chars(escape.data() + 1, last, byte, hexadecimal);
        if (escape.size() < escapeLength || error != std::errc() || end != last)
            return std::nullopt;
        path += static_cast<char>(byte);
        text.remove_prefix(escapeLength);
    }
    return path;
}

} // namespace vek
