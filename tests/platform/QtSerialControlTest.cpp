// The real serial control against the other end of a pseudo-terminal.
#include "platform/QtSerialControl.h"
#include "platform/QtOneShotTimer.h"
#include "simulator/RunningVek.h"
#include "support/TestData.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

#include <chrono>
#include <ctime>

using namespace vek;

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

class SerialControlTest : public testing::Test {
  protected:
    SerialControlTest() { port.SetPortOpen(true); }

    void Wait(int length) {
        timer.Start(length);
        while (timer.Enabled())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    static void Send(QtSerialControl& to, const ByteVector& bytes) {
        to.Output(bytes);
        while (to.Sending())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    void Send(const ByteVector& bytes) { Send(port, bytes); }
    /// What the program sent, read without letting its event loop run.
    ByteVector Sent() { return line.Read(); }

    PseudoTerminal line;
    QtSerialControl port{[this](int) { return line.PortPath(); }};
    QtOneShotTimer timer;
};

TEST_F(SerialControlTest, BytesAreOutWhenSendingIsOverAndSettingsBeforeThem) {
    ASSERT_TRUE(port.PortOpen());
    const std::tuple<const char*, LineSettings, ByteVector> steps[] = {
        {"110,n,8,2", {110, 2, false}, {0}},
        {"9600,n,8,2", {9600, 2, false}, {255}},
        {"9600,o,8,1", {9600, 1, true}, {17}},
        {"9600,e,8,1", {9600, 1, false}, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 210}},
        {"28800,n,8,2", {28800, 2, false}, {0x11, 0x13, 0x0A, 0x0D, 0x03, 0x7F, 0xFF}},
    };
    for (const auto& [settings, seen, bytes] : steps) {
        port.SetSettings(settings);
        Send(bytes);
        EXPECT_EQ(Sent(), bytes) << settings;
        EXPECT_EQ(line.Settings(), seen) << settings;
    }
}

TEST_F(SerialControlTest, InputIsWhatCameSinceAlsoWithoutEvents) {
    const ByteVector reply = {0, 17, 19, 10, 13, 255, 240};
    ASSERT_EQ(line.Write(reply), reply.size());
    ByteVector input;
    for (const auto end = Clock::now() + milliseconds(2000);
         input.size() < reply.size() && Clock::now() < end;) {
        const ByteVector more = port.Input();
        input.insert(input.end(), more.begin(), more.end());
    }
    EXPECT_EQ(input, reply);
    ASSERT_EQ(line.Write(reply), reply.size());
    Wait(5);
    EXPECT_EQ(port.InBufferCount(), reply.size());
    EXPECT_EQ(port.Input(), reply);
    EXPECT_EQ(port.InBufferCount(), 0U);
    EXPECT_EQ(port.Input(), ByteVector());
}

TEST_F(SerialControlTest, OpensWithoutOldInputAndClosesForGood) {
    port.SetPortOpen(false);
    EXPECT_FALSE(port.PortOpen());
    Send({1});
    port.SetSettings("2400,n,8,2");
    EXPECT_EQ(port.Input(), ByteVector());
    EXPECT_EQ(Sent(), ByteVector());
    line.Write(ByteVector{1, 2, 3});
    Wait(5);
    port.SetPortOpen(true);
    Wait(5);
    EXPECT_EQ(port.InBufferCount(), 0U);
}

TEST_F(SerialControlTest, IsExclusiveUnderEveryName) {
    const test::TemporaryFolder folder;
    std::filesystem::create_symlink(line.PortPath(), folder.Path("COM1"));
    for (const std::string& name : {line.PortPath(), folder.Path("COM1")}) {
        QtSerialControl other([&](int) { return name; });
        other.SetPortOpen(true);
        EXPECT_FALSE(other.PortOpen()) << name;
        EXPECT_EQ(other.WhyNotOpen(), OpenFailure::InUse);
        port.SetPortOpen(false);
        other.SetPortOpen(true);
        EXPECT_TRUE(other.PortOpen()) << name;
        other.SetPortOpen(false);
        port.SetPortOpen(true);
    }
}

TEST_F(SerialControlTest, OpensThePortOfItsNumberOnly) {
    std::vector<int> asked;
    QtSerialControl other([&](int number) {
        asked.push_back(number);
        return number == 3 ? std::string() : std::string("/dev/ptmx");
    });
    for (const int number : {3, 4}) {
        other.SetCommPort(number);
        other.SetPortOpen(true);
        EXPECT_FALSE(other.PortOpen()) << number;
        EXPECT_EQ(other.WhyNotOpen(), OpenFailure::NotThere);
    }
    EXPECT_EQ(asked, (std::vector<int>{3, 4}));
}

TEST_F(SerialControlTest, SendsABreakWhereTheRateOfTheWakePulseIsRefused) {
    std::vector<PortSettings> applied;
    QtSerialControl adapter([this](int) { return line.PortPath(); },
                            [&](int descriptor, PortSettings settings) {
                                settings.Baud = std::max(settings.Baud, 300);
                                applied.push_back(settings);
                                return ApplyPortSettings(descriptor, settings);
                            });
    port.SetPortOpen(false);
    adapter.SetPortOpen(true);
    adapter.SetSettings("110,n,8,2");
    const auto start = Clock::now();
    adapter.Output(ByteVector{0});
    EXPECT_LT(Clock::now() - start, milliseconds(50)) << "without holding up the program";
    EXPECT_TRUE(adapter.Sending());
    int told = 0;
    adapter.SetListener([&] { told += adapter.Sending() ? 0 : 1; });
    while (adapter.Sending())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_GE(Clock::now() - start, milliseconds(100));
    EXPECT_EQ(told, 1);
    EXPECT_EQ(Sent(), ByteVector());
    adapter.SetSettings("9600,n,8,2");
    Send(adapter, {255});
    EXPECT_EQ(Sent(), ByteVector{255});
    EXPECT_EQ(applied.size(), 2U);
}

TEST_F(SerialControlTest, AFloodTakesNoMemory) {
    const ByteVector chunk(4096, 0x55);
    for (int round = 0; round < 50; ++round) {
        line.Write(chunk);
        Wait(1);
        ASSERT_LE(port.InBufferCount(), 4096U);
    }
    EXPECT_GE(port.InBufferCount(), 4096U) << "the test must fill the buffer";
}

TEST(SerialControlFlood, InputReturnsWhileTheDeviceNeverStops) {
    RunningVek vek({.Faults = {ParseFault("flood:60000@find")}});
    QtSerialControl port([&](int) { return vek->PortPath(); });
    port.SetPortOpen(true);
    port.SetSettings("9600,n,8,2");
    port.Output(ByteVector{'D', 'i', 'R', 'e', 'C', 't'});
    ASSERT_TRUE(vek->WaitForEvents(DeviceEventKind::OnlineFind, 1, milliseconds(2000)));
    std::size_t total = 0;
    for (const auto end = Clock::now() + milliseconds(2000); total < 1'000'000 && Clock::now() < end;) {
        const std::size_t taken = port.Input().size();
        ASSERT_LE(taken, 20U * 4096U);
        total += taken;
    }
    EXPECT_GE(total, 1'000'000U);
}

TEST_F(SerialControlTest, ClosesWhenTheDeviceVanishesWithoutSpinning) {
    const std::clock_t before = std::clock();
    line.HangUp();
    Wait(300);
    EXPECT_FALSE(port.PortOpen());
    EXPECT_LT(std::clock() - before, CLOCKS_PER_SEC / 10);
    EXPECT_EQ(port.InBufferCount(), 0U);
    Send({1});
    EXPECT_EQ(port.Input(), ByteVector());
}

TEST_F(SerialControlTest, ClosesWhenTheDeviceVanishesBeforeEventsRun) {
    line.HangUp();
    port.SetSettings("9600,n,8,2");
    Send({1});
    port.Input();
    EXPECT_FALSE(port.PortOpen());
    line = PseudoTerminal();
    port.SetPortOpen(true);
    EXPECT_TRUE(port.PortOpen()) << "another device can be plugged in";
    Wait(5);
    EXPECT_TRUE(port.PortOpen());
}
