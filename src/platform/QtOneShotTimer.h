// The wait of the protocol on Qt's event loop.
#pragma once

#include "link/SerialControl.h"

#include <QDeadlineTimer>
#include <QTimer>

namespace vek {

/// For the thread of the application object. LetEventsRun sleeps only while the timer runs: the timer's own
/// end is what wakes it at the latest.
class QtOneShotTimer final : public OneShotTimer {
  public:
    QtOneShotTimer();

    void Start(int milliseconds) override;
    void Stop() override;
    bool Enabled() const override { return enabled_; }
    void LetEventsRun() override;

  private:
    void Tick();

    QTimer timer_;
    QDeadlineTimer end_;
    bool enabled_ = false;
};

} // namespace vek
