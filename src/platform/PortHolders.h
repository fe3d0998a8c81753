// Who uses a serial port, by the system's list of processes. A process that is not the user's own can be
// seen, but not what it has open.
#pragma once

#include "link/PortFacts.h"

#include <string>
#include <vector>

namespace vek {

inline constexpr const char* processFolder = "/proc";

/// The programs that have the device open, by number; this program is not among them, nor is the maker of a
/// pseudo-terminal, who keeps both of its ends. The path is one without links.
std::vector<PortHolder> HoldersOf(const std::string& device, const std::string& processes = processFolder);

/// The running services that are known to open serial ports by themselves.
std::vector<PortHolder> RunningGrabbers(const std::string& processes = processFolder);

} // namespace vek
