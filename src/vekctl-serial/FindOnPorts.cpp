#include "vekctl-serial/SerialCommands.h"

#include "vekctl-serial/ConsoleLink.h"

#include <algorithm>
#include <cstdio>
#include <optional>
#include <stdexcept>

namespace vek {

namespace {

/// Prints the ports as they have been searched.
class FindView final : public ConsoleView {
  public:
    explicit FindView(std::array<std::string, portCount> given) : names_(std::move(given)) {}

    void ShowBlanking(std::size_t row, bool visible) override {
        if (visible || !rows_[row].Opened)
            return;
        std::printf("%s: %s\n", names_[row].c_str(), rows_[row].Found.c_str());
        std::fflush(stdout);
    }
    bool AnyOpened() const { return std::ranges::any_of(rows_, &Row::Opened); }
    bool AnyMatrixVek() const { return std::ranges::any_of(rows_, &Row::Enabled); }

  private:
    std::array<std::string, portCount> names_;
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
    std::array<std::string, portCount> names;
    std::optional<NamedPort> only;
    if (!command.Port.empty()) {
        only.emplace(command.Port);
        names[0] = only->Text();
    } else {
        for (const ComPort& port : FindComPorts())
            names[static_cast<std::size_t>(port.Number - 1)] =
                "COM" + std::to_string(port.Number) + " (" + port.ShownName + ")";
    }
    FindView view(names);
    ConsoleLink link(view, only ? only->AsCom1() : DeviceOfComPort);
    link->search_for_vek();
    link.ThrowIfCancelled();
    if (only && !view.AnyOpened())
        throw std::runtime_error(names[0] + ": the port cannot be opened; another program may be using it");
    if (!view.AnyMatrixVek())
        throw std::runtime_error("no Matrix Vek was found");
}

} // namespace vek
