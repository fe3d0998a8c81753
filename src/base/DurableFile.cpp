#include "base/DurableFile.h"

#include "base/Descriptor.h"
#include "base/Errors.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace vek {

namespace {

[[noreturn]] void Fail(const std::string& path, const std::string& reason) {
    throw FileError(path + ": " + reason);
}

[[noreturn]] void FailWithErrno(const std::string& path) { Fail(path, std::strerror(errno)); }

void RequireRegular(const Descriptor& file, const std::string& path, struct stat& status) {
    if (::fstat(file.Get(), &status) != 0)
        FailWithErrno(path);
    if (S_ISDIR(status.st_mode))
        Fail(path, "is a folder");
    if (!S_ISREG(status.st_mode))
        Fail(path, "is not a regular file");
}

/// O_NONBLOCK keeps the opening of a FIFO from waiting for its other end.
Descriptor OpenForReading(const std::string& path) {
    return Descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
}

std::size_t ReadSome(const Descriptor& file, std::span<std::byte> space, const std::string& path) {
    std::size_t filled = 0;
    while (filled < space.size()) {
        const ssize_t got = ::read(file.Get(), space.data() + filled, space.size() - filled);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            FailWithErrno(path);
        if (got == 0)
            break;
        filled += static_cast<std::size_t>(got);
    }
    return filled;
}

void WriteAll(const Descriptor& file, std::span<const std::byte> bytes, const std::string& path) {
    while (!bytes.empty()) {
        const ssize_t put = ::write(file.Get(), bytes.data(), bytes.size());
        if (put < 0 && errno == EINTR)
            continue;
        if (put <= 0)
            FailWithErrno(path);
        bytes = bytes.subspan(static_cast<std::size_t>(put));
    }
}

constexpr std::size_t chunkSize = 64 * 1024;

void SeekTo(const Descriptor& file, std::size_t offset, const std::string& path) {
    if (::lseek(file.Get(), static_cast<off_t>(offset), SEEK_SET) < 0)
        FailWithErrno(path);
}

/// Copies what the old file holds from `offset` on to the end of the new one.
void CopyTail(const Descriptor& from, const Descriptor& to, std::size_t offset, const std::string& path) {
    SeekTo(from, offset, path);
    std::array<std::byte, chunkSize> chunk;
    while (const std::size_t got = ReadSome(from, chunk, path))
        WriteAll(to, std::span(chunk).first(got), path);
}

/// True when the file holds `bytes` at its current position.
bool HoldsNext(const Descriptor& file, std::span<const std::byte> bytes, const std::string& path) {
    std::array<std::byte, chunkSize> chunk;
    while (!bytes.empty()) {
        const auto wanted = bytes.first(std::min(bytes.size(), chunk.size()));
        if (ReadSome(file, std::span(chunk).first(wanted.size()), path) != wanted.size() ||
            !std::equal(wanted.begin(), wanted.end(), chunk.begin()))
            return false;
        bytes = bytes.subspan(wanted.size());
    }
    return true;
}

void VerifyWritten(const Descriptor& written, std::span<const std::byte> bytes, const Descriptor& old,
                   ExistingTail tail, const std::string& path) {
    SeekTo(written, 0, path);
    bool same = HoldsNext(written, bytes, path);
    if (same && old.Open() && tail == ExistingTail::Keep) {
        SeekTo(old, bytes.size(), path);
        std::array<std::byte, chunkSize> chunk;
        while (const std::size_t got = ReadSome(old, chunk, path))
            same = same && HoldsNext(written, std::span(chunk).first(got), path);
    }
    if (!same)
        Fail(path, "what was written does not read back");
}

/// The file that a path finally names: links are followed, also one whose target does not exist yet.
std::string ResolveLinks(const std::string& path) {
    namespace fs = std::filesystem;
    fs::path current = path;
    constexpr int mostLinks = 40;
    for (int i = 0; i < mostLinks; ++i) {
        std::error_code error;
        const fs::path target = fs::read_symlink(current, error);
        if (error)
            return current.string();
        current = target.is_absolute() ? target : current.parent_path() / target;
    }
    Fail(path, "too many levels of symbolic links");
}

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

/// The new content under its temporary name; removed again unless it took its final place.
class TemporaryFile {
  public:
    TemporaryFile(const std::string& folder, const std::string& path)
        : name_(folder + "/.vorn-matrix-XXXXXX") {
        file = Descriptor(::mkostemp(name_.data(), O_CLOEXEC));
        if (!file.Open())
            FailWithErrno(path);
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (!name_.empty())
            ::unlink(name_.c_str());
    }

    void Rename(const std::string& target) {
        if (!file.Close() || ::rename(name_.c_str(), target.c_str()) != 0)
            FailWithErrno(target);
        name_.clear();
    }

    Descriptor file;

  private:
    std::string name_;
};

mode_t NewFileMode() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

void TakeOverModeAndOwner(const Descriptor& file, const Descriptor& old, const struct stat& status,
                          const std::string& path) {
    if (old.Open() && ::fchown(file.Get(), status.st_uid, status.st_gid) != 0) {
        // Another user's file in a shared folder: the content matters more than the owner.
    }
    if (::fchmod(file.Get(), old.Open() ? status.st_mode & 07777 : NewFileMode()) != 0)
        FailWithErrno(path);
}

} // namespace

void WriteFileDurably(const std::string& path, std::span<const std::byte> bytes, ExistingTail tail) {
    if (path.empty())
        Fail(path, "no file name");
    const std::string target = ResolveLinks(path);
    struct stat status = {};
    Descriptor old = OpenForReading(target);
    if (old.Open()) {
        RequireRegular(old, path, status);
        if (::access(target.c_str(), W_OK) != 0)
            FailWithErrno(path);
    } else if (errno != ENOENT) {
        FailWithErrno(path);
    }

    const std::string folder = FolderOf(target);
    TemporaryFile temporary(folder, path);
    WriteAll(temporary.file, bytes, path);
    if (old.Open() && tail == ExistingTail::Keep)
        CopyTail(old, temporary.file, bytes.size(), path);
    TakeOverModeAndOwner(temporary.file, old, status, path);
    if (::fsync(temporary.file.Get()) != 0)
        FailWithErrno(path);
    VerifyWritten(temporary.file, bytes, old, tail, path);
    temporary.Rename(target);

    // The content is safe already; a folder that cannot be synced (some network file systems) is no failure.
    const Descriptor folderHandle(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folderHandle.Open())
        ::fsync(folderHandle.Get());
}

std::vector<std::byte> ReadRegularFile(const std::string& path, std::size_t limit) {
    const Descriptor file = OpenForReading(path);
    if (!file.Open())
        FailWithErrno(path);
    struct stat status = {};
    RequireRegular(file, path, status);
    std::vector<std::byte> bytes(std::min(limit, static_cast<std::size_t>(status.st_size)));
    bytes.resize(ReadSome(file, bytes, path));
    return bytes;
}

} // namespace vek
