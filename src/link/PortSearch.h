// The scan of the serial ports COM1 to COM4.
#pragma once

#include "base/Task.h"
#include "link/Exchange.h"
#include "link/Outcomes.h"

#include <cstddef>
#include <functional>

namespace vek {

/// Opens a port by its row, 0 … 3 for COM1 … COM4; PortOpen() tells whether it worked.
void OpenPort(Exchange& exchange, std::size_t row);

/// Opens COM1 to COM4 one after the other, lets `identify` talk to what is there and tells the outcome of
/// each. Leaves every port closed, also when it is ended in between.
Task<> SearchPorts(Exchange& exchange, LinkOutcomes& outcomes, std::function<Task<PortFinding>()> identify);

} // namespace vek
