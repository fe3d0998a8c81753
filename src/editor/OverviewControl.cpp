#include "editor/OverviewControl.h"

#include "controls/RemoteNumberPanel.h"
#include "controls/dBText.h"
#include "editing/ClipboardMenus.h"
#include "editing/EditHistory.h"
#include "editing/ModelView.h"
#include "editor/ConfigWatch.h"
#include "editor/ExportCommands.h"
#include "model/ProgramState.h"
#include "pages/LevelsPage.h"
#include "pages/Overview.h"
#include "pages/OverviewAccessible.h"
#include "pages/OverviewMenu.h"
#include "pages/PageHeading.h"
#include "pages/RemotePanelsPage.h"
#include "pages/Selectors.h"

#include <QAction>
#include <QCheckBox>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

/// The control that edits a part of a cell; of a header, the one to begin with.
QWidget* ControlFor(const OverviewPlace& place, const EditorPages& pages) {
    const std::size_t output = place.Output.value_or(0);
    switch (place.Part) {
    case OverviewPart::Levels:
        return pages.Levels->PanelMaximumLevel;
    case OverviewPart::Mute:
        return pages.Levels->RemoteMuteOnMin;
    case OverviewPart::Volumes:
        return pages.RemotePanels->RemotePanelVolumes[output];
    case OverviewPart::Selects:
        return pages.RemotePanels->RemotePanelSelects[output];
    case OverviewPart::Cell:
    case OverviewPart::Inputs:
    case OverviewPart::Group:
        break;
    }
    return pages.RemotePanels->RemotePaneInputs[output];
}

} // namespace

OverviewControl::OverviewControl(const OverviewParts& parts, QWidget& window)
    : QObject(&window), parts_(parts) {
    auto* show = new QAction(tr("&Overview"), &window);
    show->setObjectName(u"ShowOverview"_s);
    show->setShortcut(QKeySequence(tr("Ctrl+0")));
    window.addAction(show);
    connect(show, &QAction::triggered, this, &OverviewControl::ShowPage);

    refresh_.setSingleShot(true);
    connect(&refresh_, &QTimer::timeout, this, &OverviewControl::Refresh);
    connect(&parts.Watch, &ConfigWatch::Looked, this, &OverviewControl::Refresh);

    connect(&parts.SSTab1, &QTabWidget::currentChanged, this, [this] {
        if (IsShown())
            Make();
    });
    const EditHistory& history = parts.View.History();
    for (const auto signal : {&EditHistory::Entered, &EditHistory::Begun})
        connect(&history, signal, this, &OverviewControl::ConfigurationChanged);
    connect(&history, &EditHistory::Restored, this, &OverviewControl::ConfigurationChanged);
    connect(parts.Pages.Selectors, &Selectors::ModeChosen, this, &OverviewControl::FollowSelectors);
    connect(parts.Pages.Selectors, &Selectors::OutputChosen, this, &OverviewControl::FollowSelectors);
}

void OverviewControl::ShowPage() {
    parts_.SSTab1.setCurrentIndex(OverviewTab);
    if (overview_)
        overview_->setFocus();
}

void OverviewControl::Make() {
    if (!overview_) {
        InstallOverviewAccessible();
        overview_ = new Overview;
        auto* layout = new QVBoxLayout(parts_.Pages.OverviewPage);
        layout->addWidget(overview_);
        connect(overview_, &Overview::Activated, this, &OverviewControl::GoTo);
        connect(overview_, &Overview::CopyRequested, this, &OverviewControl::Copy);
        connect(overview_, &Overview::PasteRequested, this, &OverviewControl::Paste);
        connect(overview_, &Overview::MenuRequested, this,
                [this](const QPoint& at) { (new OverviewMenu(*overview_))->popup(at); });
        connect(overview_, &Overview::PrintRequested, &parts_.Exports, &ExportCommands::PrintOverviewCommand);
        connect(overview_, &Overview::ComparedChanged, this,
                [this] { parts_.Pages.Heading->ShowCompared(overview_->Compared()); });
        FollowSelectors();
    }
    if (stale_) {
        parts_.Watch.Found();
        Refresh();
    }
}

bool OverviewControl::IsShown() const { return parts_.SSTab1.currentIndex() == OverviewTab; }

void OverviewControl::ConfigurationChanged() {
    stale_ = true;
    if (IsShown())
        refresh_.start();
}

void OverviewControl::Refresh() {
    if (!IsShown())
        return;
    stale_ = false;
    overview_->Show(Config, Names(Config.Notes.Trimmed()), parts_.Watch.LastFound());
}

void OverviewControl::FollowSelectors() {
    if (overview_)
        overview_->SetCurrent({static_cast<std::size_t>(parts_.View.CurrentMode()), parts_.View.Output()});
}

void OverviewControl::GoTo(const OverviewPlace& place) {
    if (place.Mode)
        parts_.Pages.Selectors->Modes[*place.Mode]->setChecked(true);
    if (place.Output)
        parts_.Pages.Selectors->UsePanel[*place.Output]->setChecked(true);
    QWidget* control = ControlFor(place, parts_.Pages);
    const bool panels = parts_.Pages.RemotePanels->isAncestorOf(control);
    if (!panels || parts_.SSTab1.isTabEnabled(RemotePanelsTab)) {
        parts_.SSTab1.setCurrentIndex(panels ? RemotePanelsTab : LevelsTab);
    } else {
        parts_.SSTab1.setCurrentIndex(LevelsTab);
        control = parts_.Pages.Levels->PanelMaximumLevel;
    }
    control->setFocus();
}

void OverviewControl::Copy(const OverviewPlace& place) {
    if (place.Output)
        parts_.Clipboard.CopyOutput(*place.Mode, *place.Output);
    else
        parts_.Clipboard.CopyMode(*place.Mode);
}

void OverviewControl::Paste(const OverviewPlace& place) {
    if (place.Output)
        parts_.Clipboard.PasteOutput(*place.Mode, *place.Output);
    else
        parts_.Clipboard.PasteMode(*place.Mode);
}

} // namespace vek
