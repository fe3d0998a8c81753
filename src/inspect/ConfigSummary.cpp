#include "inspect/ConfigSummary.h"

#include "inspect/FieldTexts.h"
#include "inspect/NamedFields.h"
#include "inspect/NamedNumbers.h"

#include <algorithm>
#include <array>

namespace vek {

namespace {

struct OutputOfMode {
    const std::string& Output; ///< "3 Foyer"
    const PanelRecord& Panels;
    const OutputLevelRecord& Levels;
    int LinkGroup;
};

struct Column {
    std::string_view Title;
    std::size_t Width; ///< longer texts push the rest of their row along
    std::string (*Text)(const OutputOfMode&);
};

std::string InBrackets(const std::string& word, const std::string& inner) {
    return word + " (" + inner + ")";
}

std::string StartText(const OutputLevelRecord& levels) {
    const std::string level = ExactLevelText(levels.StartLevel);
    return levels.PreviousNotSetStartLevel == flagFalse
               ? level
               : InBrackets(FlagText(levels.PreviousNotSetStartLevel, "previous", ""), level);
}

constexpr Column columns[] = {
    {"Output", 8, [](const OutputOfMode& o) { return o.Output; }},
    {"Group", 7, [](const OutputOfMode& o) { return LinkGroupText(o.LinkGroup); }},
    {"Inputs", 21,
     [](const OutputOfMode& o) { return ListText(o.Panels.PanelInputs.Padded(), inputNumbers); }},
    {"Start route", 13,
     [](const OutputOfMode& o) { return FlagText(o.Panels.UsePreviousRoute, "previous", "first"); }},
    {"Volume panels", 15,
     [](const OutputOfMode& o) { return ListText(o.Panels.PanelVolumes.Padded(), panelNumbers); }},
    {"Selector panels", 17,
     [](const OutputOfMode& o) { return ListText(o.Panels.PanelSelects.Padded(), panelNumbers); }},
    {"Maximum", 9, [](const OutputOfMode& o) { return ExactLevelText(o.Levels.MaximumLevel); }},
    {"Minimum", 9, [](const OutputOfMode& o) { return ExactLevelText(o.Levels.MinimumLevel); }},
    {"Mute on min", 13, [](const OutputOfMode& o) { return FlagText(o.Levels.MuteOnMin, "yes", "no"); }},
    {"Step", 9, [](const OutputOfMode& o) { return ExactLevelText(o.Levels.StepLevel); }},
    {"Start", 0, [](const OutputOfMode& o) { return StartText(o.Levels); }},
};

/// How many characters a UTF-8 text has.
std::size_t Characters(std::string_view text) {
    const auto begins = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; };
    return static_cast<std::size_t>(std::ranges::count_if(text, begins));
}

void AppendCell(std::string& line, std::string_view text, std::size_t width) {
    const std::size_t length = Characters(text);
    line += text;
    if (width > 0)
        line.append(length < width ? width - length : 1, ' ');
}

/// The first column, which is as wide as the names need.
struct OutputColumn {
    explicit OutputColumn(const NamedNumbers& numbers) : Width(columns[0].Width) {
        constexpr std::size_t gap = 2;
        for (std::size_t output = 0; output < outputCount; ++output) {
            Texts[output] = numbers.Number(NameKind::Output, output);
            Width = std::max(Width, Characters(Texts[output]) + gap);
        }
    }
    std::array<std::string, outputCount> Texts;
    std::size_t Width;
};

void AppendTable(std::string& page, const ModeRecord& mode, const OutputColumn& outputs) {
    const auto widthOf = [&](const Column& column) {
        return &column == columns ? outputs.Width : column.Width;
    };
    page += "  ";
    for (const Column& column : columns)
        AppendCell(page, column.Title, widthOf(column));
    for (std::size_t output = 0; output < outputCount; ++output) {
        page += "\n  ";
        for (const Column& column : columns)
            AppendCell(page,
                       column.Text({outputs.Texts[output], mode.OutputPanels[output],
                                    mode.OutputLevels[output], mode.LinkGroup[output]}),
                       widthOf(column));
    }
    page += '\n';
}

void AppendMode(std::string& page, const ModeRecord& mode, const std::string& heading,
                const OutputColumn& outputs) {
    page += '\n' + heading;
    if (mode == ModeRecord()) {
        page += ": nothing set\n";
        return;
    }
    page += IsUsedMode(mode) ? "\n" : ": unused, no output has inputs\n";
    AppendTable(page, mode, outputs);
}

void AppendTrims(std::string& page, std::string_view title, std::span<const float> trims) {
    page += title;
    for (const float trim : trims)
        page += ' ' + ExactLevelText(trim);
    page += '\n';
}

std::string FunctionText(const AddressGroupNames& names, std::size_t index, const NamedNumbers& numbers) {
    return names.Functions.empty() ? numbers.Text(names.Numbered, index)
                                   : std::string(names.Functions[index].Caption);
}

/// One line for the enabled functions of one side, nothing when there are none.
void AppendSide(std::string& page, const MatrixConfig& config, const AddressGroupNames& names,
                std::size_t side, std::size_t output, const NamedNumbers& numbers) {
    std::string enabled;
    const std::size_t perSide = FirstOutputFunction(names.Group);
    for (std::size_t i = 0; i < perSide; ++i) {
        const std::size_t function = side * perSide + i;
        const Flag flag = AddressFlag(config.Addresses, names.Group, function, output);
        if (flag == flagFalse)
            continue;
        enabled += enabled.empty() ? ": " : ", ";
        enabled += std::to_string(config.VekNetBase + AddressOffset(names.Group, function, output));
        enabled += ' ' + FlagText(flag, FunctionText(names, i, numbers), "");
    }
    if (enabled.empty())
        return;
    page += "  ";
    if (names.Group != AddressGroup::Mode)
        page += numbers.Text(NameKind::Output, output) + ", ";
    page += names.Name.Caption;
    page += ' ';
    page += sideNames[side].Caption;
    page += enabled + '\n';
}

void AppendAddresses(std::string& page, const MatrixConfig& config, const NamedNumbers& numbers) {
    page += "\nEnabled VekNet addresses\n";
    for (std::size_t side = 0; side < std::size(sideNames); ++side)
        AppendSide(page, config, modeAddressNames, side, 0, numbers);
    for (std::size_t output = 0; output < outputCount; ++output) {
        for (const AddressGroupNames& names : outputAddressNames) {
            for (std::size_t side = 0; side < std::size(sideNames); ++side)
                AppendSide(page, config, names, side, output, numbers);
        }
    }
    if (config.Addresses == AddressEnables())
        page += "  none\n";
}

void AppendNotes(std::string& page, std::string_view notes) {
    constexpr std::string_view lineEnd = "\r\n";
    page += "\nNotes\n";
    while (!notes.empty()) {
        const std::size_t end = notes.find(lineEnd);
        page += "  " + EscapedText(notes.substr(0, end)) + '\n';
        notes.remove_prefix(end == notes.npos ? notes.size() : end + lineEnd.size());
    }
}

} // namespace

std::string SummaryOf(const StoredConfig& stored) {
    const MatrixConfig& config = stored.Config;
    const NamedNumbers numbers(config);
    const OutputColumn outputs(numbers);
    std::string page = "VekNet base address: " + std::to_string(config.VekNetBase) + '\n';
    for (std::size_t mode = 0; mode < modeCount; ++mode)
        AppendMode(page, config.Modes[mode], numbers.Text(NameKind::Mode, mode), outputs);
    page += '\n';
    AppendTrims(page, "Input trims: ", config.InputTrim);
    AppendTrims(page, "Output trims:", config.OutputTrim);
    AppendAddresses(page, config, numbers);
    AppendNotes(page, WithoutPadding(config.Notes.Padded()));
    if (!stored.Tail.empty())
        page += "\nData after the record: " + std::to_string(stored.Tail.size()) + " bytes\n";
    return page;
}

} // namespace vek
