// The clock of the protocol on Qt's event loop.
#pragma once

#include "link/SerialControl.h"

#include <QDeadlineTimer>
#include <QTimer>

#include <functional>

namespace vek {

/// For the thread of the application object.
class QtOneShotTimer final : public OneShotTimer {
  public:
    QtOneShotTimer();

    void Start(int milliseconds) override;
    void Stop() override { enabled_ = false; }
    bool Enabled() const override { return enabled_; }
    void SetListener(std::function<void()> listener) override { listener_ = std::move(listener); }

  private:
    void StartTimer(int milliseconds);
    void Tick();

    // The timer of the event loop runs on when a wait ends before its time, as nearly all do: to stop and
    // start it for each reply would cost as much as the rest of the exchange.
    QTimer timer_;
    QDeadlineTimer nextTick_;
    QDeadlineTimer end_;
    std::function<void()> listener_;
    bool enabled_ = false;
};

} // namespace vek
