#pragma once

#include "containers/accessibility/PaneReading.h"

#include <QAccessibleWidget>
#include <QHash>

namespace TC {

/// A day graph for assistive technology: a table of PaneReading, a row a minute. Its value, and what describes it, is the
/// minute under the cross line, else the newest. Cells are made as they are asked for and stay until the graph goes. Rows are
/// selected by the cross line alone.
class AccessibleGraph : public QAccessibleWidget, public QAccessibleTableInterface {
public:
    explicit AccessibleGraph(CRealtimeGraphWidget *graph);
    ~AccessibleGraph() override;
    AccessibleGraph(const AccessibleGraph &) = delete;
    AccessibleGraph &operator=(const AccessibleGraph &) = delete;

    /// Without rows while the graph goes.
    PaneReading reading() const;

    void *interface_cast(QAccessible::InterfaceType type) override;
    QString text(QAccessible::Text kind) const override;
    int childCount() const override { return rowCount() * columnCount(); }
    QAccessibleInterface *child(int index) const override;
    QAccessibleInterface *childAt(int x, int y) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;

    QAccessibleInterface *caption() const override { return nullptr; }
    QAccessibleInterface *summary() const override { return nullptr; }
    QAccessibleInterface *cellAt(int row, int column) const override;
    int rowCount() const override { return reading().rows(); }
    int columnCount() const override;
    QString columnDescription(int column) const override { return reading().heads().value(column); }
    QString rowDescription(int row) const override;
    int selectedCellCount() const override;
    QList<QAccessibleInterface *> selectedCells() const override;
    int selectedColumnCount() const override { return 0; }
    QList<int> selectedColumns() const override { return {}; }
    int selectedRowCount() const override { return selectedRows().size(); }
    QList<int> selectedRows() const override;
    bool isColumnSelected(int /*column*/) const override { return false; }
    bool isRowSelected(int row) const override { return selectedRows().contains(row); }
    bool selectRow(int /*row*/) override { return false; }
    bool selectColumn(int /*column*/) override { return false; }
    bool unselectRow(int /*row*/) override { return false; }
    bool unselectColumn(int /*column*/) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent * /*event*/) override {}

private:
    mutable QHash<quint64, QAccessible::Id> mCells; ///< by row and column
};

} // namespace TC
