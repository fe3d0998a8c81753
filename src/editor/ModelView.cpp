#include "editor/ModelView.h"

#include "base/Numbers.h"
#include "controls/LevelTrim.h"
#include "controls/NotesBox.h"
#include "controls/RemoteNumberPanel.h"
#include "controls/TextConversion.h"
#include "controls/dBText.h"
#include "model/ProgramState.h"
#include "pages/AddressesPage.h"
#include "pages/LevelsPage.h"
#include "pages/NotesPage.h"
#include "pages/RemotePanelsPage.h"
#include "pages/Selectors.h"
#include "pages/TrimPage.h"

#include <QCheckBox>
#include <QRadioButton>

namespace vek {

using namespace Qt::StringLiterals;

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

/// A box shows half decibels within its limits; a level that it cannot show is not taken for an edit.
void StoreLevel(float& field, const dBText& box) {
    if (box.Snapped(field) != box.Level())
        Store(field, box.Level());
}

template <std::size_t N>
void StoreText(FixedText<N>& field, const RemoteNumberPanel& box) {
    const QString contents = box.Contents();
    if (FromBytes(field.Trimmed()) != contents)
        Store(field, FixedText<N>(ToBytes(contents)));
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

ModeRecord& ModelView::Mode() const { return Config.Modes[CheckedIndex(CurrentMode, modeCount)]; }

OutputLevelRecord& ModelView::Levels() const { return Mode().OutputLevels[Output()]; }

std::size_t ModelView::Output() const { return CheckedIndex(CurrentOutput, outputCount); }

float& ModelView::WorkingLevel() { return WorkingLevels[CheckedIndex(CurrentMode, modeCount)][Output()]; }

void ModelView::ReadSelectors() {
    ReadSelector(CurrentMode, pages_.Selectors->Modes);
    ReadSelector(CurrentOutput, pages_.Selectors->UsePanel);
}

void ModelView::StoreView() {
    Store(Config.Addresses, Addresses);
    StoreMode(Mode());
    StoreLevels(Levels());
    StoreGlobalFields();
}

void ModelView::StoreMode(ModeRecord& mode) {
    Store(mode.LinkGroup, LinkGroup);
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

void ModelView::StoreGlobalFields() {
    for (std::size_t i = 0; i < inputCount; ++i)
        Store(Config.InputTrim[i], pages_.InputTrims->Trims[i]->Level());
    for (std::size_t i = 0; i < outputCount; ++i)
        Store(Config.OutputTrim[i], pages_.OutputTrims->Trims[i]->Level());
    // The box shows line ends in one form only; text that it shows unchanged keeps its bytes.
    const std::string notes = pages_.Notes->Text1->Bytes();
    if (LinesFromBytes(Config.Notes.Trimmed()) != LinesFromBytes(TrimBlanks(notes)))
        Store(Config.Notes, FixedText<notesLength>(notes));
}

void ModelView::ShowMode() {
    ModeRecord& mode = Mode();
    LinkGroup = mode.LinkGroup;
    ShowPanels(mode);
    ShowLevels(Levels());
    Addresses = Config.Addresses;
    pages_.Addresses->ShowAddresses(Addresses, Config.VekNetBase, Output());
    pages_.RemotePanels->RefreshTakenMarks(mode);
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
                inputs = selects = u"Linked - %1"_s.arg(leader);
                panels.UsePreviousRoute = mode.OutputPanels[leader - 1].UsePreviousRoute;
            }
        }
        page.RemotePaneInputs[output]->SetContents(inputs);
        page.RemotePanelVolumes[output]->SetContents(FromBytes(panels.PanelVolumes.Trimmed()));
        page.RemotePanelSelects[output]->SetContents(selects);
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
    page.LevelTrim1->SetLevel(WorkingLevel());
}

void ModelView::ShowGlobalFields() {
    // The view of the trimmed text ends with the assignment, which pads it again.
    Config.Notes = Config.Notes.Trimmed();
    NotesBox& notes = *pages_.Notes->Text1;
    if (LinesFromBytes(TrimBlanks(notes.Bytes())) != LinesFromBytes(Config.Notes.Trimmed()))
        notes.SetBytes(Config.Notes.Trimmed());
    for (std::size_t i = 0; i < inputCount; ++i)
        pages_.InputTrims->Trims[i]->SetLevel(Config.InputTrim[i]);
    for (std::size_t i = 0; i < outputCount; ++i)
        pages_.OutputTrims->Trims[i]->SetLevel(Config.OutputTrim[i]);
}

void ModelView::ShowAll() {
    ShowGlobalFields();
    ShowMode();
}

void ModelView::TakeStartLevels() {
    for (std::size_t mode = 0; mode < modeCount; ++mode) {
        for (std::size_t output = 0; output < outputCount; ++output)
            WorkingLevels[mode][output] = Config.Modes[mode].OutputLevels[output].StartLevel;
    }
}

} // namespace vek
