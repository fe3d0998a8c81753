#include "vekctl/Commands.h"

#include "base/EndingSignals.h"
#include "base/Errors.h"
#include "console/Output.h"
#include "simulator/SimulatedVek.h"

#include <CLI/CLI.hpp>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <set>
#include <sstream>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace vek {

namespace {

struct SimulateOptions {
    SimulatedVekOptions Vek;
    std::string Link;
    std::string ImageOut;
    bool Timestamps = false;
};

/// True for the device file of a terminal or serial port, told without opening it: that alone can change the
/// lines of a port.
bool IsTerminal(const std::string& path) {
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0 || !S_ISCHR(status.st_mode))
        return false;
    // | name | device | major number | ...
    std::ifstream drivers("/proc/tty/drivers");
    for (std::string line; std::getline(drivers, line);) {
        std::istringstream words(line);
        std::string name;
        std::string device;
        unsigned number = 0;
        if (words >> name >> device >> number && number == major(status.st_rdev))
            return true;
    }
    return false;
}

/// A symbolic link to the port, for programs that need a name known beforehand. Removed at the end.
class PortLink {
  public:
    PortLink(std::string path, const std::string& target) : path_(std::move(path)), target_(target) {
        namespace fs = std::filesystem;
        if (this->path_.empty())
            return;
        std::error_code error;
        const auto status = fs::symlink_status(this->path_, error);
        if (fs::exists(status) && !fs::is_symlink(status))
            throw FileError(this->path_ + ": is there already and is not a link");
        if (fs::status(this->path_, error).type() != fs::file_type::not_found && !IsTerminal(this->path_))
            throw FileError(this->path_ + ": is a link already, but not to a terminal");
        // Whoever waits for the link never sees a stale one nor none.
        const std::string temporary = this->path_ + '.' + std::to_string(::getpid());
        fs::create_symlink(target, temporary, error);
        if (!error)
            fs::rename(temporary, this->path_, error);
        if (error)
            throw FileError(this->path_ + ": " + error.message());
    }
    PortLink(const PortLink&) = delete;
    PortLink& operator=(const PortLink&) = delete;
    ~PortLink() {
        std::error_code error;
        if (!path_.empty() && std::filesystem::read_symlink(path_, error) == target_)
            std::filesystem::remove(path_, error);
    }

  private:
    std::string path_;
    std::string target_;
};

std::string Hex(const std::vector<std::uint8_t>& bytes) {
    std::string text;
    for (const std::uint8_t byte : bytes) {
        char digits[4];
        std::snprintf(digits, sizeof digits, " %02X", byte);
        text += digits;
    }
    return text;
}

void Print(const DeviceEvent& event, const std::string& fault, bool timestamp) {
    if (timestamp) {
        timespec now = {};
        ::clock_gettime(CLOCK_MONOTONIC, &now);
        std::printf("%lld.%03ld ", static_cast<long long>(now.tv_sec), now.tv_nsec / 1'000'000);
    }
    const bool refused = event.Kind == DeviceEventKind::Refused;
    std::printf("%s%s", refused ? "refused: " : "", event.Text.c_str());
    if (!event.Reply.empty())
        std::printf(" ->%s", Hex(event.Reply).c_str());
    if (!fault.empty())
        std::printf(" (fault: %s)", fault.c_str());
    std::putchar('\n');
}

void RunSimulate(SimulateOptions options) {
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    // When nobody reads the lines any more, the link still gets removed.
    const Descriptor ending = BlockSignals({SIGINT, SIGTERM, SIGHUP, SIGPIPE});
    options.Vek.OnEvent = [&](const DeviceEvent& event, const std::string& fault) {
        Print(event, fault, options.Timestamps);
    };
    if (!options.ImageOut.empty() && !IsStandardOutput(options.ImageOut))
        RequireWritable(options.ImageOut);
    if (!options.ImageOut.empty())
        options.Vek.OnProgrammed = [&](const DeviceImage& image) {
            WriteOutput(options.ImageOut, std::as_bytes(std::span(image)));
        };
    SimulatedVek vek(options.Vek);
    const PortLink link(options.Link, vek.PortPath());
    std::printf("%s\n", vek.PortPath().c_str());
    vek.Run(ending.Get());
}

void AddFault(SimulateOptions& options, const std::string& text) {
    try {
        options.Vek.Faults.push_back(ParseFault(text));
    } catch (const std::invalid_argument& error) {
        throw CLI::ValidationError("--fault", error.what());
    }
}

void SetFirmware(MatrixVekOptions& device, const std::string& text) {
    int major = 0;
    int minor = 0;
    char rest = 0;
    if (std::sscanf(text.c_str(), "%d.%d%c", &major, &minor, &rest) != 2 || major < 0 || major > 255 ||
        minor < 0 || minor > 255)
        throw CLI::ValidationError("--firmware", "must be two numbers from 0 to 255 like 2.5");
    device.FirmwareMajor = static_cast<std::uint8_t>(major);
    device.FirmwareMinor = static_cast<std::uint8_t>(minor);
}

} // namespace

void AddSimulateCommand(CLI::App& app) {
    auto options = std::make_shared<SimulateOptions>();
    MatrixVekOptions& device = options->Vek.Device;
    CLI::App* command = app.add_subcommand(
        "simulate", "Be a Matrix Vek on a pseudo-terminal, whose name is the first line of output; ends with "
                    "SIGTERM or Ctrl+C");
    command->add_option("--link", options->Link, "Make this path a symbolic link to the pseudo-terminal")
        ->type_name("PATH");
    command
        ->add_option("--image-out", options->ImageOut,
                     "Write the image here after each complete download and restart")
        ->type_name("FILE");
    command
        ->add_option_function<std::vector<std::string>>(
            "--fault",
            [options](const std::vector<std::string>& texts) {
                for (const std::string& text : texts)
                    AddFault(*options, text);
            },
            "Fail on request, see below; can be given several times")
        ->type_name("FAULT")
        ->allow_extra_args(false);
    command->footer(FaultNotation());
    command->add_option("--reply-code", device.ReplyCode, "Answer searches as another type of device (39)");
    command
        ->add_option_function<std::string>(
            "--firmware", [&device](const std::string& text) { SetFirmware(device, text); },
            "Firmware version (2.5)")
        ->type_name("N.N");
    command->add_option("--rate", device.SearchRate, "Listen for searches at another rate (9600)")
        ->check(CLI::IsMember(std::set<int>{2400, 4800, 9600, 14400, 19200, 28800, 38400}));
    command->add_option("--reply-length", device.SearchReplyLength, "Bytes of the search reply (5)")
        ->check(CLI::Range(4, 5));
    command->add_flag("--paced", options->Vek.Paced, "Send replies at the pace of a real line");
    command->add_flag_callback(
        "--no-wake", [&device] { device.NeedsWakePulse = false; },
        "Hear searches without a wake pulse before");
    command->add_flag("--timestamps", options->Timestamps,
                      "Begin each line with the seconds of the system's clock");
    command->callback([options] { RunSimulate(*options); });
}

} // namespace vek
