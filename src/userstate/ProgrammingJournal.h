// The programming history: what devices were given, in the user's state folder. No device can be read back.
//
// An attempt is two files of one name: the configuration (.VMC), which any editor opens, and a text about it
// (.json). Without its text a configuration does not count. Any number of programs may write at once.
#pragma once

#include "userstate/JournalEntry.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace vek {

class ProgrammingJournal {
  public:
    /// In a folder of the user's state folder, a path in the system's own bytes; an empty one is nowhere.
    explicit ProgrammingJournal(const std::string& stateFolder);

    /// Enters a new attempt with the record of its configuration, durably. Throws FileError.
    KeptAttempt Enter(const JournalEntry& entry, std::span<const std::byte> record) const;
    /// Replaces the text of an attempt, durably. Throws FileError with the former one as it was.
    void Update(const KeptAttempt& attempt) const;

    /// All that can be read, from the newest. As the next one, throws FileError when there is a folder that
    /// cannot be read.
    std::vector<KeptAttempt> FromNewest() const;
    /// The newest one that ended with a programmed device.
    std::optional<KeptAttempt> LastProgrammed() const;
    /// Differs when anything was entered, updated or removed; costs one look at the folder.
    using Mark = std::pair<std::int64_t, std::int64_t>;
    Mark ChangeMark() const;

    /// Where it is kept, a path in the system's own bytes; empty for nowhere.
    const std::string& Folder() const { return folder_; }

    /// Removes what is older than two years before `now` (seconds since 1970) and the oldest beyond five
    /// thousand, but nothing that is not named as an attempt. Throws FileError as those above.
    void Prune(std::int64_t now) const;

  private:
    /// From the newest by name.
    std::vector<std::string> Names() const;
    std::optional<KeptAttempt> Read(const std::string& name) const;

    std::string folder_;
};

} // namespace vek
