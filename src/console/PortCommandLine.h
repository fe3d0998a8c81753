// The command lines of the commands that use a serial port. Two programs read them: vekctl, which starts
// without the weight of the serial port's library, and vekctl-serial, which vekctl turns into for these.
#pragma once

#include <functional>
#include <string>

namespace CLI {
class App;
}

namespace vek {

/// What is on the command line; empty where nothing was given.
struct PortCommand {
    std::string Name; ///< ports, find, doctor or program
    std::string Port; ///< as the user names it
    std::string File; ///< the configuration
};

/// Adds these commands; `run` is called for the one that was given.
void AddPortCommandLines(CLI::App& app, const std::function<void(const PortCommand&)>& run);

} // namespace vek
