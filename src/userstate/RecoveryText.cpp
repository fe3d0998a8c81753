#include "userstate/RecoveryText.h"

#include "userstate/PathText.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <ctime>

namespace vek {

namespace {

constexpr std::string_view title = "Recovery copy of the Vorn Matrix Editor";
constexpr std::string_view separator = ": ";
constexpr const char* timeFormat = "%Y-%m-%dT%H:%M:%SZ";
constexpr std::string_view unsavedChanges = "unsaved changes";
constexpr std::string_view otherVersion = "another program's version";
constexpr int hexadecimal = 16;

template <typename Number>
bool ReadHex(std::string_view text, Number& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, hexadecimal);
    return error == std::errc() && end == text.data() + text.size();
}

std::string TimeText(std::int64_t time) {
    const auto seconds = static_cast<std::time_t>(time);
    std::tm parts = {};
    ::gmtime_r(&seconds, &parts);
    char text[32];
    return {text, std::strftime(text, sizeof text, timeFormat, &parts)};
}

bool ReadTime(std::string_view text, std::int64_t& time) {
    std::tm parts = {};
    const std::string terminated(text);
    const char* end = ::strptime(terminated.c_str(), timeFormat, &parts);
    if (end != terminated.c_str() + terminated.size())
        return false;
    time = ::timegm(&parts);
    // A day that does not exist would come out as another one.
    return time >= 0 && TimeText(time) == text;
}

template <typename Value>
bool ReadChoice(std::string_view text, Value& value, std::string_view first, Value firstValue,
                std::string_view second, Value secondValue) {
    value = text == first ? firstValue : secondValue;
    return text == first || text == second;
}

struct Line {
    std::string_view Key;
    std::string (*Write)(const RecoveryOrigin& origin);
    bool (*Read)(std::string_view value, RecoveryOrigin& origin);
};

constexpr Line lines[] = {
    {"Kind",
     [](const RecoveryOrigin& origin) {
         return std::string(origin.Kind == RecoveryKind::UnsavedChanges ? unsavedChanges : otherVersion);
     },
     [](std::string_view value, RecoveryOrigin& origin) {
         return ReadChoice(value, origin.Kind, unsavedChanges, RecoveryKind::UnsavedChanges, otherVersion,
                           RecoveryKind::OtherVersion);
     }},
    {"File", [](const RecoveryOrigin& origin) { return EscapedPath(origin.File); },
     [](std::string_view value, RecoveryOrigin& origin) {
         const auto path = UnescapedPath(value);
         origin.File = path.value_or("");
         return path.has_value();
     }},
    {"Named", [](const RecoveryOrigin& origin) { return std::string(origin.Named ? "yes" : "no"); },
     [](std::string_view value, RecoveryOrigin& origin) {
         return ReadChoice(value, origin.Named, "yes", true, "no", false);
     }},
    {"Time", [](const RecoveryOrigin& origin) { return TimeText(origin.Time); },
     [](std::string_view value, RecoveryOrigin& origin) { return ReadTime(value, origin.Time); }},
    {"Saved digest",
     [](const RecoveryOrigin& origin) {
         char text[2 * sizeof(std::uint64_t) + 1] = "";
         if (origin.SavedDigest)
             std::snprintf(text, sizeof text, "%016llx",
                           static_cast<unsigned long long>(*origin.SavedDigest));
         return std::string(text);
     },
     [](std::string_view value, RecoveryOrigin& origin) {
         std::uint64_t digest = 0;
         const bool given = !value.empty();
         if (given && !ReadHex(value, digest))
             return false;
         origin.SavedDigest = given ? std::optional(digest) : std::nullopt;
         return true;
     }},
};

bool ReadLine(std::string_view line, RecoveryOrigin& origin) {
    for (const Line& known : lines) {
        if (line.starts_with(known.Key) && line.substr(known.Key.size()).starts_with(separator))
            return known.Read(line.substr(known.Key.size() + separator.size()), origin);
    }
    return true;
}

} // namespace

std::string EncodeRecoveryText(const RecoveryOrigin& origin) {
    std::string text(title);
    text += '\n';
    for (const Line& line : lines) {
        (text += line.Key) += separator;
        (text += line.Write(origin)) += '\n';
    }
    return text;
}

std::optional<RecoveryOrigin> DecodeRecoveryText(std::string_view text) {
    const auto takeLine = [&text] {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        return line;
    };
    if (takeLine() != title)
        return std::nullopt;
    RecoveryOrigin origin;
    while (!text.empty()) {
        if (!ReadLine(takeLine(), origin))
            return std::nullopt;
    }
    return origin;
}

std::uint64_t RecordDigest(std::span<const std::byte> record) {
    // FNV-1a
    std::uint64_t digest = 0xCBF29CE484222325;
    for (const std::byte byte : record)
        digest = (digest ^ std::to_integer<std::uint64_t>(byte)) * 0x100000001B3;
    return digest;
}

} // namespace vek
