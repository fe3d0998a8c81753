// The durable file writer on disks that fail: every call that it makes, one after the other.
#include "base/Bytes.h"
#include "base/DurableFile.h"
#include "base/Errors.h"
#include "base/FileOperations.h"
#include "support/TestData.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <vector>

using namespace vek;
using namespace vek::test;

namespace {

enum class Start { Existing, New };

const std::string oldText = "the old content and its tail";
const std::string newText = "THE NEW";
const std::string mergedText = "THE NEW content and its tail";

/// Writes with operations of the test's own and sees that all or nothing came of it.
class FileFaults : public testing::Test {
  protected:
    void SetUp() override { Prepare(Start::Existing); }

    void Prepare(Start start) {
        std::filesystem::remove(path);
        if (start == Start::Existing)
            WriteText(path, oldText);
    }

    /// The reason for which the file was refused, nothing when it was written.
    std::optional<std::string> Refusal(const FileOperations& files, const std::string& text = newText,
                                       ExistingTail tail = ExistingTail::Keep) {
        const bool existed = std::filesystem::exists(path);
        try {
            WriteFileDurably(path, AsBytes(text), tail, files);
        } catch (const FileError& error) {
            EXPECT_EQ(std::filesystem::exists(path), existed);
            EXPECT_EQ(folder.EntryCount(), existed ? 1U : 0U) << "nothing is left over";
            EXPECT_EQ(existed ? ReadText(path) : oldText, oldText) << "the old file is as it was";
            const std::string message = error.what();
            EXPECT_TRUE(message.starts_with(path + ": ")) << message;
            return message.substr(std::min(message.size(), path.size() + 2));
        }
        EXPECT_EQ(folder.EntryCount(), 1U) << "nothing is left over";
        return std::nullopt;
    }

    TemporaryFolder folder;
    std::string path = folder.Path("a");
};

/// Makes call `nth` (from 1) of an operation fail. `nth` is 0 afterwards when it came to that.
template <auto Operation>
void Fail(FileOperations& files, int& nth, int error) {
    files.*Operation = [real = files.*Operation, &nth, error](auto... args) {
        if (nth > 0 && --nth == 0)
            return errno = error, decltype(real(args...)){-1};
        return real(args...);
    };
}

struct FaultCase {
    const char* Name;
    void (*Fail)(FileOperations&, int& nth, int error);
    int Error;
    /// A letter for each call: x when its failure refuses the file, - when the new file is there all the
    /// same.
    const char* Existing;
    const char* New;
};

/// Flips a bit of the byte at `offset` in what is read of the new file once it is synced.
void SpoilReadBack(FileOperations& files, std::size_t offset) {
    const auto synced = std::make_shared<int>(-1);
    files.Sync = [=](int file) { return *synced = file, ::fsync(file); };
    files.Read = [=](int file, void* space, std::size_t size) {
        const auto at = static_cast<std::size_t>(::lseek(file, 0, SEEK_CUR));
        const ssize_t got = ::read(file, space, size);
        if (file == *synced && offset >= at && offset < at + size)
            static_cast<char*>(space)[offset - at] ^= 1;
        return got;
    };
}

} // namespace

TEST_F(FileFaults, EveryCallThatFailsLeavesTheOldFileOrTheNewOne) {
    const FaultCase cases[] = {
        {"open file, open folder", Fail<&FileOperations::Open>, EACCES, "x-", "x-"},
        {"status", Fail<&FileOperations::Status>, EIO, "x", ""},
        {"access", Fail<&FileOperations::Access>, EROFS, "x", ""},
        {"temporary", Fail<&FileOperations::OpenTemporary>, ENOSPC, "x", "x"},
        {"write content, write tail", Fail<&FileOperations::Write>, ENOSPC, "xx", "x"},
        {"seek to tail, to start, to tail", Fail<&FileOperations::Seek>, EIO, "xxx", "x"},
        {"read tail; read back content, tail", Fail<&FileOperations::Read>, EIO, "xxxxxxxx", "x"},
        {"owner", Fail<&FileOperations::ChangeOwner>, EPERM, "-", ""},
        {"mode", Fail<&FileOperations::ChangeMode>, EPERM, "x", "x"},
        {"sync file, sync folder", Fail<&FileOperations::Sync>, EIO, "x-", "x-"},
        {"close", Fail<&FileOperations::Close>, EDQUOT, "x", "x"},
        {"rename", Fail<&FileOperations::Rename>, EBUSY, "x", "x"},
        {"remove", Fail<&FileOperations::Remove>, EIO, "", ""},
    };
    for (const FaultCase& test : cases) {
        for (const Start start : {Start::Existing, Start::New}) {
            std::string outcomes;
            for (int call = 1;; ++call) {
                SCOPED_TRACE(std::string(test.Name) + ", call " + std::to_string(call));
                Prepare(start);
                FileOperations files;
                int nth = call;
                test.Fail(files, nth, test.Error);
                const auto refusal = Refusal(files);
                if (nth > 0)
                    break;
                outcomes += refusal ? 'x' : '-';
                if (refusal)
                    EXPECT_EQ(*refusal, std::strerror(test.Error));
                else
                    EXPECT_EQ(ReadText(path), start == Start::Existing ? mergedText : newText);
            }
            EXPECT_EQ(outcomes, start == Start::Existing ? test.Existing : test.New) << test.Name;
        }
    }
}

// Never tried on a device itself: a writer that forgot to look would put a file in its place.
TEST_F(FileFaults, DevicesAreNotReplaced) {
    FileOperations files;
    for (const mode_t type : {S_IFCHR, S_IFBLK, S_IFSOCK}) {
        files.Status = [type](int, struct stat* status) { return status->st_mode = type | 0666, 0; };
        EXPECT_EQ(Refusal(files), "is not a regular file");
    }
}

TEST_F(FileFaults, ADiskThatFillsUpIsToldEvenWhenTheRemainsCannotBeRemoved) {
    FileOperations files;
    std::size_t room = 10;
    files.Write = [&room](int file, const void* bytes, std::size_t size) -> ssize_t {
        const std::size_t fits = std::min(size, room);
        room -= fits;
        errno = ENOSPC;
        return fits == 0 ? -1 : ::write(file, bytes, fits);
    };
    EXPECT_EQ(Refusal(files), std::strerror(ENOSPC));
    room = 3;
    files.Remove = [](const char* name) { return ::unlink(name), errno = EIO, -1; };
    EXPECT_EQ(Refusal(files), std::strerror(ENOSPC));
    files.Write = [](int, const void*, std::size_t) { return ssize_t{0}; };
    EXPECT_EQ(Refusal(files), "no more could be written");
}

TEST_F(FileFaults, ShortAndInterruptedCallsAreGoneOnWith) {
    FileOperations files;
    int calls = 0;
    const auto interrupted = [&calls] { return errno = EINTR, ++calls % 2 != 0; };
    files.Read = [=](int file, void* space, std::size_t size) {
        return interrupted() ? -1 : ::read(file, space, std::min<std::size_t>(size, 3));
    };
    files.Write = [=](int file, const void* bytes, std::size_t size) {
        return interrupted() ? -1 : ::write(file, bytes, std::min<std::size_t>(size, 2));
    };
    EXPECT_EQ(Refusal(files), std::nullopt);
    EXPECT_EQ(ReadText(path), mergedText);
    EXPECT_GT(calls, 40);
}

TEST_F(FileFaults, WhatDoesNotReadBackIsRefused) {
    constexpr const char* refusal = "what was written does not read back";
    for (const std::size_t offset :
         {std::size_t{0}, newText.size() - 1, newText.size(), oldText.size() - 1}) {
        FileOperations files;
        SpoilReadBack(files, offset);
        EXPECT_EQ(Refusal(files), refusal) << offset;
    }
    const std::string large(150'000, 'x'); // more than is compared at once
    for (const std::size_t offset : {std::size_t{65'536}, large.size() - 1}) {
        FileOperations files;
        SpoilReadBack(files, offset);
        EXPECT_EQ(Refusal(files, large, ExistingTail::Drop), refusal) << offset;
    }
    FileOperations losing;
    losing.Write = [](int file, const void* bytes, std::size_t size) {
        return ::write(file, bytes, size - 1) + 1;
    };
    EXPECT_EQ(Refusal(losing), refusal);
    EXPECT_EQ(Refusal(losing, newText, ExistingTail::Drop), refusal);
    Prepare(Start::Existing);
    EXPECT_EQ(Refusal({}, large, ExistingTail::Drop), std::nullopt);
    EXPECT_EQ(ReadText(path), large);
}

TEST_F(FileFaults, TheContentIsOnTheDiskBeforeItTakesItsPlace) {
    std::string steps;
    const auto step = [&steps](char letter) {
        if (steps.empty() || steps.back() != letter)
            steps += letter;
    };
    FileOperations files;
    files.Write = [&, real = files.Write](auto... args) { return step('w'), real(args...); };
    files.ChangeMode = [&, real = files.ChangeMode](auto... args) { return step('m'), real(args...); };
    files.Sync = [&, real = files.Sync](int file) { return step('s'), real(file); };
    files.Read = [&, real = files.Read](auto... args) { return step('r'), real(args...); };
    files.Close = [&, real = files.Close](int file) { return step('c'), real(file); };
    files.Rename = [&, real = files.Rename](auto... args) { return step('n'), real(args...); };
    EXPECT_EQ(Refusal(files, newText, ExistingTail::Drop), std::nullopt);
    EXPECT_EQ(steps, "wmsrcns") << "written, synced, read back, renamed, folder synced";
}

TEST_F(FileFaults, TheOwnerIsTakenOverAndTheTemporaryStandsBesideTheFile) {
    FileOperations files;
    files.Status = [](int file, struct stat* status) {
        const int result = ::fstat(file, status);
        status->st_uid = 123;
        status->st_gid = 456;
        return result;
    };
    std::pair<uid_t, gid_t> owner;
    files.ChangeOwner = [&owner](int, uid_t user, gid_t group) { return owner = {user, group}, 0; };
    EXPECT_EQ(Refusal(files), std::nullopt);
    EXPECT_EQ(owner, (std::pair<uid_t, gid_t>(123, 456)));

    std::string temporary;
    files.OpenTemporary = [&temporary](char* name, int) { return temporary = name, errno = EROFS, -1; };
    files.Rename = [](const char*, const char*) { return -1; };
    const std::pair<std::string, std::string> places[] = {{path, folder.Path(".vorn-matrix-XXXXXX")},
                                                          {"not-there.VMC", "./.vorn-matrix-XXXXXX"},
                                                          {"/not-there.VMC", "//.vorn-matrix-XXXXXX"}};
    for (const auto& [name, expected] : places) {
        EXPECT_THROW(WriteFileDurably(name, {}, ExistingTail::Keep, files), FileError);
        EXPECT_EQ(temporary, expected);
    }
}
