#include "base/LineRates.h"

#include <gtest/gtest.h>

using namespace vek;

// Worked out bit by bit: at half the rate each bit is read twice, at twice the rate every other one.
TEST(LineRates, MisreadWhatWasSentAtAnotherRate) {
    using Bytes = std::vector<std::uint8_t>;
    const std::tuple<Bytes, int, int, Bytes> cases[] = {
        {{0x27, 0x02}, 9600, 9600, {0x27, 0x02}},
        {{0xFF}, 4800, 9600, {0xFE}},       // 0 0 then high
        {{0x55}, 4800, 9600, {0x66, 0x33}}, // 00 11 00 11 0|0 11 00 11 00|11
        {{0x00}, 4800, 9600, {0x00, 0x00}}, // low for 18 bits, that is two bytes
        {{0x80}, 19200, 9600, {0xF8}},      // low for four bits
        {{}, 4800, 9600, {}},
    };
    for (const auto& [sent, sentBaud, readBaud, read] : cases)
        EXPECT_EQ(MisreadBytes(sent, sentBaud, readBaud), read)
            << sentBaud << ' ' << (sent.empty() ? -1 : sent.front());
}
