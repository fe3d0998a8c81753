// Talking to a device and waiting for it: the one place where the protocol spends time.
#pragma once

#include "link/SerialControl.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace vek {

/// A port, its timer and the cancel flag of the window they belong to.
///
/// An exchange has ended when the flag is set or the port is closed, also underneath a wait: every wait then
/// returns at once and nothing more is sent, so that a sequence of steps runs out without looking. Loops look
/// at Ended().
class Exchange {
  public:
    /// Both must outlive this object.
    Exchange(SerialControl& port, OneShotTimer& timer) : port_(port), timer_(timer) {}

    void Cancel() { cancelled_ = true; }
    void ClearCancel() { cancelled_ = false; }
    bool Cancelled() const { return cancelled_; }
    bool PortOpen() const { return port_.PortOpen(); }
    bool Ended() const { return cancelled_ || !port_.PortOpen(); }

    /// Opens one of COM1 … COM4 (number 1 … 4), closing what was open; PortOpen() tells whether it worked.
    void Open(int number);
    void Close();

    void SetSettings(std::string_view settings);
    void Send(std::span<const std::uint8_t> bytes);
    void Send(std::uint8_t byte) { Send({&byte, 1}); }
    void DiscardInput();

    void Wait(int milliseconds);

    /// Waits until `enough` bytes are there or the time is over, and takes what is there. Takes nothing when
    /// there are fewer than `least`.
    ByteVector WaitForReply(int milliseconds, std::size_t enough, std::size_t least);

  private:
    SerialControl& port_;
    OneShotTimer& timer_;
    bool cancelled_ = false;
};

/// Holds a flag set while a procedure runs.
class RunningScope {
  public:
    explicit RunningScope(bool& flag) : flag_(flag) { flag_ = true; }
    ~RunningScope() { flag_ = false; }
    RunningScope(const RunningScope&) = delete;
    RunningScope& operator=(const RunningScope&) = delete;

  private:
    bool& flag_;
};

} // namespace vek
