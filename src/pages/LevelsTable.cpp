#include "pages/LevelsTable.h"

#include "base/Numbers.h"
#include "controls/Contrast.h"
#include "controls/KeyFilteredLineEdit.h"
#include "controls/TextConversion.h"
#include "controls/dBText.h"
#include "model/Levels.h"
#include "pages/LevelsTableModel.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QStyledItemDelegate>

#include <algorithm>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

constexpr int fewestNameCharacters = 12;
constexpr QSize cellPadding(10, 8); // logical pixels
constexpr int mostNameCharacters = 24;
constexpr double currentMark = 0.2; // of the highlight colour, behind the row of the current output

/// The text of a cell that is edited, by the rules of the boxes for levels.
class LevelEditor final : public KeyFilteredLineEdit {
  public:
    LevelEditor(int column, QWidget* parent)
        : KeyFilteredLineEdit([this](QChar key, const QString&) { return TakesKey(key); }, parent),
          column_(column) {}

    float Level() const {
        return LevelsTableModel::Shown(column_, static_cast<float>(LenientNumber(text().toStdString())));
    }

    void Step(float decibels) {
        setText(LevelText(LevelsTableModel::Shown(column_, Level() + decibels)));
        setModified(true);
        selectAll();
    }

  private:
    bool TakesKey(QChar key) {
        if (key == u'9')
            ShowHint(LevelsTable::tr("9 cannot be typed here: use the arrow keys"));
        return IsLevelKey(key);
    }

    int column_;
};

/// Edits levels, marks the current output and paints the names beside the numbers.
class LevelsDelegate final : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&,
                          const QModelIndex& index) const override {
        auto* box = new LevelEditor(index.column(), parent);
        box->setObjectName(u"LevelEditor"_s);
        box->setFrame(false);
        box->setAlignment(Qt::AlignRight);
        box->setAccessibleName(index.data(Qt::AccessibleTextRole).toString());
        // Also when a command counts what is typed without taking the focus.
        connect(box, &KeyFilteredLineEdit::Left, this, [this, box] {
            if (box->isModified())
                Q_EMIT const_cast<LevelsDelegate*>(this)->commitData(box);
        });
        return box;
    }

    void setEditorData(QWidget* editor, const QModelIndex& index) const override {
        auto* box = static_cast<LevelEditor*>(editor);
        box->SetFresh(index.data(Qt::EditRole).toString());
        box->setModified(false);
    }

    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override {
        const auto* box = static_cast<LevelEditor*>(editor);
        // A level that was only looked at keeps what half decibels cannot show.
        if (!box->isModified())
            return;
        model->setData(index, box->Level());
        setEditorData(editor, index);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::KeyPress) {
            auto* box = static_cast<LevelEditor*>(watched);
            const int key = static_cast<QKeyEvent*>(event)->key();
            if (key == Qt::Key_Up || key == Qt::Key_Down) {
                box->Step(key == Qt::Key_Up ? levelStep : -levelStep);
                return true;
            }
            if (key == Qt::Key_Escape)
                box->setModified(false);
        }
        return QStyledItemDelegate::eventFilter(watched, event);
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        return QStyledItemDelegate::sizeHint(option, index) + cellPadding;
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyledItemDelegate::paint(painter, option, index);
        const QString name = index.data(LevelsTableModel::nameRole).toString();
        if (name.isEmpty())
            return;
        QStyleOptionViewItem cell = option;
        initStyleOption(&cell, index);
        const QStyle& style = *cell.widget->style();
        const int number = QFontMetrics(cell.font).horizontalAdvance(cell.text + u"  "_s);
        const QRect place =
            style.subElementRect(QStyle::SE_ItemViewItemText, &cell, cell.widget).adjusted(number, 0, 0, 0);
        const bool chosen = cell.state.testFlag(QStyle::State_Selected);
        const QPalette& colours = cell.palette;
        painter->save();
        painter->setFont(option.font);
        painter->setPen(chosen ? colours.color(QPalette::HighlightedText)
                               : LighterText(colours.color(QPalette::Text), Background(cell)));
        style.drawItemText(painter, place, Qt::AlignLeft | Qt::AlignVCenter, colours, true,
                           option.fontMetrics.elidedText(name, Qt::ElideRight, place.width()));
        painter->restore();
    }

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        if (!index.data(LevelsTableModel::currentRole).toBool())
            return;
        option->backgroundBrush = Blended(option->palette.color(QPalette::Highlight),
                                          option->palette.color(QPalette::Base), currentMark);
        option->font.setBold(index.column() == LevelsTableModel::OutputColumn);
    }

  private:
    static QColor Background(const QStyleOptionViewItem& cell) {
        return cell.backgroundBrush.style() == Qt::NoBrush ? cell.palette.color(QPalette::Base)
                                                           : cell.backgroundBrush.color();
    }
};

} // namespace

LevelsTable::LevelsTable(QWidget* parent) : QTableView(parent), model_(new LevelsTableModel(this)) {
    setObjectName(u"LevelsTable"_s);
    setAccessibleName(tr("Levels of all outputs"));
    setModel(model_);
    setItemDelegate(new LevelsDelegate(this));
    setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
    setSelectionMode(ExtendedSelection);
    setTabKeyNavigation(false);
    setShowGrid(false);
    setWordWrap(false);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(false);
    horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    horizontalHeader()->setSectionResizeMode(LevelsTableModel::OutputColumn, QHeaderView::Stretch);
    connect(model_, &LevelsTableModel::Entered, this, &LevelsTable::EnterChosen);
    connect(this, &LevelsTable::doubleClicked, this, &LevelsTable::WantOutputOf);
}

void LevelsTable::Show(const std::array<OutputLevelRecord, outputCount>& levels, std::size_t current) {
    model_->Show(levels, current);
    Q_EMIT ChoiceChanged();
}

void LevelsTable::ShowNames(const Names& names) {
    model_->ShowNames(names);
    updateGeometry();
    Q_EMIT ChoiceChanged();
}

QString LevelsTable::OutputText(std::size_t output) const { return model_->OutputText(output); }

void LevelsTable::EnterChosen(const QModelIndex& cell, const LevelEntry& entry) {
    std::vector<std::size_t> outputs;
    const bool chosen = selectionModel()->isSelected(cell);
    for (int row = 0; row < model_->rowCount(); ++row) {
        const bool too = chosen && selectionModel()->isSelected(cell.siblingAtRow(row));
        if (row == cell.row() || too)
            outputs.push_back(static_cast<std::size_t>(row));
    }
    Q_EMIT Entered(outputs, entry);
}

std::optional<LevelsTable::Choice> LevelsTable::Chosen() const {
    const QModelIndex current = currentIndex();
    if (!current.isValid())
        return std::nullopt;
    Choice choice = {.Output = static_cast<std::size_t>(current.row()), .Captions = {}, .Entry = {}};
    for (int column = LevelsTableModel::Maximum; column < LevelsTableModel::ColumnCount; ++column) {
        const QModelIndex cell = current.siblingAtColumn(column);
        if (!selectionModel()->isSelected(cell))
            continue;
        const LevelEntry before = choice.Entry;
        model_->AddTo(choice.Entry, cell);
        if (choice.Entry != before)
            choice.Captions += model_->headerData(column, Qt::Horizontal).toString();
    }
    return choice.Captions.isEmpty() ? std::nullopt : std::optional(choice);
}

void LevelsTable::ApplyToAll() {
    const auto choice = Chosen();
    if (!choice)
        return;
    std::vector<std::size_t> others;
    for (std::size_t output = 0; output < outputCount; ++output) {
        if (output != choice->Output)
            others.push_back(output);
    }
    Q_EMIT Entered(others, choice->Entry);
}

void LevelsTable::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QTableView::selectionChanged(selected, deselected);
    Q_EMIT ChoiceChanged();
}

void LevelsTable::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    Q_EMIT ChoiceChanged();
}

QItemSelectionModel::SelectionFlags LevelsTable::selectionCommand(const QModelIndex& index,
                                                                  const QEvent* event) const {
    const auto command = QTableView::selectionCommand(index, event);
    // The number stands for all settings of its output.
    return index.column() == LevelsTableModel::OutputColumn ? command | QItemSelectionModel::Rows : command;
}

void LevelsTable::WantOutputOf(const QModelIndex& cell) {
    if (cell.isValid() && cell.column() == LevelsTableModel::OutputColumn)
        Q_EMIT OutputWanted(static_cast<std::size_t>(cell.row()));
}

void LevelsTable::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        WantOutputOf(currentIndex());
    QTableView::keyPressEvent(event);
}

void LevelsTable::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        updateGeometry();
}

int LevelsTable::SettingsWidth() const {
    int width = 0;
    for (int column = LevelsTableModel::Maximum; column < LevelsTableModel::ColumnCount; ++column)
        width += std::max(sizeHintForColumn(column), horizontalHeader()->sectionSizeHint(column));
    return width;
}

QSize LevelsTable::SizeForNames(int width) const {
    const int frame = 2 * frameWidth();
    const int rows = model_->rowCount() * std::max(verticalHeader()->sectionSizeHint(0), sizeHintForRow(0));
    const int least = std::max(width, horizontalHeader()->sectionSizeHint(LevelsTableModel::OutputColumn));
    return {frame + least + SettingsWidth(), frame + horizontalHeader()->sizeHint().height() + rows};
}

QSize LevelsTable::sizeHint() const {
    return SizeForNames(fontMetrics().averageCharWidth() * mostNameCharacters);
}

QSize LevelsTable::minimumSizeHint() const {
    return SizeForNames(fontMetrics().averageCharWidth() * fewestNameCharacters);
}

} // namespace vek
