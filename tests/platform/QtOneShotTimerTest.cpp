#include "platform/QtOneShotTimer.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <chrono>

using namespace vek;

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

static void WaitFor(QtOneShotTimer& timer) {
    while (timer.Enabled())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

TEST(QtOneShotTimer, NeverEndsEarly) {
    QtOneShotTimer timer;
    int told = 0;
    timer.SetListener([&] { ++told; });
    for (int round = 0; round < 5; ++round)
        for (const int length : {0, 1, 3, 10}) {
            const auto start = Clock::now();
            timer.Start(length);
            EXPECT_TRUE(timer.Enabled());
            WaitFor(timer);
            EXPECT_GE(Clock::now() - start, milliseconds(length)) << length;
        }
    EXPECT_EQ(told, 5 * 4);
}

TEST(QtOneShotTimer, RestartingAndStoppingEndTheFormerWait) {
    QtOneShotTimer timer;
    int told = 0;
    timer.SetListener([&] { ++told; });
    const auto start = Clock::now();
    timer.Start(1);
    timer.Start(20);
    WaitFor(timer);
    EXPECT_GE(Clock::now() - start, milliseconds(20));
    timer.Start(1);
    timer.Stop();
    EXPECT_FALSE(timer.Enabled());
    QtOneShotTimer other;
    other.Start(5);
    WaitFor(other);
    EXPECT_EQ(told, 1);
}
