// vekctl-serial: the part of vekctl that uses serial ports, and with them Qt. vekctl turns into it for its
// own commands "ports", "find", "doctor" and "program".
#include "console/CommandLine.h"
#include "vekctl-serial/SerialCommands.h"

#include <CLI/CLI.hpp>
#include <QCoreApplication>

int main(int argc, char** argv) {
    CLI::App app("Commands of vekctl that use a serial port.", "vekctl");
    const QCoreApplication application(argc, argv);
    vek::AddPortCommandLines(app, [](const vek::PortCommand& command) {
        if (command.Name == "ports")
            vek::RunPorts();
        else if (command.Name == "find")
            vek::RunFind(command);
        else if (command.Name == "doctor")
            vek::RunDoctor(command);
        else
            vek::RunProgram(command);
    });
    return vek::RunCommandLine(app, argc, argv);
}
