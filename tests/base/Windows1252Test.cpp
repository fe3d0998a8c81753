#include "base/Windows1252.h"

#include <gtest/gtest.h>

using namespace vek;

TEST(Windows1252, EveryByteSurvivesTheWayToUtf8AndBack) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);
    EXPECT_EQ(Utf8ToWindows1252(Windows1252ToUtf8(all)), all);
    EXPECT_EQ(ExactUtf8ToWindows1252(Windows1252ToUtf8(all)), all);
}

TEST(Windows1252, KnownCharacters) {
    EXPECT_EQ(Windows1252ToUtf8("\x80\xE9\x92\x9F\xA0\x81"), "€é’Ÿ\u00A0\xC2\x81");
}

TEST(Windows1252, CharactersOutsideBecomeQuestionMarks) {
    EXPECT_EQ(Utf8ToWindows1252("a→b"), "a?b");
    EXPECT_EQ(Utf8ToWindows1252("\xF0\x9F\x98\x80!"), "?!");
    EXPECT_FALSE(ExactUtf8ToWindows1252("a→b"));
    // The control characters that share numbers with € and others are not those characters.
    EXPECT_EQ(Utf8ToWindows1252("\xC2\x80"), "?");
    // Cut, overlong and stray bytes; what follows them is read again.
    const std::pair<const char*, const char*> broken[] = {
        {"\xC3", "?"}, {"\xC3z", "?z"},    {"\xC0\xAF", "?"},         {"\xE2\x82z", "??z"},
        {"\x80", "?"}, {"\xE2\x82", "??"}, {"\xF8\xC3\xA9", "?\xE9"}, {"\xE0\x83\xA9z", "?z"}};
    for (const auto& [utf8, bytes] : broken) {
        EXPECT_EQ(Utf8ToWindows1252(utf8), bytes);
        EXPECT_FALSE(ExactUtf8ToWindows1252(utf8));
    }
}
