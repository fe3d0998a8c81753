#include "reports/TextReport.h"

#include "base/Errors.h"

#include <gmock/gmock.h>

namespace vek {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr PrintingOptions outputsOnly = {.IncludeOutputs = true};
constexpr PrintingOptions notesOnly = {.IncludeNotes = true};

/// A configuration whose first mode is used.
MatrixConfig OneUsedMode(std::string_view inputs, std::string_view volumePanels = "") {
    MatrixConfig config;
    config.Modes[0].OutputPanels[0].PanelInputs = inputs;
    config.Modes[0].OutputPanels[0].PanelVolumes = volumePanels;
    return config;
}

TEST(TextReport, HoldsExactlyTheChosenSections) {
    const MatrixConfig config;
    EXPECT_EQ(BuildReport(config, PrintingOptions(), ReportSelection()), "");

    std::string joined;
    for (const auto option : {&PrintingOptions::IncludeVekNet, &PrintingOptions::IncludeRS232,
                              &PrintingOptions::IncludeOutputs, &PrintingOptions::IncludeInputTrims,
                              &PrintingOptions::IncludeOutputTrims, &PrintingOptions::IncludeNotes}) {
        PrintingOptions one;
        one.*option = true;
        const std::string section = BuildReport(config, one, ReportSelection());
        EXPECT_FALSE(section.empty());
        joined += section;
    }
    EXPECT_EQ(BuildReport(config, allSections, ReportSelection()), joined);
}

TEST(TextReport, OutputOfAUsedModeIsListedInFull) {
    MatrixConfig config = OneUsedMode("1020", "  12 ");
    config.Modes[0].OutputLevels[0] = {0.5F, 0.0F, -80.0F, flagFalse, 1.5F, flagFalse};
    const std::string report = BuildReport(config, outputsOnly, ReportSelection());
    EXPECT_THAT(report, testing::StartsWith("\r\nMode 1"
                                            "\r\n    Output 1"
                                            "\r\n        Input sequence = 1,OFF,2,OFF, Start route is first"
                                            "\r\n        Volume remote panels = 1,2"
                                            "\r\n        Input selector remote panels = none"
                                            "\r\n        Maximum level = +0.5dB"
                                            "\r\n        Minimum level = -80dB"
                                            "\r\n        Minimum level will not mute output "
                                            "\r\n        Start level = 0dB"
                                            "\r\n        Panel Step level = +1.5dB"));
    EXPECT_THAT(report, HasSubstr("Panel Step level = +1dB\r\n\r\nMode 2 is unused"));
}

struct LinkCase {
    const char* Description;
    std::array<std::int16_t, outputCount> Linked; ///< groups of the reported mode
    std::array<std::int16_t, outputCount> Shown;  ///< groups of the mode shown in the window
    std::size_t Output;                           ///< 1-based, whose line is checked
    const char* Line;
};

TEST(TextReport, LinkedOutputsNameTheFirstOutputThroughTheShownGrouping) {
    const LinkCase cases[] = {
        {"same grouping", {0, 0, 2, 0, 2}, {0, 0, 2, 0, 2}, 5, "Linked to 3,"},
        {"the first output names itself", {0, 0, 2, 0, 2}, {0, 0, 2, 0, 2}, 3, "Linked to 3,"},
        {"shown as group 4", {0, 0, 2, 0, 4}, {0, 0, 4, 0, 4}, 5, "Linked to 3,"},
        {"nothing entered for the group", {0, 0, 2, 0, 2}, {0, 0, 4, 0, 4}, 5, "Linked to 0,"},
        {"entered again by each output until it is known", {1, 1, 1}, {3, 2, 1}, 1, "Linked to 3,"},
        {"shown as not linked", {1, 1}, {0, 0}, 2, "Linked to 0,"},
    };
    for (const LinkCase& test : cases) {
        MatrixConfig config = OneUsedMode("1");
        config.Modes[0].LinkGroup = test.Linked;
        const std::string report = BuildReport(config, outputsOnly, {0, test.Shown});
        const std::size_t output = report.find("Output " + std::to_string(test.Output));
        const std::size_t line = report.find("selector remote panels = ", output) + 25;
        EXPECT_EQ(report.substr(line, report.find("\r\n", line) - line), test.Line) << test.Description;
    }
}

TEST(TextReport, FirstOutputsAreKeptFromModeToMode) {
    MatrixConfig config = OneUsedMode("1");
    config.Modes[0].LinkGroup = {0, 1, 1};
    config.Modes[4].OutputPanels[0].PanelInputs = "1";
    config.Modes[4].OutputPanels[6].PanelSelects = "7";
    config.Modes[4].LinkGroup = {0, 0, 0, 0, 0, 1, 1};
    const std::string report = BuildReport(config, outputsOnly, {0, {0, 1, 1, 0, 0, 1, 1}});
    const std::string fifth = report.substr(report.find("Mode 5"));
    EXPECT_THAT(fifth, HasSubstr("Linked to 2,\r\n"));
    EXPECT_THAT(fifth, Not(HasSubstr("Linked to 6,")));
    EXPECT_THAT(fifth, HasSubstr("Input selector remote panels = 7\r\n"));
}

TEST(TextReport, IndicesOutOfRangeAreRunTimeErrors) {
    MatrixConfig config = OneUsedMode("1");
    config.Modes[0].LinkGroup[3] = 2;
    EXPECT_THROW(BuildReport(config, outputsOnly, {0, {0, 0, 0, 5}}), SubscriptError);
    EXPECT_THROW(BuildReport(config, outputsOnly, {0, {0, 0, 0, -1}}), SubscriptError);
    config.Modes[0].LinkGroup[3] = 5;
    EXPECT_THROW(BuildReport(config, outputsOnly, ReportSelection()), SubscriptError);
    EXPECT_THROW(BuildReport(config, {.IncludeVekNet = true}, {outputCount, {}}), SubscriptError);
    EXPECT_THROW(SelectionOf(config, modeCount, 0), SubscriptError);
}

TEST(TextReport, NotesKeepTheirBlanksAndEveryLineEndStartsALine) {
    MatrixConfig config;
    config.Notes = "ab\r\ncd\xE9\ne";
    EXPECT_EQ(BuildReport(config, notesOnly, ReportSelection()),
              "\r\n\r\nNotes\r\n    ab\r\n    cd\xE9\ne" + std::string(notesLength - 9, ' '));
    config.Notes = std::string(notesLength - 2, 'x') + "\r\n";
    EXPECT_EQ(BuildReport(config, notesOnly, ReportSelection()),
              "\r\n\r\nNotes\r\n    " + std::string(notesLength - 2, 'x') + "\r\n    ");
}

} // namespace
} // namespace vek
