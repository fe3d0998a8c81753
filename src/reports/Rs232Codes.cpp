#include "reports/Rs232Codes.h"

#include "model/Config.h"

#include <array>

namespace vek {

namespace {

constexpr std::array<Rs232Function, 8> commands = {{
    {"Volume Step Up", 'U', ""},
    {"Volume Step Down", 'D', ""},
    {"Volume Level", 'V', "0 to 9"},
    {"Next Input", 'N', ""},
    {"Previous Input", 'P', ""},
    {"Select Input", 'I', "1 to 8"},
    {"Mute On", 'M', ""},
    {"Mute Off", 'm', ""},
}};

/// The quoted codes stand below each other.
constexpr std::size_t labelWidth = 21;
constexpr std::string_view lineEnd = "\r\n";
constexpr std::string_view gapAfterMode = "         ";

void AppendCommand(std::string& report, const Rs232Function& command, std::size_t output) {
    report += lineEnd;
    report += command.Label;
    report.append(labelWidth - command.Label.size(), ' ');
    report += '"';
    report += Rs232Code(command, output);
    report += '"';
    if (!command.HostDigit.empty()) {
        report += " where n = ";
        report += command.HostDigit;
    }
}

} // namespace

std::span<const Rs232Function> Rs232Functions() { return commands; }

std::string Rs232Code(const Rs232Function& command, std::size_t output) {
    std::string code(1, command.Letter);
    code += std::to_string(output + 1);
    if (!command.HostDigit.empty())
        code += 'n';
    return code;
}

void AppendRs232Section(std::string& report) {
    for (std::size_t output = 0; output < outputCount; ++output) {
        report += lineEnd;
        report += "RS232 control for Output ";
        report += std::to_string(output + 1);
        for (const Rs232Function& command : commands)
            AppendCommand(report, command, output);
        report += lineEnd;
    }
    report += lineEnd;
    report += "RS232 control for Modes ";
    for (std::size_t mode = 0; mode < modeCount; ++mode) {
        const std::string number = std::to_string(mode + 1);
        report += lineEnd;
        report += "Mode ";
        report += number;
        report += gapAfterMode;
        report += "\"R";
        report += number;
        report += '"';
    }
    report += lineEnd;
}

} // namespace vek
