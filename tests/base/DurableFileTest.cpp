#include "base/DurableFile.h"

#include "base/Bytes.h"
#include "base/Errors.h"
#include "support/TestData.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

using namespace vek;
using namespace vek::test;

namespace {

class DurableFile : public testing::Test {
  protected:
    void Write(const std::string& path, const std::string& text, ExistingTail tail = ExistingTail::Keep) {
        WriteFileDurably(path, AsBytes(text), tail);
    }
    TemporaryFolder folder;
};

/// While it lives no file can grow beyond the limit, as on a full disk.
class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t bytes) {
        std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &before);
        rlimit limit = before;
        limit.rlim_cur = bytes;
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit() { ::setrlimit(RLIMIT_FSIZE, &before); }

  private:
    rlimit before = {};
};

} // namespace

TEST_F(DurableFile, CreatesAndReplaces) {
    const std::string path = folder.Path("a");
    Write(path, "0123456789");
    EXPECT_EQ(ReadText(path), "0123456789");
    Write(path, "abc", ExistingTail::Keep);
    EXPECT_EQ(ReadText(path), "abc3456789");
    Write(path, "xy", ExistingTail::Drop);
    EXPECT_EQ(ReadText(path), "xy");
    EXPECT_EQ(folder.EntryCount(), 1U) << "no temporary is left";
}

TEST_F(DurableFile, KeepsModeAndFollowsLinks) {
    const std::string path = folder.Path("target");
    WriteText(path, "old");
    ::chmod(path.c_str(), 0640);
    std::filesystem::create_symlink("target", folder.Path("link"));
    std::filesystem::create_symlink("not-there-yet", folder.Path("dangling"));
    Write(folder.Path("link"), "new");
    Write(folder.Path("dangling"), "made");
    struct stat status = {};
    ::stat(path.c_str(), &status);
    EXPECT_EQ(status.st_mode & 07777, 0640U);
    EXPECT_EQ(ReadText(path), "new");
    EXPECT_EQ(ReadText(folder.Path("not-there-yet")), "made");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("link")));
}

TEST_F(DurableFile, RefusesWhatIsNotARegularFile) {
    const std::string fifo = folder.Path("fifo");
    ::mkfifo(fifo.c_str(), 0600);
    std::filesystem::create_symlink("loop", folder.Path("loop"));
    for (const std::string& path : {folder.Path(), fifo, std::string("/dev/null"), std::string("/dev/full"),
                                    std::string(), folder.Path("no/such/folder"), folder.Path("loop")}) {
        EXPECT_THROW(Write(path, "x"), FileError) << path;
        EXPECT_THROW(ReadRegularFile(path, 10), FileError) << path;
    }
    EXPECT_EQ(folder.EntryCount(), 2U);
}

TEST_F(DurableFile, AFullDiskLeavesTheOldFile) {
    const std::string path = folder.Path("a");
    WriteText(path, "precious");
    {
        const FileSizeLimit full(4);
        EXPECT_THROW(Write(path, "longer than the disk"), FileError);
    }
    EXPECT_EQ(ReadText(path), "precious");
    EXPECT_EQ(folder.EntryCount(), 1U);
}

TEST_F(DurableFile, ReadsNoMoreThanAsked) {
    WriteText(folder.Path("a"), "0123456789");
    EXPECT_EQ(ReadRegularFile(folder.Path("a"), 4).size(), 4U);
    EXPECT_EQ(ReadRegularFile(folder.Path("a"), 40).size(), 10U);
}
