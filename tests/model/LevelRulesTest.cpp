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

TEST(LevelRules, EntriesAreTakenTogetherOrNotAtAll) {
    constexpr auto none = std::nullopt;
    const auto record = [](float maximum, float start, float minimum, bool previous = false) {
        return OutputLevelRecord{.MaximumLevel = maximum,
                                 .StartLevel = start,
                                 .MinimumLevel = minimum,
                                 .PreviousNotSetStartLevel = ToFlag(previous)};
    };
    const struct {
        OutputLevelRecord levels;
        LevelEntry entry; // maximum, start, minimum, step, mute, previous
        OutputLevelRecord expected;
        std::string_view title;
    } cases[] = {
        // One by one, the first of these would be refused.
        {record(6, 0, -36), {-10, -30, -60}, record(-10, -30, -60), ""},
        {record(6, 0, -36), {8, 9, none}, record(6, 0, -36), "Max Level error"},
        {record(6, 0, -36), {-1}, record(6, 0, -36), "Max Level error"},
        {record(6, 0, -36), {-1, none, none, none, none, true}, record(-1, -1, -36, true), ""},
        {record(6, 0, -36, true), {none, none, 2}, record(6, 2, 2, true), ""},
        {record(6, 0, -36, true),
         {none, none, 2, none, none, false},
         record(6, 0, -36, true),
         "Min Level error"},
        // A level that is not entered counts as it is shown, and stays as it is.
        {record(6, 3.3F, -36), {3}, record(3, 3.3F, -36), ""},
        {record(6, 3.3F, -36, true), {3}, record(3, 3.3F, -36, true), ""},
        {record(30, 0, -36), {none, 22}, record(30, 22, -36), ""},
        {record(30, 0, -36), {none, 22.5F}, record(30, 0, -36), "Start Level error"},
    };
    for (const auto& c : cases) {
        OutputLevelRecord levels = c.levels;
        EXPECT_EQ(EnterLevels(levels, c.entry).Title, c.title) << &c - cases;
        EXPECT_EQ(levels, c.expected) << &c - cases;
    }
    OutputLevelRecord flags = {.MuteOnMin = 5};
    EnterLevels(flags, {.StepLevel = 2.5F, .MuteOnMin = true});
    EXPECT_EQ(flags, (OutputLevelRecord{.MuteOnMin = 5, .StepLevel = 2.5F})) << "it was set already";
}
