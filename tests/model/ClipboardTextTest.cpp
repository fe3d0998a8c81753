#include "model/ClipboardText.h"

#include "model/ConfigFile.h"
#include "support/RandomConfig.h"
#include "support/TestData.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

using namespace vek;
using namespace vek::test;

TEST(ClipboardText, SamplesByteForByte) {
    const auto manifest = nlohmann::json::parse(ReadText(DataPath("manifest.json")));
    for (const auto& sample : manifest) {
        const std::string number = sample["case"];
        const MatrixConfig config = LoadConfig(DataPath(number + ".VMC"));
        const ModeRecord& mode = config.Modes[sample["mode"].get<std::size_t>() - 1];
        const OutputLevelRecord& levels = mode.OutputLevels[sample["output"].get<std::size_t>() - 1];
        EXPECT_EQ(CopyModeText(mode), ReadText(DataPath(number + ".mode.txt"))) << number;
        EXPECT_EQ(CopyPointText(levels), ReadText(DataPath(number + ".point.txt"))) << number;
        EXPECT_EQ(PasteModeText(CopyModeText(mode)), mode) << number;
        EXPECT_EQ(PastePointText(CopyPointText(levels)), levels) << number;
    }
}

TEST(ClipboardText, LenientLevels) {
    OutputLevelRecord expected;
    expected.MuteOnMin = flagFalse;
    expected.PreviousNotSetStartLevel = flagFalse;
    expected.MaximumLevel = 0;
    expected.MinimumLevel = -3.5F;
    expected.StartLevel = 0;
    expected.StepLevel = 2;
    EXPECT_EQ(PastePointText("VornMatrixPointXtabc,-3.5dB,,2,more"), expected);
}

TEST(ClipboardText, BadOutputTextsFail) {
    for (const char* text :
         {"", "VornMatrixPoint", "VornMatrixPointT", "VornMatrixPointTF", "vornmatrixpointTF6,-36,0,1,",
          "VornMatrixPointTF6,-36,0,1", "VornMatrixModeTF6,-36,0,1,", "VornMatrixPointTF1e39,-36,0,1,",
          "VornMatrixPointTF6,-36,0,1e999,"})
        EXPECT_FALSE(PastePointText(text)) << text;
}

TEST(ClipboardText, EveryTruncationAndBadGroupsFail) {
    std::string text = CopyModeText(DefaultMode());
    for (std::size_t length = 0; length < text.size(); ++length)
        EXPECT_FALSE(PasteModeText(text.substr(0, length))) << length;
    EXPECT_TRUE(PasteModeText(text));
    for (const char group : {'5', '9', '-'}) {
        text[14] = group;
        EXPECT_EQ(PasteModeText(text).has_value(), group == '-') << group << " (no digit counts as 0)";
    }
}
