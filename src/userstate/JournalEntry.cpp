#include "userstate/JournalEntry.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <limits>
#include <nlohmann/json.hpp>
#include <utility>
#include <variant>

namespace vek {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::pair<AttemptResult, std::string_view> resultNames[] = {
    {AttemptResult::Unfinished, "unfinished"},        {AttemptResult::Programmed, "programmed"},
    {AttemptResult::PortNotOpen, "port not open"},    {AttemptResult::NoAnswer, "no device answered"},
    {AttemptResult::OtherDevice, "not a Matrix Vek"}, {AttemptResult::BlockNotAnswered, "block not answered"},
    {AttemptResult::BlockRefused, "block refused"},   {AttemptResult::RestartFailed, "restart failed"},
    {AttemptResult::Cancelled, "cancelled"},          {AttemptResult::Ended, "ended with the program"},
};

constexpr const char* timeName = "time";
constexpr const char* resultName = "result";
constexpr const char* copyName = "copy";

struct Member {
    const char* Name;
    std::variant<std::string JournalEntry::*, int JournalEntry::*> What;
};

/// In the order of the text, behind time and result.
constexpr Member members[] = {
    {"file", &JournalEntry::File},
    {"port", &JournalEntry::Port},
    {"adapterSerialNumber", &JournalEntry::AdapterSerialNumber},
    {"deviceName", &JournalEntry::DeviceName},
    {"deviceCode", &JournalEntry::DeviceCode},
    {"deviceVersion", &JournalEntry::DeviceVersion},
    {"blocks", &JournalEntry::Blocks},
    {"blocksAcknowledged", &JournalEntry::BlocksAcknowledged},
    {"retries", &JournalEntry::Retries},
    {"milliseconds", &JournalEntry::Milliseconds},
    {"imageSha256", &JournalEntry::ImageDigest},
    {"host", &JournalEntry::Host},
    {"user", &JournalEntry::User},
};

constexpr const char* localFormat = "%Y-%m-%dT%H:%M:%S";
constexpr const char* zonedFormat = "%Y-%m-%dT%H:%M:%S%z";
constexpr int secondsPerMinute = 60;

std::string LocalTime(const JournalEntry& entry, const char* format) {
    const auto seconds = static_cast<std::time_t>(entry.Time + entry.ZoneOffset);
    std::tm parts = {};
    ::gmtime_r(&seconds, &parts);
    char text[64];
    return {text, std::strftime(text, sizeof text, format, &parts)};
}

bool ReadTime(const Json& value, JournalEntry& entry) {
    if (!value.is_string())
        return false;
    const auto& text = value.get_ref<const std::string&>();
    std::tm parts = {};
    const char* end = ::strptime(text.c_str(), zonedFormat, &parts);
    if (end != text.c_str() + text.size())
        return false;
    entry.ZoneOffset = static_cast<int>(parts.tm_gmtoff);
    entry.Time = ::timegm(&parts) - entry.ZoneOffset;
    // A day that does not exist would come out as another one.
    return JournalTime(entry) == text;
}

bool ReadResult(const Json& value, JournalEntry& entry) {
    const auto* known = std::ranges::find_if(
        resultNames, [&](const auto& result) { return value.is_string() && value == result.second; });
    if (known == std::end(resultNames))
        return false;
    entry.Result = known->first;
    return true;
}

bool Read(const Json& value, std::string& text) {
    if (!value.is_string())
        return false;
    text = value.get<std::string>();
    return true;
}

bool Read(const Json& value, int& number) {
    constexpr std::uint64_t most = std::numeric_limits<int>::max();
    if (!value.is_number_unsigned() || value.get<std::uint64_t>() > most)
        return false;
    number = value.get<int>();
    return true;
}

Json ToJson(const JournalEntry& entry) {
    Json object = {{timeName, JournalTime(entry)}, {resultName, ResultName(entry.Result)}};
    for (const Member& member : members)
        std::visit([&](auto what) { object[member.Name] = entry.*what; }, member.What);
    return object;
}

std::string Text(const Json& json) {
    constexpr int indent = 2;
    return json.dump(indent, ' ', false, Json::error_handler_t::replace) + '\n';
}

using Columns = std::array<std::string, 8>;

/// Names of files and devices may hold anything.
std::string OneLine(std::string text) {
    std::ranges::replace_if(
        text, [](char character) { return static_cast<unsigned char>(character) < ' '; }, '?');
    return text;
}

std::string Seconds(int milliseconds) {
    char text[32];
    std::snprintf(text, sizeof text, "%.1f s", milliseconds / 1000.0);
    return text;
}

Columns ColumnsOf(const JournalEntry& entry) {
    const std::string blocks = std::to_string(entry.Blocks);
    const bool all = entry.BlocksAcknowledged == entry.Blocks;
    const std::string name = entry.File.substr(entry.File.rfind('/') + 1);
    return {LocalTime(entry, "%Y-%m-%d %H:%M:%S"),
            std::string(ResultName(entry.Result)),
            name.empty() ? "not named" : OneLine(name),
            OneLine(entry.Port),
            entry.DeviceName.empty() ? "-" : OneLine(entry.DeviceName) + ' ' + entry.DeviceVersion,
            (all ? blocks : std::to_string(entry.BlocksAcknowledged) + " of " + blocks) + " blocks",
            std::to_string(entry.Retries) + (entry.Retries == 1 ? " retry" : " retries"),
            Seconds(entry.Milliseconds)};
}

/// Of characters of UTF-8.
std::size_t Width(std::string_view text) {
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char byte) { return (byte & 0xC0) != 0x80; }));
}

} // namespace

std::string_view ResultName(AttemptResult result) {
    return std::ranges::find(resultNames, result, &std::pair<AttemptResult, std::string_view>::first)->second;
}

std::string JournalTime(const JournalEntry& entry) {
    const int minutes = std::abs(entry.ZoneOffset) / secondsPerMinute;
    char zone[16];
    std::snprintf(zone, sizeof zone, "%c%02d:%02d", entry.ZoneOffset < 0 ? '-' : '+', minutes / 60 % 100,
                  minutes % 60);
    return LocalTime(entry, localFormat) + zone;
}

std::string EncodeJournalEntry(const JournalEntry& entry) { return Text(ToJson(entry)); }

std::string EncodeJournal(const std::vector<KeptAttempt>& attempts) {
    Json array = Json::array();
    for (const KeptAttempt& attempt : attempts) {
        array.push_back(ToJson(attempt.Entry));
        array.back()[copyName] = attempt.ConfigPath();
    }
    return Text(array);
}

std::optional<JournalEntry> DecodeJournalEntry(std::string_view text) {
    const Json object = Json::parse(text, nullptr, false);
    JournalEntry entry;
    if (!object.is_object() || !ReadTime(object.value(timeName, Json()), entry) ||
        !ReadResult(object.value(resultName, Json()), entry))
        return std::nullopt;
    for (const Member& member : members) {
        const auto found = object.find(member.Name);
        if (found != object.end() &&
            !std::visit([&](auto what) { return Read(*found, entry.*what); }, member.What))
            return std::nullopt;
    }
    return entry;
}

std::vector<std::string> JournalLines(const std::vector<KeptAttempt>& attempts) {
    std::vector<Columns> rows(attempts.size());
    std::ranges::transform(attempts, rows.begin(), ColumnsOf, &KeptAttempt::Entry);
    std::array<std::size_t, std::tuple_size_v<Columns>> widths = {};
    for (const Columns& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], Width(row[i]));
    }
    std::vector<std::string> lines;
    for (const Columns& row : rows) {
        std::string line;
        for (std::size_t i = 0; i + 1 < row.size(); ++i)
            line += row[i] + std::string(widths[i] - Width(row[i]) + 2, ' ');
        lines.push_back(line + row.back());
    }
    return lines;
}

} // namespace vek
