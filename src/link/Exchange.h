// Waiting for a device: the one place where the protocol spends time.
#pragma once

#include "link/SerialControl.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace vek {

/// A port, its timer and the cancel flag of the window they belong to. Every wait ends at once when the flag
/// is set or the port is closed underneath it; whoever waited looks at Cancelled() and PortOpen() next.
class Exchange {
  public:
    /// Both must outlive this object.
    Exchange(SerialControl& port, OneShotTimer& timer) : port(port), timer(timer) {}

    void Cancel() { cancelled = true; }
    void ClearCancel() { cancelled = false; }
    bool Cancelled() const { return cancelled; }
    bool PortOpen() const { return port.PortOpen(); }
    /// True when nothing more can be exchanged: cancelled, or the port is gone.
    bool Ended() const { return cancelled || !port.PortOpen(); }

    /// Opens one of COM1 … COM4 (number 1 … 4), closing what was open; PortOpen() tells whether it worked.
    void Open(int number);
    void Close();

    void SetSettings(std::string_view settings) { port.SetSettings(settings); }
    void Send(std::span<const std::uint8_t> bytes) { port.Output(bytes); }
    void Send(std::uint8_t byte) { port.Output({&byte, 1}); }
    void DiscardInput() { port.Input(); }

    void Wait(int milliseconds);

    /// Waits until `enough` bytes are there or the time is over, and takes what is there; nothing, leaving
    /// the bytes, when there are fewer than `least`.
    ByteVector WaitForReply(int milliseconds, std::size_t enough, std::size_t least);

    std::size_t InBufferCount() const { return port.InBufferCount(); }
    ByteVector Input() { return port.Input(); }

  private:
    SerialControl& port;
    OneShotTimer& timer;
    bool cancelled = false;
};

} // namespace vek
