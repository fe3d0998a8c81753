// The new content of a file until it takes the old one's place.
#pragma once

#include "base/CheckedFile.h"
#include "base/Descriptor.h"

#include <string>

namespace vek {

/// A file of its own beside the one that it is for, under a hidden name; removed again unless it took its
/// final place. What killed programs left behind in the folder is removed when one is made. Refers to its
/// arguments.
class TemporaryFile {
  public:
    TemporaryFile(const FileOperations& operations, const std::string& folder, const CheckedFile& checked);
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile();

    /// Gives the file its final name, in place of what had it.
    void Rename(const std::string& target, const CheckedFile& checked);

    Descriptor file;

  private:
    const FileOperations& operations_;
    std::string name_;
};

} // namespace vek
