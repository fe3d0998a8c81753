#include "console/CommandLine.h"

#include <CLI/CLI.hpp>

#include <csignal>
#include <cstdio>
#include <exception>
#include <iostream>

namespace vek {

namespace {

constexpr int failed = 1;
constexpr int wrongUsage = 2;

} // namespace

int RunCommandLine(CLI::App& app, int argc, char** argv) {
    // A reader of standard output that went away is then an error of writing, which is reported.
    std::signal(SIGPIPE, SIG_IGN);
    app.require_subcommand(1);
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

} // namespace vek
