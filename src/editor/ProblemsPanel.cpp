#include "editor/ProblemsPanel.h"

#include "editor/ConfigWatch.h"
#include "editor/PanelEntries.h"

#include <QStyle>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

struct SeverityLook {
    QString Word;
    QStyle::StandardPixmap Icon;
};

SeverityLook LookOf(Severity severity) {
    switch (severity) {
    case Severity::Error:
        return {ProblemsPanel::tr("Error"), QStyle::SP_MessageBoxCritical};
    case Severity::Warning:
        return {ProblemsPanel::tr("Warning"), QStyle::SP_MessageBoxWarning};
    case Severity::Note:
        break;
    }
    return {ProblemsPanel::tr("Note"), QStyle::SP_MessageBoxInformation};
}

} // namespace

ProblemsPanel::ProblemsPanel(ConfigWatch& watch, const PlaceFinder& places, QWidget* parent)
    : QDockWidget(tr("Problems"), parent), watch_(watch), places_(places),
      entries_(MakeEntries(tr("Problems"), this)) {
    setObjectName(u"ProblemsPanel"_s);
    setWidget(entries_);
    connect(&watch, &ConfigWatch::Looked, this, [this] {
        if (isVisible())
            Fill();
    });
    connect(entries_, &QListWidget::itemActivated, this,
            [this](const QListWidgetItem* item) { GoTo(entries_->row(item)); });
}

void ProblemsPanel::showEvent(QShowEvent* event) {
    Fill();
    QDockWidget::showEvent(event);
}

void ProblemsPanel::Fill() {
    const int row = entries_->currentRow();
    entries_->clear();
    shown_ = watch_.Found();
    for (const Finding& finding : shown_) {
        const auto [word, icon] = LookOf(finding.Level);
        AddEntry(*entries_, word + u": "_s + QString::fromStdString(finding.Text),
                 style()->standardIcon(icon));
    }
    FinishEntries(*entries_, tr("No problems"), row);
}

void ProblemsPanel::GoTo(int row) {
    if (static_cast<std::size_t>(row) >= shown_.size())
        return;
    const FieldPlace place = shown_[static_cast<std::size_t>(row)].Place;
    if (places_.Reachable(place))
        places_.Enter(place);
    else
        Q_EMIT Told(tr("Its page is disabled while online"));
}

} // namespace vek
