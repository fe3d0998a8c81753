// A simulated device that runs in a thread of its own, for tests and measurements.
#pragma once

#include "simulator/SimulatedVek.h"

#include <thread>
#include <utility>

namespace vek {

class RunningVek {
  public:
    explicit RunningVek(SimulatedVekOptions options = {})
        : vek(std::move(options)), thread([this] { vek.Run(); }) {}
    RunningVek(const RunningVek&) = delete;
    RunningVek& operator=(const RunningVek&) = delete;
    ~RunningVek() {
        vek.Stop();
        thread.join();
    }

    SimulatedVek* operator->() { return &vek; }

  private:
    SimulatedVek vek;
    std::thread thread;
};

} // namespace vek
