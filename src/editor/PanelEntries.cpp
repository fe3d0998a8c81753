#include "editor/PanelEntries.h"

#include <algorithm>

namespace vek {

QListWidget* MakeEntries(const QString& accessibleName, QWidget* parent) {
    auto* entries = new QListWidget(parent);
    entries->setObjectName(QStringLiteral("Entries"));
    entries->setAccessibleName(accessibleName);
    entries->setWordWrap(true);
    entries->setResizeMode(QListView::Adjust);
    entries->setIconSize(QSize(1, 1) * entries->fontMetrics().height());
    return entries;
}

void AddEntry(QListWidget& entries, const QString& text, const QIcon& icon) {
    entries.addItem(new QListWidgetItem(icon, text));
}

void FinishEntries(QListWidget& entries, const QString& whenEmpty, int formerRow) {
    if (entries.count() == 0) {
        auto* line = new QListWidgetItem(whenEmpty, &entries);
        line->setFlags(Qt::ItemIsEnabled);
        return;
    }
    entries.setCurrentRow(std::clamp(formerRow, 0, entries.count() - 1));
}

} // namespace vek
