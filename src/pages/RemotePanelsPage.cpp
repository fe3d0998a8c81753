#include "pages/RemotePanelsPage.h"

#include "controls/LayoutHelpers.h"
#include "controls/NameLabel.h"
#include "controls/RemoteNumberPanel.h"
#include "controls/TextConversion.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>

namespace vek {

namespace {

/// The three lists of an output, as columns.
struct ListColumn {
    std::string_view Name;
    const char* Caption;
    const char* AccessibleName;
    NumberList List;
    std::array<RemoteNumberPanel*, outputCount> RemotePanelsPage::*Boxes;
};

constexpr ListColumn listColumns[] = {
    {"RemotePaneInputs", "Input Sequence", "Input sequence of output %1", NumberList::InputSequence,
     &RemotePanelsPage::RemotePaneInputs},
    {"RemotePanelVolumes", "Volume Remote Panels", "Volume remote panels of output %1",
     NumberList::VolumePanels, &RemotePanelsPage::RemotePanelVolumes},
    {"RemotePanelSelects", "Input Selector Remote Panels", "Input selector remote panels of output %1",
     NumberList::SelectorPanels, &RemotePanelsPage::RemotePanelSelects},
};

constexpr int firstColumn = 2; // behind number and name

QLabel* Heading(const QString& text, QWidget* parent) {
    auto* heading = new QLabel(text, parent);
    heading->setWordWrap(true);
    heading->setAlignment(Qt::AlignLeft | Qt::AlignBottom);
    return heading;
}

TakenMarks MarksFor(const ModeRecord& mode, NumberList list, std::size_t output) {
    TakenMarks marks;
    for (std::size_t panel = 0; panel < panelCount; ++panel) {
        if (const auto user = OutputUsingPanel(mode, list, panel, output))
            marks[panel] = static_cast<int>(*user) + 1;
    }
    return marks;
}

} // namespace

RemotePanelsPage::RemotePanelsPage(QWidget* parent) : QWidget(parent) {
    auto* grid = new QGridLayout(this);
    grid->setHorizontalSpacing(16);
    grid->setVerticalSpacing(10);
    int column = firstColumn;
    for (const ListColumn& list : listColumns) {
        grid->addWidget(Heading(tr(list.Caption), this), 0, column);
        grid->setColumnStretch(column, list.List == NumberList::InputSequence ? 3 : 4);
        ++column;
    }
    grid->addWidget(Heading(tr("Start Route"), this), 0, column);

    for (std::size_t output = 0; output < outputCount; ++output) {
        const int row = static_cast<int>(output) + 1;
        const QString number = QString::number(row);
        grid->addWidget(new QLabel(tr("Output %1").arg(number), this), row, 0);
        names_[output] = new NameLabel(this);
        grid->addWidget(names_[output], row, 1);
        column = firstColumn;
        for (const ListColumn& list : listColumns) {
            auto* box = new RemoteNumberPanel(this);
            box->setObjectName(ElementName(list.Name, output));
            box->SetMode(static_cast<int>(list.List));
            box->SetAccessibleTitle(tr(list.AccessibleName).arg(number));
            connect(box, &RemoteNumberPanel::Change, this, &RemotePanelsPage::ListEdited);
            connect(box, &RemoteNumberPanel::KeyTyped, this, &RemotePanelsPage::KeyTyped);
            connect(box, &RemoteNumberPanel::LinkClicked, this, &RemotePanelsPage::LinkClicked);
            (this->*list.Boxes)[output] = box;
            grid->addWidget(box, row, column++);
        }
        auto* check = new QCheckBox(tr("Use previous route"), this);
        check->setObjectName(ElementName("UsePreviousRouteCheck", output));
        check->setAccessibleName(tr("Output %1 uses the previous route").arg(number));
        connect(check, &QCheckBox::clicked, this, &RemotePanelsPage::RouteEdited);
        UsePreviousRouteCheck[output] = check;
        grid->addWidget(check, row, column);
    }
    auto* hint = MakeHint(tr("Inputs are 1 to 8, 0 is off. Remote panels are 1 to 9 and A to G. "
                             "Right-click a box to link outputs."),
                          this);
    grid->addWidget(hint, static_cast<int>(outputCount) + 1, 0, 1, column + 1);
    grid->setRowStretch(static_cast<int>(outputCount) + 2, 1);
}

void RemotePanelsPage::ShowNames(const Names& names) {
    for (std::size_t output = 0; output < outputCount; ++output)
        names_[output]->SetName(NameOf(names, NameKind::Output, output));
}

void RemotePanelsPage::RefreshTakenMarks(const ModeRecord& mode) {
    for (std::size_t output = 0; output < outputCount; ++output) {
        RemotePanelVolumes[output]->SetTakenMarks(MarksFor(mode, NumberList::VolumePanels, output));
        RemotePanelSelects[output]->SetTakenMarks(MarksFor(mode, NumberList::SelectorPanels, output));
    }
}

} // namespace vek
