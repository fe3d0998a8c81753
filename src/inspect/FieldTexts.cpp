#include "inspect/FieldTexts.h"

#include "base/Numbers.h"
#include "base/Windows1252.h"
#include "model/Levels.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>

namespace vek {

namespace {

bool IsControl(char16_t character) { return character < 0x20 || (character >= 0x7F && character < 0xA0); }

char UpperCase(char character) {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
}

void AppendEscaped(std::string& text, unsigned char byte) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    text += "\\x";
    text += digits[byte / 16];
    text += digits[byte % 16];
}

std::string Escaped(std::string_view bytes, std::string_view alsoEscaped) {
    std::string text;
    for (const char byte : bytes) {
        if (IsControl(FromWindows1252(static_cast<unsigned char>(byte)))) {
            AppendEscaped(text, static_cast<unsigned char>(byte));
            continue;
        }
        if (alsoEscaped.find(byte) != std::string_view::npos)
            text += '\\';
        text += Windows1252ToUtf8({&byte, 1});
    }
    return text;
}

} // namespace

std::string ExactLevelText(float level) {
    const auto shown = static_cast<float>(LenientNumber(GeneralNumber(level)));
    if (std::bit_cast<std::uint32_t>(shown) == std::bit_cast<std::uint32_t>(level))
        return FormatLevelText(level);
    std::array<char, 32> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), level).ptr;
    std::string text = level > 0 ? "+" : "";
    text.append(digits.data(), end);
    text += "dB";
    return text;
}

std::string FlagText(Flag flag, std::string_view set, std::string_view notSet) {
    std::string text(IsSet(flag) ? set : notSet);
    if (flag != flagTrue && flag != flagFalse)
        text += " (" + std::to_string(flag) + ")";
    return text;
}

std::string ListText(std::string_view padded, const NumberCharacters& numbers) {
    const std::string_view stored = WithoutPadding(padded);
    std::string entries(stored);
    std::transform(entries.begin(), entries.end(), entries.begin(), UpperCase);
    if (!ListedNumbers(entries, numbers))
        return QuotedText(stored);
    std::string text;
    for (const char entry : entries) {
        if (!text.empty())
            text += ',';
        if (entry == '0')
            text += "OFF";
        else
            text += entry;
    }
    if (entries != stored)
        text += " (" + QuotedText(stored) + ")";
    return text.empty() ? "none" : text;
}

std::string WithCrLf(std::string_view text) {
    std::string lines;
    for (const char character : text) {
        if (character == '\n' && !lines.ends_with('\r'))
            lines += '\r';
        lines += character;
    }
    return lines;
}

std::string LinkGroupText(int group) { return group == 0 ? "none" : std::to_string(group); }

std::string EscapedText(std::string_view bytes) { return Escaped(bytes, "\\"); }

std::string QuotedText(std::string_view bytes) { return '"' + Escaped(bytes, "\\\"") + '"'; }

} // namespace vek
