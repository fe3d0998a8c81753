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

constexpr std::uint8_t chatterBytes[] = {'O', 'K', '\r', '\n'};

std::chrono::nanoseconds ByteTime(int baud) {
    return std::chrono::nanoseconds(std::chrono::seconds(bitsPerByte)) / std::max(baud, 1);
}

timespec TimeUntil(DeviceTime next) {
    const auto left = std::max(next - std::chrono::steady_clock::now(), std::chrono::nanoseconds::zero());
    return {left / std::chrono::seconds(1), (left % std::chrono::seconds(1)).count()};
}

} // namespace

SimulatedVek::SimulatedVek(SimulatedVekOptions options)
    : options_(std::move(options)), stopEvent_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      device_(options_.Device), faults_(options_.Faults), chatter_(faults_.Chatter()) {
    if (!stopEvent_.Open())
        throw std::system_error(errno, std::generic_category(), "making a simulated device");
}

void SimulatedVek::Run(int stopDescriptor) {
    AskForPromptness();
    while (!hungUp_) {
        const auto next = NextTime();
        std::array<pollfd, 3> watched = {{
            {line_.Handle(), static_cast<short>(replies_.Sending() ? POLLIN | POLLOUT : POLLIN), 0},
            {stopEvent_.Get(), POLLIN, 0},
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
        Chatter(now);
        Send(now);
    }
}

std::optional<DeviceTime> SimulatedVek::NextTime() const {
    const auto next = replies_.NextTime();
    return chatter_ ? std::min(next.value_or(nextChatter_), nextChatter_) : next;
}

void SimulatedVek::Chatter(DeviceTime now) {
    if (!chatter_ || now < nextChatter_)
        return;
    nextChatter_ = now + *chatter_;
    // When nobody reads, no line keeps what it did not take.
    if (!replies_.Sending())
        replies_.Add({.Bytes = {std::begin(chatterBytes), std::end(chatterBytes)}}, now, {});
}

void SimulatedVek::Receive(DeviceTime now) {
    // The settings are those of the bytes only when both are read promptly: senders change them 10 ms later.
    const auto bytes = line_.Read();
    const LineSettings settings = line_.Settings();
    for (const std::uint8_t byte : bytes)
        for (const DeviceEvent& event : device_.Receive(byte, settings, now))
            React(event, settings.Baud, now);
}

void SimulatedVek::React(const DeviceEvent& event, int baud, DeviceTime now) {
    const Delivery delivery = faults_.DeliveryOf(event);
    replies_.Add(delivery, now, options_.Paced ? ByteTime(baud) : std::chrono::nanoseconds::zero());
    if (event.Kind == DeviceEventKind::Search && delivery.Bytes != event.Reply)
        device_.SearchAnswerSpoilt();
    if (delivery.HangUp) {
        line_.HangUp();
        hungUp_ = true;
    }
    {
        const std::lock_guard lock(mutex_);
        events_.push_back(event);
        image_ = device_.Image();
    }
    changed_.notify_all();
    if (options_.OnEvent)
        options_.OnEvent(event, delivery.Note);
    if (event.Kind == DeviceEventKind::Programmed && options_.OnProgrammed)
        options_.OnProgrammed(*device_.Image());
}

void SimulatedVek::Send(DeviceTime now) {
    if (hungUp_)
        return;
    const auto due = replies_.Due(now);
    if (!due.empty())
        replies_.Sent(line_.Write(due));
}

void SimulatedVek::Stop() { ::eventfd_write(stopEvent_.Get(), 1); }

std::vector<DeviceEvent> SimulatedVek::Events() const {
    const std::lock_guard lock(mutex_);
    return events_;
}

bool SimulatedVek::WaitForEvents(DeviceEventKind kind, int count, std::chrono::milliseconds timeout) const {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, timeout, [&] {
        return std::count_if(events_.begin(), events_.end(),
                             [&](const DeviceEvent& event) { return event.Kind == kind; }) >= count;
    });
}

std::optional<DeviceImage> SimulatedVek::Image() const {
    const std::lock_guard lock(mutex_);
    return image_;
}

} // namespace vek
