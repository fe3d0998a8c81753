#include "link/DownloadImage.h"

#include "base/Errors.h"
#include "model/ConfigFile.h"
#include "support/TestData.h"

#include <gtest/gtest.h>

using namespace vek;
using namespace vek::test;

namespace {

std::vector<int> Slice(const EncodedImage& encoded, std::size_t start, std::size_t count) {
    const auto first = encoded.Image.Buffer.begin() + static_cast<std::ptrdiff_t>(start);
    return {first, first + static_cast<std::ptrdiff_t>(count)};
}

// Offsets as a reader of a dump counts them.
constexpr std::size_t mode1 = 256;
constexpr std::size_t output2 = mode1 + 3 + 24;
constexpr std::size_t volumePanels = mode1 + 193;
constexpr std::size_t linkLeaders = mode1 + 225;

} // namespace

TEST(DownloadImage, ReproducesTheSamples) {
    int samples = 0;
    for (const auto& entry : std::filesystem::directory_iterator(DataPath(""))) {
        if (entry.path().extension() != ".VMC")
            continue;
        const DownloadImage image = EncodeImage(LoadConfig(entry.path())).Image;
        std::string expected = ReadText(std::filesystem::path(entry.path()).replace_extension(".image"));
        ASSERT_EQ(static_cast<std::size_t>(image.Length), expected.size());
        expected.resize(image.Buffer.size());
        EXPECT_EQ(std::string(image.Buffer.begin(), image.Buffer.end()), expected) << entry.path();
        ++samples;
    }
    EXPECT_EQ(samples, 8);
}

TEST(DownloadImage, LevelsBecomeCodesAndAreLimitedInTheResult) {
    const struct {
        float maximum, minimum, start;
        std::vector<int>
            record; ///< top, bottom, 255 / R, R / 255, gap, top, bottom, R / 11, step, gap, start
        float keptMaximum, keptMinimum, keptStart;
    } cases[] = {
        {6, -36, 0, {222, 138, 97, 10, 0, 222, 138, 8, 2, 0, 210}, 6, -36, 0},
        // R comes from the levels before they are limited.
        {30, -36, 0, {254, 138, 61, 16, 0, 254, 138, 12, 2, 0, 210}, 22, -36, 0},
        {30, 25, 40, {254, 252, 255, 1, 0, 254, 252, 1, 2, 0, 254}, 22, 22, 22},
        {22, -96, -200, {254, 18, 34, 29, 0, 254, 18, 21, 2, 0, 18}, 22, -96, -96},
        // Crossed by so little that the range rounds to nothing.
        {-1, 0, 0, {210, 208, 1, 1, 0, 210, 208, 1, 2, 0, 210}, -1, 0, 0},
        // Halves of a step go to the even code.
        {0.25F, 0, 0.75F, {210, 208, 255, 1, 0, 210, 208, 1, 2, 0, 212}, 0.25F, 0, 0.75F},
    };
    for (const auto& c : cases) {
        MatrixConfig config;
        OutputLevelRecord& levels = config.Modes[0].OutputLevels[1];
        levels.MaximumLevel = c.maximum;
        levels.MinimumLevel = c.minimum;
        levels.StartLevel = c.start;
        const EncodedImage encoded = EncodeImage(config);
        EXPECT_EQ(Slice(encoded, output2 + 9, 11), c.record) << c.maximum;
        levels.MaximumLevel = c.keptMaximum;
        levels.MinimumLevel = c.keptMinimum;
        levels.StartLevel = c.keptStart;
        EXPECT_EQ(encoded.Config, config) << c.maximum;
    }
}

TEST(DownloadImage, PanelsAndGroups) {
    MatrixConfig config;
    auto& panels = config.Modes[0].OutputPanels;
    panels[1].PanelInputs = "  08x1";
    panels[0].PanelVolumes = " 1gH";
    panels[3].PanelVolumes = "G";
    panels[2].PanelSelects = "aA";
    config.Modes[0].LinkGroup = {1, 0, 3, 1, 15, 3, 0, 3};
    const EncodedImage encoded = EncodeImage(config);
    EXPECT_EQ(Slice(encoded, output2, 9), (std::vector<int>{1, 9, 1, 2, 0, 0, 0, 0, 0}));
    EXPECT_EQ(Slice(encoded, volumePanels, 32),
              (std::vector<int>{1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 4, //
                                0, 0, 0, 0, 0, 0, 0, 0, 0, 3, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(Slice(encoded, linkLeaders, 10), (std::vector<int>{0, 0, 0, 1, 0, 3, 0, 3, 0, 0}));
    panels[1].PanelInputs = "08x1";
    panels[0].PanelVolumes = "1gH";
    EXPECT_EQ(encoded.Config, config) << "the texts without leading blanks";
}

TEST(DownloadImage, BaseIsTheTwoBytesOfTheRecord) {
    const std::pair<std::int16_t, std::vector<int>> cases[] = {{512, {0, 2}},    {32767, {255, 127}},
                                                               {0, {0, 0}},      {-1, {255, 255}},
                                                               {-2, {254, 255}}, {-32768, {0, 128}}};
    auto expected = EncodeImage(MatrixConfig()).Image.Buffer;
    for (const auto& [base, bytes] : cases) {
        MatrixConfig config;
        config.VekNetBase = base;
        const EncodedImage encoded = EncodeImage(config);
        constexpr std::size_t offset = 2169;
        EXPECT_EQ(Slice(encoded, offset, 2), bytes) << base;
        std::copy(bytes.begin(), bytes.end(), expected.begin() + offset);
        EXPECT_EQ(encoded.Image.Buffer, expected) << base;
        EXPECT_EQ(encoded.Config, config) << base;
    }
}

TEST(DownloadImage, ValuesThatDoNotFitAreRunTimeErrors) {
    const struct {
        const char* message;
        void (*spoil)(MatrixConfig& config, OutputLevelRecord& levels);
    } cases[] = {
        {"Overflow", [](auto&, auto& levels) { levels.StepLevel = 127.8F; }},
        {"Overflow", [](auto&, auto& levels) { levels.StepLevel = -0.5F; }},
        {"Overflow", [](auto&, auto& levels) { levels.MaximumLevel = -42; }}, // below the minimum
        {"Overflow", [](auto&, auto& levels) { levels.MaximumLevel = 2000; }},
        {"Overflow", [](auto&, auto& levels) { levels.MaximumLevel = 3e38F; }},
        {"Division by zero", [](auto&, auto& levels) { levels.MaximumLevel = -36; }},
        {"Subscript out of range", [](auto& config, auto&) { config.Modes[0].LinkGroup[0] = 16; }},
        {"Subscript out of range", [](auto& config, auto&) { config.Modes[0].LinkGroup[0] = -1; }},
    };
    for (const auto& c : cases) {
        MatrixConfig config;
        c.spoil(config, config.Modes[7].OutputLevels[7]);
        try {
            EncodeImage(config);
            ADD_FAILURE() << &c - cases;
        } catch (const RunTimeError& error) {
            EXPECT_STREQ(error.what(), c.message) << &c - cases;
        }
    }
}
