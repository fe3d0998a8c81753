#include "platform/JsonRegistryStore.h"

#include "base/Bytes.h"
#include "base/DurableFile.h"
#include "base/Errors.h"

#include <QStandardPaths>

#include <cstdlib>
#include <filesystem>
#include <limits>
#include <span>
#include <unistd.h>

namespace vek {

namespace fs = std::filesystem;
using nlohmann::json;

namespace {

constexpr const char* machineFolder = "/etc/xdg/vorn-matrix-editor";
constexpr const char* userFolder = "vorn-matrix-editor";
constexpr const char* fileName = "registry.json";
constexpr std::size_t largestFile = std::size_t{1024} * 1024;
constexpr int deepestKey = 32;

/// The first step of a key's path; removed from it.
std::string TakeStep(std::string_view& key) {
    const std::size_t separator = key.find('\\');
    std::string step(key.substr(0, separator));
    key = separator == std::string_view::npos ? std::string_view() : key.substr(separator + 1);
    return step;
}

/// True when the file, or the nearest folder above it that exists, can be written.
bool MayWrite(const fs::path& path) {
    std::error_code error;
    fs::path existing = path;
    while (!existing.empty() && !fs::exists(existing, error))
        existing = existing.parent_path();
    return ::access(existing.c_str(), W_OK) == 0;
}

/// Gives a broken file a name under which nothing is lost; false when that fails.
bool SetAside(const std::string& path) {
    std::error_code error;
    for (int number = 1; number < std::numeric_limits<int>::max(); ++number) {
        const std::string aside = path + ".broken-" + std::to_string(number);
        if (fs::exists(fs::symlink_status(aside, error)))
            continue;
        fs::rename(path, aside, error);
        return !error;
    }
    return false;
}

/// The JSON object that a file's bytes are; another kind of value when they are none, too many or too deep.
json ParseJson(std::span<const std::byte> bytes) {
    if (bytes.size() > largestFile)
        return {};
    const auto* text = reinterpret_cast<const char*>(bytes.data());
    bool tooDeep = false;
    const auto bounded = [&tooDeep](int depth, json::parse_event_t, const json&) {
        tooDeep = tooDeep || depth > deepestKey;
        return !tooDeep; // what is refused is not kept
    };
    json content = json::parse(text, text + bytes.size(), bounded, false);
    return tooDeep ? json() : content;
}

} // namespace

JsonRegistryStore::JsonRegistryStore(std::string path, const std::string& inherited)
    : path_(std::move(path)) {
    std::error_code error;
    const bool own = fs::exists(path_, error);
    if (!own && !fs::exists(inherited, error))
        return;
    try {
        json content = ParseJson(ReadRegularFile(own ? path_ : inherited, largestFile + 1));
        if (content.is_object())
            root_ = std::move(content);
        else if (own)
            writable_ = SetAside(path_);
    } catch (const FileError&) {
        writable_ = !own;
    }
}

JsonRegistryStore JsonRegistryStore::OfThisMachine() {
    if (const char* named = std::getenv("VEK_STORE"); named != nullptr && *named != '\0')
        return JsonRegistryStore(named);
    const fs::path machineWide = fs::path(machineFolder) / fileName;
    if (MayWrite(machineWide))
        return JsonRegistryStore(machineWide);
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return JsonRegistryStore(fs::path(folder.toStdString()) / userFolder / fileName, machineWide);
}

const json* JsonRegistryStore::FindKey(std::string_view key) const {
    const json* found = &root_;
    while (!key.empty()) {
        const auto next = found->find(TakeStep(key));
        if (next == found->end() || !next->is_object())
            return nullptr;
        found = &*next;
    }
    return found;
}

bool JsonRegistryStore::KeyExists(std::string_view key) const { return FindKey(key) != nullptr; }

void JsonRegistryStore::CreateKey(std::string_view key) {
    if (KeyExists(key))
        return;
    json* place = &root_;
    while (!key.empty()) {
        place = &(*place)[TakeStep(key)];
        if (!place->is_object())
            *place = json::object();
    }
    changed_ = true;
}

std::vector<std::string> JsonRegistryStore::SubkeyNames(std::string_view key) const {
    std::vector<std::string> names;
    if (const json* found = FindKey(key))
        for (const auto& [name, value] : found->items())
            if (value.is_object())
                names.push_back(name);
    return names;
}

std::optional<RegistryValue> JsonRegistryStore::Query(std::string_view key, std::string_view name) const {
    const json* found = FindKey(key);
    if (found == nullptr)
        return std::nullopt;
    const auto value = found->find(std::string(name));
    if (value == found->end())
        return std::nullopt;
    if (value->is_string())
        return value->get<std::string>();
    if (value->is_number_unsigned() && *value <= std::numeric_limits<std::uint32_t>::max())
        return value->get<std::uint32_t>();
    return std::nullopt;
}

void JsonRegistryStore::Set(std::string_view key, std::string_view name, RegistryValue value) {
    if (!KeyExists(key))
        return;
    json* place = &root_;
    while (!key.empty())
        place = &(*place)[TakeStep(key)];
    json& stored = (*place)[std::string(name)];
    json content = std::visit([](const auto& held) { return json(held); }, value);
    changed_ = changed_ || stored != content;
    stored = std::move(content);
}

void JsonRegistryStore::Flush() {
    if (!changed_ || !writable_)
        return;
    // Texts that came from elsewhere may not be UTF-8; the file always is.
    const std::string text = root_.dump(4, ' ', false, json::error_handler_t::replace) + '\n';
    try {
        if (!ParseJson(AsBytes(text)).is_object())
            throw FileError(path_ + ": too large or too deep to be read again");
        std::error_code error;
        fs::create_directories(fs::path(path_).parent_path(), error);
        WriteFileDurably(path_, AsBytes(text), ExistingTail::Drop);
        changed_ = false;
    } catch (const FileError&) {
        writable_ = false;
    }
}

} // namespace vek
