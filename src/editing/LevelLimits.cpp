#include "editing/LevelLimits.h"

#include "controls/LevelTrim.h"
#include "controls/TextConversion.h"
#include "controls/dBText.h"
#include "dialogs/WindowMessages.h"
#include "editing/ModelView.h"
#include "pages/LevelsPage.h"
#include "pages/LevelsTable.h"

#include <QPushButton>
#include <QRadioButton>
#include <QStringList>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

/// A limited level: its box, its field, what is entered for it and the button that copies the slider into it.
struct Limit {
    LevelLimit Level;
    dBText* LevelsPage::*Box;
    float OutputLevelRecord::*Field;
    std::optional<float> LevelEntry::*Entered;
    SliderTarget Button;
};

constexpr Limit limits[] = {
    {LevelLimit::Maximum, &LevelsPage::PanelMaximumLevel, &OutputLevelRecord::MaximumLevel,
     &LevelEntry::MaximumLevel, SetMaximum},
    {LevelLimit::Minimum, &LevelsPage::PanelMinimumLevel, &OutputLevelRecord::MinimumLevel,
     &LevelEntry::MinimumLevel, SetMinimum},
    {LevelLimit::Start, &LevelsPage::RemoteStartLevel, &OutputLevelRecord::StartLevel,
     &LevelEntry::StartLevel, SetStart},
};

const Limit& LimitOf(LevelLimit level) { return limits[static_cast<std::size_t>(level)]; }

} // namespace

LevelLimits::LevelLimits(LevelsPage& page, ModelView& view, WindowMessages& messages, QObject* parent)
    : QObject(parent), page_(page), view_(view), messages_(messages) {
    for (const Limit& limit : limits) {
        const LevelLimit level = limit.Level;
        connect(page.*limit.Box, &dBText::Change, this, [this, level] { LevelChanged(level); });
        connect(page.UseSliderToSet[static_cast<std::size_t>(limit.Button)], &QPushButton::clicked, this,
                [this, level] { TakeFromSlider(level); });
    }
    for (QRadioButton* option : page.RemotePreviousNotSetStartLevel)
        connect(option, &QRadioButton::clicked, this, &LevelLimits::StartChoiceClicked);
    connect(page.Outputs, &LevelsTable::Entered, this, &LevelLimits::Enter);
}

void LevelLimits::LevelChanged(LevelLimit changed) {
    const Limit& limit = LimitOf(changed);
    dBText& box = *(page_.*limit.Box);
    OutputLevelRecord levels = view_.Levels();
    for (const Limit& other : limits) {
        const dBText& otherBox = *(page_.*other.Box);
        if (other.Level != changed && otherBox.Snapped(levels.*other.Field) != otherBox.Level())
            levels.*other.Field = otherBox.Level();
    }
    LevelEntry entry = {.PreviousNotSetStartLevel = !page_.FixedStart()};
    entry.*limit.Entered = box.Level();
    const LevelDecision decision = EnterLevels(levels, entry);
    if (!decision.Accepted) {
        box.SetLevel(view_.Levels().*limit.Field);
        Refuse(decision.Title, FromConstant(decision.Reason));
        return;
    }
    if (decision.DragStart)
        page_.RemoteStartLevel->SetLevel(levels.StartLevel);
    view_.StoreView();
}

void LevelLimits::Refuse(std::string_view title, const QString& reason) {
    messages_.Show(MessageIcon::Exclamation, FromConstant(title),
                   reason + tr("\r\nRestoring original value"));
}

void LevelLimits::Enter(const std::vector<std::size_t>& outputs, const LevelEntry& entry) {
    Guarded(messages_, [&] {
        view_.StoreView();
        auto levels = view_.Mode().OutputLevels;
        std::string_view title;
        QStringList reasons;
        for (const std::size_t output : outputs) {
            LevelEntry shown = entry;
            // The start level of an output that starts at its previous one is out of reach.
            if (entry.PreviousNotSetStartLevel.value_or(IsSet(levels[output].PreviousNotSetStartLevel)))
                shown.StartLevel.reset();
            const LevelDecision decision = EnterLevels(levels[output], shown);
            if (decision.Accepted)
                continue;
            if (title.empty())
                title = decision.Title;
            const QString reason = FromConstant(decision.Reason);
            reasons +=
                outputs.size() == 1 ? reason : tr("%1: %2").arg(page_.Outputs->OutputText(output), reason);
        }
        view_.SetLevels(levels);
        if (!reasons.isEmpty())
            Refuse(title, reasons.join("\r\n"_L1));
    });
}

void LevelLimits::TakeFromSlider(LevelLimit target) {
    (page_.*LimitOf(target).Box)->EnterLevel(page_.LevelTrim1->Level());
    LevelChanged(target);
}

void LevelLimits::StartChoiceClicked() {
    page_.ShowStartLevel(page_.FixedStart());
    view_.StoreView();
}

} // namespace vek
