#include "link/Packets.h"
#include "link/OutcomeTexts.h"

#include "base/Errors.h"
#include "support/ScriptedPort.h"

#include <gtest/gtest.h>

using namespace vek;
using namespace vek::test;

TEST(Packets, FindRepliesAreFramedFromTheEnd) {
    const std::tuple<ByteVector, std::optional<std::uint32_t>, const char*> cases[] = {
        {{39, 2, 5}, std::nullopt, ""},
        {{39, 2, 5, 209}, 0x050227, "2.5"},
        {{39, 2, 5, 208}, std::nullopt, ""},
        {{1, 39, 2, 5, 209}, std::nullopt, ""}, // five bytes start at the first
        {{8, 39, 2, 5, 209, 0}, 0x050227, "2.5"},
        {{8, 9, 39, 2, 5, 209, 0}, 0x050227, "2.5"},
        {{39, 2, 5, 209, 0, 0}, std::nullopt, ""}, // six start at the second
        {{255, 0, 16, 240}, 0x1000FF, "4096.16"},  // bit 20 counts in both numbers
        {{39, 255, 239, 234}, 0xEFFF27, "255.239"},
    };
    for (const auto& [received, found, version] : cases) {
        EXPECT_EQ(DecodeFindReply(received), found) << Hex(received);
        EXPECT_EQ(found ? VersionText(*found) : "", version);
    }
}

TEST(Packets, BlocksCarryTheirNumberAndCheck) {
    const std::pair<int, int> counts[] = {{0, 0}, {8, 1}, {12, 2}, {20, 3}, {2177, 273}, {8192, 1024}};
    for (const auto& [length, blocks] : counts)
        EXPECT_EQ(BlockCount(length), blocks) << length;
    DownloadImage image;
    image.Buffer.fill(255);
    EXPECT_EQ(Hex(BuildBlock(image, 272)), "01 10 FF FF FF FF FF FF FF FF F6");
    EXPECT_THROW(BuildBlock(image, 1024), SubscriptError);
}

TEST(Packets, OnlineCommands) {
    EXPECT_EQ(Hex(RestartPacket()), "52 FF FF AF");
    EXPECT_EQ(Hex(RoutePacket(0, 4)), "4D 00 04 AE");
    EXPECT_EQ(RouteLine(0, 4), "M,0,4 Route Output 1 to Input 5\r\n");
    const struct {
        float level;
        const char* packet; ///< empty when it does not fit
        const char* line;
    } cases[] = {
        {0, "56 02 D2 D5", "V,2,210 Volume Output = 3,0dB, CS3318 = 210/&HD2\r\n"},
        {-101, "56 02 08 9F", "V,2,8 Volume Output = 3,-101dB, CS3318 = 8/&H8\r\n"},
        {-105, "56 02 00 A7", "V,2,0 Volume Output = 3,-105dB, CS3318 = 0/&H0\r\n"},
        {22.5F, "56 02 FF A8", "V,2,255 Volume Output = 3,22.5dB, CS3318 = 255/&HFF\r\n"},
        {0.25F, "56 02 D2 D5", "V,2,210.5 Volume Output = 3,0.25dB, CS3318 = 210.5/&HD2\r\n"},
        {0.75F, "56 02 D4 D3", "V,2,211.5 Volume Output = 3,0.75dB, CS3318 = 211.5/&HD4\r\n"},
        {23, "", "V,2,256 Volume Output = 3,23dB, CS3318 = 256/&H100\r\n"},
        {-106, "", "V,2,-2 Volume Output = 3,-106dB, CS3318 = -2/&HFFFE\r\n"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(VolumeLine(2, c.level), c.line);
        if (std::string_view(c.packet).empty())
            EXPECT_THROW(VolumePacket(2, VolumeRegister(c.level)), OverflowError);
        else
            EXPECT_EQ(Hex(VolumePacket(2, VolumeRegister(c.level))), c.packet);
    }
    EXPECT_THROW(VolumeRegister(3e38F), OverflowError);
}
