// Where a command puts what it makes.
#pragma once

#include "base/DurableFile.h"
#include "base/Errors.h"
#include "console/Input.h"

#include <cstddef>
#include <span>
#include <string>

namespace vek {

/// Standard output is broken: no use in going on with other files.
class OutputError : public FileError {
  public:
    using FileError::FileError;
};

/// Writes to standard output when the path is "-", otherwise durably to the file: all of it or nothing.
/// Throws FileError, OutputError for standard output.
void WriteOutput(const std::string& path, std::span<const std::byte> bytes,
                 ExistingTail tail = ExistingTail::Drop);

} // namespace vek
