#include "link/Exchange.h"

#include <limits>
#include <utility>

namespace vek {

namespace {

constexpr auto neverEnough = std::numeric_limits<std::size_t>::max();

} // namespace

Exchange::Pause::~Pause() {
    if (exchange_.pause_ != this)
        return;
    exchange_.pause_ = nullptr;
    exchange_.timer_.Stop();
}

bool Exchange::Pause::Over() const {
    if (!exchange_.PortOpen())
        return true;
    if (forSending_)
        return !exchange_.port_.Sending();
    return !exchange_.timer_.Enabled() || exchange_.port_.InBufferCount() >= enough_;
}

bool Exchange::Pause::await_ready() {
    if (!forSending_)
        exchange_.timer_.Start(milliseconds_);
    if (!Over())
        return false;
    exchange_.timer_.Stop();
    return true;
}

void Exchange::Pause::await_suspend(std::coroutine_handle<> waiting) {
    waiting_ = waiting;
    exchange_.pause_ = this;
}

ByteVector Exchange::ReplyPause::await_resume() const {
    if (!exchange_.PortOpen() || exchange_.port_.InBufferCount() < least_)
        return {};
    return exchange_.port_.Input();
}

Exchange::Exchange(SerialControl& port, OneShotTimer& timer) : port_(port), timer_(timer) {
    port_.SetListener([this] { Check(); });
    timer_.SetListener([this] { Check(); });
}

Exchange::~Exchange() {
    port_.SetListener({});
    timer_.SetListener({});
}

void Exchange::Check() {
    if (pause_ == nullptr || !pause_->Over())
        return;
    timer_.Stop();
    std::exchange(pause_, nullptr)->waiting_.resume();
}

void Exchange::Open(int number) {
    Close();
    port_.SetCommPort(number);
    port_.SetPortOpen(true);
}

void Exchange::Close() {
    if (port_.PortOpen())
        port_.SetPortOpen(false);
}

void Exchange::SetSettings(std::string_view settings) {
    if (PortOpen())
        port_.SetSettings(settings);
}

ByteVector Exchange::TakeInput() { return PortOpen() ? port_.Input() : ByteVector(); }

void Exchange::SendWithoutWaiting(std::span<const std::uint8_t> bytes) {
    if (PortOpen())
        port_.Output(bytes);
}

Exchange::Pause Exchange::Send(std::span<const std::uint8_t> bytes) {
    SendWithoutWaiting(bytes);
    return {*this, 0, true, 0};
}

Exchange::Pause Exchange::Wait(int milliseconds) { return {*this, milliseconds, false, neverEnough}; }

Exchange::ReplyPause Exchange::Reply(int milliseconds, std::size_t enough, std::size_t least) {
    return {*this, milliseconds, enough, least};
}

} // namespace vek
