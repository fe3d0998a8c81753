#include "inspect/ConfigCheck.h"

#include <gmock/gmock.h>

using namespace vek;

namespace {

/// All modes used, every output with all inputs and its own panel.
MatrixConfig CleanConfig() {
    MatrixConfig config;
    config.Modes.fill(DefaultMode());
    return config;
}

std::string Line(const Finding& finding) {
    return std::string(SeverityName(finding.Level)) + ": " + finding.Text;
}

std::vector<std::string> FindingsOf(const StoredConfig& stored) {
    std::vector<std::string> lines;
    for (const Finding& finding : CheckConfig(stored))
        lines.push_back(Line(finding));
    return lines;
}

OutputLevelRecord& Levels(MatrixConfig& config) { return config.Modes[1].OutputLevels[2]; }
PanelRecord& Panels(MatrixConfig& config) { return config.Modes[1].OutputPanels[2]; }

} // namespace

TEST(ConfigCheck, FilesAsAWhole) {
    using testing::ElementsAre;
    EXPECT_THAT(FindingsOf({}), ElementsAre("warning: No mode is in use: no output has inputs in any mode"));
    EXPECT_THAT(
        FindingsOf({CleanConfig(), std::vector<std::byte>(12)}),
        ElementsAre("note: Data after the record: 12 bytes, which stay in the file and are not used"));
}

TEST(ConfigCheck, UnitsMustNotShareAddresses) {
    const auto lines = [](const std::vector<NamedUnit>& units) {
        std::vector<std::string> texts;
        for (const FileFinding& finding : CheckTogether(units))
            texts.push_back(finding.Name + ": " + Line(finding.What));
        return texts;
    };
    EXPECT_THAT(lines({{"a", 1024}, {"b", 512}, {"c", 768}}), testing::IsEmpty());
    EXPECT_THAT(
        lines({{"a", 1024}, {"b", 512}, {"c", 769}, {"d", 512}}),
        testing::ElementsAre("d: warning: VekNet addresses 512 to 767 overlap those of b (512 to 767)",
                             "a: warning: VekNet addresses 1024 to 1279 overlap those of c (769 to 1024)"));
}

TEST(ConfigCheck, FindsWhatCannotWork) {
    const std::string place = "Mode 2, Output 3: "; // of most
    const std::string error = "error: " + place, warning = "warning: " + place, note = "note: " + place;
    const std::pair<void (*)(MatrixConfig&), std::vector<std::string>> cases[] = {
        {[](MatrixConfig&) {}, {}},
        {[](MatrixConfig& c) { c.VekNetBase = 1; }, {}},
        {[](MatrixConfig& c) { c.VekNetBase = 1792; }, {}},
        {[](MatrixConfig& c) { c.VekNetBase = 0; },
         {"error: VekNet base address 0: the addresses begin at 0, they must stay within 1 to 2047"}},
        {[](MatrixConfig& c) { c.VekNetBase = -32768; },
         {"error: VekNet base address -32768: the addresses begin at -32768, they must stay within 1 to "
          "2047"}},
        {[](MatrixConfig& c) { c.VekNetBase = 1793; },
         {"error: VekNet base address 1793: the addresses reach to 2048, they must stay within 1 to 2047"}},
        {[](MatrixConfig& c) { Levels(c) = {22.0F, 22.0F, -96.0F, flagTrue, 20.0F, flagFalse}; }, {}},
        {[](MatrixConfig& c) { Levels(c).StepLevel = 0.5F, Levels(c).StartLevel = -36.0F; }, {}},
        {[](MatrixConfig& c) { Levels(c).MaximumLevel = 22.5F; },
         {error + "Maximum level +22.5dB is outside -96dB to +22dB"}},
        {[](MatrixConfig& c) { Levels(c).MinimumLevel = -96.5F; },
         {error + "Minimum level -96.5dB is outside -96dB to +22dB"}},
        {[](MatrixConfig& c) { Levels(c).StepLevel = 0.25F; },
         {error + "Level steps +0.25dB is outside +0.5dB to +20dB"}},
        {[](MatrixConfig& c) { Levels(c).MinimumLevel = 6.0F, Levels(c).StartLevel = 6.0F; },
         {error + "the minimum level +6dB is not below the maximum level +6dB",
          error + "the download image cannot be built: Division by zero"}},
        {[](MatrixConfig& c) { Levels(c).StepLevel = 42.0F, c.Modes[7].OutputLevels[7].StepLevel = 200.0F; },
         {error + "Level steps +42dB is outside +0.5dB to +20dB",
          "error: Mode 8, Output 8: Level steps +200dB is outside +0.5dB to +20dB",
          "warning: Mode 8, Output 8: Level steps +200dB are larger than the way from the minimum level "
          "-36dB to the maximum level +6dB",
          "error: Mode 8, Output 8: the download image cannot be built: Overflow"}},
        {[](MatrixConfig& c) { Levels(c) = {3.0F, 1.0F, 0.0F, flagTrue, 3.5F, flagFalse}; },
         {warning +
          "Level steps +3.5dB are larger than the way from the minimum level 0dB to the maximum level +3dB"}},
        {[](MatrixConfig& c) { Levels(c) = {5.8F, 0.25F, -36.0F, flagTrue, 1.2F, flagFalse}; },
         {note + "Maximum level +5.8dB is no multiple of half a dB: the device takes +6dB",
          note + "Start level +0.25dB is no multiple of half a dB: the device takes 0dB",
          note + "Level steps +1.2dB is no multiple of half a dB: the device takes +1dB"}},
        {[](MatrixConfig& c) { Levels(c).StartLevel = 7.0F; },
         {error + "the start level +7dB is above the maximum level +6dB"}},
        {[](MatrixConfig& c) { Levels(c).StartLevel = -36.5F, Levels(c).PreviousNotSetStartLevel = 1; },
         {warning + "the start level -36.5dB is below the minimum level -36dB (not used: the output starts "
                    "at its previous level)"}},
        {[](MatrixConfig& c) { c.InputTrim[7] = 6.5F, c.OutputTrim[0] = -18.5F; },
         {"error: Input 8: Trim +6.5dB is outside -18dB to +6dB",
          "error: Output 1: Trim -18.5dB is outside -18dB to +6dB"}},
        {[](MatrixConfig& c) { Panels(c).PanelVolumes = "16a"; },
         {"error: Mode 2: Volume remote panel 1 is given to outputs 1, 3; it will only work for output 3",
          "error: Mode 2: Volume remote panel 6 is given to outputs 3, 6; it will only work for output 6"}},
        {[](MatrixConfig& c) { Panels(c).PanelSelects = "g", c.Modes[1].OutputPanels[4].PanelSelects = "G"; },
         {"error: Mode 2: Input selector remote panel G is given to outputs 3, 5; it will only work for "
          "output 5"}},
        {[](MatrixConfig& c) { Panels(c).PanelVolumes = "3H", c.Modes[1].OutputPanels[0].PanelVolumes = ""; },
         {warning + "Volume remote panels \"3H\": the device takes \"H\" for panel 1"}},
        {[](MatrixConfig& c) { Panels(c).PanelInputs = "19"; },
         {warning + "Input sequence \"19\": the device takes \"9\" for no input that it has"}},
        {[](MatrixConfig& c) { Panels(c).PanelInputs = "x1 x99"; },
         {warning + "Input sequence \"x1 x99\": the device takes \"9\" for no input that it has",
          warning + "Input sequence \"x1 x99\": the device takes \"x\", \" \" for OFF"}},
        {[](MatrixConfig& c) { Panels(c).PanelInputs = "10200", Panels(c).PanelSelects = "aA3G3"; },
         {warning + "Input sequence 1,OFF,2,OFF,OFF: OFF is listed more than once",
          warning + "Input selector remote panels A,A,3,G,3 (\"aA3G3\"): A,3 are listed more than once",
          note + "Input selector remote panels A,A,3,G,3 (\"aA3G3\"): more than the 4 panels that can be "
                 "typed in the editor"}},
        {[](MatrixConfig& c) { Panels(c).PanelInputs = ""; }, {warning + "has remote panels, but no inputs"}},
        {[](MatrixConfig& c) { Panels(c) = PanelRecord(); }, {note + "has no inputs"}},
        {[](MatrixConfig& c) { Panels(c) = PanelRecord(), c.Modes[1].LinkGroup = {0, 4, 4, 0, 0, 0, 0, 1}; },
         {"warning: Mode 2: link group 1 has no output but 8"}},
        {[](MatrixConfig& c) { Panels(c).PanelVolumes = Panels(c).PanelSelects = ""; },
         {note + "no remote panel and no enabled VekNet address (In) controls it, only RS232 does"}},
        {[](MatrixConfig& c) {
             Panels(c).PanelVolumes = Panels(c).PanelSelects = "";
             c.Addresses.RouteControlAddressEnable[2][2] = flagTrue; // the last (In) of its group
         },
         {}},
        {[](MatrixConfig& c) {
             Panels(c).PanelVolumes = Panels(c).PanelSelects = "";
             c.Addresses.RouteControlAddressEnable[2][3] = flagTrue; // an (Out) reports only
         },
         {note + "no remote panel and no enabled VekNet address (In) controls it, only RS232 does"}},
        {[](MatrixConfig& c) { c.Modes[1].LinkGroup = {0, 0, 0, 2, 0, 2, 0, 0}; },
         {"warning: Mode 2, Output 6: linked to output 4, but has input selector remote panels of its own "
          "(6)",
          "warning: Mode 2, Output 6: linked to output 4, but has an input sequence of its own "
          "(OFF,1,2,3,4,5,6,7,8); the editor drops it as soon as it shows and stores the mode"}},
        {[](MatrixConfig& c) {
             Panels(c) = PanelRecord(), Panels(c).UsePreviousRoute = 7, c.Modes[1].LinkGroup = {1, 0, 1};
         },
         {warning + "linked to output 1, but has a start route of its own (previous); the editor drops it as "
                    "soon as it shows and stores the mode"}},
        {[](MatrixConfig& c) { c.Modes[4] = ModeRecord(), c.Addresses.ModeAddressEnable[4] = flagTrue; },
         {"warning: Mode 5: its recall address (In) is enabled, but no output has inputs"}},
        {[](MatrixConfig& c) { c.Modes[4] = ModeRecord(), c.Addresses.ModeAddressEnable[12] = flagTrue; },
         {"warning: Mode 5: its recall address (Out) is enabled, but no output has inputs"}},
        {[](MatrixConfig& c) { c.Modes[4] = ModeRecord(), c.Modes[4].OutputPanels[7].PanelSelects = "1"; },
         {"warning: Mode 5: has remote panels, but no output has inputs"}},
    };
    for (const auto& [change, findings] : cases) {
        MatrixConfig config = CleanConfig();
        change(config);
        EXPECT_EQ(FindingsOf({config, {}}), findings);
    }
}

TEST(ConfigCheck, TellsTheNamesOfTheNotes) {
    MatrixConfig config = CleanConfig();
    config.Notes = "Mode 2: Evening\r\nOutput 3: Foyer\r\nOutput 2: Bar\r\nInput 1: Lectern";
    config.Modes[1].LinkGroup = {0, 1, 1, 2};
    Levels(config).MaximumLevel = 40.0F;
    Panels(config) = PanelRecord();
    Panels(config).UsePreviousRoute = flagTrue;
    Panels(config).PanelVolumes = "1";
    config.InputTrim[0] = 40.0F;
    EXPECT_THAT(FindingsOf({config, {}}),
                testing::ElementsAre(
                    "error: Mode 2 Evening, Output 3 Foyer: Maximum level +40dB is outside -96dB to +22dB",
                    "warning: Mode 2 Evening, Output 3 Foyer: linked to output 2 Bar, but has a start route "
                    "of its own (previous); the editor drops it as soon as it shows and stores the mode",
                    "warning: Mode 2 Evening: link group 2 has no output but 4",
                    "error: Mode 2 Evening: Volume remote panel 1 is given to outputs 1, 3; it will only "
                    "work for output 3 Foyer",
                    "error: Input 1 Lectern: Trim +40dB is outside -18dB to +6dB"));
}
