// All that a configuration file holds.
#pragma once

#include "model/Config.h"

#include <cstddef>
#include <span>
#include <vector>

namespace vek {

/// The record and whatever bytes follow it, which the editor neither reads nor removes.
struct StoredConfig {
    MatrixConfig Config;
    std::vector<std::byte> Tail;
};

/// Longer files are refused.
inline constexpr std::size_t largestStoredFile = std::size_t{64} * 1024 * 1024;

/// All that the bytes of a file hold. Throws FileError as DecodeRecord does, and for more than
/// largestStoredFile.
StoredConfig DecodeStoredConfig(std::span<const std::byte> bytes);

/// The bytes of the file.
std::vector<std::byte> EncodeStoredConfig(const StoredConfig& stored);

} // namespace vek
