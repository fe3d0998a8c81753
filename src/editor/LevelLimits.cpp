#include "editor/LevelLimits.h"

#include "controls/LevelTrim.h"
#include "controls/TextConversion.h"
#include "controls/dBText.h"
#include "dialogs/WindowMessages.h"
#include "editor/ModelView.h"
#include "pages/LevelsPage.h"

#include <QPushButton>
#include <QRadioButton>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

/// A limited level: its box, its field and the button that copies the slider into it.
struct Limit {
    LevelLimit Level;
    dBText* LevelsPage::*Box;
    float OutputLevelRecord::*Field;
    SliderTarget Button;
};

constexpr Limit limits[] = {
    {LevelLimit::Maximum, &LevelsPage::PanelMaximumLevel, &OutputLevelRecord::MaximumLevel, SetMaximum},
    {LevelLimit::Minimum, &LevelsPage::PanelMinimumLevel, &OutputLevelRecord::MinimumLevel, SetMinimum},
    {LevelLimit::Start, &LevelsPage::RemoteStartLevel, &OutputLevelRecord::StartLevel, SetStart},
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
}

void LevelLimits::LevelChanged(LevelLimit changed) {
    const Limit& limit = LimitOf(changed);
    dBText& box = *(page_.*limit.Box);
    const LevelLimitValues levels = {page_.PanelMaximumLevel->Level(), page_.PanelMinimumLevel->Level(),
                                     page_.RemoteStartLevel->Level()};
    const LevelDecision decision = DecideLevel(changed, levels, page_.FixedStart());
    const float stored = view_.Levels().*limit.Field;
    if (!decision.Accepted) {
        box.SetLevel(stored);
        messages_.Show(MessageIcon::Exclamation, FromConstant(decision.Title),
                       FromConstant(decision.Reason) + tr("\r\nRestoring original value"));
        return;
    }
    if (decision.DragStart && box.Level() != stored)
        page_.RemoteStartLevel->SetLevel(box.Level());
    view_.StoreView();
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
