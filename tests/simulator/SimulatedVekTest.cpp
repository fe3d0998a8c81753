// The simulated device on its line, spoken to as any program would.
#include "base/Descriptor.h"
#include "simulator/RunningVek.h"

#include <gtest/gtest.h>

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
    explicit Program(const std::string& port) : port_(::open(port.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK)) {
        Set(B9600, CSTOPB);
    }

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
    Bytes Receive(std::size_t count) {
        Bytes bytes;
        pollfd watched = {port_.Get(), POLLIN, 0};
        while (bytes.size() < count && ::poll(&watched, 1, 2000) > 0) {
            Bytes more(count - bytes.size());
            const ssize_t got = ::read(port_.Get(), more.data(), more.size());
            if (got <= 0)
                break;
            bytes.insert(bytes.end(), more.begin(), more.begin() + got);
        }
        return bytes;
    }

  private:
    Descriptor port_;
};

TEST(SimulatedVek, SeesTheSettingsOfThePort) {
    RunningVek vek;
    Program program(vek->PortPath());
    program.Set(B9600, PARENB | PARODD);
    ASSERT_TRUE(program.Send("\x33"));
    ASSERT_FALSE(vek->WaitForEvents(DeviceEventKind::Refused, 1, milliseconds(20)));
    program.Set(B9600, PARENB);
    ASSERT_TRUE(program.Send("\xFF"));
    EXPECT_EQ(program.Receive(2), (Bytes{240, 15}));
}

TEST(SimulatedVek, FloodsAndListensOn) {
    RunningVek vek({.Faults = {ParseFault("flood:60000@find")}});
    Program program(vek->PortPath());
    ASSERT_TRUE(program.Send("DiReCt"));
    EXPECT_EQ(program.Receive(300'000).size(), 300'000U);
    ASSERT_TRUE(program.Send("DiReCt"));
    EXPECT_TRUE(vek->WaitForEvents(DeviceEventKind::OnlineFind, 2, milliseconds(2000)));
}

TEST(SimulatedVek, EndsWhenItHangsUp) {
    SimulatedVek vek({.Faults = {ParseFault("hang-up@find")}});
    Program program(vek.PortPath());
    ASSERT_TRUE(program.Send("DiReCt"));
    vek.Run();
    EXPECT_FALSE(program.Send("DiReCt"));
}

TEST(ReplySchedule, GivesBytesWhenTheyAreDue) {
    const auto played = [](const std::vector<Delivery>& deliveries, int byteTime) {
        ReplySchedule schedule;
        for (const Delivery& delivery : deliveries)
            schedule.Add(delivery, DeviceTime(), milliseconds(byteTime));
        std::string given;
        while (const auto next = schedule.NextTime()) {
            const auto due = schedule.Due(*next);
            given += std::to_string(next->time_since_epoch() / milliseconds(1)) + ':' +
                     std::string(due.begin(), due.end()) + ' ';
            schedule.Sent(due.size());
        }
        return given;
    };
    EXPECT_EQ(played({{{'a', 'b'}}}, 0), "0:ab ");
    EXPECT_EQ(played({{{'a', 'b'}}}, 2), "2:a 4:b ");
    EXPECT_EQ(played({{{'a', 'b'}, milliseconds(9)}, {{'c'}}}, 0), "0:c 9:ab ");
}

} // namespace

} // namespace vek
