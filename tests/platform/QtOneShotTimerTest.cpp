#include "platform/QtOneShotTimer.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <chrono>

namespace vek {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

void WaitFor(QtOneShotTimer& timer) {
    while (timer.Enabled())
        timer.LetEventsRun();
}

TEST(QtOneShotTimer, NeverEndsEarly) {
    QtOneShotTimer timer;
    for (int round = 0; round < 5; ++round)
        for (const int length : {0, 1, 3, 10}) {
            const auto start = Clock::now();
            timer.Start(length);
            EXPECT_TRUE(timer.Enabled());
            WaitFor(timer);
            EXPECT_GE(Clock::now() - start, milliseconds(length)) << length;
        }
}

TEST(QtOneShotTimer, NestedWaitsShareIt) {
    QtOneShotTimer timer;
    QTimer event;
    event.setSingleShot(true);
    Clock::time_point innerStart;
    QObject::connect(&event, &QTimer::timeout, &event, [&] {
        innerStart = Clock::now();
        timer.Start(20);
        WaitFor(timer);
    });
    event.start(5);
    timer.Start(10'000);
    WaitFor(timer);
    EXPECT_GE(Clock::now() - innerStart, milliseconds(20));
    EXPECT_LT(Clock::now() - innerStart, milliseconds(5'000));
}

TEST(QtOneShotTimer, LetsEventsRunWithoutWaitingWhenStopped) {
    QtOneShotTimer timer;
    timer.Start(60'000);
    timer.Stop();
    EXPECT_FALSE(timer.Enabled());
    bool handled = false;
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [&] { handled = true; }, Qt::QueuedConnection);
    timer.LetEventsRun();
    EXPECT_TRUE(handled);
    timer.LetEventsRun(); // nothing is pending: returns all the same
}

} // namespace

} // namespace vek
