#include "model/NotesText.h"

#include <gtest/gtest.h>

namespace vek {
namespace {

TEST(NotesText, LinesKeepTheirEndsThroughAnEdit) {
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"", "a\nb", "a\r\nb"},
        {"a", "a\n", "a\r\n"},
        {"a\nb\nc", "a\nb\nc", "a\nb\nc"},
        {"a\nb\nc", "a\nbx\n\nc", "a\nbx\n\nc"},
        {"a\rb", "a\nb\nc", "a\rb\rc"},
        {"a\nb\r\nc\rd", "a\nx\nb\nc\nd", "a\nx\r\nb\r\nc\rd"},
        {"a\nb\r\nc\rd", "b\nc\nd", "b\r\nc\rd"},
        {"a\nb\r\nc\rd", "a\nc\nd", "a\nc\rd"},
        {"a\nb\r\nc\rd", "a\nB\nC\nd", "a\nB\r\nC\rd"},
        {"a\nb\r\nc\rd", "a\nb", "a\nb"},
        {"\n\n\n", "\n\n", "\n\n"},
        {"a\n\rb", "a\n\nbc", "a\n\rbc"},
    };
    for (const auto& [stored, edited, expected] : cases)
        EXPECT_EQ(WithLineEndsOf(stored, edited), expected) << stored << '|' << edited;
}

} // namespace
} // namespace vek
