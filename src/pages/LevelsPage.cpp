#include "pages/LevelsPage.h"

#include "controls/LayoutHelpers.h"
#include "controls/LevelTrim.h"
#include "controls/TextConversion.h"
#include "controls/dBText.h"
#include "model/Levels.h"
#include "model/Names.h"
#include "pages/LevelsTable.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

/// A row of the limits: caption, box and, for three of them, the button that takes the slider's level over.
struct LimitRow {
    const char* Name;
    const char* Caption;
    dBText* LevelsPage::*Box;
    float Minimum;
    float Maximum;
    int Button; ///< element of UseSliderToSet, or none
    const char* ButtonCaption;
};

constexpr int noButton = -1;

constexpr LimitRow limitRows[] = {
    {"PanelMaximumLevel", "Maximum Level", &LevelsPage::PanelMaximumLevel, levelMinimum, levelMaximum,
     SetMaximum, "Set Max Level"},
    {"RemoteStartLevel", "Start Level", &LevelsPage::RemoteStartLevel, levelMinimum, levelMaximum, SetStart,
     "Set Start Level"},
    {"PanelMinimumLevel", "Minimum Level", &LevelsPage::PanelMinimumLevel, levelMinimum, levelMaximum,
     SetMinimum, "Set Min Level"},
    {"RemoteStepLevel", "Level Steps", &LevelsPage::RemoteStepLevel, stepMinimum, stepMaximum, noButton, ""},
};

} // namespace

LevelsPage::LevelsPage(QWidget* parent) : QWidget(parent) {
    auto* frame = new QGroupBox(tr("Levels and Operation"), this);
    auto* columns = new QHBoxLayout(frame);
    columns->setSpacing(16);
    columns->addWidget(MakeSlider());
    columns->addWidget(MakeLimits(), 0, Qt::AlignTop);
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(frame);
    layout->addWidget(MakeOutputs());
    layout->addStretch(1);
}

QWidget* LevelsPage::MakeSlider() {
    auto* column = new QWidget(this);
    auto* layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    LevelTrim1 = new LevelTrim(column);
    LevelTrim1->setObjectName(u"LevelTrim1"_s);
    LevelTrim1->SetAccessibleTitle(tr("Level of the output"));
    LevelTrim1->SetMaxLevel(sliderMaximum);
    LevelTrim1->SetMinLevel(sliderMinimum);
    auto* caption = new QLabel(tr("Level"), column);
    auto* hint = MakeHint(tr("for trying out,\nnot saved"), column);
    for (QLabel* label : {caption, hint}) {
        label->setAlignment(Qt::AlignHCenter);
        layout->addWidget(label);
    }
    LevelTrim1->ShowMarks({});
    layout->addWidget(LevelTrim1, 1, Qt::AlignHCenter);
    return column;
}

QWidget* LevelsPage::MakeLimits() {
    auto* column = new QWidget(this);
    auto* grid = new QGridLayout(column);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(6);
    grid->addWidget(new QLabel(tr("Set Level from Slider"), column), 0, 2);
    int row = 1;
    for (const LimitRow& limit : limitRows) {
        auto* caption = new QLabel(tr(limit.Caption), column);
        auto* box = new dBText(column);
        box->setObjectName(QString::fromLatin1(limit.Name));
        box->SetAccessibleTitle(tr(limit.Caption));
        box->SetMaxLevel(limit.Maximum);
        box->SetMinLevel(limit.Minimum);
        this->*limit.Box = box;
        grid->addWidget(caption, row, 0);
        grid->addWidget(box, row, 1);
        if (limit.Button == SetStart)
            StartLevelLabel = caption;
        if (limit.Button != noButton) {
            auto* button = new QPushButton(tr(limit.ButtonCaption), column);
            const auto element = static_cast<std::size_t>(limit.Button);
            button->setObjectName(ElementName("UseSliderToSet", element));
            button->setAutoDefault(false);
            UseSliderToSet[element] = button;
            grid->addWidget(button, row, 2);
        }
        ++row;
    }
    StartLevelLabel->setObjectName(u"StartLevelLabel"_s);
    PreviousStartNote = new QLabel(tr("Starts at the level that it had before."), column);
    PreviousStartNote->setObjectName(u"PreviousStartNote"_s);
    PreviousStartNote->hide();
    grid->addWidget(PreviousStartNote, 2, 0, 1, 3);
    for (QWidget* widget :
         {static_cast<QWidget*>(RemoteStartLevel), static_cast<QWidget*>(StartLevelLabel),
          static_cast<QWidget*>(UseSliderToSet[SetStart]), static_cast<QWidget*>(PreviousStartNote)})
        KeepPlaceWhenHidden(widget);

    RemoteMuteOnMin = new QCheckBox(tr("Mute on Minimum Level"), column);
    RemoteMuteOnMin->setObjectName(u"RemoteMuteOnMin"_s);
    connect(RemoteMuteOnMin, &QCheckBox::clicked, this, &LevelsPage::Edited);
    connect(RemoteStepLevel, &dBText::Change, this, &LevelsPage::Edited);
    grid->setRowMinimumHeight(row++, 12);
    grid->addWidget(RemoteMuteOnMin, row++, 0, 1, 3);
    auto* choice = new QButtonGroup(column);
    const char* captions[] = {"Use Fixed Start Level", "Use Previous Start Level"};
    for (std::size_t i = 0; i < RemotePreviousNotSetStartLevel.size(); ++i) {
        auto* option = new QRadioButton(tr(captions[i]), column);
        option->setObjectName(ElementName("RemotePreviousNotSetStartLevel", i));
        choice->addButton(option);
        RemotePreviousNotSetStartLevel[i] = option;
        grid->addWidget(option, row++, 0, 1, 3);
    }
    RemotePreviousNotSetStartLevel[0]->setChecked(true);
    return column;
}

bool LevelsPage::FixedStart() const { return RemotePreviousNotSetStartLevel[0]->isChecked(); }

void LevelsPage::ShowStartLevel(bool fixedStart) {
    RemoteStartLevel->setVisible(fixedStart);
    StartLevelLabel->setVisible(fixedStart);
    UseSliderToSet[SetStart]->setVisible(fixedStart);
    PreviousStartNote->setVisible(!fixedStart);
}

QWidget* LevelsPage::MakeOutputs() {
    auto* frame = new QGroupBox(tr("All outputs of this mode"), this);
    Outputs = new LevelsTable(frame);
    ApplyToAll = new QPushButton(tr("Apply to all outputs"), frame);
    ApplyToAll->setObjectName(u"ApplyToAll"_s);
    ApplyToAll->setAutoDefault(false);
    choice_ = new QLabel(frame);
    choice_->setTextFormat(Qt::PlainText);
    choice_->setWordWrap(true);
    connect(ApplyToAll, &QPushButton::clicked, Outputs, &LevelsTable::ApplyToAll);
    connect(Outputs, &LevelsTable::ChoiceChanged, this, &LevelsPage::ShowChoice);
    auto* layout = new QVBoxLayout(frame);
    layout->addWidget(Outputs);
    layout->addWidget(MakeHint(tr("What is typed goes to all chosen cells of the column. "
                                  "A double click on a number chooses the output."),
                               frame));
    layout->addWidget(ApplyToAll, 0, Qt::AlignLeft);
    layout->addWidget(choice_); // last, as it may take another line
    layout->addStretch(1);
    ShowChoice();
    return frame;
}

void LevelsPage::ShowChoice() {
    const auto choice = Outputs->Chosen();
    ApplyToAll->setEnabled(choice.has_value());
    choice_->setText(
        choice ? tr("takes %1 of %2").arg(choice->Captions.join(", "_L1), Outputs->OutputText(choice->Output))
               : tr("takes the chosen cells"));
}

void LevelsPage::ShowOutputs(const std::array<OutputLevelRecord, outputCount>& levels, std::size_t current) {
    Outputs->Show(levels, current);
    const OutputLevelRecord& shown = levels[current];
    FaderMarks marks = {.Shaded = {PanelMaximumLevel->Snapped(shown.MaximumLevel),
                                   PanelMinimumLevel->Snapped(shown.MinimumLevel)},
                        .Start = RemoteStartLevel->Snapped(shown.StartLevel)};
    if (IsSet(shown.PreviousNotSetStartLevel))
        marks.Start.reset();
    LevelTrim1->ShowMarks(marks);
}

void LevelsPage::ShowNames(const Names& names) { Outputs->ShowNames(names); }

} // namespace vek
