// The system calls of the durable file writer, as a seam: whatever can go wrong with a disk can be made to go
// wrong.
#pragma once

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <functional>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vek {

/// Each call takes and returns what the system's own does: -1, with the reason in errno, when it failed.
struct FileOperations {
    std::function<int(const char* path, int flags)> Open = [](const char* path, int flags) {
        return ::open(path, flags);
    };
    std::function<int(char* name, int flags)> OpenTemporary = ::mkostemp;
    std::function<int(int file, struct stat* status)> Status = ::fstat;
    std::function<int(const char* path, int mode)> Access = ::access;
    std::function<ssize_t(int file, void* space, std::size_t size)> Read = ::read;
    std::function<ssize_t(int file, const void* bytes, std::size_t size)> Write = ::write;
    std::function<off_t(int file, off_t offset, int from)> Seek = ::lseek;
    std::function<int(int file, uid_t owner, gid_t group)> ChangeOwner = ::fchown;
    std::function<int(int file, mode_t mode)> ChangeMode = ::fchmod;
    std::function<int(int file, int operation)> Lock = ::flock;
    std::function<int(int file)> Sync = ::fsync;
    std::function<int(int file)> Close = ::close;
    std::function<int(const char* from, const char* to)> Rename = ::rename;
    std::function<int(const char* path)> Remove = ::unlink;
};

/// The operations of everything that is not handed its own. Tests replace them, while no other thread writes
/// files.
FileOperations& SystemFiles();

/// Calls an operation again as long as a signal interrupts it; a disk that does nothing else fails in the
/// end. Not for Close, which is over in any case.
template <typename Operation, typename... Arguments>
auto Retried(const Operation& operation, Arguments... arguments) {
    constexpr int mostAttempts = 1000;
    auto result = operation(arguments...);
    for (int attempt = 1; result < 0 && errno == EINTR && attempt < mostAttempts; ++attempt)
        result = operation(arguments...);
    return result;
}

} // namespace vek
