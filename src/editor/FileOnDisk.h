// The file of the configuration as it lies on the disk, where other programs write, too.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vek {

/// Knows what the program left in a file or read from it, and finds out when something else is there.
class FileOnDisk {
  public:
    /// The configuration has no file.
    void Forget() { *this = {}; }
    /// The file was just read or written here and held a record with this digest. `named` tells whether SAVE
    /// writes there.
    void Follow(const std::string& path, bool named, std::uint64_t digest);

    /// Absolute, in the system's own bytes; empty for a new configuration.
    const std::string& Path() const { return path_; }
    bool Named() const { return named_; }
    /// Of what was read or written here; nothing for a new configuration.
    std::optional<std::uint64_t> SavedDigest() const { return saved_; }

    /// True while the file holds another record than the one that was read, written or accepted last. Looks
    /// into the file only when its status tells of a change.
    bool Changed();
    /// When it was changed, in seconds since 1970.
    std::int64_t ChangeTime() const { return status_.Seconds; }
    /// What it holds now is known from here on.
    void Accept();
    /// What the file at `path` holds when that is this file and another program wrote it.
    std::optional<std::vector<std::byte>> OtherVersion(const std::string& path) const;

  private:
    struct Status {
        std::uint64_t Device = 0;
        std::uint64_t Node = 0;
        std::int64_t Size = 0;
        std::int64_t Seconds = 0;
        std::int64_t Nanoseconds = 0;
        bool operator==(const Status&) const = default;
    };

    std::optional<Status> StatusNow() const;

    std::string path_;
    bool named_ = false;
    std::optional<std::uint64_t> saved_;
    std::optional<std::uint64_t> known_;
    Status status_;
    bool changed_ = false;
};

} // namespace vek
