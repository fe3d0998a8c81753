// vekctl: what the editor does with files and devices, from the command line.
#include "vekctl/Commands.h"

#include <CLI/CLI.hpp>

#include <csignal>
#include <cstdio>
#include <exception>
#include <iostream>

namespace {

constexpr int failed = 1;
constexpr int wrongUsage = 2;

} // namespace

int main(int argc, char** argv) {
    // A reader of standard output that went away is then an error of writing, which is reported.
    std::signal(SIGPIPE, SIG_IGN);
    CLI::App app("Configurations of the Matrix Vek: make, examine, compare, export and download them.",
                 "vekctl");
    app.set_version_flag("--version", "vekctl " VEK_VERSION);
    app.require_subcommand(1);
    for (const auto addCommand : vek::commands)
        addCommand(app);
    try {
        app.parse(argc, argv);
        return 0;
    } catch (const CLI::RuntimeError& ended) {
        return ended.get_exit_code();
    } catch (const CLI::ParseError& error) {
        if (app.exit(error) != 0)
            return wrongUsage;
        std::cout.flush();
        if (!std::cout)
            std::fputs("vekctl: standard output cannot be written\n", stderr);
        return std::cout ? 0 : failed;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "vekctl: %s\n", error.what());
        return failed;
    }
}
