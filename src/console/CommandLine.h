// What the two programs behind vekctl have in common: reading the command line and ending.
#pragma once

namespace CLI {
class App;
}

namespace vek {

inline constexpr const char* notEnoughMemory = "there is not enough memory";

/// Reads the command line, which runs the command given there. Returns the exit status of the program: 0, 1
/// when the command failed (what it threw is on standard error then), 2 for wrong usage, or what the command
/// ended with.
int RunCommandLine(CLI::App& app, int argc, char** argv);

} // namespace vek
