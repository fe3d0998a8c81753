// A serial port that passes everything on to another one.
#pragma once

#include "link/SerialControl.h"

namespace vek::test {

class ForwardingControl : public SerialControl {
  public:
    /// The port must outlive this object.
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

} // namespace vek::test
