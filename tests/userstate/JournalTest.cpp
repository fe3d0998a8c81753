// The programming history: its texts, its folder, and attempts on their way into it.
#include "base/Bytes.h"
#include "base/Errors.h"
#include "support/ProgrammedHall.h"
#include "support/TestData.h"
#include "userstate/AttemptRecord.h"
#include "userstate/TimedFiles.h"

#include <ctime>
#include <gmock/gmock.h>

using namespace vek;
using namespace vek::test;
using testing::ElementsAre;

namespace {

const JournalEntry& hall = programmedHall;
const std::int64_t now = hall.Time;

class Journal : public testing::Test {
  protected:
    /// An attempt of that age, which the name tells as well.
    void Leave(const std::string& file, std::int64_t time, AttemptResult result = AttemptResult::Programmed) {
        JournalEntry entry = hall;
        entry.Time = time;
        entry.File = file;
        entry.Result = result;
        const std::string stem = folder.Path("downloads/" + TimeInName(time) + "-1");
        WriteText(stem + ".VMC", file);
        WriteText(stem + ".json", EncodeJournalEntry(entry));
    }
    std::vector<std::string> Files() const {
        std::vector<std::string> files;
        for (const KeptAttempt& attempt : journal.FromNewest())
            files.push_back(attempt.Entry.File);
        return files;
    }
    const TemporaryFolder folder;
    const ProgrammingJournal journal{folder.Path()};
};

} // namespace

TEST(JournalTexts, GoBothWaysAndTellWhatTheyCannotRead) {
    JournalEntry west = hall;
    west.File = "/home/a/h\u00E4ll.VMC";
    west.ZoneOffset = -(9 * 60 + 30) * 60;
    west.Result = AttemptResult::Unfinished;
    for (const JournalEntry& entry : {hall, west, JournalEntry{}})
        EXPECT_EQ(DecodeJournalEntry(EncodeJournalEntry(entry)), entry) << EncodeJournalEntry(entry);
    EXPECT_TRUE(EncodeJournalEntry(hall).starts_with(
        "{\n  \"time\": \"2026-11-22T11:24:05+01:00\",\n  \"result\": \"programmed\",\n"));
    EXPECT_TRUE(DecodeJournalEntry(R"({"time":"2026-11-22T11:24:05+01:00","result":"cancelled","new":[1]})"));
    for (const char* text :
         {"", "[]", "{}", R"({"time":"2026-11-22T11:24:05+01:00"})",
          R"({"time":"2026-02-30T11:24:05+01:00","result":"programmed"})",
          R"({"time":"2026-11-22T11:24:05+01:00 ","result":"programmed"})",
          R"({"time":5,"result":"programmed"})", R"({"time":"2026-11-22T11:24:05+01:00","result":"eaten"})",
          R"({"time":"2026-11-22T11:24:05+01:00","result":"programmed","blocks":-1})",
          R"({"time":"2026-11-22T11:24:05+01:00","result":"programmed","retries":2147483648})",
          R"({"time":"2026-11-22T11:24:05+01:00","result":"programmed","retries":18446744073709551615})",
          R"({"time":"2026-11-22T11:24:05+01:00","result":"programmed","file":1})"})
        EXPECT_FALSE(DecodeJournalEntry(text)) << text;
}

TEST(JournalTexts, LinesStandBelowEachOther) {
    JournalEntry silent = {
        .Time = now, .File = "/b\nc", .Port = "COM2", .Result = AttemptResult::NoAnswer, .Blocks = 273};
    EXPECT_THAT(JournalLines({{hall, ""}, {silent, ""}}),
                ElementsAre("2026-11-22 11:24:05  programmed          hall.VMC  COM1 (ttyUSB0)  Matrix "
                            "Vek 2.5  273 blocks       1 retry    11.4 s",
                            "2026-11-22 10:24:05  no device answered  b?c       COM2            -            "
                            "   0 of 273 blocks  0 retries  0.0 s"));
}

TEST_F(Journal, BrokenEntriesHideNoOthers) {
    EXPECT_TRUE(Files().empty());
    EXPECT_FALSE(journal.LastProgrammed());
    std::filesystem::create_directory(folder.Path("downloads"));
    const auto before = journal.ChangeMark();
    Leave("old", now - 30);
    EXPECT_NE(journal.ChangeMark(), before);
    Leave("failed", now - 5, AttemptResult::BlockRefused);
    Leave("newest", now);
    for (const char* suffix : {".VMC", ".json"}) {
        Leave("half", now - 10);
        std::filesystem::remove(folder.Path("downloads/" + TimeInName(now - 10) + "-1" + suffix));
    }
    Leave("garbled", now - 20);
    WriteText(folder.Path("downloads/" + TimeInName(now - 20) + "-1.json"), "{\"time\":");
    EXPECT_THAT(Files(), ElementsAre("newest", "failed", "old"));
    std::filesystem::remove(folder.Path("downloads/" + TimeInName(now) + "-1.json"));
    EXPECT_EQ(journal.LastProgrammed().value().Entry.File, "old");
}

TEST_F(Journal, TheOldestGo) {
    constexpr std::int64_t day = 24 * 60 * 60;
    Leave("two years", now - 730 * day);
    std::filesystem::create_directories(folder.Path("downloads"));
    std::filesystem::create_directory(folder.Path("downloads/x"));
    WriteText(folder.Path("downloads/20010101-mine.VMC"), "");
    Leave("two years", now - 730 * day);
    Leave("older", now - 730 * day - 1);
    journal.Prune(now);
    EXPECT_THAT(Files(), ElementsAre("two years"));
    for (int i = 0; i < 5000; ++i)
        WriteText(folder.Path("downloads/" + TimeInName(now - i) + "-1.json"), "");
    journal.Prune(now);
    EXPECT_TRUE(Files().empty());
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path("downloads")), {}), 5002);
}

TEST_F(Journal, AnAttemptIsThereFromItsBeginning) {
    std::int64_t clock = 500;
    const auto started = std::time(nullptr);
    std::vector<AttemptRecord> records;
    for (const char* content : {"first", "second"})
        records.emplace_back(journal, JournalEntry{.File = content, .Blocks = 273}, AsBytes(content),
                             [&clock] { return clock; });
    auto kept = journal.FromNewest();
    ASSERT_EQ(kept.size(), 2U) << "within one second";
    for (const KeptAttempt& attempt : kept) {
        EXPECT_EQ(attempt.Entry.Result, AttemptResult::Unfinished);
        EXPECT_EQ(ReadText(attempt.ConfigPath()), attempt.Entry.File);
        EXPECT_TRUE(attempt.Entry.Time >= started && attempt.Entry.Time <= std::time(nullptr));
        EXPECT_FALSE(attempt.Entry.Host.empty() || attempt.Entry.User.empty());
    }
    clock = 2000;
    const DeviceTypeList types = {{29, 39, "Matrix Vek", ""}};
    records[0].Found(Understood(types, 0x050227, "9600,n,8,2", {39}));
    records[0].DownloadBegins();
    EXPECT_EQ(journal.FromNewest().back().Entry.DeviceVersion, "2.5") << "it may be incomplete from now on";
    records[0].Progress({5, 273, 4});
    records[0].End(FailureKind::DownloadRefused);
    records[0].End(AttemptResult::Cancelled);
    records[1].End(AttemptResult::Programmed);
    kept = journal.FromNewest();
    const JournalEntry& first = kept.back().Entry;
    EXPECT_EQ(first, records[0].Entry());
    EXPECT_EQ(JournalLines({kept.back()}).front().substr(19),
              "  block refused  first    Matrix Vek 2.5  5 of 273 blocks  4 retries  1.5 s");
    EXPECT_EQ(first.DeviceCode, 39);
    EXPECT_EQ(journal.LastProgrammed().value().Entry.File, "second");
    EXPECT_EQ(records[0].Problem() + records[1].Problem(), "");
}

TEST_F(Journal, WhatCannotBeWrittenIsToldAndStopsNothing) {
    const auto clock = [] { return std::int64_t{0}; };
    AttemptRecord nowhere(ProgrammingJournal(""), {}, {}, clock);
    EXPECT_EQ(nowhere.Problem(), "The programming history could not be written: there is no folder for it");
    nowhere.End(AttemptResult::Programmed);
    EXPECT_EQ(nowhere.Entry().Result, AttemptResult::Programmed);
    WriteText(folder.Path("file"), "");
    EXPECT_NE(AttemptRecord(ProgrammingJournal(folder.Path("file")), {}, {}, clock).Problem(), "");
    AttemptRecord gone(journal, {}, {}, clock);
    EXPECT_EQ(gone.Problem(), "");
    std::filesystem::remove_all(folder.Path("downloads"));
    gone.End(AttemptResult::Programmed);
    EXPECT_NE(gone.Problem(), "");
}
