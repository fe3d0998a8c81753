// vekctl: what the editor does with files and devices, from the command line.
#include "vekctl/Commands.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <exception>

namespace {

constexpr int failed = 1;
constexpr int wrongUsage = 2;

} // namespace

int main(int argc, char** argv) {
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
        return app.exit(error) == 0 ? 0 : wrongUsage;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "vekctl: %s\n", error.what());
        return failed;
    }
}
