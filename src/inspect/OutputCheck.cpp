#include "inspect/OutputCheck.h"

#include "base/Numbers.h"
#include "inspect/FieldTexts.h"
#include "model/Panels.h"
#include "model/VekNetAddresses.h"

#include <algorithm>

namespace vek {

namespace {

constexpr std::size_t mostPanelsInEditor = 4;

/// How the device takes the characters of a list.
struct ListKind {
    std::string_view Caption;
    const NumberCharacters& Numbers;
    bool (*Known)(char);
    char (*Entry)(char); ///< the same for all characters that mean the same
};

char InputEntry(char character) { return character; }
char PanelEntry(char character) { return PanelIndexToChar(PanelCharToIndex(character)); }

constexpr ListKind inputSequence = {captions::inputSequence, inputNumbers, IsInputChar, InputEntry};
constexpr ListKind volumePanels = {captions::volumePanels, panelNumbers, IsPanelChar, PanelEntry};
constexpr ListKind selectorPanels = {captions::selectorPanels, panelNumbers, IsPanelChar, PanelEntry};

void CheckOrder(const Subject& subject, const OutputLevelRecord& levels, Findings& findings) {
    const std::string maximum = "the maximum level " + ExactLevelText(levels.MaximumLevel);
    const std::string minimum = "the minimum level " + ExactLevelText(levels.MinimumLevel);
    if (levels.MinimumLevel >= levels.MaximumLevel)
        findings.Add(Severity::Error, FieldOf(subject, captions::minimumLevel),
                     minimum + " is not below " + maximum);
    else if (levels.StepLevel > levels.MaximumLevel - levels.MinimumLevel)
        findings.Add(Severity::Warning, FieldOf(subject, captions::levelSteps),
                     "Level steps " + ExactLevelText(levels.StepLevel) + " are larger than the way from " +
                         minimum + " to " + maximum);
    const bool above = levels.StartLevel > levels.MaximumLevel;
    if (!above && levels.StartLevel >= levels.MinimumLevel)
        return;
    std::string text = "the start level " + ExactLevelText(levels.StartLevel);
    text += above ? " is above " + maximum : " is below " + minimum;
    const bool used = !IsSet(levels.PreviousNotSetStartLevel);
    findings.Add(used ? Severity::Error : Severity::Warning, FieldOf(subject, captions::startLevel),
                 used ? text : text + " (not used: the output starts at its previous level)");
}

void CheckLevels(const Subject& subject, const OutputLevelRecord& levels, Findings& findings) {
    CheckLevel(subject, captions::maximumLevel, levels.MaximumLevel, levelRange, findings);
    CheckLevel(subject, captions::minimumLevel, levels.MinimumLevel, levelRange, findings);
    CheckLevel(subject, captions::startLevel, levels.StartLevel, levelRange, findings);
    CheckLevel(subject, captions::levelSteps, levels.StepLevel, stepRange, findings);
    CheckOrder(subject, levels, findings);
}

/// Those characters of the text that fit, each once.
template <typename Fits>
std::string Distinct(std::string_view text, Fits fits) {
    std::string distinct;
    for (const char character : text) {
        if (fits(character) && distinct.find(character) == std::string::npos)
            distinct += character;
    }
    return distinct;
}

void AddTaken(const Subject& subject, const ListKind& kind, std::string_view text,
              const std::string& characters, std::string_view consequence, Findings& findings) {
    if (characters.empty())
        return;
    std::string message(kind.Caption);
    message += ' ' + QuotedText(text) + ": the device takes ";
    for (const char& character : characters)
        message += (&character == characters.data() ? "" : ", ") + QuotedText({&character, 1});
    message += " for ";
    message += consequence;
    findings.Add(Severity::Warning, FieldOf(subject, kind.Caption), message);
}

void CheckRepeated(const Subject& subject, const ListKind& kind, std::string_view text, Findings& findings) {
    std::string entries;
    for (const char character : text)
        entries += kind.Known(character) ? kind.Entry(character) : ' ';
    const std::string repeated = Distinct(entries, [&](char entry) {
        return entry != ' ' && std::count(entries.begin(), entries.end(), entry) > 1;
    });
    if (repeated.empty())
        return;
    std::string message(kind.Caption);
    message += ' ' + ListText(text, kind.Numbers) + ": " + ListText(repeated, kind.Numbers);
    message += repeated.size() == 1 ? " is listed more than once" : " are listed more than once";
    findings.Add(Severity::Warning, FieldOf(subject, kind.Caption), message);
}

void CheckInputList(const Subject& subject, std::string_view text, Findings& findings) {
    const auto isOtherDigit = [](char c) { return c >= '0' && c <= '9' && !IsInputChar(c); };
    const auto isNoDigit = [](char c) { return c < '0' || c > '9'; };
    AddTaken(subject, inputSequence, text, Distinct(text, isOtherDigit), "no input that it has", findings);
    AddTaken(subject, inputSequence, text, Distinct(text, isNoDigit), "OFF", findings);
    CheckRepeated(subject, inputSequence, text, findings);
}

void CheckPanelList(const Subject& subject, const ListKind& kind, std::string_view text, Findings& findings) {
    const auto isNoPanel = [](char c) { return !IsPanelChar(c); };
    AddTaken(subject, kind, text, Distinct(text, isNoPanel), "panel 1", findings);
    CheckRepeated(subject, kind, text, findings);
    if (text.size() > mostPanelsInEditor)
        findings.Add(Severity::Note, FieldOf(subject, kind.Caption),
                     std::string(kind.Caption) + ' ' + ListText(text, kind.Numbers) + ": more than the " +
                         std::to_string(mostPanelsInEditor) + " panels that can be typed in the editor");
}

bool HasControlAddress(const AddressEnables& enables, std::size_t output) {
    using enum AddressGroup;
    for (const AddressGroup group : {Volume, RouteControl, Route}) {
        for (std::size_t function = 0; function < FirstOutputFunction(group); ++function) {
            if (IsSet(AddressFlag(enables, group, function, output)))
                return true;
        }
    }
    return false;
}

/// The first output of the group that the output follows, the output itself when it follows none.
std::size_t Leader(const ModeRecord& mode, std::size_t output) {
    const std::int16_t group = mode.LinkGroup[output];
    return group == 0 ? output : LinkLeader(mode, group);
}

void CheckFollower(const Subject& subject, const PanelRecord& panels, const PanelRecord& leading,
                   std::size_t leader, Findings& findings) {
    const std::string linked = "linked to output " + findings.Numbers.Number(NameKind::Output, leader);
    constexpr const char* lost = "; the editor drops it as soon as it shows and stores the mode";
    if (!panels.PanelSelects.Trimmed().empty())
        findings.Add(Severity::Warning, FieldOf(subject, captions::selectorPanels),
                     linked + ", but has input selector remote panels of its own (" +
                         ListText(panels.PanelSelects.Trimmed(), panelNumbers) + ")");
    if (!panels.PanelInputs.Trimmed().empty())
        findings.Add(Severity::Warning, subject,
                     linked + ", but has an input sequence of its own (" +
                         ListText(panels.PanelInputs.Trimmed(), inputNumbers) + ")" + lost);
    if (IsSet(panels.UsePreviousRoute) != IsSet(leading.UsePreviousRoute))
        findings.Add(Severity::Warning, FieldOf(subject, captions::usePreviousRoute),
                     linked + ", but has a start route of its own (" +
                         (IsSet(panels.UsePreviousRoute) ? "previous" : "first") + ")" + lost);
}

void CheckInputs(const Subject& subject, const PanelRecord& panels, Findings& findings) {
    if (!panels.PanelInputs.Trimmed().empty())
        return;
    if (HasPanels(panels))
        findings.Add(Severity::Warning, subject, "has remote panels, but no inputs");
    else
        findings.Add(Severity::Note, subject, "has no inputs");
}

/// An output that plays something, which nobody can change but by RS232.
void CheckControl(const Subject& subject, const MatrixConfig& config, const ModeRecord& mode,
                  std::size_t output, Findings& findings) {
    const std::size_t leader = Leader(mode, output);
    if (mode.OutputPanels[leader].PanelInputs.Trimmed().empty())
        return;
    for (const std::size_t controlled : {output, leader}) {
        if (HasPanels(mode.OutputPanels[controlled]) || HasControlAddress(config.Addresses, controlled))
            return;
    }
    findings.Add(Severity::Note, subject,
                 "no remote panel and no enabled VekNet address (In) controls it, only RS232 does");
}

} // namespace

bool HasPanels(const PanelRecord& panels) {
    return !panels.PanelVolumes.Trimmed().empty() || !panels.PanelSelects.Trimmed().empty();
}

void CheckOutput(const MatrixConfig& config, std::size_t modeNumber, std::size_t output, Findings& findings) {
    const ModeRecord& mode = config.Modes[modeNumber];
    const Subject levels = OutputSubject(findings.Numbers, modeNumber, output, FieldKind::Levels);
    const Subject subject = OutputSubject(findings.Numbers, modeNumber, output, FieldKind::Panels);
    const PanelRecord& panels = mode.OutputPanels[output];
    const std::size_t leader = Leader(mode, output);
    CheckLevels(levels, mode.OutputLevels[output], findings);
    CheckInputList(subject, panels.PanelInputs.Trimmed(), findings);
    CheckPanelList(subject, volumePanels, panels.PanelVolumes.Trimmed(), findings);
    CheckPanelList(subject, selectorPanels, panels.PanelSelects.Trimmed(), findings);
    if (leader != output)
        CheckFollower(subject, panels, mode.OutputPanels[leader], leader, findings);
    else if (IsUsedMode(mode))
        CheckInputs(subject, panels, findings);
    CheckControl(subject, config, mode, output, findings);
}

} // namespace vek
