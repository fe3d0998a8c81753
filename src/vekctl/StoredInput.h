// Reading all that a configuration file holds.
#pragma once

#include "inspect/StoredConfig.h"

#include <string>

namespace vek {

/// From a file, a pipe or, for "-", standard input. Throws FileError, naming the input.
StoredConfig LoadStoredInput(const std::string& path);

} // namespace vek
