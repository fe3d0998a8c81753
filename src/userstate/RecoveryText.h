// What a recovery copy is a copy of, as a small text beside it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vek {

enum class RecoveryKind {
    UnsavedChanges, ///< of an editor that ended with them
    OtherVersion    ///< what another program had made of a file before it was saved here
};

struct RecoveryOrigin {
    RecoveryKind Kind = RecoveryKind::UnsavedChanges;
    std::string File = {}; ///< path in the system's own bytes; empty for a configuration never saved
    bool Named = true;     ///< SAVE writes to File; otherwise it was only read from there
    std::int64_t Time = 0; ///< seconds since 1970, UTC, years 1970 … 9999
    /// Digest of the record that the file held when it was last opened or saved here.
    std::optional<std::uint64_t> SavedDigest = {};

    bool operator==(const RecoveryOrigin&) const = default;
};

/// Lines "Key: value" after a title line. Bytes that would not stay a line are written as %XX.
std::string EncodeRecoveryText(const RecoveryOrigin& origin);

/// Lines with unknown keys are passed over, missing ones leave the default. Nothing for a text with another
/// title or a line that cannot be read.
std::optional<RecoveryOrigin> DecodeRecoveryText(std::string_view text);

/// Tells two records apart; not meant to withstand somebody who wants them to agree.
std::uint64_t RecordDigest(std::span<const std::byte> record);

} // namespace vek
