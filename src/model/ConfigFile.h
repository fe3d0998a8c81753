// Configuration files (*.VMC): one record from offset 0. Whatever follows it is neither read nor removed.
#pragma once

#include "model/Config.h"

#include <string>

namespace vek {

/// Throws FileError (naming the file and the reason) when the file cannot be read or holds no valid record.
MatrixConfig LoadConfig(const std::string& path);

/// The same, and a new configuration where there is no file or it cannot be read.
MatrixConfig LoadConfigOrDefault(const std::string& path);

/// Replaces the record durably; an existing longer file keeps its bytes beyond the record. Throws FileError
/// with the old file as it was.
void SaveConfig(const std::string& path, const MatrixConfig& config);

/// The part of a path after its last separator; the whole path when it holds none.
std::string FileNameOf(const std::string& path);

} // namespace vek
