#include "base/Numbers.h"

#include "base/Errors.h"
#include "base/FixedText.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

using namespace vek;
using namespace std::string_literals;

TEST(Numbers, GeneralFormatOfSingles) {
    const std::pair<float, const char*> cases[] = {
        {-0.0F, "0"},  {-36.0F, "-36"},      {0.33333334F, "0.3333333"}, {12345678.0F, "12345680"},
        {1.5F, "1.5"}, {1e-5F, "0.00001"},   {0.99999994F, "0.9999999"}, {9999999.5F, "10000000"},
        {0.1F, "0.1"}, {3e9F, "3000000000"}, {-1e-7F, "-0.0000001"},     {123456.7F, "123456.7"}};
    for (const auto& [value, text] : cases)
        EXPECT_EQ(GeneralNumber(value), text);
}

TEST(Numbers, LenientReadingTakesTheLeadingNumber) {
    const std::pair<const char*, double> cases[] = {
        {"", 0},     {"abc", 0},     {"  12", 12},    {"+6dB", 6},     {"-12.5dB", -12.5},
        {".5", 0.5}, {"5.", 5},      {"-", 0},        {"+-3", 0},      {"1e2", 100},
        {"1e", 1},   {"1e+", 1},     {"2d3", 2},      {"inf", 0},      {"nan", 0},
        {"0x10", 0}, {"1,5", 1},     {".", 0},        {"--3", 0},      {"1e-999", 0},
        {"7 8", 7},  {"1.2.3", 1.2}, {" \t\r\n3", 3}, {"1E-2x", 0.01}, {"4-1", 4}};
    for (const auto& [text, value] : cases)
        EXPECT_EQ(LenientNumber(text), value) << text;
    const std::string zeros(400, '0');
    const double infinite = std::numeric_limits<double>::infinity();
    for (const std::string& text :
         {"1e999"s, "0.1e+999"s, "1" + zeros, "1" + zeros + "e-1", "1e99999999999999999999"s}) {
        EXPECT_EQ(LenientNumber(text), infinite) << text;
        EXPECT_EQ(LenientNumber("-" + text), -infinite) << text;
    }
    for (const std::string& text : {".1E-999"s, "10e-999"s, "0." + zeros + "1", "." + zeros + "1e5", "0e999"s,
                                    "1e-99999999999999999999"s})
        EXPECT_EQ(LenientNumber(text), 0) << text;
}

TEST(Numbers, RoundsHalvesToEven) {
    const double cases[][2] = {{0.5, 0},   {1.5, 2},   {2.5, 2},    {-0.5, 0},
                               {-1.5, -2}, {-2.5, -2}, {2.4999, 2}, {-2.6, -3}};
    for (const auto& c : cases)
        EXPECT_EQ(RoundHalfEven(c[0]), c[1]) << c[0];
}

TEST(Numbers, CheckedConversionsRefuseWhatDoesNotFit) {
    EXPECT_EQ(ToByte(255.5 - 0.01), 255);
    EXPECT_EQ(ToByte(-0.5), 0);
    EXPECT_EQ(ToInteger(-32768.5), -32768);
    EXPECT_EQ(ToInteger(32767.4), 32767);
    for (const double bad : {255.5, -0.51, 1e9, std::numeric_limits<double>::infinity(), std::nan("")})
        EXPECT_THROW(ToByte(bad), OverflowError) << bad;
    for (const double bad : {32767.5, -32769.0, std::nan("")})
        EXPECT_THROW(ToInteger(bad), OverflowError) << bad;
    EXPECT_EQ(CheckedQuotient(3.0F, -2.0F), -1.5F);
    EXPECT_THROW(CheckedQuotient(1.0F, 0.0F), DivisionByZeroError);
    EXPECT_THROW(CheckedQuotient(3e38F, 1e-3F), OverflowError);
    EXPECT_EQ(CheckedIndex(3, 4), 3U);
    EXPECT_THROW(CheckedIndex(4, 4), SubscriptError);
    EXPECT_THROW(CheckedIndex(-1, 4), SubscriptError);
}

TEST(FixedTexts, PadCutAndTrim) {
    FixedText<4> text("ab");
    EXPECT_EQ(text.Padded(), "ab  ");
    text = "  xyz";
    EXPECT_EQ(text.Padded(), "  xy");
    text = text.Trimmed(); // a view of its own characters
    EXPECT_EQ(text.Padded(), "xy  ");
    text = "\t \t ";
    EXPECT_EQ(text.Trimmed(), "\t \t") << "only blanks are trimmed";
}
