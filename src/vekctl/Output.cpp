#include "vekctl/Output.h"

#include "base/Errors.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace vek {

void WriteOutput(const std::string& path, std::span<const std::byte> bytes, ExistingTail tail) {
    if (path != "-") {
        WriteFileDurably(path, bytes, tail);
        return;
    }
    if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) != bytes.size() || std::fflush(stdout) != 0)
        throw FileError(std::string("standard output: ") + std::strerror(errno));
}

} // namespace vek
