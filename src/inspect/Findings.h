// What the checks of a configuration find.
#pragma once

#include "inspect/FieldKind.h"
#include "inspect/NamedNumbers.h"
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
    std::string Text;      ///< UTF-8, one line; modes and outputs counted from 1
    FieldPlace Place = {}; ///< of what is in the record
};

/// "2 errors, 1 warning"; for neither "No problems", or "No problems, 6 notes".
std::string CountText(const std::vector<Finding>& findings);

/// What a finding is about.
struct Subject {
    std::string Words; ///< "Mode 2 Evening, Output 3"
    FieldPlace Place;
};

class Findings {
  public:
    explicit Findings(const MatrixConfig& config) : Numbers(config) {}

    void Add(Severity severity, const Subject& subject, const std::string& text) {
        List.push_back({severity, subject.Words + ": " + text, subject.Place});
    }
    const NamedNumbers Numbers;
    std::vector<Finding> List;
};

/// What can be set in the editor, in dB.
struct SettableLevels {
    float Lowest;
    float Highest;
};
inline constexpr SettableLevels levelRange = {levelMinimum, levelMaximum};
inline constexpr SettableLevels stepRange = {stepMinimum, stepMaximum};
inline constexpr SettableLevels trimRange = {trimMinimum, trimMaximum};

// A part of a mode, or of an output in a mode, both counted from 0.

Subject ModeSubject(const NamedNumbers& numbers, std::size_t mode, FieldKind kind);
Subject OutputSubject(const NamedNumbers& numbers, std::size_t mode, std::size_t output, FieldKind kind);

/// One field of it.
Subject FieldOf(Subject subject, std::string_view caption);

/// A level outside the range, or one that the device, which knows half decibels, does not take as it is.
void CheckLevel(const Subject& subject, std::string_view caption, float level, const SettableLevels& range,
                Findings& findings);

} // namespace vek
