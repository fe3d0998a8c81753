#include "reports/DeviceExport.h"

#include "base/Numbers.h"

#include <algorithm>
#include <cstdint>

namespace vek {

namespace {

/// | type code | zeros … | highest index, 4 bytes little-endian |
constexpr std::byte matrixVekTypeCode{29};
constexpr std::size_t highestIndexOffset = exportHeaderSize - sizeof(std::int32_t);

} // namespace

std::vector<std::byte> BuildDeviceExport(std::span<const std::byte> image, int highestIndex) {
    CheckedIndex(highestIndex, std::min(image.size(), exportTableSize));
    std::vector<std::byte> bytes(exportSize);
    bytes[0] = matrixVekTypeCode;
    const auto index = static_cast<std::uint32_t>(highestIndex);
    for (std::size_t i = 0; i < sizeof index; ++i)
        bytes[highestIndexOffset + i] = static_cast<std::byte>(index >> (8 * i));
    std::copy_n(image.begin(), highestIndex + 1, bytes.begin() + exportHeaderSize);
    return bytes;
}

} // namespace vek
