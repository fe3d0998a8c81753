#include "platform/QtOneShotTimer.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <chrono>

using namespace vek;

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

static void WaitFor(const QtOneShotTimer& timer) {
    while (timer.Enabled())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

TEST(QtOneShotTimer, EndsOnceAndNeverEarly) {
    QtOneShotTimer timer;
    int told = 0;
    timer.SetListener([&] { ++told; });
    for (int round = 0; round < 5; ++round)
        for (const int length : {0, 1, 3, 10}) {
            const auto start = Clock::now();
            timer.Start(1000);
            timer.Start(1); // the last start counts
            timer.Start(length);
            EXPECT_TRUE(timer.Enabled());
            WaitFor(timer);
            EXPECT_GE(Clock::now() - start, milliseconds(length)) << length;
            EXPECT_LT(Clock::now() - start, milliseconds(900)) << length;
        }
    timer.Start(1);
    timer.Stop();
    EXPECT_FALSE(timer.Enabled());
    QtOneShotTimer other;
    other.Start(5);
    WaitFor(other);
    EXPECT_EQ(told, 5 * 4);
}
