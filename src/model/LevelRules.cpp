#include "model/LevelRules.h"

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

} // namespace vek
