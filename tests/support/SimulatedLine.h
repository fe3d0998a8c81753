// A simulated device at the other end of a scripted port, both on the virtual clock.
#pragma once

#include "simulator/Faults.h"
#include "support/ForwardingControl.h"
#include "support/ScriptedPort.h"

#include <algorithm>
#include <cstdio>
#include <functional>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace vek::test {

class SimulatedDevice {
  public:
    /// What becomes of an answer of the device.
    using Deliver = std::function<Delivery(const DeviceEvent&)>;

    SimulatedDevice(ScriptedPort& port, Deliver deliver) : port_(port), deliver_(std::move(deliver)) {
        port_.OnOutput = [this](const ByteVector& bytes) { Receive(bytes); };
    }
    /// With faults, as ParseFault reads them.
    explicit SimulatedDevice(ScriptedPort& port, const std::vector<std::string>& faults = {})
        : SimulatedDevice(port, [this](const DeviceEvent& event) { return plan_.DeliveryOf(event); }) {
        std::vector<Fault> parsed;
        std::ranges::transform(faults, std::back_inserter(parsed), ParseFault);
        plan_ = FaultPlan(parsed);
    }
    SimulatedDevice(const SimulatedDevice&) = delete;
    SimulatedDevice& operator=(const SimulatedDevice&) = delete;
    ~SimulatedDevice() { port_.OnOutput = {}; }

    /// Sends unasked from now on for so many milliseconds, when its faults say so.
    void Chatter(long length) {
        const auto period = plan_.Chatter();
        for (long time = 0; period && time < length; time += period->count())
            port_.Reply(time, {'O', 'K', '\r', '\n'});
    }

    std::map<DeviceEventKind, int> Events; ///< how many of each kind

  private:
    void Receive(const ByteVector& bytes) {
        LineSettings line;
        char parity = 'n';
        std::sscanf(port_.Rate.c_str(), "%d,%c,8,%d", &line.Baud, &parity, &line.StopBits);
        line.OddParity = parity == 'o';
        for (const std::uint8_t byte : bytes) {
            for (const DeviceEvent& event :
                 device_.Receive(byte, line, DeviceTime(std::chrono::milliseconds(port_.Now))))
                React(event);
        }
    }
    void React(const DeviceEvent& event) {
        ++Events[event.Kind];
        const Delivery delivery = deliver_(event);
        if (event.Kind == DeviceEventKind::Search && delivery.Bytes != event.Reply)
            device_.SearchAnswerSpoilt();
        const long delay = 1 + static_cast<long>(delivery.Delay.count());
        if (!delivery.Bytes.empty())
            port_.Reply(delay, delivery.Bytes);
        // About as many bytes as the line takes.
        for (long time = 0; time < delivery.Flood.count(); time += 10)
            port_.Reply(time, ByteVector(10, 0x55));
        if (delivery.HangUp)
            port_.At(0, [this] { port_.Vanish(); });
    }

    ScriptedPort& port_;
    Deliver deliver_;
    FaultPlan plan_{{}};
    MatrixVek device_{{}};
};

/// A port with a device, for hours of use: nothing is noted.
struct SimulatedLine {
    explicit SimulatedLine(SimulatedDevice::Deliver deliver) : Device(Port, std::move(deliver)) {
        Port.OnOutput = [this, receive = Port.OnOutput](const ByteVector& bytes) {
            receive(bytes);
            Port.Forget();
        };
    }

    ScriptedPort Port;
    SimulatedDevice Device;
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
