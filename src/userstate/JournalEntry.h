// What the programming history tells of one attempt to program a device, and the text that it is kept as.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vek {

/// How an attempt ended. Kept by name; the order is free.
enum class AttemptResult {
    Unfinished, ///< goes on, or its program did not come to its end
    Programmed,
    PortNotOpen,
    NoAnswer,
    OtherDevice, ///< what answers is no Matrix Vek, and was sent nothing
    BlockNotAnswered,
    BlockRefused,
    RestartFailed, ///< the device has the whole image
    Cancelled,
    Ended, ///< the program had to end, and restarted the device
};

/// "programmed", "no device answered": one of a fixed list, for people and programs.
std::string_view ResultName(AttemptResult result);

struct JournalEntry {
    std::int64_t Time = 0; ///< when it began, seconds since 1970
    int ZoneOffset = 0;    ///< of the local time then, seconds east of Greenwich
    std::string File = {}; ///< path of the configuration; empty for one without a file
    std::string Port = {}; ///< as the user reads it: "COM1 (ttyUSB0)"
    std::string AdapterSerialNumber = {};
    std::string DeviceName = {}; ///< of what answered, empty as long as nothing has
    int DeviceCode = 0;          ///< the first byte of its answer to the search
    std::string DeviceVersion = {};
    AttemptResult Result = AttemptResult::Unfinished;
    int Blocks = 0; ///< of the image
    int BlocksAcknowledged = 0;
    int Retries = 0;              ///< blocks that were sent once more
    int Milliseconds = 0;         ///< that the attempt took
    std::string ImageDigest = {}; ///< SHA-256 of the image's bytes, hexadecimal
    std::string Host = {};
    std::string User = {};

    bool operator==(const JournalEntry&) const = default;
};

/// An entry with the files that it is kept in.
struct KeptAttempt {
    JournalEntry Entry;
    std::string Stem; ///< path without suffix, in the system's own bytes

    static constexpr const char* RecordSuffix = ".VMC";
    static constexpr const char* TextSuffix = ".json";
    std::string ConfigPath() const { return Stem + RecordSuffix; }
    std::string TextPath() const { return Stem + TextSuffix; }
};

/// A JSON object with a line for each member, UTF-8. Bytes that are no UTF-8 are replaced.
std::string EncodeJournalEntry(const JournalEntry& entry);
/// Nothing for a text that is no such object, or without the time or a known result. Other members may be
/// missing.
std::optional<JournalEntry> DecodeJournalEntry(std::string_view text);
/// All of them as one JSON array; each tells the path of its configuration besides.
std::string EncodeJournal(const std::vector<KeptAttempt>& attempts);

/// A line for each: time, result, file, port, device, blocks, retries and seconds, below each other.
std::vector<std::string> JournalLines(const std::vector<KeptAttempt>& attempts);
/// "2026-11-22T11:24:05+01:00"
std::string JournalTime(const JournalEntry& entry);

} // namespace vek
