// Who may use the serial ports: the online page and the programming window search the same ones.
#pragma once

#include <QTimer>

#include <coroutine>
#include <deque>

namespace vek {

/// One turn at a time, in the order in which they were asked for.
class PortTurns {
  public:
    /// The right to use the ports, awaited by a conversation; given back when it is destroyed. Must not
    /// outlive the PortTurns.
    class Turn {
      public:
        explicit Turn(PortTurns& turns) : turns_(turns) {}
        Turn(const Turn&) = delete;
        Turn& operator=(const Turn&) = delete;
        ~Turn() { turns_.Leave(*this); }

        bool await_ready() { return turns_.Take(*this); }
        void await_suspend(std::coroutine_handle<> waiting) {
            waiting_ = waiting;
            turns_.queue_.push_back(this);
        }
        void await_resume() const {}

      private:
        friend class PortTurns;
        PortTurns& turns_;
        std::coroutine_handle<> waiting_;
    };

    PortTurns();

    /// False while a turn that is asked for would have to wait.
    bool Free() const { return holder_ == nullptr && queue_.empty(); }

  private:
    bool Take(const Turn& turn);
    void Leave(const Turn& turn);
    void GiveNext();

    const Turn* holder_ = nullptr;
    std::deque<Turn*> queue_;
    QTimer next_; ///< a conversation goes on from the event loop, never from within another one
};

} // namespace vek
