#include "pages/OverviewAccessible.h"

#include "pages/Overview.h"

#include <QAccessibleWidget>

#include <array>
#include <memory>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

// The headers are a row and a column of the table's children, but not of its cells.
constexpr int childColumns = static_cast<int>(outputCount) + 1;
constexpr int childRows = static_cast<int>(modeCount) + 1;

int ChildIndex(const OverviewPlace& place) {
    const int row = place.Mode ? static_cast<int>(*place.Mode) + 1 : 0;
    const int column = place.Output ? static_cast<int>(*place.Output) + 1 : 0;
    return row * childColumns + column;
}

OverviewPlace PlaceOf(int child) {
    OverviewPlace place;
    if (const int row = child / childColumns; row > 0)
        place.Mode = static_cast<std::size_t>(row - 1);
    if (const int column = child % childColumns; column > 0)
        place.Output = static_cast<std::size_t>(column - 1);
    return place;
}

class OverviewCellAccessible final : public QAccessibleInterface,
                                     public QAccessibleTableCellInterface,
                                     public QAccessibleActionInterface {
  public:
    OverviewCellAccessible(Overview& overview, const OverviewPlace& place)
        : overview_(overview), place_(place) {}

    bool isValid() const override { return true; }
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(&overview_);
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    void setText(QAccessible::Text, const QString&) override {}

    QString text(QAccessible::Text kind) const override {
        const QStringList words = overview_.WordsFor(place_);
        if (kind == QAccessible::Name)
            return words.first();
        return kind == QAccessible::Description ? words.mid(1).join(u"; "_s) : QString();
    }
    QRect rect() const override {
        const QRect place = overview_.RectOf(place_);
        return {overview_.viewport()->mapToGlobal(place.topLeft()), place.size()};
    }
    QAccessible::Role role() const override {
        if (place_.Mode && place_.Output)
            return QAccessible::Cell;
        return place_.Mode ? QAccessible::RowHeader : QAccessible::ColumnHeader;
    }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.readOnly = true;
        state.focusable = place_.Mode.has_value();
        state.selectable = state.focusable;
        state.selected = isSelected();
        state.focused = state.selected && overview_.hasFocus();
        state.invisible = !overview_.isVisible();
        state.offscreen = !overview_.viewport()->rect().intersects(overview_.RectOf(place_));
        return state;
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::TableCellInterface && place_.Mode && place_.Output)
            return static_cast<QAccessibleTableCellInterface*>(this);
        if (type == QAccessible::ActionInterface)
            return static_cast<QAccessibleActionInterface*>(this);
        return nullptr;
    }

    bool isSelected() const override {
        const OverviewPlace& current = overview_.Current();
        return current.Mode == place_.Mode && current.Output == place_.Output;
    }
    int rowIndex() const override { return static_cast<int>(*place_.Mode); }
    int columnIndex() const override { return static_cast<int>(*place_.Output); }
    int rowExtent() const override { return 1; }
    int columnExtent() const override { return 1; }
    QAccessibleInterface* table() const override { return parent(); }
    QList<QAccessibleInterface*> rowHeaderCells() const override {
        return {parent()->child(ChildIndex({place_.Mode, std::nullopt}))};
    }
    QList<QAccessibleInterface*> columnHeaderCells() const override {
        return {parent()->child(ChildIndex({std::nullopt, place_.Output}))};
    }

    QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }
    void doAction(const QString& action) override {
        if (action == pressAction()) {
            Q_EMIT overview_.Activated(place_);
        } else if (action == setFocusAction() && place_.Mode) {
            overview_.setFocus();
            overview_.SetCurrent(place_);
        }
    }

  private:
    Overview& overview_;
    OverviewPlace place_;
};

class OverviewAccessible final : public QAccessibleWidget, public QAccessibleTableInterface {
  public:
    explicit OverviewAccessible(Overview& overview)
        : QAccessibleWidget(&overview, QAccessible::Table), overview_(overview) {
        QObject::connect(&overview, &Overview::CurrentChanged, &overview, [&overview] {
            if (!overview.hasFocus() || !QAccessible::isActive())
                return;
            QAccessibleEvent focus(&overview, QAccessible::Focus);
            focus.setChild(ChildIndex(overview.Current()));
            QAccessible::updateAccessibility(&focus);
        });
    }
    ~OverviewAccessible() override {
        for (const QAccessible::Id id : cells_) {
            if (id != 0)
                QAccessible::deleteAccessibleInterface(id);
        }
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::TableInterface)
            return static_cast<QAccessibleTableInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    int childCount() const override { return childRows * childColumns; }
    QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= childCount())
            return nullptr;
        QAccessible::Id& id = cells_[static_cast<std::size_t>(index)];
        if (id == 0)
            id = QAccessible::registerAccessibleInterface(
                new OverviewCellAccessible(overview_, PlaceOf(index)));
        return QAccessible::accessibleInterface(id);
    }
    int indexOfChild(const QAccessibleInterface* cell) const override {
        const auto id = QAccessible::uniqueId(const_cast<QAccessibleInterface*>(cell));
        const auto found = std::find(cells_.begin(), cells_.end(), id);
        return found == cells_.end() ? -1 : static_cast<int>(found - cells_.begin());
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        for (int index = 0; index < childCount(); ++index) {
            if (child(index)->rect().contains(x, y))
                return child(index);
        }
        return nullptr;
    }
    QAccessibleInterface* focusChild() const override {
        return overview_.hasFocus() ? child(ChildIndex(overview_.Current())) : nullptr;
    }

    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }
    int columnCount() const override { return static_cast<int>(outputCount); }
    int rowCount() const override { return static_cast<int>(modeCount); }
    QAccessibleInterface* cellAt(int row, int column) const override {
        if (row < 0 || row >= rowCount() || column < 0 || column >= columnCount())
            return nullptr;
        return child((row + 1) * childColumns + column + 1);
    }
    QString columnDescription(int column) const override {
        return overview_.WordsFor({std::nullopt, static_cast<std::size_t>(column)}).first();
    }
    QString rowDescription(int row) const override {
        return overview_.WordsFor({static_cast<std::size_t>(row), std::nullopt}).first();
    }

    // One cell is current; it is what counts as selected.
    int selectedCellCount() const override { return overview_.Current().Output ? 1 : 0; }
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override { return overview_.Current().Output ? 0 : 1; }
    QList<QAccessibleInterface*> selectedCells() const override {
        if (selectedCellCount() == 0)
            return {};
        return {child(ChildIndex(overview_.Current()))};
    }
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override {
        return isRowSelected(CurrentRow()) ? QList<int>{CurrentRow()} : QList<int>();
    }
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int row) const override { return selectedRowCount() == 1 && row == CurrentRow(); }
    bool selectRow(int row) override {
        if (row < 0 || row >= rowCount())
            return false;
        overview_.SetCurrent({static_cast<std::size_t>(row), std::nullopt});
        return true;
    }
    bool selectColumn(int) override { return false; }
    bool unselectRow(int) override { return false; }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent*) override {}

  private:
    int CurrentRow() const { return static_cast<int>(overview_.Current().Mode.value_or(0)); }

    Overview& overview_;
    mutable std::array<QAccessible::Id, std::size_t{childRows}* childColumns> cells_ = {};
};

QAccessibleInterface* MakeOverviewAccessible(const QString&, QObject* object) {
    auto* overview = qobject_cast<Overview*>(object);
    return overview == nullptr ? nullptr : new OverviewAccessible(*overview);
}

} // namespace

void InstallOverviewAccessible() { QAccessible::installFactory(MakeOverviewAccessible); }

} // namespace vek
