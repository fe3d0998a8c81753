#include "vekctl/Commands.h"

#include "console/PortCommandLine.h"

#include <array>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

namespace vek {

namespace {

constexpr const char* helperName = "vekctl-serial";
/// Where the other program is, seen from this one's folder: in a build, and installed.
constexpr std::array<const char*, 2> helperFolders = {".", "../libexec/vorn-matrix-editor"};

/// Becomes the program with the serial port; the user sees one program only.
[[noreturn]] void Become(std::vector<std::string> arguments) {
    std::vector<char*> pointers;
    pointers.reserve(arguments.size() + 1);
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    const auto own = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    for (const char* folder : helperFolders)
        ::execv((own / folder / helperName).c_str(), pointers.data());
    std::string reason = "the part that uses serial ports is not installed: there is no ";
    reason += (own / helperName).string();
    throw std::runtime_error(reason);
}

void RunPortCommand(const PortCommand& command) {
    std::vector<std::string> arguments = {"vekctl", command.Name};
    if (!command.Port.empty())
        arguments.push_back("--port=" + command.Port);
    if (!command.File.empty())
        arguments.insert(arguments.end(), {"--", command.File});
    Become(arguments);
}

} // namespace

void AddPortCommands(CLI::App& app) { AddPortCommandLines(app, RunPortCommand); }

} // namespace vek
