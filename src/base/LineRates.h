// What a serial line makes of bytes when its two ends run at different rates.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace vek {

/// Bytes sent one after the other at one rate (baud, above 0), as a receiver at another rate takes them: with
/// a start bit, eight data bits and two stop bits, and each bit read in its middle. A receiver takes
/// a byte whatever its stop bit is.
std::vector<std::uint8_t> MisreadBytes(std::span<const std::uint8_t> bytes, int sentBaud, int readBaud);

} // namespace vek
