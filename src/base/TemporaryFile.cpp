#include "base/TemporaryFile.h"

#include <ctime>
#include <filesystem>
#include <string_view>
#include <sys/file.h>

namespace vek {

namespace {

constexpr std::string_view prefix = ".vorn-matrix-";
constexpr std::string_view places = "XXXXXX"; // filled by the system
constexpr std::time_t leftoverAge = 60;       // seconds

/// Left behind by this user, and nobody writes it any more.
bool IsLeftover(const Descriptor& file, const FileOperations& operations) {
    struct stat status = {};
    return file.Open() && operations.Status(file.Get(), &status) == 0 && S_ISREG(status.st_mode) &&
           status.st_uid == ::geteuid() && std::time(nullptr) - status.st_mtime > leftoverAge &&
           operations.Lock(file.Get(), LOCK_EX | LOCK_NB) == 0;
}

void RemoveLeftovers(const std::string& folder, const FileOperations& operations) {
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (name.size() != prefix.size() + places.size() || !name.starts_with(prefix))
            continue;
        const Descriptor file(operations.Open(entry->path().c_str(),
                                              O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY | O_NOFOLLOW));
        if (IsLeftover(file, operations))
            operations.Remove(entry->path().c_str());
    }
}

} // namespace

TemporaryFile::TemporaryFile(const FileOperations& operations, const std::string& folder,
                             const CheckedFile& checked)
    : operations_(operations), name_(folder + '/') {
    RemoveLeftovers(folder, operations);
    (name_ += prefix) += places;
    // An interrupted call may have filled the places already.
    const std::string pattern = name_;
    file =
        Descriptor(Retried([&] { return operations_.OpenTemporary((name_ = pattern).data(), O_CLOEXEC); }));
    if (!file.Open())
        checked.FailWithErrno();
    // Tells others that it is in use; where locks cannot be had its age does.
    Retried(operations_.Lock, file.Get(), LOCK_EX | LOCK_NB);
}

TemporaryFile::~TemporaryFile() {
    if (!name_.empty())
        Retried(operations_.Remove, name_.c_str());
}

void TemporaryFile::Rename(const std::string& target, const CheckedFile& checked) {
    // Closing can report the failure of an earlier write; interrupted, the file is closed all the same.
    if (operations_.Close(file.Release()) != 0 && errno != EINTR)
        checked.FailWithErrno();
    if (Retried(operations_.Rename, name_.c_str(), target.c_str()) != 0)
        checked.FailWithErrno();
    name_.clear();
}

} // namespace vek
