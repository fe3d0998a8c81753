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

/// True for "-" and the device files of standard output.
bool IsStandardOutput(const std::string& path);

/// Throws FileError when the output would end in the file that is read, by whatever names and links.
void RefuseOwnInput(const std::string& output, const std::string& input);

/// Writes to standard output or durably to the file: all of it or nothing. Throws FileError, OutputError for
/// standard output; ends the command with status 1, without a word, when nobody reads standard output any
/// more.
void WriteOutput(const std::string& path, std::span<const std::byte> bytes,
                 ExistingTail tail = ExistingTail::Drop);

} // namespace vek
