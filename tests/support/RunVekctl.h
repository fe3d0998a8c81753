// Runs the built vekctl as a user would.
#pragma once

#include "support/TestData.h"

#include <cstdlib>
#include <string>
#include <sys/wait.h>

namespace vek::test {

struct RunResult {
    int Status; ///< exit status; -1 when a signal ended it
    std::string Out;
    std::string Err;
};

/// The arguments go through the shell, after `before`; `folder` is the current folder and gets
/// the files of the outputs.
inline RunResult RunVekctl(const TemporaryFolder& folder, const std::string& arguments,
                           const std::string& before = {}) {
    const std::string command =
        "cd '" + folder.Path() + "' && { " + before + VEKCTL " " + arguments + "; } >.out 2>.err";
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadText(folder.Path(".out")),
            ReadText(folder.Path(".err"))};
}

} // namespace vek::test
