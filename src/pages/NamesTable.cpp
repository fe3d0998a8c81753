#include "pages/NamesTable.h"

#include "base/Windows1252.h"
#include "controls/KeyFilteredLineEdit.h"
#include "controls/TextConversion.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QStyledItemDelegate>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

constexpr int usualCharacters = 16; // of a name

struct Row {
    NameKind Kind;
    std::size_t Index;
};

Row RowOf(int number) {
    auto index = static_cast<std::size_t>(number);
    for (const NameKind kind : nameKinds) {
        if (index < CountOf(kind))
            return {kind, index};
        index -= CountOf(kind);
    }
    return {};
}

int RowCount() {
    std::size_t count = 0;
    for (const NameKind kind : nameKinds)
        count += CountOf(kind);
    return static_cast<int>(count);
}

/// Why the notes cannot take the name with this character, empty when they can.
QString Refusal(const std::string& notes, Row row, QChar character, const QString& rest) {
    if (!character.isPrint() || !ToWindows1252(character.unicode()))
        return NamesTable::tr("The notes cannot hold this character");
    const std::string with = WithName(notes, row.Kind, row.Index, ToBytes(rest + character));
    return with.size() <= notesLength
               ? QString()
               : NamesTable::tr("The notes, which keep the names, hold %1 characters").arg(notesLength);
}

class NameDelegate final : public QStyledItemDelegate {
  public:
    NameDelegate(NamesTable& table, const std::string& notes)
        : QStyledItemDelegate(&table), table_(table), notes_(notes) {}

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&,
                          const QModelIndex& index) const override {
        const auto filter = [this, row = RowOf(index.row())](QChar character, const QString& rest) {
            const QString refusal = Refusal(notes_, row, character, rest);
            if (auto* box = qobject_cast<KeyFilteredLineEdit*>(table_.focusWidget());
                box && !refusal.isEmpty())
                box->ShowHint(refusal);
            return refusal.isEmpty();
        };
        auto* box = new KeyFilteredLineEdit(filter, parent);
        box->setFrame(false);
        box->setAccessibleName(table_.verticalHeaderItem(index.row())->text());
        // Whoever takes over what is being typed gets this name as well. A box that is really left is the
        // view's business, which knows Escape.
        connect(box, &KeyFilteredLineEdit::Left, this, [this, box] {
            if (box->window()->focusWidget() == box)
                Q_EMIT const_cast<NameDelegate*>(this)->commitData(box);
        });
        connect(
            box, &KeyFilteredLineEdit::EnterPressed, &table_,
            [this] { table_.setCurrentCell(std::min(table_.currentRow() + 1, RowCount() - 1), 0); },
            Qt::QueuedConnection);
        return box;
    }

  private:
    NamesTable& table_;
    const std::string& notes_;
};

} // namespace

NamesTable::NamesTable(QWidget* parent) : QTableWidget(RowCount(), 1, parent) {
    setObjectName(u"NamesTable"_s);
    setAccessibleName(tr("Names"));
    setItemDelegate(new NameDelegate(*this, notes_));
    setEditTriggers(DoubleClicked | SelectedClicked | EditKeyPressed | AnyKeyPressed);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setHorizontalHeaderLabels({tr("Name")});
    horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    horizontalHeader()->setHighlightSections(false);
    verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    verticalHeader()->setHighlightSections(false);
    for (int row = 0; row < RowCount(); ++row) {
        const auto [kind, index] = RowOf(row);
        setVerticalHeaderItem(row, new QTableWidgetItem(FromConstant(NumberText(kind, index))));
        setItem(row, 0, new QTableWidgetItem);
    }
    setMinimumWidth(verticalHeader()->sizeHint().width() +
                    fontMetrics().averageCharWidth() * usualCharacters);
    setCurrentCell(0, 0, QItemSelectionModel::NoUpdate);
    connect(this, &QTableWidget::itemChanged, this,
            [this](const QTableWidgetItem* item) { TakeName(*item); });
}

void NamesTable::SetNotes(const std::string& notes) {
    notes_ = notes;
    const Names names(notes);
    const QSignalBlocker quiet(this);
    for (int row = 0; row < RowCount(); ++row) {
        const auto [kind, index] = RowOf(row);
        const QString name = FromBytes(names.Of(kind, index));
        const QString toolTip = Qt::mightBeRichText(name) ? Qt::convertFromPlainText(name) : name;
        QTableWidgetItem& shown = *item(row, 0);
        if (shown.text() != name)
            shown.setText(name);
        if (shown.toolTip() != toolTip)
            shown.setToolTip(toolTip);
    }
}

void NamesTable::TakeName(const QTableWidgetItem& item) {
    const auto [kind, index] = RowOf(item.row());
    const std::string name = ToBytes(item.text());
    if (name == Names(notes_).Of(kind, index))
        return;
    const std::string notes = WithName(notes_, kind, index, name);
    const bool fits = notes.size() <= notesLength;
    SetNotes(fits ? notes : std::string(notes_));
    if (fits)
        Q_EMIT Edited(notes);
}

void NamesTable::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Delete && event->key() != Qt::Key_Backspace) {
        QTableWidget::keyPressEvent(event);
        return;
    }
    currentItem()->setText({});
    for (QTableWidgetItem* selected : selectedItems())
        selected->setText({});
}

} // namespace vek
