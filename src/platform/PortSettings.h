// The settings of a serial port, and how the system is told.
#pragma once

#include <optional>
#include <string_view>

namespace vek {

struct PortSettings {
    int Baud = 0;
    char Parity = 'n'; ///< n, o or e
    int DataBits = 8;  ///< 5 … 8
    int StopBits = 1;  ///< 1 or 2

    bool operator==(const PortSettings&) const = default;
};

/// Reads "baud,parity,data bits,stop bits"; nothing for anything else.
std::optional<PortSettings> ParsePortSettings(std::string_view text);

/// Sets an open serial port, at once and in one step, so that the line is never set to a mixture of old and
/// new. Parity is for sending only: received bytes are taken whatever theirs is. Nothing happens when it is
/// set like this already. Returns the rate that the driver really uses, which differs when the hardware
/// cannot do the one asked for; 0 when the port is gone.
int ApplyPortSettings(int descriptor, const PortSettings& settings);

/// Sets an open serial port like this; true when the driver took all of it.
bool TakesPortSettings(int descriptor, const PortSettings& settings);

/// True when bytes sent at one rate can be read at the other.
bool RatesAgree(int a, int b);

/// How many bytes the driver has still to put on the line; 0 when it cannot tell.
int QueuedOutput(int descriptor);
/// How many received bytes the driver holds; 0 when it cannot tell.
int QueuedInput(int descriptor);

} // namespace vek
