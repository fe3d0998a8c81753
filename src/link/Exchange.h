// Talking to a device and waiting for it: the one place where the protocol spends time.
#pragma once

#include "link/SerialControl.h"

#include <coroutine>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace vek {

/// A port and its timer. One task at a time waits here; the port and the timer resume it from the event loop,
/// and destroying the task while it waits ends the wait.
///
/// When the port closes, every wait ends at once and nothing more is sent, so that a sequence of steps runs
/// out without looking. Loops look at PortOpen().
class Exchange {
  public:
    /// What a wait ends with; to be awaited where it is made.
    class [[nodiscard]] Pause {
      public:
        Pause(Exchange& exchange, int milliseconds, bool forSending, std::size_t enough)
            : exchange_(exchange), milliseconds_(milliseconds), forSending_(forSending), enough_(enough) {}
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;
        ~Pause();

        bool await_ready();
        void await_suspend(std::coroutine_handle<> waiting);
        void await_resume() const {}

      protected:
        Exchange& exchange_;

      private:
        friend class Exchange;
        bool Over() const;

        int milliseconds_; ///< 0: without a timer
        bool forSending_;
        std::size_t enough_; ///< bytes received
        std::coroutine_handle<> waiting_;
    };

    class [[nodiscard]] ReplyPause : public Pause {
      public:
        ReplyPause(Exchange& exchange, int milliseconds, std::size_t enough, std::size_t least)
            : Pause(exchange, milliseconds, false, enough), least_(least) {}
        ByteVector await_resume() const;

      private:
        std::size_t least_;
    };

    /// Both must outlive this object, which becomes their listener.
    Exchange(SerialControl& port, OneShotTimer& timer);
    Exchange(const Exchange&) = delete;
    Exchange& operator=(const Exchange&) = delete;
    ~Exchange();

    bool PortOpen() const { return port_.PortOpen(); }
    OpenFailure WhyNotOpen() const { return port_.WhyNotOpen(); }

    /// Opens one of COM1 … COM4 (number 1 … 4), closing what was open; PortOpen() tells whether it worked.
    void Open(int number);
    void Close();

    void SetSettings(std::string_view settings);
    /// What has been received; nothing when the port is closed.
    ByteVector TakeInput();
    void DiscardInput() { TakeInput(); }

    /// Sends the bytes; over when they are on the line.
    Pause Send(std::span<const std::uint8_t> bytes);
    Pause Send(std::uint8_t byte) { return Send({&byte, 1}); }
    /// For the end of the program.
    void SendWithoutWaiting(std::span<const std::uint8_t> bytes);

    Pause Wait(int milliseconds);

    /// Waits until `enough` bytes are there or the time is over, and takes what is there. Takes nothing when
    /// there are fewer than `least`, nor when the port has closed.
    ReplyPause Reply(int milliseconds, std::size_t enough, std::size_t least);

  private:
    void Check();

    SerialControl& port_;
    OneShotTimer& timer_;
    Pause* pause_ = nullptr; ///< of the task that waits
};

/// Closes the port when the task in which it stands ends, however it ends.
class PortCloser {
  public:
    explicit PortCloser(Exchange& exchange) : exchange_(&exchange) {}
    PortCloser(const PortCloser&) = delete;
    PortCloser& operator=(const PortCloser&) = delete;
    ~PortCloser() {
        if (exchange_ != nullptr)
            exchange_->Close();
    }
    /// Leaves the port open.
    void Release() { exchange_ = nullptr; }

  private:
    Exchange* exchange_;
};

} // namespace vek
