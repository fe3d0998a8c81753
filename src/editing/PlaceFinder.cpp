#include "editing/PlaceFinder.h"

#include "controls/LevelTrim.h"
#include "controls/RemoteNumberPanel.h"
#include "controls/dBText.h"
#include "editing/ModelView.h"
#include "pages/EditorPages.h"
#include "pages/LevelsPage.h"
#include "pages/RemotePanelsPage.h"
#include "pages/Selectors.h"
#include "pages/TrimPage.h"

#include <QCheckBox>
#include <QRadioButton>
#include <QTabWidget>

#include <algorithm>
#include <iterator>
#include <utility>

namespace vek {

namespace {

int PageOf(FieldKind kind) {
    switch (kind) {
    case FieldKind::Base:
    case FieldKind::Addresses:
        return AddressesTab;
    case FieldKind::Levels:
        return LevelsTab;
    case FieldKind::InputTrims:
        return InputTrimsTab;
    case FieldKind::OutputTrims:
        return OutputTrimsTab;
    case FieldKind::Notes:
    case FieldKind::Tail:
        return NotesTab;
    case FieldKind::Panels:
    case FieldKind::LinkGroups:
        break;
    }
    return RemotePanelsTab;
}

QWidget* PanelControl(const RemotePanelsPage& page, std::size_t output, std::string_view caption) {
    if (caption == captions::volumePanels)
        return page.RemotePanelVolumes[output];
    if (caption == captions::selectorPanels)
        return page.RemotePanelSelects[output];
    if (caption == captions::usePreviousRoute)
        return page.UsePreviousRouteCheck[output];
    return page.RemotePaneInputs[output];
}

QWidget* LevelControl(const LevelsPage& page, std::string_view caption) {
    const std::pair<std::string_view, QWidget*> controls[] = {
        {captions::minimumLevel, page.PanelMinimumLevel},
        {captions::startLevel, page.RemoteStartLevel},
        {captions::levelSteps, page.RemoteStepLevel},
        {captions::muteOnMinimum, page.RemoteMuteOnMin},
        {captions::previousStartLevel, page.RemotePreviousNotSetStartLevel[page.FixedStart() ? 0 : 1]}};
    const auto* found =
        std::ranges::find(controls, caption, [](const auto& control) { return control.first; });
    return found == std::end(controls) ? page.PanelMaximumLevel : found->second;
}

/// The first in the order of Tab that can be used, the part itself included; false when there is none.
bool FocusIn(QWidget& part) {
    QWidget* next = &part;
    do {
        const bool usable = next->isVisible() && next->isEnabled() && next->focusProxy() == nullptr &&
                            (next->focusPolicy() & Qt::TabFocus) != 0;
        if (usable && (next == &part || part.isAncestorOf(next))) {
            next->setFocus(Qt::TabFocusReason);
            return true;
        }
        next = next->nextInFocusChain();
    } while (next != &part);
    return false;
}

} // namespace

bool PlaceFinder::Reachable(const FieldPlace& place) const { return tabs_.isTabEnabled(PageOf(place.Kind)); }

void PlaceFinder::GoTo(const FieldPlace& place) const {
    if (place.Mode)
        pages_.Selectors->Modes[*place.Mode]->setChecked(true);
    if (place.Output)
        pages_.Selectors->UsePanel[*place.Output]->setChecked(true);
    tabs_.setCurrentIndex(PageOf(place.Kind));
    view_.ReadSelectors();
}

void PlaceFinder::Enter(const FieldPlace& place) const {
    GoTo(place);
    QWidget* control = ControlOf(place);
    if (control == nullptr || !FocusIn(*control))
        FocusIn(*tabs_.currentWidget());
}

QWidget* PlaceFinder::ControlOf(const FieldPlace& place) const {
    switch (place.Kind) {
    case FieldKind::Panels:
    case FieldKind::LinkGroups:
        return place.Output ? PanelControl(*pages_.RemotePanels, *place.Output, place.Caption) : nullptr;
    case FieldKind::Levels:
        return LevelControl(*pages_.Levels, place.Caption);
    case FieldKind::InputTrims:
        return place.Trim ? pages_.InputTrims->Trims[*place.Trim] : nullptr;
    case FieldKind::OutputTrims:
        return place.Trim ? pages_.OutputTrims->Trims[*place.Trim] : nullptr;
    default:
        return nullptr;
    }
}

} // namespace vek
