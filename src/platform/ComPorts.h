// COM1 … COM4: which device stands behind each number.
#pragma once

#include "link/SerialControl.h"
#include "platform/SerialDevices.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vek {

struct ComPort {
    int Number = 0;        ///< 1 … 4
    std::string Device;    ///< path of the device
    std::string ShownName; ///< the same without "/dev/"

    bool operator==(const ComPort&) const = default;
};

/// What the environment says about COM1 … COM4: nothing, or a device. An empty name means that there is no
/// such port.
using NamedComPorts = std::array<std::optional<std::string>, portCount>;

/// Numbers that are named get their device, whether it exists or not. The others get the existing devices in
/// their order, those left out that are named already; numbers for which none is left are missing.
std::vector<ComPort> AssignComPorts(const NamedComPorts& named, const std::vector<SerialDevice>& existing);

/// The ports as they are now: named by the environment variables VEK_COM1 … VEK_COM4 (a path, or a name such
/// as "ttyUSB0"), the rest found.
std::vector<ComPort> FindComPorts();

/// Path of the device of COM1 … COM4 (1 … 4) as it is now; empty when there is none.
std::string DeviceOfComPort(int number);

/// Path of the device that a user means by "COM1" … "COM4", "ttyUSB0" or a path; empty for a COM port that
/// there is none of.
std::string DeviceOfPortName(std::string_view name);

} // namespace vek
