// The serial port and the clock as the protocol sees them. The platform implements them with Qt, the tests
// with a scripted device and a virtual clock.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string_view>
#include <vector>

namespace vek {

using ByteVector = std::vector<std::uint8_t>;

/// COM1 … COM4.
inline constexpr std::size_t portCount = 4;

/// Why a port is not open.
enum class OpenFailure {
    NotThere,
    NotPermitted,
    InUse, ///< or broken: it is there and may be used, but does not open
};

/// A serial port. No operation throws, blocks or reports a failure: a port that fails is closed, and
/// PortOpen() tells.
class SerialControl {
  public:
    virtual ~SerialControl() = default;

    /// Chooses COM1 … COM4 by number 1 … 4, for the next opening.
    virtual void SetCommPort(int number) = 0;

    /// Opens the chosen port, or closes it; both end a sending.
    virtual void SetPortOpen(bool open) = 0;
    /// False also after the adapter was pulled out.
    virtual bool PortOpen() const = 0;
    /// Why the last opening failed; without a meaning when it did not.
    virtual OpenFailure WhyNotOpen() const = 0;

    /// "baud,parity,data bits,stop bits", such as "9600,n,8,2"; parity is n, o or e. Not while sending.
    virtual void SetSettings(std::string_view settings) = 0;

    /// Begins to send the bytes, after those that are being sent.
    virtual void Output(std::span<const std::uint8_t> bytes) = 0;
    /// True until the bytes are on the line or the port is closed.
    virtual bool Sending() const = 0;

    /// Takes everything received.
    virtual ByteVector Input() = 0;
    /// Number of bytes waiting to be taken.
    virtual std::size_t InBufferCount() const = 0;

    /// Who is told, from the event loop, that bytes were received, that a sending is over or that the port
    /// has closed by itself. Nobody when empty.
    virtual void SetListener(std::function<void()> listener) = 0;
};

/// A timer that runs once each time it is started.
class OneShotTimer {
  public:
    virtual ~OneShotTimer() = default;

    /// Starts (or restarts) the timer. It never ends early.
    virtual void Start(int milliseconds) = 0;
    virtual void Stop() = 0;
    virtual bool Enabled() const = 0;

    /// Who is told, from the event loop, that the time is over. Nobody when empty.
    virtual void SetListener(std::function<void()> listener) = 0;
};

} // namespace vek
