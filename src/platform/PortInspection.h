// A look at a serial port from outside: nothing is sent.
#pragma once

#include "link/PortFacts.h"

#include <string>
#include <vector>

namespace vek {

/// The facts of a device, also of one that does not exist. The path may be a link, or empty.
PortFacts FactsOfDevice(const std::string& device);

/// Opens the port, tries neededSettings and returns those that it does not take. Nothing when it does not
/// open. Its settings are as before then.
std::vector<std::string> RefusedSettings(const std::string& device);

} // namespace vek
