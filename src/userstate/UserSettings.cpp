#include "userstate/UserSettings.h"

#include "base/Bytes.h"
#include "base/DurableFile.h"
#include "base/Errors.h"
#include "userstate/PathText.h"

#include <algorithm>
#include <filesystem>

namespace vek {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view recentFile = "RecentFile";
constexpr std::string_view lastFolder = "LastFolder";
constexpr std::string_view windowGeometry = "WindowGeometry";
constexpr std::string_view safeLevels = "SafeLevels";
constexpr std::string_view yes = "yes";
constexpr std::string_view no = "no";
constexpr std::size_t longestFile = std::size_t{64} * 1024;

} // namespace

UserSettings::Lines UserSettings::Read() const {
    Lines lines;
    if (path_.empty())
        return lines;
    try {
        const auto bytes = ReadRegularFile(path_, longestFile + 1);
        if (bytes.size() > longestFile)
            return lines;
        std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
        while (!text.empty()) {
            const std::string_view line = text.substr(0, text.find('\n'));
            text.remove_prefix(std::min(line.size() + 1, text.size()));
            if (const auto separator = line.find('='); separator != std::string_view::npos)
                lines.push_back(
                    {std::string(line.substr(0, separator)), std::string(line.substr(separator + 1))});
        }
    } catch (const FileError&) {
        // There is none yet, or none that can be read.
    }
    return lines;
}

template <typename Change>
void UserSettings::Edit(Change change) const {
    const Lines before = Read();
    Lines lines = before;
    change(lines);
    if (path_.empty() || lines == before)
        return;
    std::string text;
    for (const Line& line : lines)
        ((text += line.Key) += '=') += line.Value + '\n';
    std::error_code ignored;
    fs::create_directories(fs::path(path_).parent_path(), ignored);
    try {
        WriteFileDurably(path_, AsBytes(text), ExistingTail::Drop);
    } catch (const FileError&) {
        // The next start begins as the last one did.
    }
}

std::vector<std::string> UserSettings::Paths(const Lines& lines, std::string_view key) {
    std::vector<std::string> paths;
    for (const Line& line : lines) {
        const auto path = line.Key == key ? UnescapedPath(line.Value) : std::nullopt;
        if (path && path->starts_with('/') && std::ranges::find(paths, *path) == paths.end())
            paths.push_back(*path);
    }
    return paths;
}

void UserSettings::SetPaths(Lines& lines, std::string_view key, const std::vector<std::string>& paths) {
    std::vector<std::string> values(paths.size());
    std::ranges::transform(paths, values.begin(), EscapedPath);
    SetValues(lines, key, values);
}

void UserSettings::SetValues(Lines& lines, std::string_view key, const std::vector<std::string>& values) {
    const auto place = std::ranges::find(lines, key, &Line::Key) - lines.begin();
    std::erase_if(lines, [key](const Line& line) { return line.Key == key; });
    Lines added;
    for (const std::string& value : values)
        added.push_back({std::string(key), value});
    lines.insert(lines.begin() + place, added.begin(), added.end());
}

std::vector<std::string> UserSettings::RecentFiles() const {
    auto files = Paths(Read(), recentFile);
    files.resize(std::min(files.size(), mostRecentFiles));
    return files;
}

std::string UserSettings::LastFolder() const {
    const auto folders = Paths(Read(), lastFolder);
    return folders.empty() ? std::string() : folders.front();
}

void UserSettings::FileUsed(const std::string& path) {
    std::error_code error;
    const std::string whole = fs::absolute(path, error).lexically_normal().string();
    if (error)
        return;
    Edit([&](Lines& lines) {
        auto files = Paths(lines, recentFile);
        std::erase(files, whole);
        files.insert(files.begin(), whole);
        files.resize(std::min(files.size(), mostRecentFiles));
        SetPaths(lines, recentFile, files);
        SetPaths(lines, lastFolder, {fs::path(whole).parent_path().string()});
    });
}

void UserSettings::ForgetFile(const std::string& path) {
    Edit([&](Lines& lines) {
        auto files = Paths(lines, recentFile);
        std::erase(files, path);
        SetPaths(lines, recentFile, files);
    });
}

void UserSettings::ForgetFiles() {
    Edit([](Lines& lines) { SetPaths(lines, recentFile, {}); });
}

std::string UserSettings::Value(std::string_view key) const {
    const Lines lines = Read();
    const auto line = std::ranges::find(lines, key, &Line::Key);
    return line == lines.end() ? std::string() : line->Value;
}

std::string UserSettings::Geometry() const { return Value(windowGeometry); }

void UserSettings::SetGeometry(const std::string& geometry) {
    Edit([&](Lines& lines) { SetValues(lines, windowGeometry, {geometry}); });
}

bool UserSettings::SafeLevels() const { return Value(safeLevels) == yes; }

void UserSettings::SetSafeLevels(bool safe) {
    Edit([&](Lines& lines) { SetValues(lines, safeLevels, {std::string(safe ? yes : no)}); });
}

} // namespace vek
