// A program started by a test.
#pragma once

#include "support/TestData.h"

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <utility>
#include <vector>

namespace vek::test {

/// Runs beside the test; killed when it is still there at the end.
class ChildProcess {
  public:
    /// Standard output and standard error go to the two paths. The first argument is the program's path;
    /// `environment` is all that it gets, "NAME=value" each.
    ChildProcess(std::vector<std::string> arguments, std::vector<std::string> environment,
                 const std::string& out, const std::string& err) {
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&actions, 1, out.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NOCTTY,
                                         0600);
        posix_spawn_file_actions_addopen(&actions, 2, err.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NOCTTY,
                                         0600);
        const int failure = posix_spawn(&process, arguments[0].c_str(), &actions, nullptr,
                                        Pointers(arguments).data(), Pointers(environment).data());
        posix_spawn_file_actions_destroy(&actions);
        if (failure != 0)
            throw std::runtime_error("cannot start " + arguments[0]);
    }
    ChildProcess(ChildProcess&& other) noexcept : process(std::exchange(other.process, -1)) {}
    ChildProcess& operator=(ChildProcess&&) = delete;
    ~ChildProcess() {
        if (process <= 0)
            return;
        Signal(SIGKILL);
        ::waitpid(process, nullptr, 0);
    }

    void Signal(int signal) { ::kill(process, signal); }

    /// The exit status; minus the signal's number when one ended it. -1000 when it does not end in time.
    int Wait(std::chrono::milliseconds patience = std::chrono::seconds(60)) {
        const auto end = std::chrono::steady_clock::now() + patience;
        int status = 0;
        while (::waitpid(process, &status, WNOHANG) == 0) {
            if (std::chrono::steady_clock::now() > end)
                return -1000;
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        process = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }

  private:
    static std::vector<char*> Pointers(std::vector<std::string>& texts) {
        std::vector<char*> pointers;
        for (std::string& text : texts)
            pointers.push_back(text.data());
        pointers.push_back(nullptr);
        return pointers;
    }

    pid_t process = -1;
};

} // namespace vek::test
