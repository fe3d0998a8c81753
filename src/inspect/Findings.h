// What the checks of a configuration find.
#pragma once

#include "model/Levels.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vek {

enum class Severity {
    Error,   ///< the device cannot take it, or will not do what the configuration says
    Warning, ///< hardly what is meant
    Note     ///< worth a look
};

std::string_view SeverityName(Severity severity);

struct Finding {
    Severity Level;
    std::string Text; ///< UTF-8, one line; modes and outputs counted from 1
};

class Findings {
  public:
    void Add(Severity severity, const std::string& where, const std::string& text) {
        List.push_back({severity, where + ": " + text});
    }
    std::vector<Finding> List;
};

/// What can be set in the editor, in dB.
struct LevelRange {
    float Lowest;
    float Highest;
};
inline constexpr LevelRange levelRange = {levelMinimum, levelMaximum};
inline constexpr LevelRange stepRange = {stepMinimum, stepMaximum};
inline constexpr LevelRange trimRange = {trimMinimum, trimMaximum};

/// "Mode 2" and "Mode 2, Output 3" for numbers from 0.
std::string ModeName(std::size_t mode);
std::string OutputName(std::size_t mode, std::size_t output);

/// A level outside the range, or one that the device, which knows half decibels, does not take as it is.
void CheckLevel(const std::string& where, std::string_view caption, float level, const LevelRange& range,
                Findings& findings);

} // namespace vek
