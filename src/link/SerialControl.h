// The serial port and the clock as the protocol sees them. The platform implements them with Qt, the tests
// with a scripted device and a virtual clock.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace vek {

using ByteVector = std::vector<std::uint8_t>;

/// A serial port. No operation throws or reports a failure: a port that fails is closed, and PortOpen()
/// tells.
class SerialControl {
  public:
    virtual ~SerialControl() = default;

    /// Chooses COM1 … COM4 by number 1 … 4, for the next opening.
    virtual void SetCommPort(int number) = 0;

    /// Opens the chosen port, or closes it.
    virtual void SetPortOpen(bool open) = 0;
    /// False also after the adapter was pulled out.
    virtual bool PortOpen() const = 0;

    /// "baud,parity,data bits,stop bits", such as "9600,n,8,2"; parity is n, o or e. Takes effect after
    /// everything that was output before is on the line.
    virtual void SetSettings(std::string_view settings) = 0;

    /// Sends the bytes; returns when they are on the line (or the port is closed).
    virtual void Output(std::span<const std::uint8_t> bytes) = 0;

    /// Takes everything received.
    virtual ByteVector Input() = 0;
    /// Number of bytes waiting to be taken.
    virtual std::size_t InBufferCount() const = 0;
};

/// A one-shot timer, polled: Start(), then LetEventsRun() while Enabled(). Waits can nest; they share the
/// timer, so starting it again restarts it for all.
class OneShotTimer {
  public:
    virtual ~OneShotTimer() = default;

    /// Starts (or restarts) the timer. It never ends early.
    virtual void Start(int milliseconds) = 0;
    virtual void Stop() = 0;
    virtual bool Enabled() const = 0;

    /// Lets pending events run, and waits without using the processor when there are none: returns after an
    /// event, received bytes and the timer's own end included.
    virtual void LetEventsRun() = 0;
};

} // namespace vek
