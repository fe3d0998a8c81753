#include "vekctl/Output.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace vek {

void WriteOutput(const std::string& path, std::span<const std::byte> bytes, ExistingTail tail) {
    if (path != standardStream) {
        WriteFileDurably(path, bytes, tail);
        return;
    }
    if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) != bytes.size() || std::fflush(stdout) != 0)
        throw OutputError(std::string("standard output: ") + std::strerror(errno));
}

} // namespace vek
