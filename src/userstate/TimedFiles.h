// Files of the user's state folder whose names tell when and by which program they were made.
#pragma once

#include "base/Descriptor.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace vek {

struct TimedFile {
    std::string Stem; ///< path without suffix
    Descriptor File;
};

/// A new, empty file for the user alone, "20261122-112405-4711" and the suffix, in a folder that is made when
/// it is missing. No other process gets the same stem with that suffix. Throws FileError.
TimedFile CreateTimedFile(const std::string& folder, const char* suffix);

/// The beginning of the names of files made at that time, seconds since 1970: "20261122-112405", UTC. Texts
/// of different times have the order of the times.
std::string TimeInName(std::int64_t time);

/// True for the name of such a file, without folder and suffix.
bool IsTimedName(std::string_view name);

} // namespace vek
