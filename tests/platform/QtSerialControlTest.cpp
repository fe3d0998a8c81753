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

    template <typename Condition>
    static void RunWhile(Condition condition) {
        while (condition())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    void Wait(int length) {
        timer.Start(length);
        RunWhile([this] { return timer.Enabled(); });
    }
    /// What arrives, read without letting the program's event loop run.
    ByteVector Sent(QtSerialControl& from, const ByteVector& bytes) {
        from.Output(bytes);
        RunWhile([&] { return from.Sending(); });
        return line.Read();
    }

    PseudoTerminal line;
    QtSerialControl port{[this](int) { return line.PortPath(); }};
    QtOneShotTimer timer;
    QObject receiver; ///< of queued calls
};

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

TEST_F(SerialControlTest, StaysOpenWhenInputIsTakenThatEventsAnnounceAlready) {
    for (std::uint8_t byte = 1; byte <= 2; ++byte) {
        line.Write(ByteVector{byte});
        ByteVector taken;
        QMetaObject::invokeMethod(
            &receiver, [&] { taken = port.Input(); }, Qt::QueuedConnection);
        QCoreApplication::processEvents();
        EXPECT_EQ(taken, ByteVector{byte});
        EXPECT_TRUE(port.PortOpen());
    }
    line.Write(ByteVector{3});
    Wait(5);
    EXPECT_EQ(port.InBufferCount(), 1U) << "announced as ever";
}

TEST_F(SerialControlTest, TakesAllOfAFloodThatIsOver) {
    const ByteVector chunk(4096, 0x55);
    for (std::size_t written = 1; written != 0;) {
        written = line.Write(chunk);
        Wait(1);
        ASSERT_LE(port.InBufferCount(), chunk.size()) << "it takes no memory";
    }
    EXPECT_GE(port.Input().size(), chunk.size());
    Wait(20);
    EXPECT_EQ(port.InBufferCount(), 0U);
    line.Write(ByteVector{1});
    Wait(5);
    EXPECT_EQ(port.Input(), ByteVector{1});
}

TEST_F(SerialControlTest, OpensWithoutOldInputAndClosesForGood) {
    port.SetPortOpen(false);
    EXPECT_FALSE(port.PortOpen());
    EXPECT_EQ(Sent(port, {1}), ByteVector());
    port.SetSettings("2400,n,8,2");
    EXPECT_EQ(port.Input(), ByteVector());
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
    RunWhile([&] { return adapter.Sending(); });
    EXPECT_GE(Clock::now() - start, milliseconds(100));
    EXPECT_EQ(told, 1);
    EXPECT_EQ(line.Read(), ByteVector());
    adapter.SetSettings("9600,n,8,2");
    EXPECT_EQ(Sent(adapter, {255}), ByteVector{255});
    EXPECT_EQ(applied.size(), 2U);
}

TEST(SerialControlFlood, InputReturnsWhileTheDeviceNeverStops) {
    RunningVek vek({.Faults = {ParseFault("flood:60000@find"), ParseFault("hang-up@find:2")}});
    QtSerialControl port([&](int) { return vek->PortPath(); });
    port.SetPortOpen(true);
    port.SetSettings("9600,n,8,2");
    const auto find = [&](int count) {
        port.Output(ByteVector{'D', 'i', 'R', 'e', 'C', 't'});
        return vek->WaitForEvents(DeviceEventKind::OnlineFind, count, milliseconds(2000));
    };
    ASSERT_TRUE(find(1));
    std::size_t total = 0;
    for (const auto end = Clock::now() + milliseconds(2000); total < 1'000'000 && Clock::now() < end;) {
        const std::size_t taken = port.Input().size();
        ASSERT_LE(taken, 20U * 4096U);
        total += taken;
    }
    EXPECT_GE(total, 1'000'000U);
    EXPECT_TRUE(find(2)) << "the device listens on";
    for (const auto end = Clock::now() + milliseconds(2000); port.PortOpen() && Clock::now() < end;)
        QCoreApplication::processEvents();
    EXPECT_FALSE(port.PortOpen()) << "it hangs up";
}

TEST_F(SerialControlTest, ClosesWhenTheDeviceVanishesWithoutSpinning) {
    const std::clock_t before = std::clock();
    line.HangUp();
    Wait(300);
    EXPECT_FALSE(port.PortOpen());
    EXPECT_LT(std::clock() - before, CLOCKS_PER_SEC / 10);
    EXPECT_EQ(port.InBufferCount(), 0U);
    line = PseudoTerminal();
    port.SetPortOpen(true);
    EXPECT_EQ(Sent(port, {1}), ByteVector{1}) << "another device can be plugged in";
    line.HangUp();
    port.SetSettings("9600,n,8,2");
    port.Output(ByteVector{1});
    port.Input();
    EXPECT_FALSE(port.PortOpen()) << "noticed before events run";
}
