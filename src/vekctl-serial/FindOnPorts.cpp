#include "vekctl-serial/SerialCommands.h"

#include "link/OutcomeTexts.h"
#include "link/VekLink.h"
#include "platform/ComPorts.h"
#include "vekctl-serial/ConsoleLink.h"

#include <array>
#include <cstdio>
#include <optional>
#include <stdexcept>
#include <utility>

namespace vek {

namespace {

using PortNames = std::array<std::string, portCount>;

/// Prints the ports as they have been searched.
class FindOutcomes final : public LinkOutcomes {
  public:
    explicit FindOutcomes(PortNames names) : names_(std::move(names)) {}

    void PortSearched(std::size_t row, const PortFinding& finding) override {
        anyMatrixVek_ = anyMatrixVek_ || finding.State == PortState::MatrixVek;
        if (!finding.Opened() && !names_[row].empty())
            PrintMessage(names_[row] + ": " + WhyNotOpened(finding));
        if (!finding.Opened())
            return;
        std::printf("%s: %s\n", names_[row].c_str(), TextOf(finding).c_str());
        std::fflush(stdout);
    }
    Task<> Failed(Failure failure) override {
        PrintFailure(failure);
        co_return;
    }
    bool AnyMatrixVek() const { return anyMatrixVek_; }

  private:
    PortNames names_;
    bool anyMatrixVek_ = false;
};

} // namespace

void RunPorts() {
    const auto ports = FindComPorts();
    for (const ComPort& port : ports)
        std::printf("COM%d  %s\n", port.Number, port.Device.c_str());
    if (ports.empty())
        std::fputs("vekctl: there is no serial port\n", stderr);
}

void RunFind(const PortCommand& command) {
    PortNames names;
    std::optional<NamedPort> only;
    if (!command.Port.empty()) {
        only.emplace(command.Port);
        names[0] = only->Text();
    } else {
        for (const ComPort& port : FindComPorts())
            names[static_cast<std::size_t>(port.Number - 1)] =
                "COM" + std::to_string(port.Number) + " (" + port.ShownName + ")";
    }
    FindOutcomes outcomes(names);
    ConsoleLink console(only ? only->AsCom1() : DeviceOfComPort);
    VekLink link(console.Port(), console.Timer(), console.Types(), outcomes);
    console.Run(link.search_for_vek());
    if (!outcomes.AnyMatrixVek())
        throw std::runtime_error("no Matrix Vek was found");
}

} // namespace vek
