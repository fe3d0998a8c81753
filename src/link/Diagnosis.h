// What the facts of an examination mean.
#pragma once

#include "link/PortExamination.h"

#include <span>
#include <string>
#include <string_view>

namespace vek {

/// Why no Matrix Vek is found on a port, those first that are nearest to one.
enum class Cause {
    MatrixVek, ///< it is found
    Disturbed, ///< it is found, but something else sends as well
    OtherRate,
    WrongSum,
    BehindBytes, ///< its answer, with other bytes before it
    Echo,
    Chatter,
    NotUnderstood,
    InUse,
    Forbidden,
    RefusesSettings,
    Shared, ///< another program has the port open as well
    Vanished,
    OtherDevice,
    Silent,
    NotSerial,
    NotThere,
};

/// What came at one rate and what it suggests: "Matrix Vek 2.5", "too short for an answer".
struct AnswerMeaning {
    Cause Suggests = Cause::Silent;
    std::string Text; ///< empty when nothing came
};
AnswerMeaning MeaningOf(const RateAnswer& answer, const DeviceTypeList& types);

struct Diagnosis {
    Cause Likeliest = Cause::NotThere;
    std::string Text;   ///< the cause in a sentence
    std::string Advice; ///< what to do about it
};

/// Of one port whose examination is over.
Diagnosis Diagnose(const PortExamination& port, const DeviceTypeList& types);
/// Of all ports together: that of the port that is nearest to a Matrix Vek, and which one it is.
Diagnosis DiagnoseAll(std::span<const PortExamination> ports, const DeviceTypeList& types);

/// What the port refuses of neededSettings, in words: "odd parity, 38400 baud".
std::string RefusedText(const PortExamination& port);

} // namespace vek
