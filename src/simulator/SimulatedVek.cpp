#include "simulator/SimulatedVek.h"

#include "simulator/Promptness.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <poll.h>
#include <sys/eventfd.h>
#include <system_error>
#include <utility>

namespace vek {

namespace {

/// | start bit | eight data bits | parity or first stop bit | stop bit |
constexpr int bitsPerByte = 11;

std::chrono::nanoseconds ByteTime(int baud) {
    return std::chrono::nanoseconds(std::chrono::seconds(bitsPerByte)) / std::max(baud, 1);
}

timespec TimeUntil(DeviceTime next) {
    const auto left = std::max(next - std::chrono::steady_clock::now(), std::chrono::nanoseconds::zero());
    return {left / std::chrono::seconds(1), (left % std::chrono::seconds(1)).count()};
}

} // namespace

SimulatedVek::SimulatedVek(SimulatedVekOptions given)
    : options(std::move(given)), stopEvent(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)), device(options.Device),
      faults(options.Faults) {
    if (!stopEvent.Open())
        throw std::system_error(errno, std::generic_category(), "making a simulated device");
}

void SimulatedVek::Run(int stopDescriptor) {
    AskForPromptness();
    while (!hungUp) {
        const auto next = replies.NextTime();
        std::array<pollfd, 3> watched = {{
            {line.Handle(), static_cast<short>(replies.Sending() ? POLLIN | POLLOUT : POLLIN), 0},
            {stopEvent.Get(), POLLIN, 0},
            {stopDescriptor, POLLIN, 0},
        }};
        const timespec timeout = next ? TimeUntil(*next) : timespec{};
        if (::ppoll(watched.data(), watched.size(), next ? &timeout : nullptr, nullptr) < 0 && errno != EINTR)
            throw std::system_error(errno, std::generic_category(), "waiting for the line");
        if (watched[1].revents != 0 || watched[2].revents != 0)
            return;
        const auto now = std::chrono::steady_clock::now();
        if ((watched[0].revents & POLLIN) != 0)
            Receive(now);
        Send(now);
    }
}

void SimulatedVek::Receive(DeviceTime now) {
    // The settings are those of the bytes only when both are read promptly: senders change them 10 ms later.
    const auto bytes = line.Read();
    const LineSettings settings = line.Settings();
    for (const std::uint8_t byte : bytes)
        for (const DeviceEvent& event : device.Receive(byte, settings, now))
            React(event, settings.Baud, now);
}

void SimulatedVek::React(const DeviceEvent& event, int baud, DeviceTime now) {
    const Delivery delivery = faults.DeliveryOf(event);
    replies.Add(delivery, now, options.Paced ? ByteTime(baud) : std::chrono::nanoseconds::zero());
    if (delivery.HangUp) {
        line.HangUp();
        hungUp = true;
    }
    {
        const std::lock_guard lock(mutex);
        events.push_back(event);
        image = device.Image();
    }
    changed.notify_all();
    if (options.OnEvent)
        options.OnEvent(event, delivery.Note);
    if (event.Kind == DeviceEventKind::Programmed && options.OnProgrammed)
        options.OnProgrammed(*device.Image());
}

void SimulatedVek::Send(DeviceTime now) {
    if (hungUp)
        return;
    const auto due = replies.Due(now);
    if (!due.empty())
        replies.Sent(line.Write(due));
}

void SimulatedVek::Stop() { ::eventfd_write(stopEvent.Get(), 1); }

std::vector<DeviceEvent> SimulatedVek::Events() const {
    const std::lock_guard lock(mutex);
    return events;
}

bool SimulatedVek::WaitForEvents(DeviceEventKind kind, int count, std::chrono::milliseconds timeout) const {
    std::unique_lock lock(mutex);
    return changed.wait_for(lock, timeout, [&] {
        return std::count_if(events.begin(), events.end(),
                             [&](const DeviceEvent& event) { return event.Kind == kind; }) >= count;
    });
}

std::optional<DeviceImage> SimulatedVek::Image() const {
    const std::lock_guard lock(mutex);
    return image;
}

} // namespace vek
