// A Matrix Vek on a pseudo-terminal: the device, its line and the faults it was asked to show.
#pragma once

#include "simulator/Faults.h"
#include "simulator/MatrixVek.h"
#include "simulator/PseudoTerminal.h"
#include "simulator/ReplySchedule.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace vek {

struct SimulatedVekOptions {
    MatrixVekOptions Device = {};
    std::vector<Fault> Faults = {};
    bool Paced = false; ///< replies take the time they take on a real line; otherwise they come at once
    /// Called from Run() for each event, with the name of the fault that was shown (empty: none).
    std::function<void(const DeviceEvent&, const std::string& fault)> OnEvent = {};
    /// Called from Run() when a complete download is put in use.
    std::function<void(const DeviceImage&)> OnProgrammed = {};
};

class SimulatedVek {
  public:
    /// Throws std::system_error when there is no pseudo-terminal to be had.
    explicit SimulatedVek(SimulatedVekOptions options);

    /// What to open instead of a serial port.
    const std::string& PortPath() const { return line_.PortPath(); }

    /// Serves the line until Stop(), until `stopDescriptor` (-1: none) is readable, or until a fault hangs
    /// up. Passes on what the callbacks throw. Sleeps while nothing happens.
    void Run(int stopDescriptor = -1);

    // From any thread, while Run() runs in another:

    void Stop();
    /// Everything that happened so far.
    std::vector<DeviceEvent> Events() const;
    /// Waits until there were `count` events of a kind; false when the time-out comes first.
    bool WaitForEvents(DeviceEventKind kind, int count, std::chrono::milliseconds timeout) const;
    /// The image in use; nothing before the first complete download and restart.
    std::optional<DeviceImage> Image() const;

  private:
    std::optional<DeviceTime> NextTime() const;
    void Chatter(DeviceTime now);
    void Receive(DeviceTime now);
    void React(const DeviceEvent& event, int baud, DeviceTime now);
    void Send(DeviceTime now);

    SimulatedVekOptions options_;
    PseudoTerminal line_;
    Descriptor stopEvent_;
    MatrixVek device_;
    FaultPlan faults_;
    std::optional<std::chrono::milliseconds> chatter_;
    DeviceTime nextChatter_ = {};
    ReplySchedule replies_;
    bool hungUp_ = false;

    mutable std::mutex mutex_; ///< for what follows
    mutable std::condition_variable changed_;
    std::vector<DeviceEvent> events_;
    std::optional<DeviceImage> image_;
};

} // namespace vek
