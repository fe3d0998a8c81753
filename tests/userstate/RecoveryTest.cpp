// Recovery copies, their texts, and the thread that writes them.
#include "base/Bytes.h"
#include "base/Errors.h"
#include "base/FileOperations.h"
#include "support/FailingDisk.h"
#include "support/TestData.h"
#include "userstate/RecoveryWriter.h"

#include <future>
#include <gmock/gmock.h>
#include <sys/wait.h>

using namespace vek;
using namespace vek::test;

namespace {

constexpr std::int64_t now = 1'795'000'000;
constexpr std::int64_t day = 24 * 60 * 60;

class Recovery : public testing::Test {
  protected:
    /// Leaves a copy behind, as an editor that has ended.
    void Leave(const std::string& content, std::int64_t time, const std::string& file = "/home/hall.VMC") {
        RecoveryCopy::Create(path).Write(AsBytes(content), {.File = file, .Time = time});
    }
    /// The contents of all copies, from the newest.
    std::string Contents() {
        std::vector<RecoveryCopy> taken;
        std::string contents;
        while (auto copy = folder.TakeNewest()) {
            contents += ReadText(copy->Path()) + ' ';
            taken.push_back(std::move(*copy));
        }
        return contents;
    }

    const TemporaryFolder temporary;
    const std::string path = temporary.Path("state/recovery");
    const RecoveryFolder folder{path};
};

} // namespace

TEST(RecoveryTexts, GoBothWays) {
    const RecoveryOrigin origins[] = {
        {},
        {.Kind = RecoveryKind::OtherVersion, .File = "/home/a b/h\xE4ll%\n\x7F.VMC", .Named = false},
        {.File = "/x", .Time = 253'402'300'799, .SavedDigest = 0xFEDCBA9876543210},
    };
    for (const RecoveryOrigin& origin : origins)
        EXPECT_EQ(DecodeRecoveryText(EncodeRecoveryText(origin)), origin) << EncodeRecoveryText(origin);
    EXPECT_EQ(
        EncodeRecoveryText({.File = "/home/50%.VMC", .Time = 1'795'260'245, .SavedDigest = 0x1F}),
        "Recovery copy of the Vorn Matrix Editor\nKind: unsaved changes\nFile: /home/50%25.VMC\nNamed: yes\n"
        "Time: 2026-11-21T11:24:05Z\nSaved digest: 000000000000001f\n");
}

TEST(RecoveryTexts, TellWhatTheyCannotRead) {
    const std::string title = "Recovery copy of the Vorn Matrix Editor\n";
    EXPECT_EQ(DecodeRecoveryText(title + "Later: x\nNamed: no\n"), RecoveryOrigin{.Named = false});
    for (const char* text :
         {"", "Title\n", "File: %4\n", "File: %zz\n", "Named: perhaps\n", "Kind: x\n",
          "Time: 2026-02-30T00:00:00Z\n", "Time: yesterday\n", "Time: 1969-12-31T23:59:59Z\n",
          "Saved digest: 12345678901234567\n", "Saved digest: g\n"}) {
        const bool line = std::string_view(text).find(": ") != std::string::npos;
        EXPECT_EQ(DecodeRecoveryText((line ? title : "") + text), std::nullopt) << text;
    }
}

TEST_F(Recovery, CopiesOfEndedEditorsAreTakenOnceFromTheNewest) {
    EXPECT_EQ(Contents(), "") << "there is no folder yet";
    Leave("old", now - 5);
    Leave("new", now);
    const RecoveryCopy held = RecoveryCopy::Create(path);
    held.Write(AsBytes("held"), {.Time = now + 1});
    EXPECT_EQ(Contents(), "new old ");
    EXPECT_EQ(Contents(), "new old ") << "what is taken and let go is there again";
    EXPECT_EQ(folder.TakeNewest()->Origin(), (RecoveryOrigin{.File = "/home/hall.VMC", .Time = now}));
    folder.TakeNewest()->Remove();
    EXPECT_EQ(Contents(), "old ");
    EXPECT_EQ(static_cast<unsigned>(std::filesystem::status(path).permissions()), 0700U);
}

TEST_F(Recovery, AnotherProcessSeesTheLock) {
    const RecoveryCopy held = RecoveryCopy::Create(path);
    held.Write(AsBytes("held"), {});
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(RecoveryFolder(path).TakeNewest() ? 1 : 0);
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
}

TEST_F(Recovery, ACopyWithoutItsTextIsOfAnUnknownFile) {
    Leave("x", now);
    for (const auto& entry : std::filesystem::directory_iterator(path))
        if (entry.path().extension() != ".VMC")
            std::filesystem::remove(entry.path());
    const auto copy = folder.TakeNewest();
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->Origin().File, "");
    EXPECT_NEAR(static_cast<double>(copy->Origin().Time), static_cast<double>(std::time(nullptr)), 60);
}

TEST_F(Recovery, TwentyAreKeptAndAllYoungOnes) {
    std::string young;
    for (int i = 0; i < 18; ++i) {
        Leave(std::to_string(i), now - i * day);
        young += std::to_string(i) + ' ';
    }
    for (const int age : {40, 31, 50})
        Leave("age" + std::to_string(age), now - age * day);
    Leave("age30", now - 31 * day + 1);
    {
        const auto held = RecoveryCopy::Create(path);
        held.Write(AsBytes("held"), {.Time = now - 60 * day});
        folder.Prune(now);
    }
    EXPECT_EQ(Contents(), young + "age30 age31 held ");
    for (int i = 0; i < 9; ++i)
        Leave("y", now);
    folder.Prune(now);
    EXPECT_EQ(Contents().size(), young.size() + 9 * 2 + 6) << "only those of the last month are more";
    for (const char* left : {"/killed.txt", "/killed.lock"})
        WriteText(path + left, "");
    folder.Prune(now);
    EXPECT_FALSE(std::filesystem::exists(path + "/killed.txt") ||
                 std::filesystem::exists(path + "/killed.lock"));
}

TEST_F(Recovery, EveryCallThatFailsLeavesTheOldCopyOrTheNewOne) {
    const RecoveryCopy copy = RecoveryCopy::Create(path);
    copy.Write(AsBytes("old"), {.Time = 1});
    bool refused = false;
    ForEveryFailure(
        [&] {
            refused = false;
            try {
                copy.Write(AsBytes("new"), {.Time = 2});
            } catch (const FileError&) {
                refused = true;
            }
        },
        [&] {
            const std::string content = ReadText(copy.Path());
            EXPECT_TRUE(content == "new" || (refused && content == "old")) << content;
            EXPECT_TRUE(refused || copy.Origin().Time == 2);
            EXPECT_EQ(std::distance(std::filesystem::directory_iterator(path), {}), 3)
                << "nothing is left over";
            WriteText(copy.Path(), "old");
        });
}

TEST_F(Recovery, TheWriterKeepsTheLatestAndLetsNobodyWait) {
    std::promise<void> diskGoesOn;
    auto goesOn = diskGoesOn.get_future().share();
    SystemFiles().Sync = [goesOn](int file) { return goesOn.wait(), ::fsync(file); };
    std::vector<std::string> failures;
    {
        RecoveryWriter writer(path, [&](const std::string& failure) { failures.push_back(failure); });
        const auto write = [&](const char* content) {
            const auto bytes = AsBytes(content);
            writer.Write({bytes.begin(), bytes.end()}, {.File = "/f"});
        };
        for (const char* content : {"first", "second", "third"})
            write(content);
        EXPECT_FALSE(writer.Flush(1)) << "the disk hangs";
        diskGoesOn.set_value();
        EXPECT_TRUE(writer.Flush(10'000));
        EXPECT_THAT(failures.size(), testing::Le(2U)) << "what was overtaken is not written";
        EXPECT_EQ(Contents(), "") << "it is held";
        writer.Remove();
        EXPECT_TRUE(writer.Flush(10'000));
        EXPECT_TRUE(std::filesystem::is_empty(path));

        Leave("found", now);
        writer.Adopt(std::move(*folder.TakeNewest()));
        EXPECT_EQ(Contents(), "");
        SystemFiles().Rename = [](const char*, const char*) { return errno = ENOSPC, -1; };
        write("lost");
        EXPECT_TRUE(writer.Flush(10'000));
        EXPECT_THAT(failures.back(), testing::HasSubstr("No space left"));
        SystemFiles() = {};
        write("last");
    }
    EXPECT_EQ(failures.back(), "");
    EXPECT_EQ(Contents(), "last ") << "in the place of the found one, and there for the next start";
}
