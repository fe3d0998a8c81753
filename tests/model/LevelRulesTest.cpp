#include "model/LevelRules.h"

#include <gtest/gtest.h>
#include <string>

using namespace vek;

TEST(LevelRules, Decisions) {
    using enum LevelLimit;
    constexpr bool fixed = true, previous = false;
    const std::string drag = "drag";
    const struct {
        LevelLimit changed;
        LevelLimitValues levels; // maximum, minimum, start
        bool fixedStart;
        std::string refusal; ///< or drag, which is none
    } cases[] = {
        {Maximum, {6, -36, 0}, fixed, ""},
        {Maximum, {0, -36, 0}, fixed, ""},
        {Maximum, {-36, -36, -36}, fixed, "below the minimum"},
        {Maximum, {-40, -36, 0}, previous, "below the minimum"},
        {Maximum, {-1, -36, 0}, fixed, "below the start"},
        {Maximum, {-1, -36, 0}, previous, drag},
        {Minimum, {6, 0, 0}, fixed, ""},
        {Minimum, {6, 6, 6}, fixed, "above the maximum"},
        {Minimum, {6, 7, 0}, previous, "above the maximum"},
        {Minimum, {6, 1, 0}, fixed, "above the start"},
        {Minimum, {6, 1, 0}, previous, drag},
        {Start, {6, -36, 6}, fixed, ""},
        {Start, {6, -36, -36}, fixed, ""},
        {Start, {6, -36, 6.5}, fixed, "above the maximum"},
        {Start, {6, -36, -36.5}, fixed, "below the minimum"},
        // Only a broken record has both; the maximum is looked at first.
        {Start, {-10, 10, 0}, fixed, "above the maximum"},
    };
    const std::string names[] = {"Maximum", "Minimum", "Start"}, titles[] = {"Max", "Min", "Start"};
    for (const auto& c : cases) {
        const LevelDecision decision = DecideLevel(c.changed, c.levels, c.fixedStart);
        const bool accepted = c.refusal.empty() || c.refusal == drag;
        const auto changed = static_cast<std::size_t>(c.changed);
        EXPECT_EQ(decision.Accepted, accepted) << &c - cases;
        EXPECT_EQ(decision.DragStart, c.refusal == drag) << &c - cases;
        EXPECT_EQ(decision.Reason,
                  accepted ? "" : "The " + names[changed] + " level you set is " + c.refusal + " level set");
        EXPECT_EQ(decision.Title, accepted ? "" : titles[changed] + " Level error");
    }
}
