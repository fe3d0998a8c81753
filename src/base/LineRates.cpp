#include "base/LineRates.h"

#include <cstddef>

namespace vek {

namespace {

constexpr std::int64_t dataBits = 8;
constexpr std::int64_t bitsPerByte = 1 + dataBits + 2;

/// The line, from the first start bit on; it rests high.
bool LevelAt(std::span<const std::uint8_t> bytes, std::int64_t bit) {
    const std::int64_t place = bit % bitsPerByte - 1;
    const auto byte = static_cast<std::size_t>(bit / bitsPerByte);
    if (byte >= bytes.size() || place >= dataBits)
        return true;
    return place >= 0 && (bytes[byte] >> place & 1) != 0;
}

} // namespace

std::vector<std::uint8_t> MisreadBytes(std::span<const std::uint8_t> bytes, int sentBaud, int readBaud) {
    // In a unit of time that makes a bit of the sender and half a bit of the receiver whole numbers.
    const std::int64_t sentBit = 2 * std::int64_t{readBaud};
    const std::int64_t halfBit = sentBaud;
    const std::int64_t end = static_cast<std::int64_t>(bytes.size()) * bitsPerByte * sentBit;
    std::vector<std::uint8_t> read;
    for (std::int64_t time = 0; time < end;) {
        if (LevelAt(bytes, time / sentBit)) {
            time = (time / sentBit + 1) * sentBit;
            continue;
        }
        unsigned byte = 0;
        for (int bit = 0; bit < dataBits; ++bit) {
            const bool high = LevelAt(bytes, (time + halfBit * (3 + 2 * bit)) / sentBit);
            byte |= (high ? 1U : 0U) << bit;
        }
        read.push_back(static_cast<std::uint8_t>(byte));
        // A stop bit that is low passes for the next start bit.
        const bool stopped = LevelAt(bytes, (time + halfBit * (3 + 2 * dataBits)) / sentBit);
        time += halfBit * (2 + 2 * dataBits + (stopped ? 1 : 0));
    }
    return read;
}

} // namespace vek
