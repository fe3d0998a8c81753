// What the system tells of a serial port without a byte on its line.
#pragma once

#include <string>
#include <vector>

namespace vek {

/// A program that has a device open.
struct PortHolder {
    std::string Program; ///< its name, as the system has it: the first 15 bytes
    int Pid = 0;

    bool operator==(const PortHolder&) const = default;
};

/// Who may use a device.
struct PortRights {
    std::string Owner; ///< a name, or a number where there is none
    std::string Group;
    unsigned Mode = 0;    ///< the nine bits of the permissions
    bool Allowed = false; ///< this program may read and write it
    /// Whose members may read and write the device. Empty when that helps nobody: it is allowed already, or
    /// the group may not either.
    std::string GroupToJoin;
    /// The user has joined it, but not logged in again since.
    bool JoinedSinceLogin = false;
};

struct PortFacts {
    std::string Name;   ///< as the user knows the device: "ttyUSB0"
    std::string Device; ///< path without links; empty when there is no such port
    bool Exists = false;
    bool IsSerial = false;         ///< a serial port, or the open end of a pseudo-terminal
    bool IsPseudoTerminal = false; ///< what a simulated device is reached by
    std::string Adapter;           ///< what the hardware calls itself; empty where it does not
    std::string SerialNumber;      ///< of the adapter; empty where it has none
    std::string Driver;            ///< of the system
    PortRights Rights;
    /// Those that may be looked at: the user's own, for root all.
    std::vector<PortHolder> Holders;
    /// Services running that open serial ports by themselves to see what is there.
    std::vector<PortHolder> Grabbers;
};

} // namespace vek
