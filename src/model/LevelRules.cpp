#include "model/LevelRules.h"

#include "model/Levels.h"

namespace vek {

namespace {

constexpr std::string_view maximumTitle = "Max Level error";
constexpr std::string_view minimumTitle = "Min Level error";
constexpr std::string_view startTitle = "Start Level error";

constexpr LevelDecision Refuse(std::string_view title, std::string_view reason) {
    return {.Accepted = false, .Title = title, .Reason = reason};
}

constexpr LevelDecision accept = {};
constexpr LevelDecision acceptAndDrag = {.DragStart = true};

struct LimitField {
    LevelLimit Limit;
    std::optional<float> LevelEntry::*Entered;
    float OutputLevelRecord::*Field;
    float LevelLimitValues::*Value;
};

constexpr LimitField limitFields[] = {
    {LevelLimit::Maximum, &LevelEntry::MaximumLevel, &OutputLevelRecord::MaximumLevel,
     &LevelLimitValues::Maximum},
    {LevelLimit::Minimum, &LevelEntry::MinimumLevel, &OutputLevelRecord::MinimumLevel,
     &LevelLimitValues::Minimum},
    {LevelLimit::Start, &LevelEntry::StartLevel, &OutputLevelRecord::StartLevel, &LevelLimitValues::Start},
};

float ShownLevel(float level) { return LimitLevel(SnapHalfDecibels(level), levelMaximum, levelMinimum); }

void EnterFlag(Flag& flag, std::optional<bool> entered) {
    if (entered && IsSet(flag) != *entered)
        flag = ToFlag(*entered);
}

} // namespace

LevelDecision DecideLevel(LevelLimit changed, const LevelLimitValues& levels, bool fixedStart) {
    switch (changed) {
    case LevelLimit::Maximum:
        if (levels.Minimum >= levels.Maximum)
            return Refuse(maximumTitle, "The Maximum level you set is below the minimum level set");
        if (levels.Start <= levels.Maximum)
            return accept;
        return fixedStart ? Refuse(maximumTitle, "The Maximum level you set is below the start level set")
                          : acceptAndDrag;
    case LevelLimit::Minimum:
        if (levels.Minimum >= levels.Maximum)
            return Refuse(minimumTitle, "The Minimum level you set is above the maximum level set");
        if (levels.Start >= levels.Minimum)
            return accept;
        return fixedStart ? Refuse(minimumTitle, "The Minimum level you set is above the start level set")
                          : acceptAndDrag;
    case LevelLimit::Start:
        if (levels.Start > levels.Maximum)
            return Refuse(startTitle, "The Start level you set is above the maximum level set");
        if (levels.Start < levels.Minimum)
            return Refuse(startTitle, "The Start level you set is below the minimum level set");
        return accept;
    }
    return accept;
}

LevelDecision EnterLevels(OutputLevelRecord& levels, const LevelEntry& entry) {
    OutputLevelRecord entered = levels;
    EnterFlag(entered.MuteOnMin, entry.MuteOnMin);
    EnterFlag(entered.PreviousNotSetStartLevel, entry.PreviousNotSetStartLevel);
    entered.StepLevel = entry.StepLevel.value_or(levels.StepLevel);
    LevelLimitValues values = {};
    for (const LimitField& limit : limitFields) {
        const auto& value = entry.*limit.Entered;
        entered.*limit.Field = value.value_or(levels.*limit.Field);
        values.*limit.Value = value.value_or(ShownLevel(levels.*limit.Field));
    }
    const bool fixedStart = !IsSet(entered.PreviousNotSetStartLevel);
    LevelDecision all = accept;
    for (const LimitField& limit : limitFields) {
        if (!(entry.*limit.Entered))
            continue;
        const LevelDecision decision = DecideLevel(limit.Limit, values, fixedStart);
        if (!decision.Accepted)
            return decision;
        const float value = values.*limit.Value;
        if (!decision.DragStart || value == levels.*limit.Field)
            continue;
        all.DragStart = true;
        entered.StartLevel = values.Start = value;
    }
    levels = entered;
    return all;
}

} // namespace vek
