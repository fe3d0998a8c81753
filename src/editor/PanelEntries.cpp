#include "editor/PanelEntries.h"

#include <QStyledItemDelegate>

#include <algorithm>

namespace vek {

namespace {

constexpr int gap = 6; // between two entries, pixels

/// Draws entries that can be told from the lines they wrap into.
class EntryDelegate final : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QString displayText(const QVariant& value, const QLocale& locale) const override {
        constexpr QChar wordJoiner(0x2060); // else "->" is torn apart
        return QStyledItemDelegate::displayText(value, locale)
            .replace(QStringLiteral("->"), QString(u'-') + wordJoiner + u'>');
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        return QStyledItemDelegate::sizeHint(option, index) + QSize(0, gap);
    }
};

} // namespace

QListWidget* MakeEntries(const QString& accessibleName, QWidget* parent) {
    auto* entries = new QListWidget(parent);
    entries->setObjectName(QStringLiteral("Entries"));
    entries->setAccessibleName(accessibleName);
    entries->setWordWrap(true);
    entries->setItemDelegate(new EntryDelegate(entries));
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
