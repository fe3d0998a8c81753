// The commands of vekctl. Each adds itself to the command line and runs when it is the one given; it throws
// FileError, RunTimeError or another standard exception when it fails, and CLI::RuntimeError to end with an
// exit status after saying everything itself.
#pragma once

namespace CLI {
class App;
}

namespace vek {

void AddNewCommand(CLI::App& app);
void AddShowCommand(CLI::App& app);
void AddFromJsonCommand(CLI::App& app);
void AddDiffCommand(CLI::App& app);
void AddCheckCommand(CLI::App& app);
void AddReportCommand(CLI::App& app);
void AddCsvCommand(CLI::App& app);
void AddVexCommand(CLI::App& app);
void AddImageCommand(CLI::App& app);
/// The commands that use a serial port: ports, find, doctor and program.
void AddPortCommands(CLI::App& app);
/// What devices were given, also by the editor.
void AddHistoryCommand(CLI::App& app);
void AddSimulateCommand(CLI::App& app);

/// In the order of the usage text.
inline constexpr void (*commands[])(CLI::App&) = {
    AddNewCommand, AddShowCommand, AddFromJsonCommand, AddDiffCommand,  AddCheckCommand,   AddReportCommand,
    AddCsvCommand, AddVexCommand,  AddImageCommand,    AddPortCommands, AddHistoryCommand, AddSimulateCommand,
};

} // namespace vek
