#include "console/Input.h"

#include "base/CheckedFile.h"
#include "base/DurableFile.h"
#include "base/Errors.h"
#include "model/RecordLayout.h"

#include <algorithm>
#include <fcntl.h>
#include <span>
#include <sys/stat.h>
#include <unistd.h>

namespace vek {

namespace {

bool IsFifo(const std::string& path) {
    struct stat status = {};
    return ::stat(path.c_str(), &status) == 0 && S_ISFIFO(status.st_mode);
}

std::vector<std::byte> ReadStream(const Descriptor& stream, const std::string& name, std::size_t limit) {
    constexpr std::size_t chunkSize = std::size_t{64} * 1024;
    const FileOperations operations;
    const CheckedFile checked(operations, name);
    if (!stream.Open())
        checked.FailWithErrno();
    std::vector<std::byte> bytes;
    while (bytes.size() < limit) {
        const std::size_t size = bytes.size();
        bytes.resize(std::min(limit, size + chunkSize));
        const std::size_t got = checked.ReadSome(stream, std::span(bytes).subspan(size));
        bytes.resize(size + got);
        if (got == 0)
            break;
    }
    return bytes;
}

} // namespace

std::string InputName(const std::string& path) { return path == standardStream ? "standard input" : path; }

std::vector<std::byte> ReadInput(const std::string& path, std::size_t limit) {
    if (path == standardStream)
        return ReadStream(Descriptor(::dup(STDIN_FILENO)), InputName(path), limit);
    // Waits for the writer of a FIFO, which a look at a regular file must never do.
    if (IsFifo(path))
        return ReadStream(Descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC)), path, limit);
    return ReadRegularFile(path, limit);
}

MatrixConfig LoadConfigInput(const std::string& path) {
    const auto bytes = ReadInput(path, recordSize);
    try {
        return DecodeRecord(bytes);
    } catch (const FileError& error) {
        throw FileError(InputName(path) + ": " + error.what());
    }
}

} // namespace vek
