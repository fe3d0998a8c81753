#include "vekctl-serial/SerialCommands.h"

#include "console/ImageOfFile.h"
#include "link/Packets.h"
#include "vekctl-serial/ConsoleLink.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <stdexcept>
#include <unistd.h>

namespace vek {

namespace {

constexpr int fullProgress = 1000;

/// Shows the progress as a bar that grows on a terminal, and as a line for every tenth elsewhere.
class ProgramView final : public ConsoleView {
  public:
    ~ProgramView() override { End(); }

    void SetLabel2(const std::string& text) override { percentage_ = text; }
    void SetProgressBar1(int value) override {
        if (onTerminal_)
            ShowBar(value);
        else if (value / lineStep > shownLines_) {
            shownLines_ = value / lineStep;
            std::printf("%s\n", percentage_.c_str());
            std::fflush(stdout);
        }
    }
    void ErrorMessage(const std::string& title, const std::string& text) override {
        End();
        ConsoleView::ErrorMessage(title, text);
    }
    /// Asked only when the device was programmed and has restarted.
    bool AskYesNo(const std::string&, const std::string&) override {
        programmed_ = true;
        return false;
    }
    /// Leaves the line of the bar.
    void End() {
        if (barOpen_)
            std::putchar('\n');
        barOpen_ = false;
    }
    bool Programmed() const { return programmed_; }

  private:
    static constexpr int lineStep = fullProgress / 10;

    void ShowBar(int value) {
        constexpr int width = 50;
        const auto filled = static_cast<std::size_t>(value * width / fullProgress);
        const std::string bar = std::string(filled, '#') + std::string(width - filled, '.');
        std::printf("\r[%s] %6s", bar.c_str(), percentage_.c_str());
        std::fflush(stdout);
        barOpen_ = true;
    }
    const bool onTerminal_ = ::isatty(STDOUT_FILENO) == 1;
    std::string percentage_;
    int shownLines_ = 0;
    bool barOpen_ = false;
    bool programmed_ = false;
};

/// Nothing but a Matrix Vek may be sent the image of one.
void RequireMatrixVek(ConsoleLink& link, const NamedPort& port) {
    link->set_active_port();
    const std::uint32_t found = link->Find_vek(false);
    link.ThrowIfCancelled();
    if (found == 0)
        throw std::runtime_error(port.Text() + ": no device answers");
    if (!IsMatrixVek(found))
        throw std::runtime_error(port.Text() + ": not a Matrix Vek but " + FoundText(link.Types(), found));
    std::printf("%s on %s\n", FoundText(link.Types(), found).c_str(), port.Text().c_str());
    std::fflush(stdout);
}

} // namespace

void RunProgram(const PortCommand& command) {
    const DownloadImage image = ImageOfFile(command.File);
    const NamedPort port(command.Port);
    ProgramView view;
    view.SelectOption(0, true);
    ConsoleLink link(view, port.AsCom1());
    RequireMatrixVek(link, port);
    link->ProgramVek(image);
    link.ThrowIfCancelled();
    if (!view.Programmed())
        throw CLI::RuntimeError(1);
    view.End();
    std::puts("Programmed and restarted");
}

} // namespace vek
