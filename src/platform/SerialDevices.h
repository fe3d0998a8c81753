// Serial devices of this machine: their names, and which of them can be used.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vek {

/// A serial port that really exists.
struct SerialDevice {
    std::string Path;
    bool Usb = false; ///< an adapter, in contrast to a port on the main board
};

/// USB adapters first, then by path in natural order ("ttyUSB2" before "ttyUSB10").
void SortSerialDevices(std::vector<SerialDevice>& devices);

/// The ports that exist now, sorted. Ports that the system merely has names for are left out.
std::vector<SerialDevice> ExistingSerialDevices();

/// "/dev/ttyUSB0" for "ttyUSB0"; a path stays as it is, an empty name too.
std::string DevicePath(std::string_view name);

/// The path without "/dev/", for people.
std::string ShownDeviceName(std::string_view path);

/// True for serial ports and the open ends of pseudo-terminals. Everything else is told apart without being
/// opened, because opening it can succeed or have effects: files, folders, consoles, other devices.
bool IsSerialDevice(const std::string& path);

/// The same for a device's numbers, by the system's list of terminal drivers (/proc/tty/drivers).
bool IsSerialDriver(std::string_view drivers, unsigned majorNumber, unsigned minorNumber);

} // namespace vek
