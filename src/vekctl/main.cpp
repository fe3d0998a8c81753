// vekctl: what the editor does with files and devices, from the command line.
#include "console/CommandLine.h"
#include "vekctl/Commands.h"

#include <CLI/CLI.hpp>

int main(int argc, char** argv) {
    CLI::App app("Configurations of the Matrix Vek: make, examine, compare, export and download them.",
                 "vekctl");
    app.set_version_flag("--version", "vekctl " VEK_VERSION);
    for (const auto addCommand : vek::commands)
        addCommand(app);
    return vek::RunCommandLine(app, argc, argv);
}
