#include "pages/OverviewCells.h"

#include "controls/LinkGroupLook.h"
#include "controls/TextConversion.h"
#include "model/Levels.h"

#include <QObject>

#include <algorithm>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

OverviewCell MakeCell(const ModeRecord& mode, std::size_t output) {
    const PanelRecord& panels = mode.OutputPanels[output];
    OverviewCell cell;
    cell.Group = mode.LinkGroup[output];
    cell.Levels = mode.OutputLevels[output];
    cell.VolumePanels = panels.PanelVolumes.Trimmed();
    if (IsFollower(mode, output)) {
        cell.Leader = LinkLeader(mode, cell.Group);
        cell.Used = !mode.OutputPanels[*cell.Leader].PanelInputs.Trimmed().empty();
        return cell;
    }
    cell.Inputs = panels.PanelInputs.Trimmed();
    cell.SelectorPanels = panels.PanelSelects.Trimmed();
    cell.PreviousRoute = IsSet(panels.UsePreviousRoute);
    cell.Used = !cell.Inputs.empty();
    return cell;
}

void AddProblem(OverviewProblems& problems, const Finding& finding) {
    problems.Texts.push_back(finding.Text);
    if (finding.Level != Severity::Note)
        problems.Mark = problems.Mark ? std::min(*problems.Mark, finding.Level) : finding.Level;
}

QString Called(const Names& names, NameKind kind, std::size_t index) {
    const std::string& name = names.Of(kind, index);
    const QString number = QString::number(index + 1);
    return name.empty() ? number : number + u' ' + FromBytes(name);
}

QString InputsWords(const std::string& inputs, const Names& names) {
    QStringList words;
    for (const char character : inputs) {
        if (!IsInputChar(character))
            words += u'"' + FromBytes({&character, 1}) + u'"';
        else if (character == inputCharacters.front())
            words += QObject::tr("OFF");
        else
            words += Called(names, NameKind::Input, inputCharacters.find(character) - 1);
    }
    return words.join(u", "_s);
}

QString PanelsWords(const std::string& panels, const Names& names) {
    QStringList words;
    for (const char character : panels) {
        QString word = FromBytes({&character, 1});
        const std::string& name = names.Of(NameKind::Panel, PanelCharToIndex(character));
        if (IsPanelChar(character) && !name.empty())
            word += u' ' + FromBytes(name);
        words += word;
    }
    return words.isEmpty() ? QObject::tr("none") : words.join(u", "_s);
}

QString StartRouteWords(const OverviewCell& cell, const Names& names) {
    if (cell.PreviousRoute)
        return QObject::tr("After recall: the previous input stays");
    return QObject::tr("After recall: %1").arg(InputsWords(cell.Inputs.substr(0, 1), names));
}

QStringList RouteWords(const OverviewContent& content, const OverviewCell& cell) {
    const Names& names = content.Called;
    QStringList lines;
    if (cell.Group != 0)
        lines += QObject::tr("Link group %1 (%2)").arg(cell.Group).arg(GroupLetter(cell.Group));
    if (cell.Leader)
        return lines
               << QObject::tr("Its input follows %1").arg(PlaceWords(names, NameKind::Output, *cell.Leader));
    if (!cell.Used)
        return lines << QObject::tr("No inputs");
    return lines << QObject::tr("Input sequence: %1").arg(InputsWords(cell.Inputs, names))
                 << StartRouteWords(cell, names);
}

QStringList LevelWords(const OutputLevelRecord& levels) {
    const QString start = IsSet(levels.PreviousNotSetStartLevel)
                              ? QObject::tr("start at the previous level")
                              : QObject::tr("start at %1").arg(LevelText(levels.StartLevel));
    return {QObject::tr("Level: %1 to %2 in steps of %3, %4")
                .arg(LevelText(levels.MinimumLevel), LevelText(levels.MaximumLevel),
                     LevelText(levels.StepLevel), start),
            IsSet(levels.MuteOnMin) ? QObject::tr("Mute on minimum level")
                                    : QObject::tr("No mute on minimum level")};
}

/// The place that a finding begins with stands above already.
QStringList ProblemWords(const OverviewProblems& problems, const QString& place) {
    const QString told = place + u": "_s;
    QStringList lines;
    for (const std::string& text : problems.Texts) {
        const QString words = FromConstant(text);
        lines += QObject::tr("Check: %1").arg(words.startsWith(told) ? words.mid(told.size()) : words);
    }
    return lines;
}

} // namespace

OverviewContent MakeOverviewContent(const MatrixConfig& config, const Names& names,
                                    const std::vector<Finding>& findings) {
    OverviewContent content{.Rows = {}, .Called = names};
    for (std::size_t mode = 0; mode < modeCount; ++mode) {
        OverviewRow& row = content.Rows[mode];
        row.Used = IsUsedMode(config.Modes[mode]);
        for (std::size_t output = 0; output < outputCount; ++output)
            row.Cells[output] = MakeCell(config.Modes[mode], output);
    }
    for (const Finding& finding : findings) {
        if (!finding.Place.Mode)
            continue;
        OverviewRow& row = content.Rows[*finding.Place.Mode];
        AddProblem(finding.Place.Output ? row.Cells[*finding.Place.Output].Problems : row.Problems, finding);
    }
    return content;
}

bool SameSettings(const OverviewCell& a, const OverviewCell& b) {
    OverviewCell alike = a;
    alike.Problems = b.Problems;
    return alike == b;
}

QString PlaceWords(const Names& names, NameKind kind, std::size_t index) {
    const std::string& name = names.Of(kind, index);
    const QString number = FromConstant(NumberText(kind, index));
    return name.empty() ? number : number + u' ' + FromBytes(name);
}

QStringList RowWords(const OverviewContent& content, std::size_t mode) {
    const OverviewRow& row = content.Rows[mode];
    const auto used = std::ranges::count_if(row.Cells, &OverviewCell::Used);
    QStringList lines = {PlaceWords(content.Called, NameKind::Mode, mode)};
    lines += row.Used ? QObject::tr("%1 of %2 outputs have inputs").arg(used).arg(outputCount)
                      : QObject::tr("Not used: no output has inputs");
    return lines + ProblemWords(row.Problems, lines.first());
}

QStringList CellWords(const OverviewContent& content, std::size_t mode, std::size_t output) {
    const OverviewCell& cell = content.Rows[mode].Cells[output];
    const Names& names = content.Called;
    QStringList lines = {PlaceWords(names, NameKind::Mode, mode) + u", "_s +
                         PlaceWords(names, NameKind::Output, output)};
    if (!content.Rows[mode].Used)
        lines += QObject::tr("The mode is not used");
    lines += RouteWords(content, cell);
    lines += LevelWords(cell.Levels);
    lines += QObject::tr("Volume remote panels: %1").arg(PanelsWords(cell.VolumePanels, names));
    if (!cell.Leader)
        lines += QObject::tr("Input selector remote panels: %1").arg(PanelsWords(cell.SelectorPanels, names));
    return lines + ProblemWords(cell.Problems, lines.first());
}

} // namespace vek
