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
    void Stop() override;
    bool Enabled() const override { return enabled_; }
    void SetListener(std::function<void()> listener) override { listener_ = std::move(listener); }

  private:
    void Tick();

    QTimer timer_;
    QDeadlineTimer end_;
    std::function<void()> listener_;
    bool enabled_ = false;
};

} // namespace vek
