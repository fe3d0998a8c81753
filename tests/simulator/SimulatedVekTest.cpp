// The simulated device on its line, spoken to as any program would.
#include "base/Descriptor.h"
#include "simulator/RunningVek.h"

#include <gtest/gtest.h>

#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <string_view>
#include <termios.h>

namespace vek {

namespace {

using Bytes = std::vector<std::uint8_t>;
using std::chrono::milliseconds;

class Program {
  public:
    explicit Program(const std::string& port) : port_(::open(port.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK)) {}

    void Set(speed_t rate, tcflag_t stopAndParity) {
        termios settings = {};
        tcgetattr(port_.Get(), &settings);
        settings.c_cflag = CS8 | CREAD | CLOCAL | stopAndParity;
        cfsetspeed(&settings, rate);
        tcsetattr(port_.Get(), TCSANOW, &settings);
    }
    bool Send(std::string_view bytes) {
        return ::write(port_.Get(), bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
    }
    /// Waits for `count` bytes; fewer when nothing comes for a while.
    Bytes Receive(std::size_t count, milliseconds patience = milliseconds(2000)) {
        Bytes bytes;
        while (bytes.size() < count && Readable(patience)) {
            Bytes more(count - bytes.size());
            const ssize_t got = ::read(port_.Get(), more.data(), more.size());
            if (got <= 0)
                break;
            bytes.insert(bytes.end(), more.begin(), more.begin() + got);
        }
        return bytes;
    }
    bool HungUp() {
        pollfd watched = {port_.Get(), POLLIN, 0};
        ::poll(&watched, 1, 2000);
        return (watched.revents & POLLHUP) != 0;
    }

  private:
    bool Readable(milliseconds patience) {
        pollfd watched = {port_.Get(), POLLIN, 0};
        return ::poll(&watched, 1, static_cast<int>(patience.count())) > 0;
    }

    Descriptor port_;
};

const Bytes findReply = {39, 2, 5, 209};

TEST(SimulatedVek, SeesTheSettingsOfThePort) {
    RunningVek vek;
    Program program(vek->PortPath());
    program.Set(B9600, PARENB | PARODD);
    ASSERT_TRUE(program.Send("\x33"));
    ASSERT_FALSE(vek->WaitForEvents(DeviceEventKind::Refused, 1, milliseconds(20)));
    program.Set(B9600, PARENB);
    ASSERT_TRUE(program.Send("\xFF"));
    EXPECT_EQ(program.Receive(2), (Bytes{240, 15}));

    program.Set(B19200, CSTOPB);
    ASSERT_TRUE(program.Send("DiReCt"));
    EXPECT_TRUE(vek->WaitForEvents(DeviceEventKind::Refused, 1, milliseconds(2000)));
    program.Set(B9600, CSTOPB);
    ASSERT_TRUE(program.Send("DiReCt"));
    EXPECT_EQ(program.Receive(4), findReply);
    EXPECT_EQ(vek->Events().size(), 3U);
}

TEST(SimulatedVek, OutlivesThePrograms) {
    RunningVek vek;
    for (int i = 0; i < 3; ++i) {
        Program program(vek->PortPath());
        program.Set(B9600, CSTOPB);
        ASSERT_TRUE(program.Send("DiReCt"));
        EXPECT_EQ(program.Receive(4), findReply);
    }
}

TEST(SimulatedVek, FloodsAndListensOn) {
    RunningVek vek({.Faults = {ParseFault("flood:60000@find")}});
    Program program(vek->PortPath());
    program.Set(B9600, CSTOPB);
    ASSERT_TRUE(program.Send("DiReCt"));
    EXPECT_EQ(program.Receive(300'000).size(), 300'000U);
    ASSERT_TRUE(program.Send("DiReCt"));
    EXPECT_TRUE(vek->WaitForEvents(DeviceEventKind::OnlineFind, 2, milliseconds(2000)));
}

TEST(SimulatedVek, EndsWhenItHangsUp) {
    SimulatedVek vek({.Faults = {ParseFault("hang-up@find")}});
    Program program(vek.PortPath());
    program.Set(B9600, CSTOPB);
    ASSERT_TRUE(program.Send("DiReCt"));
    vek.Run();
    EXPECT_TRUE(program.HungUp());
}

TEST(SimulatedVek, EndsWhenItsStopDescriptorIsReadable) {
    SimulatedVek vek({});
    const Descriptor stop(::open("/dev/null", O_RDONLY));
    vek.Run(stop.Get());
    EXPECT_TRUE(vek.Events().empty());
}

TEST(ReplySchedule, GivesBytesWhenTheyAreDue) {
    using Given = std::vector<std::string>;
    const DeviceTime start{};
    const auto played = [&](const std::vector<Delivery>& deliveries, milliseconds byteTime) {
        ReplySchedule schedule;
        for (const Delivery& delivery : deliveries)
            schedule.Add(delivery, start, byteTime);
        Given given;
        while (const auto next = schedule.NextTime()) {
            std::string text = std::to_string((*next - start) / milliseconds(1)) + ":";
            const auto due = schedule.Due(*next);
            text.append(due.begin(), due.end());
            schedule.Sent(due.size());
            given.push_back(text);
        }
        return given;
    };
    EXPECT_EQ(played({{{'a', 'b'}}}, milliseconds(0)), (Given{"0:ab"}));
    EXPECT_EQ(played({{{'a', 'b'}}}, milliseconds(2)), (Given{"2:a", "4:b"}));
    EXPECT_EQ(played({{{'a', 'b'}, milliseconds(9)}, {{'c'}}}, milliseconds(0)), (Given{"0:c", "9:ab"}));
}

} // namespace

} // namespace vek
