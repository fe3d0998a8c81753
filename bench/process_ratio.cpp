// How long a command takes from start to end, as a ratio to another one. The two run in turn, so that
// whatever else the machine does meets both alike; medians are compared.
#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <vector>

namespace {

using Microseconds = std::chrono::duration<double, std::micro>;

/// Runs the command with its output thrown away; ends the program when it fails.
double TimeOf(char** command) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    const auto start = std::chrono::steady_clock::now();
    pid_t child = 0;
    int status = ::posix_spawnp(&child, command[0], &actions, nullptr, command, environ);
    if (status == 0)
        ::waitpid(child, &status, 0);
    else
        std::fprintf(stderr, "%s: %s\n", command[0], std::strerror(status));
    const Microseconds taken = std::chrono::steady_clock::now() - start;
    posix_spawn_file_actions_destroy(&actions);
    if (status != 0) {
        std::fprintf(stderr, "%s failed\n", command[0]);
        std::exit(1);
    }
    return taken.count();
}

double Median(std::vector<double>& times) {
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

} // namespace

int main(int argc, char** argv) {
    constexpr int runs = 500;
    if (argc < 3) {
        std::fputs("usage: process_ratio YARDSTICK COMMAND [ARGUMENT...]\n", stderr);
        return 2;
    }
    std::array<char*, 2> yardstick = {argv[1], nullptr};
    std::vector<double> yardstickTimes;
    std::vector<double> commandTimes;
    for (int run = 0; run < runs; ++run) {
        yardstickTimes.push_back(TimeOf(yardstick.data()));
        commandTimes.push_back(TimeOf(argv + 2));
    }
    const double base = Median(yardstickTimes);
    const double command = Median(commandTimes);
    std::printf("yardstick %.0f us, command %.0f us, ratio %.2f (medians of %d runs)\n", base, command,
                command / base, runs);
    return 0;
}
