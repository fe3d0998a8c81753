#include "model/LevelRules.h"

#include <gtest/gtest.h>

using namespace vek;

namespace {

enum class Outcome { Accept, Drag, Refuse };

struct Case {
    LimitedLevel changed;
    LimitedLevels levels; // maximum, minimum, start
    bool fixedStart;
    Outcome outcome;
    const char* reason;
};

constexpr bool fixed = true;
constexpr bool previous = false;

} // namespace

TEST(LevelRules, Decisions) {
    using enum LimitedLevel;
    const Case cases[] = {
        {Maximum, {6, -36, 0}, fixed, Outcome::Accept, ""},
        {Maximum, {0, -36, 0}, fixed, Outcome::Accept, ""},
        {Maximum,
         {-36, -36, -36},
         fixed,
         Outcome::Refuse,
         "The Maximum level you set is below the minimum level set"},
        {Maximum,
         {-40, -36, 0},
         previous,
         Outcome::Refuse,
         "The Maximum level you set is below the minimum level set"},
        {Maximum,
         {-1, -36, 0},
         fixed,
         Outcome::Refuse,
         "The Maximum level you set is below the start level set"},
        {Maximum, {-1, -36, 0}, previous, Outcome::Drag, ""},
        {Minimum, {6, 0, 0}, fixed, Outcome::Accept, ""},
        {Minimum,
         {6, 6, 6},
         fixed,
         Outcome::Refuse,
         "The Minimum level you set is above the maximum level set"},
        {Minimum,
         {6, 7, 0},
         previous,
         Outcome::Refuse,
         "The Minimum level you set is above the maximum level set"},
        {Minimum,
         {6, 1, 0},
         fixed,
         Outcome::Refuse,
         "The Minimum level you set is above the start level set"},
        {Minimum, {6, 1, 0}, previous, Outcome::Drag, ""},
        {Start, {6, -36, 6}, fixed, Outcome::Accept, ""},
        {Start, {6, -36, -36}, fixed, Outcome::Accept, ""},
        {Start,
         {6, -36, 6.5},
         fixed,
         Outcome::Refuse,
         "The Start level you set is above the maximum level set"},
        {Start,
         {6, -36, -36.5},
         fixed,
         Outcome::Refuse,
         "The Start level you set is below the minimum level set"},
        // Only a broken record has both; the maximum is looked at first.
        {Start,
         {-10, 10, 0},
         fixed,
         Outcome::Refuse,
         "The Start level you set is above the maximum level set"},
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
