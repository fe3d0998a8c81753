// A pseudo-terminal that stands for a serial line: the device has one end, programs open the other by name.
#pragma once

#include "base/Descriptor.h"
#include "simulator/LineSettings.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace vek {

/// Everything throws std::system_error when the system refuses. Raw from the start: no echo, no line editing.
/// Programs can open and close the port as often as they like.
class PseudoTerminal {
  public:
    PseudoTerminal();

    /// The name under which programs open the line, such as "/dev/pts/3".
    const std::string& PortPath() const { return portPath_; }
    /// The device's end, for poll(). -1 after HangUp().
    int Handle() const { return device_.Get(); }

    /// How the program's end is set now.
    LineSettings Settings() const;
    /// What the program has sent, without waiting.
    std::vector<std::uint8_t> Read();
    /// Sends as many of the bytes as the line takes without waiting; returns their number.
    std::size_t Write(std::span<const std::uint8_t> bytes);

    /// Breaks the line, as pulling out an adapter does.
    void HangUp();

  private:
    Descriptor device_;
    Descriptor port_; ///< the program's end, held so that the line outlives each program
    std::string portPath_;
};

} // namespace vek
