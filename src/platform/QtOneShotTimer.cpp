#include "platform/QtOneShotTimer.h"

#include <QCoreApplication>

namespace vek {

QtOneShotTimer::QtOneShotTimer() {
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, &timer, [this] { Tick(); });
}

void QtOneShotTimer::Start(int milliseconds) {
    end = QDeadlineTimer(milliseconds, Qt::PreciseTimer);
    enabled = true;
    timer.start(milliseconds);
}

void QtOneShotTimer::Stop() {
    timer.stop();
    enabled = false;
}

void QtOneShotTimer::Tick() {
    // Should the event loop be early by a fraction of a millisecond, it gets another one.
    if (end.hasExpired())
        enabled = false;
    else
        timer.start(1);
}

void QtOneShotTimer::LetEventsRun() {
    QCoreApplication::processEvents(enabled ? QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents
                                            : QEventLoop::AllEvents);
}

} // namespace vek
