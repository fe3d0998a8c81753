// A look at a serial port from outside: nothing is sent, and its line is left as it is.
#pragma once

#include "link/PortFacts.h"

#include <string>

namespace vek {

/// The facts of a device, also of one that does not exist. The path may be a link, or empty.
PortFacts FactsOfDevice(const std::string& device);

/// The facts of COM1 … COM4 (1 … 4).
PortFacts FactsOfComPort(int number);

} // namespace vek
