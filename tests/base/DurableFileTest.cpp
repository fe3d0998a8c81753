// The durable file writer, also on disks that fail: every call that it makes, one after the other.
#include "base/DurableFile.h"
#include "base/Bytes.h"
#include "base/Descriptor.h"
#include "base/Errors.h"
#include "base/FileOperations.h"
#include "support/FailingDisk.h"
#include "support/TestData.h"

#include <csignal>
#include <cstring>
#include <gmock/gmock.h>
#include <map>
#include <sys/stat.h>

using namespace vek;
using namespace vek::test;

namespace {

const std::string oldText = "the old content and its tail";
const std::string newText = "THE NEW";
const std::string mergedText = "THE NEW content and its tail";

/// Writes with operations of the test's own and sees that all or nothing came of it.
class DurableFile : public testing::Test {
  protected:
    /// The reason for which the file was refused, nothing when it was written.
    std::optional<std::string> Refusal(const std::string& text = newText,
                                       ExistingTail tail = ExistingTail::Keep, bool existed = true) {
        std::filesystem::remove(path);
        if (existed)
            WriteText(path, oldText);
        try {
            WriteFileDurably(path, AsBytes(text), tail, files);
        } catch (const FileError& error) {
            EXPECT_EQ(folder.EntryCount(), existed ? 1U : 0U) << "nothing is left over";
            EXPECT_EQ(existed ? ReadText(path) : oldText, oldText) << "the old file is as it was";
            const std::string message = error.what();
            return message.starts_with(path + ": ") ? message.substr(path.size() + 2) : "no path: " + message;
        }
        EXPECT_EQ(folder.EntryCount(), 1U) << "nothing is left over";
        return std::nullopt;
    }

    TemporaryFolder folder;
    std::string path = folder.Path("a");
    FileOperations files;
};

void Write(const std::string& path, const std::string& text, ExistingTail tail = ExistingTail::Keep) {
    WriteFileDurably(path, AsBytes(text), tail);
}

} // namespace

TEST_F(DurableFile, TakesOverTheModeOrUsesTheUsersMask) {
    const auto mode = [&] { return static_cast<unsigned>(std::filesystem::status(path).permissions()); };
    const mode_t before = ::umask(027);
    Write(path, "new");
    EXPECT_EQ(::umask(before), 027U) << "the mask is left as it was";
    EXPECT_EQ(mode(), 0640U);
    ::chmod(path.c_str(), 04606);
    Write(path, "old");
    EXPECT_EQ(mode(), 04606U);
}

TEST_F(DurableFile, FollowsLinks) {
    std::filesystem::create_directory(folder.Path("sub"));
    std::filesystem::create_symlink("../target", folder.Path("sub/relative"));
    std::filesystem::create_symlink(folder.Path("sub/relative"), folder.Path("absolute"));
    for (const char* text : {"the target did not exist", "now it does"}) {
        Write(folder.Path("absolute"), text, ExistingTail::Drop);
        EXPECT_EQ(ReadText(folder.Path("target")), text);
    }
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("absolute")));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("sub/relative")));
}

TEST_F(DurableFile, RefusesWhatIsNotARegularFile) {
    const std::string fifo = folder.Path("fifo");
    ::mkfifo(fifo.c_str(), 0600);
    std::filesystem::create_symlink("loop", folder.Path("loop"));
    const std::pair<std::string, const char*> cases[] = {{folder.Path(), "is a folder"},
                                                         {fifo, "is not a regular file"},
                                                         {"", ""},
                                                         {folder.Path("no/such/folder"), "No such file"},
                                                         {folder.Path("loop"), "symbolic links"}};
    for (const auto& [name, reason] : cases) {
        const auto refused = testing::ThrowsMessage<FileError>(
            testing::AllOf(testing::StartsWith(name + ": "), testing::HasSubstr(reason)));
        EXPECT_THAT([&] { Write(name, "x"); }, refused);
        EXPECT_THAT([&] { ReadRegularFile(name, 10); }, refused);
    }
    EXPECT_EQ(folder.EntryCount(), 2U);
    EXPECT_THROW(ReadRegularFile("/dev/null", 10), FileError);
}

TEST_F(DurableFile, ReadsNoMoreThanAsked) {
    WriteText(path, "0123456789");
    EXPECT_EQ(ReadRegularFile(path, 4).size(), 4U);
    EXPECT_EQ(ReadRegularFile(path, 40).size(), 10U);
}

TEST_F(DurableFile, EveryCallThatFailsLeavesTheOldFileOrTheNewOne) {
    // A letter for each call: x when its failure refuses the file, - when the new one is there all the same;
    // when a file exists, and when there is none.
    const std::map<std::string, std::array<const char*, 2>> outcomesOf = {
        {"open", {"x-", "x-"}}, // file, folder
        {"status", {"x", ""}},       {"access", {"x", ""}},  {"temporary", {"x", "x"}},
        {"write", {"xx", "x"}},      // content, tail
        {"seek", {"xxx", "x"}},      // to tail, to start, to tail
        {"read", {"xxxxxxxx", "x"}}, // tail; back content, tail
        {"owner", {"-", ""}},        {"lock", {"-", "-"}},   {"mode", {"x", "x"}},
        {"sync", {"x-", "x-"}}, // file, folder
        {"close", {"x", "x"}},       {"rename", {"x", "x"}}, {"remove", {"", ""}},
    };
    for (const auto& operation : failingOperations) {
        for (const int error : diskErrors) {
            if (error == shortWrite && std::string_view(operation.Name) != "write")
                continue;
            for (const bool existing : {true, false}) {
                std::string outcomes;
                for (int call = 1;; ++call) {
                    SCOPED_TRACE(std::string(operation.Name) + ", call " + std::to_string(call));
                    files = {};
                    int nth = call;
                    operation.Fail(files, nth, error);
                    const auto refusal = Refusal(newText, ExistingTail::Keep, existing);
                    if (nth > 0)
                        break;
                    outcomes += refusal ? 'x' : '-';
                    if (refusal)
                        EXPECT_EQ(*refusal, std::strerror(error));
                    else
                        EXPECT_EQ(ReadText(path), existing ? mergedText : newText);
                }
                std::string expected = outcomesOf.at(operation.Name)[existing ? 0 : 1];
                if (error == EINTR || error == shortWrite) // the call is repeated
                    std::ranges::replace(expected, 'x', '-');
                EXPECT_EQ(outcomes, expected) << operation.Name << ", " << error;
            }
        }
    }
}

TEST_F(DurableFile, ADiskThatOnlyInterruptsIsGivenUp) {
    files.Sync = [](int) { return errno = EINTR, -1; };
    EXPECT_EQ(Refusal(), std::strerror(EINTR));
}

// Never tried on a device itself: a writer that forgot to look would put a file in its place.
TEST_F(DurableFile, DevicesAreNotReplaced) {
    for (const mode_t type : {S_IFCHR, S_IFBLK, S_IFSOCK}) {
        files.Status = [type](int, struct stat* status) { return status->st_mode = type | 0666, 0; };
        EXPECT_EQ(Refusal(), "is not a regular file");
    }
}

TEST_F(DurableFile, ADiskThatFillsUpIsToldEvenWhenTheRemainsCannotBeRemoved) {
    files.Write = [](int file, const void* bytes, std::size_t size) -> ssize_t {
        return size > 3 ? ::write(file, bytes, 3) : (errno = ENOSPC, -1);
    };
    files.Remove = [](const char* name) { return ::unlink(name), errno = EIO, -1; };
    EXPECT_EQ(Refusal(), std::strerror(ENOSPC));
    files.Write = [](int, const void*, std::size_t) { return ssize_t{0}; };
    EXPECT_EQ(Refusal(), "no more could be written");
}

TEST_F(DurableFile, ShortAndInterruptedCallsAreGoneOnWith) {
    int calls = 0;
    const auto interrupted = [&calls] { return errno = EINTR, ++calls % 2 != 0; };
    files.Read = [=](int file, void* space, std::size_t size) {
        return interrupted() ? -1 : ::read(file, space, std::min<std::size_t>(size, 3));
    };
    files.Write = [=](int file, const void* bytes, std::size_t size) {
        return interrupted() ? -1 : ::write(file, bytes, std::min<std::size_t>(size, 2));
    };
    EXPECT_EQ(Refusal(), std::nullopt);
    EXPECT_EQ(ReadText(path), mergedText);
    EXPECT_GT(calls, 40);
}

TEST_F(DurableFile, WhatDoesNotReadBackIsRefused) {
    constexpr const char* refusal = "what was written does not read back";
    const std::string large(150'000, 'x'); // more than is compared at once
    std::size_t bad = 0;
    files.Sync = [&](int file) { return ::pwrite(file, "#", 1, static_cast<off_t>(bad)) == 1 ? 0 : -1; };
    for (const std::size_t offset : {std::size_t{0}, newText.size() - 1, newText.size(), oldText.size() - 1})
        EXPECT_EQ((bad = offset, Refusal()), refusal) << offset;
    for (const std::size_t offset : {std::size_t{65'536}, large.size() - 1})
        EXPECT_EQ((bad = offset, Refusal(large, ExistingTail::Drop)), refusal) << offset;
    files = {};
    EXPECT_EQ(Refusal(large, ExistingTail::Drop), std::nullopt);
    EXPECT_EQ(ReadText(path), large);
    files.Write = [](int file, const void* bytes, std::size_t size) {
        return ::write(file, bytes, size - 1) + 1;
    };
    EXPECT_EQ(Refusal(newText, ExistingTail::Drop), refusal) << "a byte less";
}

TEST_F(DurableFile, TheContentIsOnTheDiskBeforeItTakesItsPlace) {
    std::string steps;
    const auto log = [&steps](auto& operation, char letter) {
        operation = [&steps, letter, real = operation](auto... args) {
            steps += steps.ends_with(letter) ? "" : std::string(1, letter);
            return real(args...);
        };
    };
    log(files.Write, 'w'), log(files.ChangeMode, 'm'), log(files.Sync, 's');
    log(files.Read, 'r'), log(files.Close, 'c'), log(files.Rename, 'n');
    EXPECT_EQ(Refusal(newText, ExistingTail::Drop), std::nullopt);
    EXPECT_EQ(steps, "wmsrcns") << "written, synced, read back, renamed, folder synced";
}

TEST_F(DurableFile, TheOwnerIsTakenOverAndTheTemporaryStandsBesideTheFile) {
    files.Status = [](int file, struct stat* status) {
        const int result = ::fstat(file, status);
        return status->st_uid = 123, status->st_gid = 456, result;
    };
    std::pair<uid_t, gid_t> owner;
    files.ChangeOwner = [&owner](int, uid_t user, gid_t group) { return owner = {user, group}, 0; };
    EXPECT_EQ(Refusal(), std::nullopt);
    EXPECT_EQ(owner, (std::pair<uid_t, gid_t>(123, 456)));

    std::string temporary;
    files.OpenTemporary = [&temporary](char* name, int) { return temporary = name, errno = EROFS, -1; };
    EXPECT_EQ(Refusal(), std::strerror(EROFS));
    EXPECT_EQ(temporary, folder.Path(".vorn-matrix-XXXXXX"));
    EXPECT_THROW(WriteFileDurably("not-there.VMC", {}, ExistingTail::Keep, files), FileError);
    EXPECT_EQ(temporary, "./.vorn-matrix-XXXXXX");
}

TEST_F(DurableFile, KeepsTheGroupOrTakesItsRights) {
    files.Status = [](int file, struct stat* status) {
        const int result = ::fstat(file, status);
        return status->st_uid = 4001, status->st_gid = 5000, result;
    };
    std::string asked;
    int refused = 0;
    files.ChangeOwner = [&](int, uid_t user, gid_t group) {
        asked += std::to_string(static_cast<int>(user)) + ':' + std::to_string(group) + ' ';
        return --refused >= 0 ? (errno = EPERM, -1) : 0;
    };
    const struct {
        int refused;
        const char* asked;
        unsigned mode;
    } cases[] = {{0, "4001:5000 ", 0664}, {1, "4001:5000 -1:5000 ", 0664}, {2, "4001:5000 -1:5000 ", 0604}};
    for (const auto& c : cases) {
        WriteText(path, "old");
        ::chmod(path.c_str(), 0664);
        refused = c.refused;
        asked.clear();
        WriteFileDurably(path, {}, ExistingTail::Keep, files);
        EXPECT_EQ(asked, c.asked);
        EXPECT_EQ(static_cast<unsigned>(std::filesystem::status(path).permissions()), c.mode);
    }
}

TEST_F(DurableFile, RemovesWhatAKilledSaveLeftBehind) {
    const auto old = std::filesystem::file_time_type::clock::now() - std::chrono::minutes(2);
    const auto leave = [&](const char* name, bool aged) {
        WriteText(folder.Path(name), "left");
        if (aged)
            std::filesystem::last_write_time(folder.Path(name), old);
    };
    leave(".vorn-matrix-abcdef", true);
    leave(".vorn-matrix-ghijkl", false);
    leave(".vorn-matrix-mnopqr", true);
    leave(".vorn-matrix-notours", true);
    leave("vorn-matrix-abcdef", true);
    const Descriptor inUse(::open(folder.Path(".vorn-matrix-mnopqr").c_str(), O_RDONLY));
    ASSERT_EQ(::flock(inUse.Get(), LOCK_EX), 0);
    Write(folder.Path("a"), "new");
    EXPECT_FALSE(std::filesystem::exists(folder.Path(".vorn-matrix-abcdef")));
    EXPECT_EQ(folder.EntryCount(), 5U) << "a young one, one in use and what has another name stay";
}

TEST_F(DurableFile, SignalsWaitUntilItIsThere) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        WriteText(path, "old");
        files.Sync = [signal](int file) { return std::raise(signal), ::fsync(file); };
        EXPECT_EXIT(WriteFileDurably(path, AsBytes(std::string("new")), ExistingTail::Drop, files),
                    testing::KilledBySignal(signal), "");
        EXPECT_EQ(ReadText(path), "new");
        EXPECT_EQ(folder.EntryCount(), 1U);
    }
}
