#include "userstate/RecoveryCopies.h"

#include "base/Bytes.h"
#include "base/DurableFile.h"
#include "base/Errors.h"
#include "userstate/TimedFiles.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vek {

namespace fs = std::filesystem;

namespace {

constexpr const char* recordSuffix = ".VMC";
constexpr const char* textSuffix = ".txt";
constexpr const char* lockSuffix = ".lock";
constexpr std::size_t longestText = std::size_t{64} * 1024;
constexpr std::size_t mostCopies = 20;
constexpr std::int64_t keptFor = std::int64_t{31} * 24 * 60 * 60; // seconds
constexpr mode_t forUserOnly = 0600;

void Delete(const std::string& path) {
    std::error_code ignored;
    fs::remove(path, ignored);
}

bool Exists(const std::string& path) {
    std::error_code ignored;
    return fs::exists(fs::symlink_status(path, ignored));
}

RecoveryOrigin OriginAt(const std::string& stem) {
    try {
        const auto bytes = ReadRegularFile(stem + textSuffix, longestText);
        const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
        if (auto origin = DecodeRecoveryText(text))
            return *origin;
    } catch (const FileError&) {
        // The copy itself is there.
    }
    RecoveryOrigin origin;
    struct stat status = {};
    if (::stat((stem + recordSuffix).c_str(), &status) == 0)
        origin.Time = status.st_mtime;
    return origin;
}

} // namespace

RecoveryCopy RecoveryCopy::Create(const std::string& folder) {
    TimedFile lock = CreateTimedFile(folder, lockSuffix);
    if (::flock(lock.File.Get(), LOCK_EX | LOCK_NB) == 0)
        return {std::move(lock.Stem), std::move(lock.File)};
    const int reason = errno;
    Delete(lock.Stem + lockSuffix);
    throw FileError(folder, std::strerror(reason));
}

RecoveryCopy::~RecoveryCopy() {
    if (!lock_.Open() || Exists(Path()))
        return;
    Delete(stem_ + textSuffix);
    Delete(stem_ + lockSuffix);
}

void RecoveryCopy::Write(std::span<const std::byte> record, const RecoveryOrigin& origin) const {
    WriteFileDurably(Path(), record, ExistingTail::Drop);
    WriteFileDurably(stem_ + textSuffix, AsBytes(EncodeRecoveryText(origin)), ExistingTail::Drop);
}

void RecoveryCopy::Remove() const {
    Delete(Path());
    Delete(stem_ + textSuffix);
}

std::string RecoveryCopy::Path() const { return stem_ + recordSuffix; }

RecoveryOrigin RecoveryCopy::Origin() const { return OriginAt(stem_); }

std::optional<RecoveryCopy> RecoveryFolder::Take(const std::string& stem) const {
    const std::string path = stem + lockSuffix;
    Descriptor lock(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, forUserOnly));
    if (!lock.Open() || ::flock(lock.Get(), LOCK_EX | LOCK_NB) != 0)
        return std::nullopt;
    // Its holder may have removed it, and with it the copy, in between.
    struct stat held = {};
    struct stat present = {};
    if (::fstat(lock.Get(), &held) != 0 || ::stat(path.c_str(), &present) != 0 ||
        held.st_ino != present.st_ino)
        return std::nullopt;
    return RecoveryCopy(stem, std::move(lock));
}

std::vector<std::string> RecoveryFolder::Stems(const char* suffix) const {
    std::vector<std::string> stems;
    std::error_code error;
    for (fs::directory_iterator entry(path_, error), end; !error && entry != end; entry.increment(error)) {
        const fs::path& file = entry->path();
        if (file.extension() == suffix)
            stems.push_back((file.parent_path() / file.stem()).string());
    }
    return stems;
}

std::vector<std::string> RecoveryFolder::CopiesFromNewest() const {
    std::vector<std::pair<std::int64_t, std::string>> copies;
    for (std::string& stem : Stems(recordSuffix))
        copies.emplace_back(OriginAt(stem).Time, std::move(stem));
    std::ranges::sort(copies, std::greater());
    std::vector<std::string> stems;
    stems.reserve(copies.size());
    for (auto& [time, stem] : copies)
        stems.push_back(std::move(stem));
    return stems;
}

std::optional<RecoveryCopy> RecoveryFolder::TakeNewest() const {
    for (const std::string& stem : CopiesFromNewest()) {
        if (auto copy = Take(stem))
            return copy;
    }
    return std::nullopt;
}

void RecoveryFolder::Prune(std::int64_t now) const {
    const auto copies = CopiesFromNewest();
    for (std::size_t i = mostCopies; i < copies.size(); ++i) {
        if (now - OriginAt(copies[i]).Time < keptFor)
            continue;
        if (const auto copy = Take(copies[i]))
            copy->Remove();
    }
    for (const char* suffix : {textSuffix, lockSuffix}) {
        for (const std::string& stem : Stems(suffix)) {
            if (!Exists(stem + recordSuffix))
                Take(stem);
        }
    }
}

} // namespace vek
