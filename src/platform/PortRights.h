// Who may use a serial port.
#pragma once

#include "link/PortFacts.h"

#include <string>

namespace vek {

/// Nothing but defaults for a path that does not exist.
PortRights RightsOf(const std::string& device);

} // namespace vek
