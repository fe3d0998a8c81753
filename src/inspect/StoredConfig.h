// All that a configuration file holds.
#pragma once

#include "model/Config.h"

#include <cstddef>
#include <string>
#include <vector>

namespace vek {

/// The record and whatever bytes follow it, which the editor neither reads nor removes.
struct StoredConfig {
    MatrixConfig Config;
    std::vector<std::byte> Tail;
};

/// Throws FileError as LoadConfig does, and for a file of more than 64 MiB.
StoredConfig LoadStoredConfig(const std::string& path);

/// The bytes of the file.
std::vector<std::byte> EncodeStoredConfig(const StoredConfig& stored);

} // namespace vek
