// Examines serial ports: what stands in the way of a Matrix Vek. It asks what a search asks, no more: a known
// device is restarted, none is ever programmed.
#pragma once

#include "link/PortExamination.h"
#include "link/VekLink.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace vek {

/// What the system is asked. Row 0 … 3 is COM1 … COM4.
struct PortSystem {
    std::function<PortFacts(std::size_t row)> Facts;
    /// Tries neededSettings on the port, which is not open, and returns those that it does not take.
    std::function<std::vector<std::string>(std::size_t row)> RefusedSettings;
};

class LinkDoctor : private LinkOutcomes {
  public:
    /// All must outlive this object. `changed` is told whenever more is known.
    LinkDoctor(SerialControl& port, OneShotTimer& timer, const DeviceTypeList& types, PortSystem system,
               std::function<void()> changed);

    /// Examines the ports that there are, one after the other. Every port is closed afterwards, also when the
    /// task is destroyed.
    Task<> ExamineAll();
    /// Examines one port under this title, also when there is none.
    Task<> Examine(std::size_t row, std::string title);

    /// Those of ports that there are, the last one perhaps unfinished.
    const std::vector<PortExamination>& Examinations() const { return examinations_; }

  private:
    void PortSearched(std::size_t, const PortFinding&) override {}
    void Heard(const RateAnswer& answer) override;
    Task<> Failed(Failure failure) override;

    Task<> ExamineNext(std::size_t row);
    PortExamination& Current() { return examinations_.back(); }
    void Begin(ExaminationStep step);

    SerialControl& port_;
    VekLink link_;
    PortSystem system_;
    std::function<void()> changed_;
    std::vector<PortExamination> examinations_;
};

} // namespace vek
