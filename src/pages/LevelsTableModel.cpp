#include "pages/LevelsTableModel.h"

#include "controls/TextConversion.h"
#include "model/Levels.h"

#include <QTextDocument>

#include <utility>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

/// A setting: a level with its range in dB, or a switch.
struct Setting {
    const char* Caption;
    const char* Description;
    float OutputLevelRecord::*Level;
    std::optional<float> LevelEntry::*EnteredLevel;
    float Minimum;
    float Maximum;
    Flag OutputLevelRecord::*Switch;
    std::optional<bool> LevelEntry::*EnteredSwitch;
};

constexpr Setting LevelSetting(const char* caption, const char* description, float OutputLevelRecord::*level,
                               std::optional<float> LevelEntry::*entered, float minimum = levelMinimum,
                               float maximum = levelMaximum) {
    return {caption, description, level, entered, minimum, maximum, nullptr, nullptr};
}

constexpr Setting SwitchSetting(const char* caption, const char* description, Flag OutputLevelRecord::*flag,
                                std::optional<bool> LevelEntry::*entered) {
    return {caption, description, nullptr, nullptr, 0.0F, 0.0F, flag, entered};
}

constexpr Setting settings[] = {
    LevelSetting("Output", "Output of the current mode", nullptr, nullptr),
    LevelSetting("Max", "Maximum Level, dB", &OutputLevelRecord::MaximumLevel, &LevelEntry::MaximumLevel),
    LevelSetting("Start", "Start Level, dB", &OutputLevelRecord::StartLevel, &LevelEntry::StartLevel),
    LevelSetting("Min", "Minimum Level, dB", &OutputLevelRecord::MinimumLevel, &LevelEntry::MinimumLevel),
    LevelSetting("Step", "Level Steps, dB", &OutputLevelRecord::StepLevel, &LevelEntry::StepLevel,
                 stepMinimum, stepMaximum),
    SwitchSetting("Mute", "Mute on Minimum Level", &OutputLevelRecord::MuteOnMin, &LevelEntry::MuteOnMin),
    SwitchSetting("Prev.", "Use Previous Start Level", &OutputLevelRecord::PreviousNotSetStartLevel,
                  &LevelEntry::PreviousNotSetStartLevel),
};
static_assert(std::size(settings) == LevelsTableModel::ColumnCount);

const Setting& SettingOf(const QModelIndex& index) { return settings[index.column()]; }

/// Nothing is to be edited: the output starts at its previous level.
bool IsWithout(const QModelIndex& index, const OutputLevelRecord& levels) {
    return index.column() == LevelsTableModel::Start && IsSet(levels.PreviousNotSetStartLevel);
}

} // namespace

void LevelsTableModel::Show(const std::array<OutputLevelRecord, outputCount>& levels, std::size_t current) {
    const std::size_t former = std::exchange(current_, current);
    for (std::size_t output = 0; output < outputCount; ++output) {
        const bool turned = former != current && (output == former || output == current);
        if (levels_[output] == levels[output] && !turned)
            continue;
        levels_[output] = levels[output];
        // Row by row: what is being typed into another one stays.
        const int row = static_cast<int>(output);
        Q_EMIT dataChanged(index(row, 0), index(row, ColumnCount - 1));
    }
}

void LevelsTableModel::ShowNames(const Names& names) {
    if (names_ == names)
        return;
    names_ = names;
    Q_EMIT dataChanged(index(0, OutputColumn), index(rowCount() - 1, OutputColumn));
}

QString LevelsTableModel::OutputText(std::size_t output) const {
    const QString name = FromBytes(names_.Of(NameKind::Output, output));
    const QString number = tr("Output %1").arg(output + 1);
    return name.isEmpty() ? number : number + u' ' + name;
}

float LevelsTableModel::Shown(int column, float level) {
    return LimitLevel(SnapHalfDecibels(level), settings[column].Maximum, settings[column].Minimum);
}

void LevelsTableModel::AddTo(LevelEntry& entry, const QModelIndex& cell) const {
    const Setting& setting = SettingOf(cell);
    const OutputLevelRecord& levels = At(cell);
    if (setting.Switch != nullptr)
        entry.*setting.EnteredSwitch = IsSet(levels.*setting.Switch);
    else if (setting.Level != nullptr && !IsWithout(cell, levels))
        entry.*setting.EnteredLevel = Shown(cell.column(), levels.*setting.Level);
}

int LevelsTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(outputCount);
}

int LevelsTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QString LevelsTableModel::CellText(const QModelIndex& index) const {
    const Setting& setting = SettingOf(index);
    if (setting.Level == nullptr)
        return {};
    if (IsWithout(index, At(index)))
        return u"\u2013"_s;
    // The unit stands in the tool tips: eight rows of it would hide the numbers.
    return LevelText(At(index).*setting.Level).chopped(2);
}

QVariant LevelsTableModel::OutputData(const QModelIndex& index, int role) const {
    const auto output = static_cast<std::size_t>(index.row());
    const QString name = FromBytes(names_.Of(NameKind::Output, output));
    switch (role) {
    case Qt::DisplayRole:
        return QString::number(output + 1);
    case nameRole:
        return name;
    case Qt::ToolTipRole:
        return Qt::mightBeRichText(name) ? Qt::convertFromPlainText(name) : name;
    case Qt::AccessibleTextRole:
        return OutputText(output);
    default:
        return {};
    }
}

QVariant LevelsTableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    if (role == currentRole)
        return static_cast<std::size_t>(index.row()) == current_;
    if (index.column() == OutputColumn)
        return OutputData(index, role);
    const Setting& setting = SettingOf(index);
    switch (role) {
    case Qt::DisplayRole:
        return CellText(index);
    case Qt::EditRole:
        return setting.Level == nullptr ? QVariant() : LevelText(At(index).*setting.Level);
    case Qt::CheckStateRole:
        if (setting.Switch == nullptr)
            return {};
        return IsSet(At(index).*setting.Switch) ? Qt::Checked : Qt::Unchecked;
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    case Qt::ToolTipRole:
        return IsWithout(index, At(index)) ? tr("Starts at its previous level") : tr(setting.Description);
    case Qt::AccessibleTextRole:
        return tr("%1 of %2: %3")
            .arg(tr(setting.Caption), OutputText(static_cast<std::size_t>(index.row())), CellText(index));
    default:
        return {};
    }
}

QVariant LevelsTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount)
        return {};
    const Setting& setting = settings[section];
    if (role == Qt::DisplayRole)
        return tr(setting.Caption);
    if (role == Qt::ToolTipRole)
        return tr(setting.Description);
    if (role == Qt::TextAlignmentRole && section != OutputColumn && setting.Level != nullptr)
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    return role == Qt::TextAlignmentRole ? QVariant::fromValue(Qt::AlignLeft | Qt::AlignVCenter) : QVariant();
}

Qt::ItemFlags LevelsTableModel::flags(const QModelIndex& index) const {
    const Setting& setting = SettingOf(index);
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    if (setting.Switch != nullptr)
        flags |= Qt::ItemIsUserCheckable;
    else if (setting.Level != nullptr && !IsWithout(index, At(index)))
        flags |= Qt::ItemIsEditable;
    return flags;
}

bool LevelsTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    const Setting& setting = SettingOf(index);
    LevelEntry entry;
    if (role == Qt::CheckStateRole && setting.Switch != nullptr)
        entry.*setting.EnteredSwitch = value.toInt() == Qt::Checked;
    else if (role == Qt::EditRole && setting.Level != nullptr)
        entry.*setting.EnteredLevel = Shown(index.column(), value.toFloat());
    else
        return false;
    Q_EMIT Entered(index, entry);
    return true;
}

} // namespace vek
