#include "vekctl-serial/SerialCommands.h"

#include "console/ImageOfFile.h"
#include "link/OutcomeTexts.h"
#include "link/VekLink.h"
#include "vekctl-serial/ConsoleLink.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <stdexcept>
#include <unistd.h>
#include <utility>

namespace vek {

namespace {

/// Shows the progress as a bar that grows on a terminal, and as a line for every tenth elsewhere.
class ProgramOutcomes final : public LinkOutcomes, public ProgrammingOutcomes {
  public:
    explicit ProgramOutcomes(std::string portName) : portName_(std::move(portName)) {}
    ~ProgramOutcomes() override { EndBar(); }

    void PortSearched(std::size_t, const PortFinding& finding) override {
        std::printf("%s on %s\n", TextOf(finding).c_str(), portName_.c_str());
        std::fflush(stdout);
    }
    Task<> Failed(Failure failure) override {
        EndBar();
        PrintFailure(failure);
        co_return;
    }
    void DownloadBegins() override { incomplete_ = true; }
    void Progress(DownloadProgress progress) override {
        incomplete_ = incomplete_ && progress.Acknowledged < progress.Blocks;
        const int tenths = TenthsOf(progress);
        const std::string percentage = PercentText(progress);
        if (onTerminal_)
            ShowBar(tenths, percentage);
        else if (tenths / lineStep > shownLines_) {
            shownLines_ = tenths / lineStep;
            std::printf("%s\n", percentage.c_str());
            std::fflush(stdout);
        }
    }
    Task<bool> WantsAnother() override { co_return false; }

    /// The device holds a part of the image only.
    bool Incomplete() const { return incomplete_; }

    /// Leaves the line of the bar.
    void EndBar() {
        if (barOpen_)
            std::putchar('\n');
        barOpen_ = false;
    }

  private:
    static constexpr int lineStep = fullProgress / 10;

    void ShowBar(int tenths, const std::string& percentage) {
        constexpr int width = 50;
        const auto filled = static_cast<std::size_t>(tenths * width / fullProgress);
        const std::string bar = std::string(filled, '#') + std::string(width - filled, '.');
        std::printf("\r[%s] %6s", bar.c_str(), percentage.c_str());
        std::fflush(stdout);
        barOpen_ = true;
    }

    std::string portName_;
    const bool onTerminal_ = ::isatty(STDOUT_FILENO) == 1;
    int shownLines_ = 0;
    bool barOpen_ = false;
    bool incomplete_ = false;
};

/// Nothing but a Matrix Vek may be sent the image of one.
void RequireMatrixVek(const PortFinding& finding, const std::string& portName) {
    if (!finding.Answered())
        throw std::runtime_error(portName + ": no device answers");
    if (finding.State != PortState::MatrixVek)
        throw std::runtime_error(portName + ": not a Matrix Vek but " + TextOf(finding));
}

Task<> Program(VekLink& link, const SerialControl& port, ProgramOutcomes& outcomes,
               const DownloadImage& image, std::string portName) {
    constexpr std::size_t onlyRow = 0;
    co_await link.set_active_port(onlyRow);
    if (!port.PortOpen()) {
        co_await outcomes.Failed({FailureKind::PortNotOpen});
        throw std::runtime_error(portName + ": " + WhyNotOpened(NotOpened(port.WhyNotOpen())));
    }
    const PortFinding finding = co_await link.Find_vek(false);
    RequireMatrixVek(finding, portName);
    outcomes.PortSearched(onlyRow, finding);
    const ConfigureResult result = co_await link.ProgramVek(onlyRow, image, outcomes);
    if (result != ConfigureResult::Done)
        throw CLI::RuntimeError(1);
}

} // namespace

void RunProgram(const PortCommand& command) {
    const DownloadImage image = ImageOfFile(command.File);
    const NamedPort port(command.Port);
    ProgramOutcomes outcomes(port.Text());
    ConsoleLink console(port.AsCom1());
    VekLink link(console.Port(), console.Timer(), console.Types(), outcomes);
    try {
        console.Run(Program(link, console.Port(), outcomes, image, port.Text()),
                    [&link] { link.EndEarly(); });
    } catch (const Cancelled&) {
        outcomes.EndBar();
        if (outcomes.Incomplete())
            PrintMessage(port.Text() + " holds an incomplete configuration: program it again");
        throw;
    }
    outcomes.EndBar();
    std::puts("Programmed and restarted");
}

} // namespace vek
