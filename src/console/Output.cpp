#include "console/Output.h"

#include <CLI/CLI.hpp>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

namespace vek {

bool IsStandardOutput(const std::string& path) {
    return path == standardStream || path == "/dev/stdout" || path == "/dev/fd/1" ||
           path == "/proc/self/fd/1";
}

void RefuseOwnInput(const std::string& output, const std::string& input) {
    struct stat to = {};
    struct stat from = {};
    const int out = IsStandardOutput(output) ? ::fstat(STDOUT_FILENO, &to) : ::stat(output.c_str(), &to);
    const int in = input == standardStream ? ::fstat(STDIN_FILENO, &from) : ::stat(input.c_str(), &from);
    if (out == 0 && in == 0 && S_ISREG(to.st_mode) && to.st_dev == from.st_dev && to.st_ino == from.st_ino)
        throw FileError((IsStandardOutput(output) ? "standard output" : output) +
                        ": is the file that is read");
}

void WriteOutput(const std::string& path, std::span<const std::byte> bytes, ExistingTail tail) {
    if (!IsStandardOutput(path)) {
        WriteFileDurably(path, bytes, tail);
        return;
    }
    if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size() && std::fflush(stdout) == 0)
        return;
    constexpr int readerGone = 1;
    if (errno == EPIPE)
        throw CLI::RuntimeError(readerGone);
    throw OutputError(std::string("standard output: ") + std::strerror(errno));
}

} // namespace vek
