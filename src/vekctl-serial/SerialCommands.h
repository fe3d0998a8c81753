// What the commands do that use a serial port. They throw std::exception when they fail and
// CLI::RuntimeError when they have said why.
#pragma once

#include "console/PortCommandLine.h"

namespace vek {

void RunPorts();
void RunFind(const PortCommand& command);
void RunDoctor(const PortCommand& command);
void RunProgram(const PortCommand& command);

} // namespace vek
