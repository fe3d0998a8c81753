#include "model/Config.h"

#include "model/Panels.h"
#include "model/ProgramState.h"

#include <gtest/gtest.h>

using namespace vek;

TEST(Configuration, LevelsAreComparedByValue) {
    NewConfiguration();
    Config.InputTrim[0] = -0.0F;
    EXPECT_FALSE(ConfigDiffers());
    Config.InputTrim[0] = 0.5F;
    EXPECT_TRUE(ConfigDiffers());
    NewConfiguration();
    EXPECT_EQ(Config, MatrixConfig());
    EXPECT_FALSE(ConfigDiffers());
}

TEST(Configuration, BlankAndDefaultModes) {
    EXPECT_TRUE(IsBlankMode(ModeRecord()));
    EXPECT_FALSE(IsBlankMode(DefaultMode())) << "a reset mode asks again before the next reset";
    void (*const settings[])(ModeRecord&) = {
        [](ModeRecord& m) { m.LinkGroup[7] = 1; },
        [](ModeRecord& m) { m.OutputPanels[7].PanelInputs = " 0"; },
        [](ModeRecord& m) { m.OutputPanels[7].PanelSelects = "x"; },
        [](ModeRecord& m) { m.OutputPanels[0].PanelVolumes = "1"; },
        [](ModeRecord& m) { m.OutputPanels[7].UsePreviousRoute = 2; },
        [](ModeRecord& m) { m.OutputLevels[7].StepLevel = 1.5F; },
        [](ModeRecord& m) { m.OutputLevels[0].MuteOnMin = flagFalse; },
    };
    for (const auto& set : settings) {
        ModeRecord mode;
        set(mode);
        EXPECT_FALSE(IsBlankMode(mode)) << &set - settings;
    }
    ModeRecord mode;
    mode.OutputLevels[0].MuteOnMin = 1;
    EXPECT_TRUE(IsBlankMode(mode)) << "any non-zero flag is true";
    EXPECT_FALSE(IsUsedMode(mode));
    mode.OutputPanels[7].PanelInputs = "  0";
    EXPECT_TRUE(IsUsedMode(mode));
    mode.LinkGroup = {0, 2, 0, 2, 0, 0, 0, 3};
    EXPECT_EQ(LinkLeader(mode, 2), 1U);
    EXPECT_EQ(LinkLeader(mode, 3), 7U);
    EXPECT_EQ(LinkLeader(mode, 4), outputCount);
}

TEST(Panels, CharactersAndTheirIndices) {
    const std::tuple<char, std::size_t, bool> cases[] = {
        {'1', 0, true},  {'9', 8, true},  {'A', 9, true},  {'a', 9, true},  {'G', 15, true},
        {'g', 15, true}, {'H', 0, false}, {' ', 0, false}, {'0', 0, false}, {'\xE9', 0, false}};
    for (const auto& [character, index, valid] : cases) {
        EXPECT_EQ(PanelCharToIndex(character), index) << character;
        EXPECT_EQ(IsPanelChar(character), valid) << character;
    }
    EXPECT_EQ(PanelIndexToChar(15), 'G');
}

TEST(Panels, TakenByAnotherOutputOfTheMode) {
    ModeRecord mode;
    mode.OutputPanels[2].PanelVolumes = "3a";
    mode.OutputPanels[6].PanelSelects = "3";
    EXPECT_EQ(OutputUsingPanel(mode, NumberList::VolumePanels, 9, 0), 2U);
    EXPECT_EQ(OutputUsingPanel(mode, NumberList::VolumePanels, 9, 2), std::nullopt)
        << "its own panel is not taken";
    EXPECT_EQ(OutputUsingPanel(mode, NumberList::SelectorPanels, 2, 0), 6U) << "the two lists are apart";
    EXPECT_EQ(OutputUsingPanel(mode, NumberList::SelectorPanels, 9, 0), std::nullopt);
}
