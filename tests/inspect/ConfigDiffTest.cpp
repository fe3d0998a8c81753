#include "inspect/ConfigDiff.h"

#include "base/Errors.h"
#include "inspect/ConfigSummary.h"
#include "model/RecordLayout.h"
#include "support/RandomConfig.h"

#include <gmock/gmock.h>

using namespace vek;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

std::vector<std::string> Changed(const MatrixConfig& before, const MatrixConfig& after) {
    return Differences({before, {}}, {after, {}});
}

MatrixConfig WithNotes(std::string_view notes) {
    MatrixConfig config;
    config.Notes = notes;
    return config;
}

} // namespace

TEST(ConfigDiff, LinesInTheUsersWords) {
    const std::pair<void (*)(MatrixConfig&), std::vector<std::string>> cases[] = {
        {[](MatrixConfig& c) { c.Modes[1].OutputLevels[2].MaximumLevel = 3.0F; },
         {"Mode 2, Output 3: Maximum level +6dB -> +3dB"}},
        {[](MatrixConfig& c) { c.Modes[0].OutputLevels[0].StartLevel = -0.0F; },
         {"Mode 1, Output 1: Start level 0dB -> -0dB"}},
        {[](MatrixConfig& c) { c.Modes[0].OutputLevels[0].StepLevel = 1.0000001F; },
         {"Mode 1, Output 1: Level steps +1dB -> +1.0000001dB"}},
        {[](MatrixConfig& c) { c.Modes[7].OutputLevels[7].MuteOnMin = 5; },
         {"Mode 8, Output 8: Mute on minimum level yes -> yes (5)"}},
        {[](MatrixConfig& c) { c.Modes[0].OutputPanels[0] = DefaultMode().OutputPanels[0]; },
         {"Mode 1, Output 1: Input sequence none -> OFF,1,2,3,4,5,6,7,8",
          "Mode 1, Output 1: Volume remote panels none -> 1",
          "Mode 1, Output 1: Input selector remote panels none -> 1"}},
        {[](MatrixConfig& c) { c.Modes[0].OutputPanels[0].PanelVolumes = "1aG"; },
         {"Mode 1, Output 1: Volume remote panels none -> 1,A,G (\"1aG\")"}},
        {[](MatrixConfig& c) { c.Modes[0].OutputPanels[0].PanelVolumes = " a\"\\\x01\x7F\x81\x80\xA0"; },
         {"Mode 1, Output 1: Volume remote panels none -> "
          "\" a\\\"\\\\\\x01\\x7F\\x81\xE2\x82\xAC\xC2\xA0\""}},
        {[](MatrixConfig& c) { c.Modes[3].LinkGroup[4] = 2; }, {"Mode 4, Output 5: Link group none -> 2"}},
        {[](MatrixConfig& c) { c.Addresses.ModeAddressEnable[9] = flagTrue; },
         {"Mode recall address (Out) Mode 2 off -> on"}},
        {[](MatrixConfig& c) { c.Addresses.RouteAddressEnable[0][8] = flagTrue; },
         {"Output 1: Input select address (Out) Input 1 off -> on"}},
    };
    for (const auto& [change, lines] : cases) {
        MatrixConfig after;
        change(after);
        EXPECT_EQ(Changed(MatrixConfig(), after), lines);
    }
}

TEST(ConfigDiff, NamesStandBesideTheNumbers) {
    MatrixConfig before = WithNotes("Mode 2: Evening\r\nOutput 3: Hall\r\nInput 1: CD");
    MatrixConfig after = WithNotes("Mode 2: Evening\r\nOutput 3: Foyer\r\n");
    after.Modes[1].OutputLevels[2].MaximumLevel = 3.0F;
    after.Modes[2].OutputPanels[2].PanelVolumes = "1";
    after.InputTrim[0] = 2.0F;
    after.OutputTrim[2] = -2.0F;
    after.Addresses.ModeAddressEnable[9] = flagTrue;
    after.Addresses.RouteAddressEnable[2][8] = flagTrue;
    EXPECT_THAT(Changed(before, after),
                ElementsAre("Mode 2 Evening, Output 3 Foyer: Maximum level +6dB -> +3dB",
                            "Mode 3, Output 3 Foyer: Volume remote panels none -> 1",
                            "Input trim 1 CD 0dB -> +2dB", "Output trim 3 Foyer 0dB -> -2dB",
                            "Mode recall address (Out) Mode 2 Evening off -> on",
                            "Output 3 Foyer: Input select address (Out) Input 1 CD off -> on",
                            "Notes, line 2: \"Output 3: Hall\" -> \"Output 3: Foyer\"",
                            "Notes, line 3: \"Input 1: CD\" -> \"\""));
    EXPECT_THAT(AllSettings({after, {}}),
                testing::Contains("Mode 2 Evening, Output 3 Foyer: Level steps +1dB"));
}

TEST(ConfigDiff, NotesAreComparedByLine) {
    const std::tuple<std::string_view, std::string_view, std::vector<std::string>> cases[] = {
        {"one\r\ntwo\r\nthree", "one\r\n2\r\nthree", {"Notes, line 2: \"two\" -> \"2\""}},
        {"one\r\ntwo", "zero\r\none\r\ntwo", {"Notes, line 1: none -> \"zero\""}},
        {"1\r\n2\r\n3", "1", {"Notes, line 2: \"2\" -> none", "Notes, line 3: \"3\" -> none"}},
        {"same\r\nsame", "same", {"Notes, line 2: \"same\" -> none"}},
        {"1\r\n\r\n2", "3\r\n\r\n4", {"Notes, line 1: \"1\" -> \"3\"", "Notes, line 3: \"2\" -> \"4\""}},
        {"", " \n", {"Notes, line 1: none -> \" \\x0A\""}},
    };
    for (const auto& [before, after, lines] : cases)
        EXPECT_EQ(Changed(WithNotes(before), WithNotes(after)), lines);
}

TEST(ConfigDiff, EveryDifferenceCanBeTakenBackAlone) {
    std::mt19937 random(7);
    MatrixConfig before = test::RandomConfig(random);
    MatrixConfig after = test::RandomConfig(random);
    before.Notes = "one\r\n\r\ntwo\r\nthree\r\nfour\r\nlast";
    after.Notes = "1\r\ntwo\r\n3\r\nlast";
    auto left = FieldDifferences({before, {}}, {after, {}});
    ASSERT_GT(left.size(), 700U);
    while (!left.empty()) {
        const FieldDifference taken = left[random() % left.size()];
        const auto next = TakenBack(taken, before, after);
        ASSERT_TRUE(next) << taken.Line();
        ASSERT_NE(*next, after) << taken.Line();
        after = *next;
        const std::size_t count = left.size();
        left = FieldDifferences({before, {}}, {after, {}});
        if (taken.Place.Kind == FieldKind::Notes) { // lines move when another goes or comes
            ASSERT_LE(left.size(), count) << taken.Line();
            continue;
        }
        ASSERT_EQ(left.size(), count - 1) << taken.Line();
        for (const FieldDifference& other : left)
            ASSERT_NE(other.Field, taken.Field);
    }
    EXPECT_EQ(EncodeRecord(after), EncodeRecord(before));
}

TEST(ConfigDiff, ALineComesBackOnlyWhereThereIsRoom) {
    const MatrixConfig before = WithNotes("one\r\n" + std::string(notesLength - 5, 'x'));
    const MatrixConfig after = WithNotes(std::string(notesLength, 'y'));
    const auto differences = FieldDifferences({before, {}}, {after, {}});
    ASSERT_EQ(differences.size(), 2U);
    EXPECT_TRUE(TakenBack(differences[0], before, after));
    EXPECT_FALSE(TakenBack(differences[1], before, after));
    const auto tail = FieldDifferences({before, std::vector<std::byte>(1)}, {before, {}});
    EXPECT_FALSE(TakenBack(tail.at(0), before, before));
}

TEST(ConfigDiff, DataAfterTheRecordCounts) {
    const std::vector<std::byte> two(2);
    EXPECT_THAT(Differences({{}, two}, {{}, {}}), ElementsAre("Data after the record 2 bytes -> 0 bytes"));
    EXPECT_THAT(Differences({{}, two}, {{}, {std::byte{1}, std::byte{0}}}),
                ElementsAre("Data after the record 2 bytes -> 2 other bytes"));
}

TEST(ConfigDiff, AFileThatIsAloneListsEverySetting) {
    MatrixConfig config = WithNotes("one\r\ntwo");
    config.Modes[1].OutputLevels[2].MaximumLevel = 3.0F;
    const auto lines = AllSettings({config, std::vector<std::byte>(2)});
    EXPECT_EQ(lines.front(), "VekNet base address 512");
    EXPECT_THAT(lines, testing::IsSupersetOf({"Mode 2, Output 3: Maximum level +3dB",
                                              "Output 1: Input select address (Out) Input 1 off",
                                              "Notes, line 2: \"two\"", "Data after the record 2 bytes"}));
    constexpr std::size_t settings = 1 + 8 * 8 * 11 + 16 + 16 + 8 * (8 + 6 + 16);
    EXPECT_EQ(lines.size(), settings + 3);
}

TEST(ConfigDiff, NoByteOfTheRecordChangesUnseen) {
    std::mt19937 random(6);
    const MatrixConfig before = test::RandomConfig(random);
    const std::string summary = SummaryOf({before, {}});
    RecordBytes bytes = EncodeRecord(before);
    constexpr std::size_t stride = 17; // reaches every kind of field in some mode
    int seen = 0;
    for (std::size_t offset = 0; offset < recordSize; offset += stride) {
        bytes[offset] ^= std::byte{1};
        try {
            const MatrixConfig after = DecodeRecord(bytes);
            EXPECT_EQ(Changed(before, after).size(), 1U) << "offset " << offset;
            EXPECT_NE(SummaryOf({after, {}}), summary) << "offset " << offset;
            ++seen;
        } catch (const FileError&) { // a link group out of range
        }
        bytes[offset] ^= std::byte{1};
    }
    EXPECT_GT(seen, 300);
}

TEST(ConfigSummary, NewConfigurationFitsAPage) {
    std::string expected = "VekNet base address: 512\n\n";
    for (int mode = 1; mode <= 8; ++mode)
        expected += "Mode " + std::to_string(mode) + ": nothing set\n\n";
    EXPECT_EQ(SummaryOf({}), expected + "Input trims:  0dB 0dB 0dB 0dB 0dB 0dB 0dB 0dB\n"
                                        "Output trims: 0dB 0dB 0dB 0dB 0dB 0dB 0dB 0dB\n\n"
                                        "Enabled VekNet addresses\n  none\n\nNotes\n");
}

TEST(ConfigSummary, TellsModesAddressesNotesAndData) {
    StoredConfig stored = {{}, std::vector<std::byte>(12)};
    MatrixConfig& config = stored.Config;
    config.Modes[0].OutputPanels[0] = DefaultMode().OutputPanels[0];
    config.Modes[0].OutputPanels[0].PanelSelects = "b";
    config.Modes[0].OutputLevels[0].PreviousNotSetStartLevel = flagTrue;
    config.Modes[0].OutputLevels[1].MaximumLevel = -12.125F; // as wide as its column
    config.Modes[0].OutputLevels[1].MinimumLevel = -12.0625F;
    config.Modes[1].LinkGroup[0] = 3;
    config.Addresses.VolumeAddressEnable[2] = {0, 0, 7, flagTrue, 0, 0, 0, 0};
    config.Notes = "first\r\n  caf\xE9";
    const std::string page = SummaryOf(stored);
    EXPECT_THAT(page, HasSubstr("\nMode 1\n  Output  Group  Inputs               Start route  Volume panels  "
                                "Selector panels  Maximum  Minimum  Mute on min  Step     Start\n"
                                "  1       none   OFF,1,2,3,4,5,6,7,8  first        1              B (\"b\") "
                                "         +6dB     -36dB    yes          +1dB     previous (0dB)\n"
                                "  2       none   none                 first        none           none      "
                                "       -12.125dB -12.0625dB yes          +1dB     0dB\n"));
    EXPECT_THAT(page, HasSubstr("\nMode 2: unused, no output has inputs\n"));
    EXPECT_THAT(page, HasSubstr("\n  Output 3, Volume address (In): 538 Analog (7), 539 Mute\n\n"));
    EXPECT_THAT(page,
                testing::EndsWith("\nNotes\n  first\n    caf\xC3\xA9\n\nData after the record: 12 bytes\n"));
}

TEST(ConfigSummary, NamesStandBesideTheNumbersInAlignedColumns) {
    StoredConfig stored;
    MatrixConfig& config = stored.Config;
    config.Modes[0].OutputPanels[0] = DefaultMode().OutputPanels[0];
    config.Addresses.ModeAddressEnable[1] = flagTrue;
    config.Addresses.RouteAddressEnable[1][3] = flagTrue;
    config.Notes = "mode 1: Caf\xE9\r\nMode 2: Evening\r\nOutput 1: Caf\xE9\r\nInput 4: CD\x01\r\n"
                   "Output 2: A name longer than anybody needs it";
    const std::string page = SummaryOf(stored);
    EXPECT_THAT(page, HasSubstr("\nMode 1 Caf\xC3\xA9\n"
                                "  Output                              Group  Inputs               Start"));
    EXPECT_THAT(page, HasSubstr("\n  1 Caf\xC3\xA9                              none   OFF,1,2,3,4,5,6,7,8  f"
                                "irst"));
    EXPECT_THAT(page, HasSubstr("\n  2 A name longer than anybody need\xE2\x80\xA6  none   none "));
    EXPECT_THAT(page, HasSubstr("\n  3                                   none   none "));
    EXPECT_THAT(page, HasSubstr("\nMode 2 Evening: nothing set\n\nMode 3: nothing set\n"));
    EXPECT_THAT(page, HasSubstr(": 513 Mode 2 Evening\n"
                                "  Output 2 A name longer than anybody need\xE2\x80\xA6, Input select "
                                "address (In): 603 Input 4 CD\\x01\n"));
}
