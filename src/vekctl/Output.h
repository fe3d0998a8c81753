// Where a command puts what it makes.
#pragma once

#include "base/DurableFile.h"

#include <cstddef>
#include <span>
#include <string>

namespace vek {

/// Writes to standard output when the path is "-", otherwise durably to the file: all of it or nothing.
/// Throws FileError.
void WriteOutput(const std::string& path, std::span<const std::byte> bytes,
                 ExistingTail tail = ExistingTail::Drop);

} // namespace vek
