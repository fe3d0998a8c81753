// How the other side of a line has set its port.
#pragma once

#include <string>

namespace vek {

/// What the device's end of a pseudo-terminal can see of the other end's settings. The system hides whether
/// parity is enabled, so "n" and "e" look alike; the number of stop bits tells them apart in practice.
struct LineSettings {
    int Baud = 0;
    int StopBits = 1;
    bool OddParity = false;

    bool operator==(const LineSettings&) const = default;
};

/// "9600 baud, 2 stop bits", "9600 baud, 1 stop bit, odd"
std::string Describe(const LineSettings& line);

} // namespace vek
