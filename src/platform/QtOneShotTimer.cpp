#include "platform/QtOneShotTimer.h"

namespace vek {

QtOneShotTimer::QtOneShotTimer() {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Tick(); });
}

void QtOneShotTimer::Start(int milliseconds) {
    end_ = QDeadlineTimer(milliseconds, Qt::PreciseTimer);
    enabled_ = true;
    timer_.start(milliseconds);
}

void QtOneShotTimer::Stop() {
    timer_.stop();
    enabled_ = false;
}

void QtOneShotTimer::Tick() {
    // Should the event loop be early by a fraction of a millisecond, it gets another one.
    if (!end_.hasExpired()) {
        timer_.start(1);
        return;
    }
    enabled_ = false;
    if (listener_)
        listener_();
}

} // namespace vek
