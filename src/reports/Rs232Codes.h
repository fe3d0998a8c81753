// The letter codes with which a host drives the Matrix Vek over its RS232 port.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace vek {

/// A command to one output. The code is the letter, the output's number and, where the host supplies a digit,
/// a lower-case "n" in its place.
struct Rs232Function {
    std::string_view Label;
    char Letter;                ///< its case counts: "M" is mute on, "m" mute off
    std::string_view HostDigit; ///< range of the host's digit as a text, empty when the code takes none
};

/// The eight commands of an output in the order of the listing and of the labels in the main window.
std::span<const Rs232Function> Rs232Functions();

/// The bare code for output 0 … 7: "U1", "V1n".
std::string Rs232Code(const Rs232Function& command, std::size_t output);

/// Appends the listing of all codes. They are the same in every configuration. Every line begins with CR LF.
void AppendRs232Section(std::string& report);

} // namespace vek
