#include "editing/ModelView.h"

#include "base/Numbers.h"
#include "controls/LevelTrim.h"
#include "controls/NotesBox.h"
#include "controls/RemoteNumberPanel.h"
#include "controls/TextConversion.h"
#include "controls/dBText.h"
#include "editing/EditHistory.h"
#include "inspect/NamedNumbers.h"
#include "model/ProgramState.h"
#include "pages/AddressesPage.h"
#include "pages/LevelsPage.h"
#include "pages/NotesPage.h"
#include "pages/OnlineStrip.h"
#include "pages/PageHeading.h"
#include "pages/RemotePanelsPage.h"
#include "pages/Rs232Page.h"
#include "pages/Selectors.h"
#include "pages/TrimPage.h"

#include <QCheckBox>
#include <QRadioButton>

namespace vek {

namespace {

/// A level and its box.
struct LevelField {
    float OutputLevelRecord::*Field;
    dBText* LevelsPage::*Box;
};

constexpr LevelField levelFields[] = {
    {&OutputLevelRecord::MaximumLevel, &LevelsPage::PanelMaximumLevel},
    {&OutputLevelRecord::MinimumLevel, &LevelsPage::PanelMinimumLevel},
    {&OutputLevelRecord::StepLevel, &LevelsPage::RemoteStepLevel},
    {&OutputLevelRecord::StartLevel, &LevelsPage::RemoteStartLevel},
};

/// A field is written, and the change noted, only when the value is another one.
template <typename Value>
void Store(Value& field, const Value& value) {
    if (field == value)
        return;
    field = value;
    ConfigChanged = true;
}

/// Any non-zero flag is true; one that the user did not change keeps its stored value.
void StoreFlag(Flag& field, bool value) {
    if (IsSet(field) != value)
        Store(field, ToFlag(value));
}

/// A box shows half decibels within its limits; a level that it cannot show is kept until the user enters
/// one.
void StoreLevel(float& field, const dBText& box) {
    if (box.Touched() || box.Snapped(field) != box.Level())
        Store(field, box.Level());
}

template <std::size_t N>
void StoreText(FixedText<N>& field, const RemoteNumberPanel& box) {
    const QString contents = box.Contents();
    if (FromBytes(field.Trimmed()) != contents)
        Store(field, FixedText<N>(ToBytes(contents)));
}

/// "Mode 2 Evening" for a mode from 0.
QString NameOfMode(std::size_t mode) {
    return QString::fromStdString(NamedNumbers(Config).Text(NameKind::Mode, mode));
}

template <typename Index>
int LastChecked(const Index& options) {
    int checked = -1;
    for (std::size_t i = 0; i < options.size(); ++i) {
        if (options[i]->isChecked())
            checked = static_cast<int>(i);
    }
    return checked;
}

template <typename Options>
void ReadSelector(int& current, const Options& options) {
    current = LastChecked(options);
    if (current >= 0)
        return;
    current = 0;
    options[0]->setChecked(true);
}

} // namespace

/// Every write to Config happens in an edit, which begins and ends here.
template <typename Change>
void ModelView::Edit(Change change) {
    change(Config);
}

/// What the user does is a step of the history, also when it takes several edits.
template <typename Change>
void ModelView::Step(const QString& name, Change change) {
    if (inStep_) {
        change();
        return;
    }
    const MatrixConfig before = Config;
    const auto end = [&] {
        inStep_ = false;
        // What linking makes of followers belongs to the linking; it would come back at once.
        if (Config != before && !DifferInFollowersOnly(before, Config))
            history_.Enter(before, Config, name);
    };
    inStep_ = true;
    try {
        change();
    } catch (...) {
        end();
        throw;
    }
    end();
}

std::size_t ModelView::ModeIndex() const { return CheckedIndex(currentMode_, modeCount); }

const ModeRecord& ModelView::Mode() const { return Config.Modes[ModeIndex()]; }

const OutputLevelRecord& ModelView::Levels() const { return Mode().OutputLevels[Output()]; }

std::size_t ModelView::Output() const { return CheckedIndex(currentOutput_, outputCount); }

void ModelView::ReadSelectors() {
    ReadSelector(currentMode_, pages_.Selectors->Modes);
    ReadSelector(currentOutput_, pages_.Selectors->UsePanel);
}

void ModelView::StoreView() {
    if (!pages_.Made())
        return;
    Step({}, [this] {
        Edit([this](MatrixConfig& config) {
            ModeRecord& mode = config.Modes[ModeIndex()];
            Store(config.Addresses, addresses_);
            StoreMode(mode);
            StoreLevels(mode.OutputLevels[Output()]);
            StoreGlobalFields(config);
        });
        ShowLevelsOfOutputs();
    });
    ShowSelection();
}

void ModelView::ShowNames() {
    Names names(Config.Notes.Padded());
    if (names == names_)
        return;
    names_ = std::move(names);
    pages_.RemotePanels->ShowNames(names_);
    pages_.Levels->ShowNames(names_);
    pages_.Addresses->ShowNames(names_);
    pages_.Rs232->ShowNames(names_);
    pages_.InputTrims->ShowNames(names_);
    pages_.OutputTrims->ShowNames(names_);
    pages_.Strip->ShowNames(names_);
}

void ModelView::ShowSelection() {
    ShowNames();
    pages_.Selectors->ShowStates(Config, ModeIndex(), names_);
    pages_.Heading->ShowPlace(ModeIndex(), Output(), names_);
}

void ModelView::StoreMode(ModeRecord& mode) {
    Store(mode.LinkGroup, linkGroups_);
    const RemotePanelsPage& page = *pages_.RemotePanels;
    for (std::size_t output = 0; output < outputCount; ++output) {
        PanelRecord& panels = mode.OutputPanels[output];
        StoreText(panels.PanelInputs, *page.RemotePaneInputs[output]);
        StoreText(panels.PanelVolumes, *page.RemotePanelVolumes[output]);
        StoreText(panels.PanelSelects, *page.RemotePanelSelects[output]);
        StoreFlag(panels.UsePreviousRoute, page.UsePreviousRouteCheck[output]->isChecked());
    }
}

void ModelView::StoreLevels(OutputLevelRecord& levels) {
    const LevelsPage& page = *pages_.Levels;
    for (const LevelField& field : levelFields)
        StoreLevel(levels.*field.Field, *(page.*field.Box));
    StoreFlag(levels.MuteOnMin, page.RemoteMuteOnMin->isChecked());
    StoreFlag(levels.PreviousNotSetStartLevel, page.RemotePreviousNotSetStartLevel[1]->isChecked());
}

void ModelView::StoreGlobalFields(MatrixConfig& config) {
    for (std::size_t i = 0; i < inputCount; ++i)
        Store(config.InputTrim[i], pages_.InputTrims->Trims[i]->Level());
    for (std::size_t i = 0; i < outputCount; ++i)
        Store(config.OutputTrim[i], pages_.OutputTrims->Trims[i]->Level());
    const std::string& notes = pages_.Notes->Text1->Bytes();
    if (TrimBlanks(notes) != config.Notes.Trimmed())
        Store(config.Notes, FixedText<notesLength>(notes));
}

void ModelView::ShowMode() {
    Edit([this](MatrixConfig& config) {
        ModeRecord& mode = config.Modes[ModeIndex()];
        linkGroups_ = mode.LinkGroup;
        ShowPanels(mode);
    });
    ShowLevels(Levels());
    ShowLevelsOfOutputs();
    addresses_ = Config.Addresses;
    pages_.Addresses->ShowAddresses(addresses_, Config.VekNetBase, Output());
    pages_.RemotePanels->RefreshTakenMarks(Mode());
    ShowSelection();
}

void ModelView::ShowPanels(ModeRecord& mode) {
    const RemotePanelsPage& page = *pages_.RemotePanels;
    std::array<std::size_t, linkGroupCount + 1> leaders =
        {}; // output number from 1, 0 while the group has none
    for (std::size_t output = 0; output < outputCount; ++output) {
        PanelRecord& panels = mode.OutputPanels[output];
        QString inputs = FromBytes(panels.PanelInputs.Trimmed());
        QString selects = FromBytes(panels.PanelSelects.Trimmed());
        if (mode.LinkGroup[output] != 0) {
            std::size_t& leader = leaders[CheckedIndex(mode.LinkGroup[output], leaders.size())];
            if (leader == 0) {
                leader = output + 1;
            } else {
                inputs = selects = QObject::tr("Linked - %1").arg(leader);
                panels.UsePreviousRoute = mode.OutputPanels[leader - 1].UsePreviousRoute;
            }
        }
        page.RemotePaneInputs[output]->SetContents(inputs);
        page.RemotePanelVolumes[output]->SetContents(FromBytes(panels.PanelVolumes.Trimmed()));
        page.RemotePanelSelects[output]->SetContents(selects);
        page.UsePreviousRouteCheck[output]->setEnabled(!IsFollower(mode, output));
        page.UsePreviousRouteCheck[output]->setChecked(IsSet(panels.UsePreviousRoute));
    }
}

void ModelView::ShowLevels(const OutputLevelRecord& levels) {
    LevelsPage& page = *pages_.Levels;
    for (const LevelField& field : levelFields)
        (page.*field.Box)->SetLevel(levels.*field.Field);
    page.RemoteMuteOnMin->setChecked(IsSet(levels.MuteOnMin));
    const bool previous = IsSet(levels.PreviousNotSetStartLevel);
    page.RemotePreviousNotSetStartLevel[previous ? 1 : 0]->setChecked(true);
    page.ShowStartLevel(!previous);
    page.LevelTrim1->SetLevel(SliderLevel());
}

void ModelView::ShowLevelsOfOutputs() { pages_.Levels->ShowOutputs(Mode().OutputLevels, Output()); }

void ModelView::ShowGlobalFields() {
    // The view of the trimmed text ends with the assignment, which pads it again.
    Edit([](MatrixConfig& config) { config.Notes = config.Notes.Trimmed(); });
    ShowNotesAndTrims();
}

void ModelView::ShowNotesAndTrims() {
    const std::string_view notes = Config.Notes.Padded();
    pages_.Notes->Text1->SetBytes(notes.substr(0, notes.find_last_not_of(' ') + 1));
    for (std::size_t i = 0; i < inputCount; ++i)
        pages_.InputTrims->Trims[i]->SetLevel(Config.InputTrim[i]);
    for (std::size_t i = 0; i < outputCount; ++i)
        pages_.OutputTrims->Trims[i]->SetLevel(Config.OutputTrim[i]);
}

void ModelView::ShowAll() {
    ShowGlobalFields();
    ShowMode();
}

void ModelView::ResetMode() {
    Step(QObject::tr("reset %1 to default").arg(NameOfMode(ModeIndex())), [this] {
        Edit([this](MatrixConfig& config) { config.Modes[ModeIndex()] = DefaultMode(); });
        ShowMode();
    });
}

void ModelView::PasteMode(std::size_t mode, const ModeRecord& pasted) {
    // The controls of another mode still hold edits; those of this one would overwrite what was pasted.
    if (mode != ModeIndex())
        StoreView();
    Step(QObject::tr("paste %1").arg(NameOfMode(mode)), [&] {
        Edit([&](MatrixConfig& config) { config.Modes[mode] = pasted; });
        ShowMode();
    });
}

void ModelView::PasteOutput(std::size_t output, const OutputLevelRecord& pasted) {
    const auto place = QString::fromStdString(NamedNumbers(Config).OutputOfMode(ModeIndex(), output));
    Step(QObject::tr("paste %1").arg(place), [&] {
        Edit([&](MatrixConfig& config) { config.Modes[ModeIndex()].OutputLevels[output] = pasted; });
        ShowMode();
    });
}

void ModelView::SetLevels(const std::array<OutputLevelRecord, outputCount>& levels) {
    const auto& before = Mode().OutputLevels;
    int edited = 0;
    for (std::size_t output = 0; output < outputCount; ++output)
        edited += before[output] == levels[output] ? 0 : 1;
    const QString several =
        QObject::tr("set levels of %1 outputs of Mode %2").arg(edited).arg(ModeIndex() + 1);
    Step(edited > 1 ? several : QString(), [&] {
        Edit([&](MatrixConfig& config) { Store(config.Modes[ModeIndex()].OutputLevels, levels); });
        ShowLevels(Levels());
        ShowLevelsOfOutputs();
    });
}

void ModelView::SetBase(std::int16_t base) {
    Step({}, [&] {
        Edit([base](MatrixConfig& config) { Store(config.VekNetBase, base); });
        ShowMode();
    });
}

void ModelView::SetLinkGroups(const std::array<std::int16_t, outputCount>& groups) {
    Step(QObject::tr("link outputs of %1").arg(NameOfMode(ModeIndex())), [&] {
        linkGroups_ = groups;
        StoreView();
        ShowMode();
        StoreView(); // what linking has made of the followers
    });
}

void ModelView::ToggleAddress(AddressGroup group, std::size_t function) {
    Step({}, [&] {
        Flag& flag = AddressFlag(addresses_, group, function, Output());
        flag = ToFlag(!IsSet(flag));
        StoreView();
        ShowMode();
    });
}

void ModelView::ApplyAddressMenu(AddressGroup group, const EnableMenuEntry& entry, std::size_t remembered) {
    Step(FromConstant(entry.Caption), [&] {
        ApplyMenuEntry(addresses_, group, entry, Output(), remembered);
        ConfigChanged = true;
        StoreView();
        ShowMode();
    });
}

void ModelView::TakeClamped(const MatrixConfig& clamped) {
    Step(QObject::tr("limit levels to what the device has"), [&] {
        Edit([&](MatrixConfig& config) { config = clamped; });
        ShowMode();
    });
}

void ModelView::TakeBack(const QString& field, const MatrixConfig& config) {
    Step(QObject::tr("take back %1").arg(field), [&] { Restore(config); });
}

void ModelView::Restore(const MatrixConfig& config) {
    Edit([&](MatrixConfig& present) { present = config; });
    ConfigChanged = ConfigDiffers();
    ShowNotesAndTrims();
    ShowMode();
}

void ModelView::TakeStartLevels() {
    for (std::size_t mode = 0; mode < modeCount; ++mode) {
        for (std::size_t output = 0; output < outputCount; ++output)
            sliderLevels_[mode][output] = Config.Modes[mode].OutputLevels[output].StartLevel;
    }
}

float ModelView::SliderLevel() const { return sliderLevels_[ModeIndex()][Output()]; }

void ModelView::SetSliderLevel(float level) { sliderLevels_[ModeIndex()][Output()] = level; }

} // namespace vek
