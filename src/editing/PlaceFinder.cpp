#include "editing/PlaceFinder.h"

#include "editing/ModelView.h"
#include "pages/EditorPages.h"
#include "pages/Selectors.h"

#include <QRadioButton>
#include <QTabWidget>

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
    QWidget* page = tabs_.currentWidget();
    for (QWidget* next = page->nextInFocusChain(); next != page; next = next->nextInFocusChain()) {
        if (!page->isAncestorOf(next) || !next->isVisible() || !next->isEnabled() ||
            (next->focusPolicy() & Qt::TabFocus) == 0)
            continue;
        next->setFocus(Qt::TabFocusReason);
        return;
    }
}

} // namespace vek
