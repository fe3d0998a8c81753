// What the editor remembers for the user from one start to the next.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vek {

inline constexpr std::size_t mostRecentFiles = 10;

/// A small text file, "Key=value" on each line. It is read whenever something is asked for, and read and
/// replaced durably whenever something changes, so that editors side by side lose nothing to each other. What
/// cannot be read counts as not there, keys of other versions stay, and what cannot be written is not
/// remembered; nothing fails. Paths are absolute, in the system's own bytes.
class UserSettings {
  public:
    /// The path of the file, whose folder is made when it is needed; empty for nowhere.
    explicit UserSettings(std::string path) : path_(std::move(path)) {}

    /// The files that were opened or saved last, at most `mostRecentFiles`, the last one first.
    std::vector<std::string> RecentFiles() const;
    /// Where the last of them was; also when it is no longer among them.
    std::string LastFolder() const;
    /// A file has been opened or saved.
    void FileUsed(const std::string& path);
    void ForgetFile(const std::string& path);
    void ForgetFiles();

    /// Where the window was, in hexadecimal digits.
    std::string Geometry() const;
    void SetGeometry(const std::string& geometry);

    /// Whether online levels are kept safe; not to begin with.
    bool SafeLevels() const;
    void SetSafeLevels(bool safe);

  private:
    struct Line {
        std::string Key;
        std::string Value;
        bool operator==(const Line&) const = default;
    };
    using Lines = std::vector<Line>;

    static std::vector<std::string> Paths(const Lines& lines, std::string_view key);
    static void SetPaths(Lines& lines, std::string_view key, const std::vector<std::string>& paths);
    /// All lines of that key give way to these, at the place of the first.
    static void SetValues(Lines& lines, std::string_view key, const std::vector<std::string>& values);
    Lines Read() const;
    /// Of the first line with that key; empty without one.
    std::string Value(std::string_view key) const;
    template <typename Change>
    void Edit(Change change) const;

    std::string path_;
};

} // namespace vek
