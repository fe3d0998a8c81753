#include "base/DurableFile.h"

#include "base/CheckedFile.h"
#include "base/DeferredSignals.h"
#include "base/TemporaryFile.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>

namespace vek {

namespace {

/// The file that a path finally names: links are followed, also one whose target does not exist yet.
std::string ResolveLinks(const std::string& path, const CheckedFile& checked) {
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
    checked.Fail("too many levels of symbolic links");
}

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

constexpr auto sameOwner = static_cast<uid_t>(-1);

mode_t NewFileMode() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

/// The file that is to be replaced.
struct OldFile {
    Descriptor File; ///< not open when there is none yet
    struct stat Status = {};
};

OldFile OpenOldFile(const std::string& target, const FileOperations& operations, const CheckedFile& checked) {
    OldFile old = {.File = checked.OpenForReading(target)};
    if (old.File.Open()) {
        old.Status = checked.RegularStatus(old.File);
        if (Retried(operations.Access, target.c_str(), W_OK) != 0)
            checked.FailWithErrno();
    } else if (errno != ENOENT) {
        checked.FailWithErrno();
    }
    return old;
}

void TakeOverModeAndOwner(const Descriptor& file, const OldFile& old, const FileOperations& operations,
                          const CheckedFile& checked) {
    mode_t mode = old.File.Open() ? old.Status.st_mode & 07777 : NewFileMode();
    // The owner of another user's file in a shared folder cannot be kept. Its group usually can; where it
    // cannot, the rights were meant for another group than the one that would have them now.
    if (old.File.Open() &&
        Retried(operations.ChangeOwner, file.Get(), old.Status.st_uid, old.Status.st_gid) != 0 &&
        Retried(operations.ChangeOwner, file.Get(), sameOwner, old.Status.st_gid) != 0)
        mode &= ~static_cast<mode_t>(S_IRWXG);
    if (Retried(operations.ChangeMode, file.Get(), mode) != 0)
        checked.FailWithErrno();
}

void SyncFolder(const std::string& folder, const FileOperations& operations) {
    const Descriptor handle(Retried(operations.Open, folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (handle.Open())
        Retried(operations.Sync, handle.Get());
}

} // namespace

FileOperations& SystemFiles() {
    static FileOperations operations;
    return operations;
}

void WriteFileDurably(const std::string& path, std::span<const std::byte> bytes, ExistingTail tail,
                      const FileOperations& operations) {
    const CheckedFile checked(operations, path);
    if (path.empty())
        checked.Fail("no file name");
    const std::string target = ResolveLinks(path, checked);
    const OldFile old = OpenOldFile(target, operations, checked);
    const bool tailStays = old.File.Open() && tail == ExistingTail::Keep;

    const std::string folder = FolderOf(target);
    const DeferredSignals deferred;
    TemporaryFile temporary(operations, folder, checked);
    checked.WriteAll(temporary.file, bytes);
    if (tailStays)
        checked.CopyTail(old.File, temporary.file, bytes.size());
    TakeOverModeAndOwner(temporary.file, old, operations, checked);
    if (Retried(operations.Sync, temporary.file.Get()) != 0)
        checked.FailWithErrno();

    checked.SeekTo(temporary.file, 0);
    if (!checked.HoldsNext(temporary.file, bytes) ||
        (tailStays && !checked.HoldsTail(temporary.file, old.File, bytes.size())))
        checked.Fail("what was written does not read back");
    temporary.Rename(target, checked);

    // The new file is in place and whole already: a folder that cannot be synced (some network file systems)
    // is no failure.
    SyncFolder(folder, operations);
}

void WriteFileDurably(const std::string& path, std::span<const std::byte> bytes, ExistingTail tail) {
    WriteFileDurably(path, bytes, tail, SystemFiles());
}

void RequireWritable(const std::string& path) {
    const FileOperations& operations = SystemFiles();
    const CheckedFile checked(operations, path);
    if (path.empty())
        checked.Fail("no file name");
    const std::string target = ResolveLinks(path, checked);
    OpenOldFile(target, operations, checked);
    const TemporaryFile temporary(operations, FolderOf(target), checked);
}

std::vector<std::byte> ReadRegularFile(const std::string& path, std::size_t limit) {
    const FileOperations& operations = SystemFiles();
    const CheckedFile checked(operations, path);
    const Descriptor file = checked.OpenForReading(path);
    if (!file.Open())
        checked.FailWithErrno();
    const auto size = static_cast<std::size_t>(checked.RegularStatus(file).st_size);
    std::vector<std::byte> bytes(std::min(limit, size));
    bytes.resize(checked.ReadSome(file, bytes));
    return bytes;
}

} // namespace vek
