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
        floodEnd_ = now + delivery.Flood;
    DeviceTime time = now + delivery.Delay;
    for (const std::uint8_t byte : delivery.Bytes) {
        time += byteTime;
        const auto place =
            std::upper_bound(waiting_.begin(), waiting_.end(), time,
                             [](DeviceTime wanted, const TimedByte& other) { return wanted < other.Time; });
        waiting_.insert(place, {time, byte});
    }
}

std::span<const std::uint8_t> ReplySchedule::Due(DeviceTime now) {
    if (floodEnd_ && now >= *floodEnd_) {
        floodEnd_.reset();
        due_.clear(); // no line keeps what it did not take
    }
    const auto later = std::find_if(waiting_.begin(), waiting_.end(),
                                    [&](const TimedByte& byte) { return byte.Time > now; });
    std::transform(waiting_.begin(), later, std::back_inserter(due_),
                   [](const TimedByte& byte) { return byte.Byte; });
    waiting_.erase(waiting_.begin(), later);
    if (floodEnd_ && due_.size() < floodChunk)
        due_.resize(floodChunk, floodByte);
    return due_;
}

void ReplySchedule::Sent(std::size_t count) {
    due_.erase(due_.begin(), due_.begin() + static_cast<std::ptrdiff_t>(count));
}

std::optional<DeviceTime> ReplySchedule::NextTime() const {
    if (waiting_.empty())
        return std::nullopt;
    return waiting_.front().Time;
}

} // namespace vek
