// The bytes that a simulated device still has to send, and when.
#pragma once

#include "simulator/Faults.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace vek {

/// Reads no clock: the owner passes the time in.
class ReplySchedule {
  public:
    /// Adds a reply. With a byte time its bytes arrive one by one, each that long after the one before, as on
    /// a real line; with none they arrive together.
    void Add(const Delivery& delivery, DeviceTime now, std::chrono::nanoseconds byteTime);

    /// The bytes that are due; senseless ones without end while a flood lasts.
    std::span<const std::uint8_t> Due(DeviceTime now);
    /// Removes the first `count` bytes of those due.
    void Sent(std::size_t count);

    /// True while some of the bytes given by Due() are unsent, or a flood lasts.
    bool Sending() const { return !due_.empty() || floodEnd_; }
    /// When bytes become due next; nothing while none are waiting.
    std::optional<DeviceTime> NextTime() const;

  private:
    struct TimedByte {
        DeviceTime Time;
        std::uint8_t Byte;
    };

    std::vector<TimedByte> waiting_; ///< by time
    std::vector<std::uint8_t> due_;
    std::optional<DeviceTime> floodEnd_;
};

} // namespace vek
