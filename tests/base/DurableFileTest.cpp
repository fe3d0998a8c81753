#include "base/DurableFile.h"

#include "base/Bytes.h"
#include "base/Errors.h"
#include "support/TestData.h"

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
    }
    EXPECT_EQ(folder.EntryCount(), 2U);
    EXPECT_THROW(ReadRegularFile("/dev/null", 10), FileError);
}

TEST_F(DurableFile, ReadsNoMoreThanAsked) {
    WriteText(folder.Path("a"), "0123456789");
    for (const std::size_t limit : {4, 10, 40})
        EXPECT_EQ(ReadRegularFile(folder.Path("a"), limit).size(), std::min<std::size_t>(limit, 10));
}
