#include "containers/accessibility/AccessibleCell.h"

#include "containers/accessibility/AccessibleGraph.h"

namespace TC {

AccessibleCell::AccessibleCell(AccessibleGraph *table, int row, int column)
    : mTable(table), mRow(row), mColumn(column) {}

bool AccessibleCell::isValid() const {
    return mTable->isValid() && mRow < mTable->rowCount() && mColumn < mTable->columnCount();
}

QWindow *AccessibleCell::window() const {
    return mTable->window();
}

QAccessibleInterface *AccessibleCell::parent() const {
    return mTable;
}

QAccessibleInterface *AccessibleCell::table() const {
    return mTable;
}

/// The time of a row is described by all that the row tells, a value by what it is.
QString AccessibleCell::text(QAccessible::Text kind) const {
    const PaneReading reading = mTable->reading();
    switch (kind) {
    case QAccessible::Name:
    case QAccessible::Value:
        return reading.row(mRow).value(mColumn);
    case QAccessible::Description:
        return mColumn == PaneReading::kTimeColumn ? reading.sentence(mRow) : reading.heads().value(mColumn);
    default:
        return {};
    }
}

/// The column of pixels in which the minutes share the width of the graph.
QRect AccessibleCell::rect() const {
    const QRect graph = mTable->rect();
    const int rows = qMax(mTable->rowCount(), 1);
    const int left = graph.width() * mRow / rows;
    return {graph.left() + left, graph.top(), qMax(graph.width() * (mRow + 1) / rows - left, 1),
            graph.height()};
}

QAccessible::State AccessibleCell::state() const {
    QAccessible::State state;
    const QAccessible::State ofTable = mTable->state();
    state.invisible = ofTable.invisible;
    state.disabled = ofTable.disabled;
    state.readOnly = true;
    state.selectable = true;
    state.selected = isSelected();
    state.focusable = true;
    state.active = isSelected();
    return state;
}

void *AccessibleCell::interface_cast(QAccessible::InterfaceType type) {
    return type == QAccessible::TableCellInterface ? static_cast<QAccessibleTableCellInterface *>(this)
                                                   : nullptr;
}

bool AccessibleCell::isSelected() const {
    return mTable->isRowSelected(mRow);
}

QList<QAccessibleInterface *> AccessibleCell::rowHeaderCells() const {
    QAccessibleInterface *time = mTable->cellAt(mRow, PaneReading::kTimeColumn);
    return time ? QList<QAccessibleInterface *>{time} : QList<QAccessibleInterface *>();
}

} // namespace TC
