// What an online session reads from its window: values that a test sets.
#pragma once

#include "link/OnlineSession.h"

#include <array>

namespace vek::test {

struct ShownLevels : OnlineInputs {
    std::size_t input = 0, currentOutput = 0;
    std::array<bool, 8> muted = {};
    LevelSource source = LevelSource::InputTrims;
    float level = 0, offset = 0;
    std::array<float, 8> inputTrims = {}, outputTrims = {};
    bool safe = false;
    std::array<float, 8> maximum = {};

    std::size_t OnlineInput() const override { return input; }
    bool MutedOutput(std::size_t output) const override { return muted.at(output); }
    LevelSource LevelView() const override { return source; }
    std::size_t CurrentOutput() const override { return currentOutput; }
    float LevelTrim1() const override { return level; }
    float InputLevelTrim(std::size_t trim) const override { return inputTrims.at(trim); }
    float OutputLevelTrim(std::size_t trim) const override { return outputTrims.at(trim); }
    float OnlineLevelOffset() const override { return offset; }
    bool SafeLevels() const override { return safe; }
    float MaximumLevel(std::size_t output) const override { return maximum.at(output); }
};

} // namespace vek::test
