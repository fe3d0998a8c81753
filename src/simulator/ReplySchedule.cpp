#include "simulator/ReplySchedule.h"

#include <algorithm>
#include <iterator>

namespace vek {

namespace {

constexpr std::size_t floodChunk = 4096;
constexpr std::uint8_t floodByte = 0xAA;

} // namespace

void ReplySchedule::Add(const Delivery& delivery, DeviceTime now, std::chrono::nanoseconds byteTime) {
    if (delivery.Flood.count() > 0)
        floodEnd = now + delivery.Flood;
    DeviceTime time = now + delivery.Delay;
    for (const std::uint8_t byte : delivery.Bytes) {
        time += byteTime;
        const auto place =
            std::upper_bound(waiting.begin(), waiting.end(), time,
                             [](DeviceTime wanted, const TimedByte& other) { return wanted < other.Time; });
        waiting.insert(place, {time, byte});
    }
}

std::span<const std::uint8_t> ReplySchedule::Due(DeviceTime now) {
    const auto later =
        std::find_if(waiting.begin(), waiting.end(), [&](const TimedByte& byte) { return byte.Time > now; });
    std::transform(waiting.begin(), later, std::back_inserter(due),
                   [](const TimedByte& byte) { return byte.Byte; });
    waiting.erase(waiting.begin(), later);
    if (floodEnd && now >= *floodEnd)
        floodEnd.reset();
    if (floodEnd && due.size() < floodChunk)
        due.resize(floodChunk, floodByte);
    return due;
}

void ReplySchedule::Sent(std::size_t count) {
    due.erase(due.begin(), due.begin() + static_cast<std::ptrdiff_t>(count));
}

std::optional<DeviceTime> ReplySchedule::NextTime() const {
    if (waiting.empty())
        return std::nullopt;
    return waiting.front().Time;
}

} // namespace vek
