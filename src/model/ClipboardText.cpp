#include "model/ClipboardText.h"

#include "base/Numbers.h"
#include "model/Levels.h"

namespace vek {

namespace {

constexpr std::string_view pointTag = "VornMatrixPoint";
constexpr std::string_view modeTag = "VornMatrixMode";
constexpr char levelEnd = ',';
constexpr char pointEnd = '#';

/// The levels in the order of the text.
constexpr float OutputLevelRecord::*levelFields[] = {
    &OutputLevelRecord::MaximumLevel, &OutputLevelRecord::MinimumLevel, &OutputLevelRecord::StartLevel,
    &OutputLevelRecord::StepLevel};

char FlagChar(Flag flag) { return IsSet(flag) ? 'T' : 'F'; }

bool TakeTag(std::string_view& text, std::string_view tag) {
    if (!text.starts_with(tag))
        return false;
    text.remove_prefix(tag.size());
    return true;
}

std::optional<std::string_view> TakeFixed(std::string_view& text, std::size_t length) {
    if (text.size() < length)
        return std::nullopt;
    const std::string_view taken = text.substr(0, length);
    text.remove_prefix(length);
    return taken;
}

/// The text up to the separator, which is dropped.
std::optional<std::string_view> TakeUntil(std::string_view& text, char separator) {
    const std::size_t end = text.find(separator);
    if (end == std::string_view::npos)
        return std::nullopt;
    const std::string_view taken = text.substr(0, end);
    text.remove_prefix(end + 1);
    return taken;
}

bool TakeFlag(std::string_view& text, Flag& flag) {
    const auto character = TakeFixed(text, 1);
    if (character)
        flag = ToFlag(*character == "T");
    return character.has_value();
}

template <std::size_t N>
bool TakeText(std::string_view& text, FixedText<N>& field) {
    const auto taken = TakeFixed(text, N);
    if (taken)
        field = *taken;
    return taken.has_value();
}

bool TakeLinkGroup(std::string_view& text, std::int16_t& group) {
    const auto digit = TakeFixed(text, 1);
    if (!digit)
        return false;
    group = ToInteger(LenientNumber(*digit));
    return IsValidLinkGroup(group);
}

} // namespace

std::string CopyPointText(const OutputLevelRecord& levels) {
    std::string text(pointTag);
    text += FlagChar(levels.MuteOnMin);
    text += FlagChar(levels.PreviousNotSetStartLevel);
    for (const auto field : levelFields)
        text += GeneralNumber(levels.*field) + levelEnd;
    return text;
}

std::string CopyModeText(const ModeRecord& mode) {
    std::string text(modeTag);
    for (const std::int16_t group : mode.LinkGroup)
        text += GeneralNumber(group);
    for (const PanelRecord& panels : mode.OutputPanels) {
        text += FlagChar(panels.UsePreviousRoute);
        text += panels.PanelInputs.Padded();
        text += panels.PanelSelects.Padded();
        text += panels.PanelVolumes.Padded();
    }
    for (const OutputLevelRecord& levels : mode.OutputLevels)
        text += CopyPointText(levels) + pointEnd;
    return text;
}

std::optional<OutputLevelRecord> PastePointText(std::string_view text) {
    OutputLevelRecord levels;
    if (!TakeTag(text, pointTag) || !TakeFlag(text, levels.MuteOnMin) ||
        !TakeFlag(text, levels.PreviousNotSetStartLevel))
        return std::nullopt;
    for (const auto field : levelFields) {
        const auto number = TakeUntil(text, levelEnd);
        if (!number)
            return std::nullopt;
        levels.*field = static_cast<float>(LenientNumber(*number));
        if (!IsValidLevel(levels.*field))
            return std::nullopt;
    }
    return levels;
}

std::optional<ModeRecord> PasteModeText(std::string_view text) {
    ModeRecord mode;
    if (!TakeTag(text, modeTag))
        return std::nullopt;
    for (std::int16_t& group : mode.LinkGroup) {
        if (!TakeLinkGroup(text, group))
            return std::nullopt;
    }
    for (PanelRecord& panels : mode.OutputPanels) {
        if (!TakeFlag(text, panels.UsePreviousRoute) || !TakeText(text, panels.PanelInputs) ||
            !TakeText(text, panels.PanelSelects) || !TakeText(text, panels.PanelVolumes))
            return std::nullopt;
    }
    for (OutputLevelRecord& levels : mode.OutputLevels) {
        const auto pointText = TakeUntil(text, pointEnd);
        const auto point = pointText ? PastePointText(*pointText) : std::nullopt;
        if (!point)
            return std::nullopt;
        levels = *point;
    }
    return mode;
}

} // namespace vek
