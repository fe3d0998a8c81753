#include "platform/QtOneShotTimer.h"

#include <algorithm>

namespace vek {

QtOneShotTimer::QtOneShotTimer() {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Tick(); });
}

void QtOneShotTimer::Start(int milliseconds) {
    end_ = QDeadlineTimer(milliseconds, Qt::PreciseTimer);
    enabled_ = true;
    if (!timer_.isActive() || end_ < nextTick_)
        StartTimer(milliseconds);
}

void QtOneShotTimer::StartTimer(int milliseconds) {
    nextTick_ = QDeadlineTimer(milliseconds, Qt::PreciseTimer);
    timer_.start(milliseconds);
}

void QtOneShotTimer::Tick() {
    if (!enabled_)
        return;
    // Started anew since, or the event loop is early by a fraction of a millisecond.
    if (!end_.hasExpired()) {
        StartTimer(std::max(1, static_cast<int>(end_.remainingTime())));
        return;
    }
    enabled_ = false;
    if (listener_)
        listener_();
}

} // namespace vek
