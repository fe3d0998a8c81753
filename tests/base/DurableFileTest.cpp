#include "base/DurableFile.h"

#include "base/Bytes.h"
#include "base/Descriptor.h"
#include "base/Errors.h"
#include "base/FileOperations.h"
#include "support/TestData.h"

#include <csignal>
#include <gmock/gmock.h>
#include <sys/stat.h>

using namespace vek;
using namespace vek::test;

namespace {

struct DurableFile : testing::Test {
    TemporaryFolder folder;
};

void Write(const std::string& path, const std::string& text, ExistingTail tail = ExistingTail::Keep) {
    WriteFileDurably(path, AsBytes(text), tail);
}

} // namespace

TEST_F(DurableFile, TakesOverTheModeOrUsesTheUsersMask) {
    const std::string path = folder.Path("a");
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
    for (const auto& [path, reason] : cases) {
        const auto refused = testing::ThrowsMessage<FileError>(
            testing::AllOf(testing::StartsWith(path + ": "), testing::HasSubstr(reason)));
        EXPECT_THAT([&] { Write(path, "x"); }, refused);
        EXPECT_THAT([&] { ReadRegularFile(path, 10); }, refused);
        EXPECT_THAT([&] { RequireWritable(path); }, refused);
    }
    RequireWritable(folder.Path("new"));
    EXPECT_EQ(folder.EntryCount(), 2U);
    EXPECT_THROW(ReadRegularFile("/dev/null", 10), FileError);
}

TEST_F(DurableFile, ReadsNoMoreThanAsked) {
    WriteText(folder.Path("a"), "0123456789");
    for (const std::size_t limit : {4, 10, 40})
        EXPECT_EQ(ReadRegularFile(folder.Path("a"), limit).size(), std::min<std::size_t>(limit, 10));
}

TEST_F(DurableFile, KeepsTheGroupOrTakesItsRights) {
    const std::string path = folder.Path("a");
    FileOperations files;
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
    const std::string path = folder.Path("a");
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        WriteText(path, "old");
        FileOperations files;
        files.Sync = [signal](int file) { return std::raise(signal), ::fsync(file); };
        EXPECT_EXIT(WriteFileDurably(path, AsBytes(std::string("new")), ExistingTail::Drop, files),
                    testing::KilledBySignal(signal), "");
        EXPECT_EQ(ReadText(path), "new");
        EXPECT_EQ(folder.EntryCount(), 1U);
    }
}
