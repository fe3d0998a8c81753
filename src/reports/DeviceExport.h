// The device export file (*.VEX): the download image in the form that the device's other tools take.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace vek {

inline constexpr std::size_t exportHeaderSize = 268;
inline constexpr std::size_t exportTableSize = 8192;
/// | header | image table | second table |
inline constexpr std::size_t exportSize = exportHeaderSize + 2 * exportTableSize;

/// The file's bytes. The image's bytes 0 … highestIndex are used; what lies beyond them stays zero. Throws
/// SubscriptError when highestIndex is outside the image or the table. The file is meant to be written over
/// the start of an existing one (ExistingTail::Keep).
std::vector<std::byte> BuildDeviceExport(std::span<const std::byte> image, int highestIndex);

} // namespace vek
