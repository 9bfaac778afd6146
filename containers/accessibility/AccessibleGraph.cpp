#include "containers/accessibility/AccessibleGraph.h"

#include "chartview/CRealtimeGraphWidget.h"
#include "containers/accessibility/AccessibleCell.h"

#include <utility>

namespace TC {

AccessibleGraph::AccessibleGraph(CRealtimeGraphWidget *graph) : QAccessibleWidget(graph, QAccessible::Table) {}

AccessibleGraph::~AccessibleGraph() {
    for (const QAccessible::Id id : std::exchange(mCells, {})) {
        QAccessible::deleteAccessibleInterface(id);
    }
}

PaneReading AccessibleGraph::reading() const {
    return PaneReading(qobject_cast<CRealtimeGraphWidget *>(object()));
}

void *AccessibleGraph::interface_cast(QAccessible::InterfaceType type) {
    return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface *>(this)
                                               : QAccessibleWidget::interface_cast(type);
}

QString AccessibleGraph::text(QAccessible::Text kind) const {
    const QString given = QAccessibleWidget::text(kind);
    if (!given.isEmpty()) {
        return given;
    }
    switch (kind) {
    case QAccessible::Name:
        return reading().name();
    case QAccessible::Value:
    case QAccessible::Description: {
        const PaneReading read = reading();
        const int row = read.rowOfCrossLine();
        return read.sentence(row >= 0 ? row : read.rows() - 1);
    }
    default:
        return {};
    }
}

int AccessibleGraph::columnCount() const {
    return reading().heads().size();
}

QString AccessibleGraph::rowDescription(int row) const {
    return reading().row(row).value(PaneReading::kTimeColumn);
}

QAccessibleInterface *AccessibleGraph::child(int index) const {
    const int columns = columnCount();
    return index < 0 ? nullptr : cellAt(index / columns, index % columns);
}

/// A point of the chart is no place of a cell.
QAccessibleInterface *AccessibleGraph::childAt(int /*x*/, int /*y*/) const {
    return nullptr;
}

int AccessibleGraph::indexOfChild(const QAccessibleInterface *child) const {
    const auto *cell = dynamic_cast<const AccessibleCell *>(child);
    return cell && cell->graph() == this ? cell->rowIndex() * columnCount() + cell->columnIndex() : -1;
}

QAccessibleInterface *AccessibleGraph::cellAt(int row, int column) const {
    if (row < 0 || row >= rowCount() || column < 0 || column >= columnCount()) {
        return nullptr;
    }
    const quint64 key = quint64(quint32(row)) << 32 | quint32(column);
    const auto known = mCells.constFind(key);
    if (known != mCells.constEnd()) {
        return QAccessible::accessibleInterface(*known);
    }
    auto *cell = new AccessibleCell(const_cast<AccessibleGraph *>(this), row, column);
    mCells.insert(key, QAccessible::registerAccessibleInterface(cell)); // which owns it
    return cell;
}

QList<int> AccessibleGraph::selectedRows() const {
    const int row = reading().rowOfCrossLine();
    return row >= 0 && row < rowCount() ? QList<int>{row} : QList<int>();
}

int AccessibleGraph::selectedCellCount() const {
    return selectedRows().isEmpty() ? 0 : columnCount();
}

QList<QAccessibleInterface *> AccessibleGraph::selectedCells() const {
    QList<QAccessibleInterface *> cells;
    for (const int row : selectedRows()) {
        for (int column = 0; column < columnCount(); ++column) {
            cells.append(cellAt(row, column));
        }
    }
    return cells;
}

} // namespace TC
