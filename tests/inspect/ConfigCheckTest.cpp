#include "inspect/ConfigCheck.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace vek;

namespace {

/// All modes used, every output with all inputs and its own panel.
MatrixConfig CleanConfig() {
    MatrixConfig config;
    config.Modes.fill(DefaultMode());
    return config;
}

std::vector<std::string> FindingsOf(const MatrixConfig& config) {
    std::vector<std::string> lines;
    for (const Finding& finding : CheckConfig(config))
        lines.push_back(std::string(SeverityName(finding.Level)) + ": " + finding.Text);
    return lines;
}

OutputLevelRecord& Levels(MatrixConfig& config) { return config.Modes[1].OutputLevels[2]; }
PanelRecord& Panels(MatrixConfig& config) { return config.Modes[1].OutputPanels[2]; }

} // namespace

TEST(ConfigCheck, NewConfigurationsAreClean) {
    EXPECT_EQ(FindingsOf(MatrixConfig()), std::vector<std::string>());
}

TEST(ConfigCheck, FindsWhatCannotWork) {
    const struct {
        void (*Change)(MatrixConfig&);
        std::vector<std::string> Findings;
    } cases[] = {
        {[](MatrixConfig&) {}, {}},
        {[](MatrixConfig& c) { c.VekNetBase = 1; }, {}},
        {[](MatrixConfig& c) { c.VekNetBase = 1792; }, {}},
        {[](MatrixConfig& c) { c.VekNetBase = 0; },
         {"error: VekNet base address 0: the addresses reach to 255, they must stay within 1 to 2047"}},
        {[](MatrixConfig& c) { c.VekNetBase = 1793; },
         {"error: VekNet base address 1793: the addresses reach to 2048, they must stay within 1 to 2047"}},
        {[](MatrixConfig& c) { Levels(c) = {22.0F, 22.0F, -96.0F, flagTrue, 20.0F, flagFalse}; }, {}},
        {[](MatrixConfig& c) { Levels(c).StepLevel = 0.5F, Levels(c).StartLevel = -36.0F; }, {}},
        {[](MatrixConfig& c) { Levels(c).MaximumLevel = 22.5F; },
         {"error: Mode 2, Output 3: Maximum level +22.5dB is outside -96dB to +22dB"}},
        {[](MatrixConfig& c) { Levels(c).MinimumLevel = -96.5F; },
         {"error: Mode 2, Output 3: Minimum level -96.5dB is outside -96dB to +22dB"}},
        {[](MatrixConfig& c) { Levels(c).StepLevel = 0.25F; },
         {"error: Mode 2, Output 3: Level steps +0.25dB is outside +0.5dB to +20dB"}},
        {[](MatrixConfig& c) { Levels(c).MinimumLevel = 6.0F, Levels(c).StartLevel = 6.0F; },
         {"error: Mode 2, Output 3: the minimum level +6dB is not below the maximum level +6dB",
          "error: The download image cannot be built: Division by zero"}},
        {[](MatrixConfig& c) { Levels(c).StartLevel = 7.0F; },
         {"error: Mode 2, Output 3: the start level +7dB is above the maximum level +6dB"}},
        {[](MatrixConfig& c) { Levels(c).StartLevel = -36.5F, Levels(c).PreviousNotSetStartLevel = 1; },
         {"warning: Mode 2, Output 3: the start level -36.5dB is below the minimum level -36dB (not used: "
          "the output starts at its previous level)"}},
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
         {"warning: Mode 2, Output 3: Volume remote panels \"3H\": the device takes \"H\" for panel 1"}},
        {[](MatrixConfig& c) { Panels(c).PanelInputs = "19"; },
         {"warning: Mode 2, Output 3: Input sequence \"19\": the device takes \"9\" for no input that it "
          "has"}},
        {[](MatrixConfig& c) { Panels(c).PanelInputs = ""; },
         {"warning: Mode 2, Output 3: has remote panels, but no inputs"}},
        {[](MatrixConfig& c) { Panels(c) = PanelRecord(); }, {"note: Mode 2, Output 3: has no inputs"}},
        {[](MatrixConfig& c) { Panels(c) = PanelRecord(), c.Modes[1].LinkGroup = {0, 4, 4, 0, 0, 0, 0, 1}; },
         {}},
        {[](MatrixConfig& c) { c.Modes[1].LinkGroup = {0, 0, 0, 2, 0, 2, 0, 0}; },
         {"warning: Mode 2, Output 6: linked to output 4, but has input selector remote panels of its own "
          "(6)"}},
        {[](MatrixConfig& c) { c.Modes[4] = ModeRecord(), c.Addresses.ModeAddressEnable[4] = flagTrue; },
         {"warning: Mode 5: its recall address is enabled, but no output has inputs"}},
        {[](MatrixConfig& c) { c.Modes[4] = ModeRecord(), c.Modes[4].OutputPanels[7].PanelSelects = "1"; },
         {"warning: Mode 5: has remote panels, but no output has inputs"}},
    };
    for (const auto& [change, findings] : cases) {
        MatrixConfig config = CleanConfig();
        change(config);
        EXPECT_EQ(FindingsOf(config), findings);
    }
}
