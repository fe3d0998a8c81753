#include "editor/FileOnDisk.h"

#include "base/DurableFile.h"
#include "base/Errors.h"
#include "model/RecordLayout.h"
#include "userstate/RecoveryText.h"

#include <filesystem>
#include <sys/stat.h>

namespace vek {

namespace {

/// Nothing when it cannot be read.
std::optional<std::vector<std::byte>> RecordIn(const std::string& path) {
    try {
        return ReadRegularFile(path, recordSize);
    } catch (const FileError&) {
        return std::nullopt;
    }
}

} // namespace

void FileOnDisk::Follow(const std::string& path, bool named, std::uint64_t digest) {
    // The status is taken at the first look, which reads the file once: it may have changed since.
    *this = {};
    path_ = std::filesystem::absolute(path).string();
    named_ = named;
    saved_ = known_ = digest;
}

std::optional<FileOnDisk::Status> FileOnDisk::StatusNow() const {
    struct stat found = {};
    if (path_.empty() || ::stat(path_.c_str(), &found) != 0)
        return std::nullopt;
    return Status{found.st_dev, found.st_ino, found.st_size, found.st_mtim.tv_sec, found.st_mtim.tv_nsec};
}

bool FileOnDisk::Changed() {
    const auto now = StatusNow();
    if (!now || *now == status_)
        return now && changed_;
    status_ = *now;
    const auto record = RecordIn(path_);
    changed_ = record && RecordDigest(*record) != known_;
    return changed_;
}

void FileOnDisk::Accept() {
    if (const auto record = RecordIn(path_))
        known_ = RecordDigest(*record);
    changed_ = false;
}

std::optional<std::vector<std::byte>> FileOnDisk::OtherVersion(const std::string& path) const {
    std::error_code error;
    if (!saved_ || !std::filesystem::equivalent(path, path_, error))
        return std::nullopt;
    auto record = RecordIn(path_);
    if (record && RecordDigest(*record) == saved_)
        record.reset();
    return record;
}

} // namespace vek
