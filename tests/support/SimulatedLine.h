// A simulated device at the other end of a scripted port, both on the virtual clock.
#pragma once

#include "simulator/Faults.h"
#include "support/ForwardingControl.h"
#include "support/ScriptedPort.h"

#include <cstdio>
#include <functional>
#include <map>
#include <memory>

namespace vek::test {

class SimulatedLine {
  public:
    /// What becomes of an answer of the device.
    using Deliver = std::function<Delivery(const DeviceEvent&)>;

    explicit SimulatedLine(Deliver deliver) : deliver_(std::move(deliver)) {
        Port.OnOutput = [this](const ByteVector& bytes) { Receive(bytes); };
    }

    ScriptedPort Port;
    std::map<DeviceEventKind, int> Events; ///< how many of each kind

  private:
    void Receive(const ByteVector& bytes) {
        LineSettings line;
        char parity = 'n';
        std::sscanf(Port.Rate.c_str(), "%d,%c,8,%d", &line.Baud, &parity, &line.StopBits);
        line.OddParity = parity == 'o';
        for (const std::uint8_t byte : bytes) {
            for (const DeviceEvent& event :
                 device_.Receive(byte, line, DeviceTime(std::chrono::milliseconds(Port.Now))))
                React(event);
        }
        Port.Forget();
    }
    void React(const DeviceEvent& event) {
        ++Events[event.Kind];
        const Delivery delivery = deliver_(event);
        if (event.Kind == DeviceEventKind::Search && delivery.Bytes != event.Reply)
            device_.SearchAnswerSpoilt();
        const long delay = 1 + static_cast<long>(delivery.Delay.count());
        if (!delivery.Bytes.empty())
            Port.Reply(delay, delivery.Bytes);
        // About as many bytes as the line takes.
        for (long time = 0; time < delivery.Flood.count(); time += 10)
            Port.Reply(time, ByteVector(10, 0x55));
        if (delivery.HangUp)
            Port.At(0, [this] { Port.Vanish(); });
    }

    Deliver deliver_;
    MatrixVek device_{{}};
};

/// The editor's two ends of a line, which keep it.
class LineControl final : public ForwardingControl {
  public:
    explicit LineControl(std::shared_ptr<SimulatedLine> line)
        : ForwardingControl(line->Port), line_(std::move(line)) {}

  private:
    std::shared_ptr<SimulatedLine> line_;
};

class LineTimer final : public ForwardingTimer {
  public:
    explicit LineTimer(std::shared_ptr<SimulatedLine> line)
        : ForwardingTimer(line->Port), line_(std::move(line)) {}

  private:
    std::shared_ptr<SimulatedLine> line_;
};

} // namespace vek::test
