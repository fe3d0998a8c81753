#include "platform/PortSettings.h"

#include "base/Descriptor.h"
#include "simulator/PseudoTerminal.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <termios.h>

using namespace vek;

TEST(PortSettings, AreReadOrRefusedAsAWhole) {
    EXPECT_EQ(ParsePortSettings("9600,n,8,2"), (PortSettings{9600, 'n', 8, 2}));
    EXPECT_EQ(ParsePortSettings("28800,o,5,1"), (PortSettings{28800, 'o', 5, 1}));
    for (const char* text :
         {"", "9600", "9600,n,8", "9600,n,8,3", "9600,x,8,1", "9600,n,4,1", "9600,n,8,1,", ",n,8,1",
          "-9600,n,8,1", "0,n,8,1", "9600,n,8;1", " 9600,n,8,1", "99999999999,n,8,1"})
        EXPECT_FALSE(ParsePortSettings(text)) << text;
}

TEST(PortSettings, ArriveAtTheOtherEndExactly) {
    const PseudoTerminal line;
    const Descriptor port(::open(line.PortPath().c_str(), O_RDWR | O_NOCTTY));
    for (const int baud : {110, 9600, 38400, 28800, 19200, 14400, 4800, 2400})
        for (const auto& [parity, stopBits, odd] :
             {std::tuple('o', 1, true), std::tuple('n', 2, false), std::tuple('e', 1, false)}) {
            EXPECT_EQ(ApplyPortSettings(port.Get(), {baud, parity, 8, stopBits}), baud);
            EXPECT_EQ(line.Settings(), (LineSettings{baud, stopBits, odd})) << baud << parity;
        }
    termios settings = {};
    ASSERT_EQ(tcgetattr(port.Get(), &settings), 0);
    settings.c_iflag |= IGNPAR | INPCK;
    ASSERT_EQ(tcsetattr(port.Get(), TCSANOW, &settings), 0);
    ApplyPortSettings(port.Get(), {9600, 'n', 8, 1});
    ASSERT_EQ(tcgetattr(port.Get(), &settings), 0);
    EXPECT_EQ(settings.c_iflag & (IGNPAR | INPCK), 0U) << "replies are taken whatever their parity";
    EXPECT_EQ(cfgetospeed(&settings), speed_t{B9600}) << "programs that know standard rates only";
    EXPECT_EQ(ApplyPortSettings(-1, {9600, 'n', 8, 1}), 0);
}

TEST(PortSettings, RatesAgreeWithinTheToleranceOfALine) {
    EXPECT_TRUE(RatesAgree(28846, 28800));
    EXPECT_FALSE(RatesAgree(0, 110));
    EXPECT_FALSE(RatesAgree(115, 110));
}
