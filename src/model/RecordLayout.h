// The configuration as 6238 bytes: little-endian, no header, no padding, fields in the order of Visit().
#pragma once

#include "model/Config.h"

#include <cstddef>
#include <span>

namespace vek {

inline constexpr std::size_t integerSize = 2;
inline constexpr std::size_t singleSize = 4;
/// | maximum | start | minimum | mute | step | previous |
inline constexpr std::size_t levelRecordSize = 4 * singleSize + 2 * integerSize;
/// | inputs | volume panels | select panels | previous route |
inline constexpr std::size_t panelRecordSize = 9 + 16 + 16 + integerSize;
inline constexpr std::size_t modeRecordSize = outputCount * (levelRecordSize + panelRecordSize + integerSize);
inline constexpr std::size_t recordSize =
    integerSize + modeCount * modeRecordSize + (inputCount + outputCount) * singleSize + notesLength +
    integerSize * (modeFunctionCount +
                   outputCount * (volumeFunctionCount + routeControlFunctionCount + routeFunctionCount));
static_assert(recordSize == 6238);

using RecordBytes = std::array<std::byte, recordSize>;

RecordBytes EncodeRecord(const MatrixConfig& config);

/// Reads one record; bytes beyond the record are ignored. Throws FileError for fewer than 6238 bytes, a link
/// group outside 0 … 4, or a level or trim that is not a finite number.
MatrixConfig DecodeRecord(std::span<const std::byte> bytes);

} // namespace vek
