// The recovery copies: configurations kept in the user's state folder until they are in a file of his.
//
// A copy is three files of one name: the configuration (.VMC), what it is a copy of (.txt), and a lock
// (.lock), which is held for as long as somebody works with it. Locks end with their process, so the copies
// without a holder are those of editors that have ended.
#pragma once

#include "base/Descriptor.h"
#include "userstate/RecoveryText.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace vek {

/// One copy, or the place for one, held by this object alone.
class RecoveryCopy {
  public:
    /// A new place in the folder, which is made when it is missing. Throws FileError.
    static RecoveryCopy Create(const std::string& folder);

    RecoveryCopy(RecoveryCopy&&) noexcept = default;
    RecoveryCopy& operator=(RecoveryCopy&&) = delete;
    /// Lets go of the copy, which others may take then; a place without one is removed.
    ~RecoveryCopy();

    /// Puts a record there, durably and as a whole, in place of an earlier one. Throws FileError with the
    /// earlier one as it was.
    void Write(std::span<const std::byte> record, const RecoveryOrigin& origin) const;
    /// The copy is not needed any more.
    void Remove() const;

    /// The file with the configuration; nothing need be there yet.
    std::string Path() const;
    /// What the text tells; where there is none that can be read, the file's own time.
    RecoveryOrigin Origin() const;

  private:
    friend class RecoveryFolder;
    RecoveryCopy(std::string stem, Descriptor lock) : stem_(std::move(stem)), lock_(std::move(lock)) {}

    std::string stem_; ///< path without suffix
    Descriptor lock_;  ///< not open when moved from
};

class RecoveryFolder {
  public:
    explicit RecoveryFolder(std::string path) : path_(std::move(path)) {}

    /// The newest copy that nobody holds.
    std::optional<RecoveryCopy> TakeNewest() const;

    /// Removes the oldest copies beyond twenty, but none that is held or younger than a month before `now`
    /// (seconds since 1970), and what is left of removed ones.
    void Prune(std::int64_t now) const;

  private:
    std::optional<RecoveryCopy> Take(const std::string& stem) const;
    std::vector<std::string> Stems(const char* suffix) const;
    std::vector<std::string> CopiesFromNewest() const;

    std::string path_;
};

} // namespace vek
