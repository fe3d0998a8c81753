#include "vekctl-serial/SerialCommands.h"

#include "console/ImageOfFile.h"
#include "console/Input.h"
#include "link/OutcomeTexts.h"
#include "link/Packets.h"
#include "link/VekLink.h"
#include "model/RecordLayout.h"
#include "platform/ImageDigest.h"
#include "platform/PortInspection.h"
#include "userstate/AttemptRecord.h"
#include "userstate/UserFolders.h"
#include "vekctl-serial/ConsoleLink.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <unistd.h>
#include <utility>

namespace vek {

namespace {

/// Shows the progress as a bar that grows on a terminal, and as a line for every tenth elsewhere.
class ProgramOutcomes final : public LinkOutcomes, public ProgrammingOutcomes {
  public:
    ProgramOutcomes(std::string portName, AttemptRecord& record)
        : portName_(std::move(portName)), record_(record) {}
    ~ProgramOutcomes() override { EndBar(); }

    void PortSearched(std::size_t, const PortFinding& finding) override {
        std::printf("%s on %s\n", TextOf(finding).c_str(), portName_.c_str());
        std::fflush(stdout);
    }
    Task<> Failed(Failure failure) override {
        record_.End(failure.Kind);
        EndBar();
        PrintFailure(failure);
        co_return;
    }
    void DeviceFound(const PortFinding& finding) override { record_.Found(finding); }
    void DownloadBegins() override {
        incomplete_ = true;
        record_.DownloadBegins();
    }
    void Progress(DownloadProgress progress) override {
        record_.Progress(progress);
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
    Task<bool> WantsAnother() override {
        record_.End(AttemptResult::Programmed);
        co_return false;
    }

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
    AttemptRecord& record_;
    const bool onTerminal_ = ::isatty(STDOUT_FILENO) == 1;
    int shownLines_ = 0;
    bool barOpen_ = false;
    bool incomplete_ = false;
};

/// Says at the end what could not be kept.
class ProblemTeller {
  public:
    explicit ProblemTeller(const AttemptRecord& record) : record_(record) {}
    ProblemTeller(const ProblemTeller&) = delete;
    ProblemTeller& operator=(const ProblemTeller&) = delete;
    ~ProblemTeller() {
        if (!record_.Problem().empty())
            PrintMessage(record_.Problem() + " (" + ProgrammingJournal(UserStateFolder()).Folder() + ')');
    }

  private:
    const AttemptRecord& record_;
};

/// Nothing but a Matrix Vek may be sent the image of one.
void RequireMatrixVek(const PortFinding& finding, const std::string& portName, AttemptRecord& record) {
    if (!finding.Answered()) {
        record.End(AttemptResult::NoAnswer);
        throw std::runtime_error(portName + ": no device answers");
    }
    record.Found(finding);
    if (finding.State != PortState::MatrixVek) {
        record.End(AttemptResult::OtherDevice);
        throw std::runtime_error(portName + ": not a Matrix Vek but " + TextOf(finding));
    }
}

Task<> Program(VekLink& link, const SerialControl& port, ProgramOutcomes& outcomes, AttemptRecord& record,
               const DownloadImage& image, std::string portName) {
    constexpr std::size_t onlyRow = 0;
    co_await link.set_active_port(onlyRow);
    if (!port.PortOpen()) {
        co_await outcomes.Failed({FailureKind::PortNotOpen});
        throw std::runtime_error(portName + ": " + WhyNotOpened(NotOpened(port.WhyNotOpen())));
    }
    const PortFinding finding = co_await link.Find_vek(false);
    RequireMatrixVek(finding, portName, record);
    outcomes.PortSearched(onlyRow, finding);
    const ConfigureResult result = co_await link.ProgramVek(onlyRow, image, outcomes);
    if (result != ConfigureResult::Done)
        throw CLI::RuntimeError(1);
}

/// The attempt in the history, entered before anything is sent.
AttemptRecord Enter(const PortCommand& command, const NamedPort& port, const EncodedImage& encoded) {
    std::error_code error;
    const auto path = std::filesystem::absolute(command.File, error);
    const JournalEntry entry = {
        .File = command.File == standardStream || error ? std::string() : path.lexically_normal().string(),
        .Port = port.Text(),
        .AdapterSerialNumber = FactsOfDevice(port.Device()).SerialNumber,
        .Blocks = BlockCount(encoded.Image.Length),
        .ImageDigest = ImageDigest(encoded.Image),
    };
    return {ProgrammingJournal(UserStateFolder()), entry, EncodeRecord(encoded.Config)};
}

} // namespace

void RunProgram(const PortCommand& command) {
    const EncodedImage encoded = ImageOfFile(command.File);
    const NamedPort port(command.Port);
    AttemptRecord record = Enter(command, port, encoded);
    const ProblemTeller teller(record);
    ProgramOutcomes outcomes(port.Text(), record);
    ConsoleLink console(port.AsCom1());
    VekLink link(console.Port(), console.Timer(), console.Types(), outcomes);
    try {
        console.Run(Program(link, console.Port(), outcomes, record, encoded.Image, port.Text()),
                    [&link] { link.EndEarly(); });
    } catch (const Cancelled&) {
        record.End(AttemptResult::Cancelled);
        outcomes.EndBar();
        if (outcomes.Incomplete())
            PrintMessage(port.Text() + " holds an incomplete configuration: program it again");
        throw;
    }
    outcomes.EndBar();
    std::puts("Programmed and restarted");
}

} // namespace vek
