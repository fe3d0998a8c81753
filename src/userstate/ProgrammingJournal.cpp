#include "userstate/ProgrammingJournal.h"

#include "base/Bytes.h"
#include "base/DurableFile.h"
#include "base/Errors.h"
#include "userstate/TimedFiles.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <sys/stat.h>
#include <system_error>

namespace vek {

namespace fs = std::filesystem;

namespace {

constexpr const char* folderName = "/downloads";
constexpr std::size_t longestText = std::size_t{64} * 1024;
constexpr std::size_t mostAttempts = 5000;
constexpr std::int64_t keptFor = std::int64_t{2} * 365 * 24 * 60 * 60; // seconds

void Delete(const std::string& path) {
    std::error_code ignored;
    fs::remove(path, ignored);
}

} // namespace

ProgrammingJournal::ProgrammingJournal(const std::string& stateFolder)
    : folder_(stateFolder.empty() ? std::string() : stateFolder + folderName) {}

KeptAttempt ProgrammingJournal::Enter(const JournalEntry& entry, std::span<const std::byte> record) const {
    if (folder_.empty())
        throw FileError("there is no folder for it");
    const KeptAttempt attempt = {entry, CreateTimedFile(folder_, KeptAttempt::RecordSuffix).Stem};
    try {
        WriteFileDurably(attempt.ConfigPath(), record, ExistingTail::Drop);
        Update(attempt);
    } catch (const FileError&) {
        Delete(attempt.ConfigPath());
        throw;
    }
    return attempt;
}

void ProgrammingJournal::Update(const KeptAttempt& attempt) const {
    WriteFileDurably(attempt.TextPath(), AsBytes(EncodeJournalEntry(attempt.Entry)), ExistingTail::Drop);
}

std::vector<std::string> ProgrammingJournal::Names() const {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder_, error), end; !error && entry != end; entry.increment(error)) {
        const fs::path& file = entry->path();
        if ((file.extension() == KeptAttempt::RecordSuffix || file.extension() == KeptAttempt::TextSuffix) &&
            IsTimedName(file.stem().string()))
            names.push_back(file.stem().string());
    }
    if (error && error != std::errc::no_such_file_or_directory)
        throw FileError(folder_, error.message());
    std::ranges::sort(names, std::greater());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

std::optional<KeptAttempt> ProgrammingJournal::Read(const std::string& name) const {
    KeptAttempt attempt = {{}, folder_ + '/' + name};
    std::error_code error;
    if (!fs::is_regular_file(attempt.ConfigPath(), error))
        return std::nullopt;
    try {
        const auto bytes = ReadRegularFile(attempt.TextPath(), longestText);
        const auto entry = DecodeJournalEntry({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
        if (!entry)
            return std::nullopt;
        attempt.Entry = *entry;
        return attempt;
    } catch (const FileError&) {
        return std::nullopt;
    }
}

std::vector<KeptAttempt> ProgrammingJournal::FromNewest() const {
    std::vector<KeptAttempt> attempts;
    for (const std::string& name : Names()) {
        if (auto attempt = Read(name))
            attempts.push_back(std::move(*attempt));
    }
    return attempts;
}

std::optional<KeptAttempt> ProgrammingJournal::LastProgrammed() const {
    for (const std::string& name : Names()) {
        auto attempt = Read(name);
        if (attempt && attempt->Entry.Result == AttemptResult::Programmed)
            return attempt;
    }
    return std::nullopt;
}

ProgrammingJournal::Mark ProgrammingJournal::ChangeMark() const {
    struct stat status = {};
    if (folder_.empty() || ::stat(folder_.c_str(), &status) != 0)
        return {};
    return {status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

void ProgrammingJournal::Prune(std::int64_t now) const {
    const std::string oldest = TimeInName(now - keptFor);
    const auto names = Names();
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (i < mostAttempts && names[i] >= oldest)
            continue;
        const KeptAttempt attempt = {{}, folder_ + '/' + names[i]};
        // Half removed it does not count any more.
        Delete(attempt.TextPath());
        Delete(attempt.ConfigPath());
    }
}

} // namespace vek
