// An attempt to program a device on its way into the programming history.
#pragma once

#include "link/Outcomes.h"
#include "userstate/ProgrammingJournal.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>

namespace vek {

/// Since the machine's start.
std::int64_t SteadyMilliseconds();

/// Entered as unfinished when it is made, so that a program that is killed leaves a true entry, and completed
/// when it ends. What cannot be written never stops the attempt.
class AttemptRecord {
  public:
    /// Milliseconds from any beginning, never set back.
    using Clock = std::function<std::int64_t()>;

    /// What is known before: file, port, adapter, blocks and digest; the rest is filled in.
    AttemptRecord(const ProgrammingJournal& journal, JournalEntry entry, std::span<const std::byte> record,
                  Clock clock = SteadyMilliseconds);

    void Found(const PortFinding& device);
    /// The device is about to lose what it held, which the entry tells from now on by naming the device.
    void DownloadBegins();
    void Progress(const DownloadProgress& progress);
    /// The first of these counts.
    void End(FailureKind failure);
    void End(AttemptResult result);

    const JournalEntry& Entry() const { return entry_; }
    /// That the history could not be written, and why; empty when it was.
    const std::string& Problem() const { return problem_; }

  private:
    void Keep(const std::function<void()>& write);

    const ProgrammingJournal journal_;
    JournalEntry entry_;
    const Clock clock_;
    const std::int64_t begun_;
    std::optional<KeptAttempt> kept_;
    std::string problem_;
};

} // namespace vek
