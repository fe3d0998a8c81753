#include "userstate/AttemptRecord.h"

#include "base/Errors.h"
#include "link/OutcomeTexts.h"

#include <array>
#include <chrono>
#include <ctime>
#include <pwd.h>
#include <unistd.h>
#include <utility>

namespace vek {

namespace {

std::string HostName() {
    std::array<char, 256> name = {};
    return ::gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "";
}

std::string UserName() {
    std::array<char, 4096> space = {};
    passwd user = {};
    passwd* found = nullptr;
    ::getpwuid_r(::getuid(), &user, space.data(), space.size(), &found);
    return found != nullptr ? found->pw_name : std::to_string(::getuid());
}

void StampNow(JournalEntry& entry) {
    const std::time_t now = std::time(nullptr);
    std::tm parts = {};
    ::localtime_r(&now, &parts);
    entry.Time = now;
    entry.ZoneOffset = static_cast<int>(parts.tm_gmtoff);
}

AttemptResult ResultOf(FailureKind failure) {
    switch (failure) {
    case FailureKind::PortNotOpen:
        return AttemptResult::PortNotOpen;
    case FailureKind::NotResponding:
        return AttemptResult::NoAnswer;
    case FailureKind::DownloadNoReply:
        return AttemptResult::BlockNotAnswered;
    case FailureKind::DownloadRefused:
        return AttemptResult::BlockRefused;
    default:
        return AttemptResult::RestartFailed;
    }
}

} // namespace

std::int64_t SteadyMilliseconds() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

AttemptRecord::AttemptRecord(const ProgrammingJournal& journal, JournalEntry entry,
                             std::span<const std::byte> record, Clock clock)
    : journal_(journal), entry_(std::move(entry)), clock_(std::move(clock)), begun_(clock_()) {
    StampNow(entry_);
    entry_.Host = HostName();
    entry_.User = UserName();
    Keep([&] { kept_ = journal_.Enter(entry_, record); });
}

void AttemptRecord::Keep(const std::function<void()>& write) {
    try {
        write();
    } catch (const FileError& error) {
        problem_ = "The programming history could not be written: " + error.Reason();
    }
}

void AttemptRecord::Found(const PortFinding& device) {
    entry_.DeviceCode = DeviceCode(device);
    entry_.DeviceName = device.Type != nullptr ? device.Type->Name : std::string();
    entry_.DeviceVersion = VersionText(device.Found);
}

void AttemptRecord::DownloadBegins() {
    if (!kept_)
        return;
    kept_->Entry = entry_;
    Keep([this] { journal_.Update(*kept_); });
}

void AttemptRecord::Progress(const DownloadProgress& progress) {
    entry_.BlocksAcknowledged = progress.Acknowledged;
    entry_.Retries = progress.Retries;
}

void AttemptRecord::End(FailureKind failure) { End(ResultOf(failure)); }

void AttemptRecord::End(AttemptResult result) {
    if (entry_.Result != AttemptResult::Unfinished)
        return;
    entry_.Result = result;
    entry_.Milliseconds = static_cast<int>(clock_() - begun_);
    if (!kept_)
        return;
    kept_->Entry = entry_;
    Keep([this] {
        journal_.Update(*kept_);
        journal_.Prune(entry_.Time);
    });
}

} // namespace vek
