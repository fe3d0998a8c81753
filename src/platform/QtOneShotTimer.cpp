#include "platform/QtOneShotTimer.h"

#include <QCoreApplication>

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
    if (end_.hasExpired())
        enabled_ = false;
    else
        timer_.start(1);
}

void QtOneShotTimer::LetEventsRun() {
    QCoreApplication::processEvents(enabled_ ? QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents
                                             : QEventLoop::AllEvents);
}

} // namespace vek
