// Disks that fail: any call of any operation on files.
#pragma once

#include "base/FileOperations.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <string>

namespace vek::test {

/// Makes call `nth` (from 1) of an operation fail with `error`, or write but a byte for `shortWrite`. `nth`
/// is 0 afterwards when it came to that.
inline constexpr int shortWrite = -1;
template <auto Operation>
void FailCall(FileOperations& files, int& nth, int error) {
    files.*Operation = [real = files.*Operation, &nth, error](auto... args) {
        if (nth > 0 && --nth == 0)
            return errno = error, decltype(real(args...)){-1};
        return real(args...);
    };
}
template <>
inline void FailCall<&FileOperations::Write>(FileOperations& files, int& nth, int error) {
    files.Write = [real = files.Write, &nth, error](int file, const void* bytes, std::size_t size) {
        if (nth <= 0 || --nth > 0)
            return real(file, bytes, size);
        return error == shortWrite ? real(file, bytes, 1) : (errno = error, ssize_t{-1});
    };
}

struct FailingOperation {
    const char* Name;
    void (*Fail)(FileOperations&, int& nth, int error);
};
inline constexpr FailingOperation failingOperations[] = {
    {"open", FailCall<&FileOperations::Open>},     {"status", FailCall<&FileOperations::Status>},
    {"access", FailCall<&FileOperations::Access>}, {"temporary", FailCall<&FileOperations::OpenTemporary>},
    {"write", FailCall<&FileOperations::Write>},   {"seek", FailCall<&FileOperations::Seek>},
    {"read", FailCall<&FileOperations::Read>},     {"owner", FailCall<&FileOperations::ChangeOwner>},
    {"lock", FailCall<&FileOperations::Lock>},     {"mode", FailCall<&FileOperations::ChangeMode>},
    {"sync", FailCall<&FileOperations::Sync>},     {"close", FailCall<&FileOperations::Close>},
    {"rename", FailCall<&FileOperations::Rename>}, {"remove", FailCall<&FileOperations::Remove>},
};
inline constexpr int diskErrors[] = {ENOSPC, EIO, EINTR, EACCES, EDQUOT, shortWrite};

/// Puts failing operations in place of the system's for as long as it lives. Nothing is synced really, which
/// takes long.
class FailingDisk {
  public:
    FailingDisk(const FailingOperation& operation, int nth, int error) : nth_(nth) {
        SystemFiles().Sync = [](int) { return 0; };
        operation.Fail(SystemFiles(), nth_, error);
    }
    FailingDisk(const FailingDisk&) = delete;
    FailingDisk& operator=(const FailingDisk&) = delete;
    ~FailingDisk() { SystemFiles() = {}; }
    /// It came to the failing call.
    bool Failed() const { return nth_ == 0; }

  private:
    int nth_;
};

/// Has every call of every operation fail in every way while `attempt` runs, one at a time, and then runs
/// `check`.
template <typename Attempt, typename Check>
void ForEveryFailure(Attempt attempt, Check check) {
    for (const auto& operation : failingOperations) {
        for (const int error : diskErrors) {
            bool failed = true;
            for (int call = 1; failed; ++call) {
                SCOPED_TRACE(std::string(operation.Name) + ", call " + std::to_string(call) + ", error " +
                             std::to_string(error));
                {
                    const FailingDisk disk(operation, call, error);
                    attempt();
                    failed = disk.Failed();
                }
                check();
            }
        }
    }
}

} // namespace vek::test
