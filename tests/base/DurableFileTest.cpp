#include "base/DurableFile.h"

#include "base/Bytes.h"
#include "base/Errors.h"
#include "support/TestData.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
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

mode_t ModeOf(const std::string& path) {
    struct stat status = {};
    ::stat(path.c_str(), &status);
    return status.st_mode & 07777;
}

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

TEST_F(DurableFile, TakesOverTheModeOrUsesTheUsersMask) {
    const std::string path = folder.Path("a");
    const mode_t before = ::umask(027);
    Write(path, "new");
    EXPECT_EQ(::umask(before), 027U) << "the mask is left as it was";
    EXPECT_EQ(ModeOf(path), 0640U);
    ::chmod(path.c_str(), 04606);
    Write(path, "old");
    EXPECT_EQ(ModeOf(path), 04606U);
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
    }
    EXPECT_EQ(folder.EntryCount(), 2U);
    EXPECT_THROW(ReadRegularFile("/dev/null", 10), FileError);
}

TEST_F(DurableFile, ReadsNoMoreThanAsked) {
    WriteText(folder.Path("a"), "0123456789");
    EXPECT_EQ(ReadRegularFile(folder.Path("a"), 4).size(), 4U);
    EXPECT_EQ(ReadRegularFile(folder.Path("a"), 40).size(), 10U);
}
