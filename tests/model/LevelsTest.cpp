#include "model/Levels.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace vek;

TEST(Levels, SnapWholeTenthsTowardsZeroAndKeepFinerParts) {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    const std::pair<float, float> cases[] = {
        {0.0F, 0.0F},   {1.3F, 1.0F},     {1.7F, 1.5F},   {-1.7F, -1.5F},       {2.3F, 2.0F},
        {2.7F, 2.5F},   {2.5F, 2.5F},     {-0.5F, -0.5F}, {0.44F, 0.04F},       {2.26F, 1.96F},
        {1.96F, 1.96F}, {-96.0F, -96.0F}, {1e30F, 1e30F}, {infinity, infinity}, {-infinity, -infinity}};
    for (const auto& [level, snapped] : cases)
        EXPECT_FLOAT_EQ(SnapHalfDecibels(level), snapped) << level;
    EXPECT_FALSE(std::signbit(SnapHalfDecibels(-0.3F))) << "no negative zero";
    EXPECT_EQ(SnapHalfDecibels(std::nanf("")), 0.0F);
}

TEST(Levels, TextsHaveASignAboveZero) {
    const std::pair<float, const char*> cases[] = {{6.0F, "+6dB"},   {0.0F, "0dB"},     {-36.0F, "-36dB"},
                                                   {0.5F, "+0.5dB"}, {-0.5F, "-0.5dB"}, {-0.0F, "0dB"}};
    for (const auto& [level, text] : cases)
        EXPECT_EQ(FormatLevelText(level), text);
}
