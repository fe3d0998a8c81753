#include "console/PortCommandLine.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace vek {

namespace {

constexpr const char* portMeaning = "COM1 to COM4, a name such as ttyUSB0, or the path of a device";

} // namespace

void AddPortCommandLines(CLI::App& app, const std::function<void(const PortCommand&)>& run) {
    auto command = std::make_shared<PortCommand>();
    const auto add = [&](const std::string& name, const std::string& description) {
        CLI::App* added = app.add_subcommand(name, description);
        added->callback([command, name, run] {
            command->Name = name;
            run(*command);
        });
        return added;
    };

    CLI::App* ports = add("ports", "List the serial ports COM1 to COM4");
    ports->footer(
        "The environment variables VEK_COM1 to VEK_COM4 name the device of a port; an empty one says that\n"
        "there is no such port. The others are the serial ports of this machine, USB adapters first.");

    CLI::App* find = add("find", "Look for devices; succeeds when there is a Matrix Vek");
    find->add_option("--port", command->Port, std::string("Look on one port only: ") + portMeaning)
        ->type_name("PORT");

    CLI::App* doctor =
        add("doctor", "Tell what stands in the way of a Matrix Vek, port by port; succeeds when "
                      "there is one");
    doctor->add_option("--port", command->Port, std::string("Examine one port only: ") + portMeaning)
        ->type_name("PORT");
    doctor->footer("Asks what \"find\" asks: a known device is restarted, none is programmed.");

    CLI::App* program =
        add("program", "Download a configuration to the Matrix Vek on a port, and restart it");
    program->add_option("FILE.VMC", command->File, "The configuration")->required();
    program->add_option("--port", command->Port, std::string("The port of the Matrix Vek: ") + portMeaning)
        ->type_name("PORT")
        ->required();
}

} // namespace vek
