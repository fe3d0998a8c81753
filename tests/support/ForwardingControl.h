// A serial port and a timer that pass everything on to others, which must outlive them.
#pragma once

#include "link/SerialControl.h"

namespace vek::test {

class ForwardingControl : public SerialControl {
  public:
    explicit ForwardingControl(SerialControl& port) : port_(port) {}

    void SetCommPort(int number) override { port_.SetCommPort(number); }
    void SetPortOpen(bool open) override { port_.SetPortOpen(open); }
    bool PortOpen() const override { return port_.PortOpen(); }
    OpenFailure WhyNotOpen() const override { return port_.WhyNotOpen(); }
    void SetSettings(std::string_view settings) override { port_.SetSettings(settings); }
    void Output(std::span<const std::uint8_t> bytes) override { port_.Output(bytes); }
    bool Sending() const override { return port_.Sending(); }
    ByteVector Input() override { return port_.Input(); }
    std::size_t InBufferCount() const override { return port_.InBufferCount(); }
    void SetListener(std::function<void()> listener) override { port_.SetListener(std::move(listener)); }

  private:
    SerialControl& port_;
};

class ForwardingTimer : public OneShotTimer {
  public:
    explicit ForwardingTimer(OneShotTimer& timer) : timer_(timer) {}
    void Start(int milliseconds) override { timer_.Start(milliseconds); }
    void Stop() override { timer_.Stop(); }
    bool Enabled() const override { return timer_.Enabled(); }
    void SetListener(std::function<void()> listener) override { timer_.SetListener(std::move(listener)); }

  private:
    OneShotTimer& timer_;
};

} // namespace vek::test
