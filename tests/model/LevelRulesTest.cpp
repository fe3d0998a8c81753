#include "model/LevelRules.h"

#include <gtest/gtest.h>

using namespace vek;

namespace {

enum class Outcome { Accept, Drag, Refuse };

struct Case {
    LevelLimit changed;
    LevelLimitValues levels; // maximum, minimum, start
    bool fixedStart;
    Outcome outcome;
    const char* reason;
};

constexpr bool fixed = true;
constexpr bool previous = false;

constexpr const char* none = "";
constexpr const char* maximumBelowMinimum = "The Maximum level you set is below the minimum level set";
constexpr const char* maximumBelowStart = "The Maximum level you set is below the start level set";
constexpr const char* minimumAboveMaximum = "The Minimum level you set is above the maximum level set";
constexpr const char* minimumAboveStart = "The Minimum level you set is above the start level set";
constexpr const char* startAboveMaximum = "The Start level you set is above the maximum level set";
constexpr const char* startBelowMinimum = "The Start level you set is below the minimum level set";

} // namespace

TEST(LevelRules, Decisions) {
    using enum LevelLimit;
    using enum Outcome;
    const Case cases[] = {
        {Maximum, {6, -36, 0}, fixed, Accept, none},
        {Maximum, {0, -36, 0}, fixed, Accept, none},
        {Maximum, {-36, -36, -36}, fixed, Refuse, maximumBelowMinimum},
        {Maximum, {-40, -36, 0}, previous, Refuse, maximumBelowMinimum},
        {Maximum, {-1, -36, 0}, fixed, Refuse, maximumBelowStart},
        {Maximum, {-1, -36, 0}, previous, Drag, none},
        {Minimum, {6, 0, 0}, fixed, Accept, none},
        {Minimum, {6, 6, 6}, fixed, Refuse, minimumAboveMaximum},
        {Minimum, {6, 7, 0}, previous, Refuse, minimumAboveMaximum},
        {Minimum, {6, 1, 0}, fixed, Refuse, minimumAboveStart},
        {Minimum, {6, 1, 0}, previous, Drag, none},
        {Start, {6, -36, 6}, fixed, Accept, none},
        {Start, {6, -36, -36}, fixed, Accept, none},
        {Start, {6, -36, 6.5}, fixed, Refuse, startAboveMaximum},
        {Start, {6, -36, -36.5}, fixed, Refuse, startBelowMinimum},
        // Only a broken record has both; the maximum is looked at first.
        {Start, {-10, 10, 0}, fixed, Refuse, startAboveMaximum},
    };
    constexpr std::string_view titles[] = {"Max Level error", "Min Level error", "Start Level error"};
    for (const Case& c : cases) {
        const LevelDecision decision = DecideLevel(c.changed, c.levels, c.fixedStart);
        EXPECT_EQ(decision.Accepted, c.outcome != Outcome::Refuse) << &c - cases;
        EXPECT_EQ(decision.DragStart, c.outcome == Outcome::Drag) << &c - cases;
        EXPECT_EQ(decision.Reason, c.reason) << &c - cases;
        const std::string_view title = decision.Accepted ? "" : titles[static_cast<std::size_t>(c.changed)];
        EXPECT_EQ(decision.Title, title) << &c - cases;
    }
}
