#include "console/CommandLine.h"

#include <CLI/CLI.hpp>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <exception>
#include <iostream>
#include <new>

namespace vek {

namespace {

constexpr int failed = 1;
constexpr int wrongUsage = 2;

} // namespace

int RunCommandLine(CLI::App& app, int argc, char** argv) {
    // A reader of standard output that went away is then an error of writing: the command ends in order.
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
        errno = 0;
        std::cout.flush();
        if (!std::cout && errno != EPIPE)
            std::fputs("vekctl: standard output cannot be written\n", stderr);
        return std::cout ? 0 : failed;
    } catch (const std::bad_alloc&) {
        std::fprintf(stderr, "vekctl: %s\n", notEnoughMemory);
        return failed;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "vekctl: %s\n", error.what());
        return failed;
    }
}

} // namespace vek
