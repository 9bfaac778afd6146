#pragma once

#include <QAccessible>

namespace TC {

class AccessibleGraph;

/// A cell of a day graph's table: a time, or the value of a line at it. It lives as long as its table, which it is made by.
class AccessibleCell : public QAccessibleInterface, public QAccessibleTableCellInterface {
public:
    AccessibleCell(AccessibleGraph *table, int row, int column);

    const AccessibleGraph *graph() const { return mTable; }

    bool isValid() const override;
    QObject *object() const override { return nullptr; }
    QWindow *window() const override;
    QAccessibleInterface *parent() const override;
    QAccessibleInterface *child(int /*index*/) const override { return nullptr; }
    QAccessibleInterface *childAt(int /*x*/, int /*y*/) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface * /*child*/) const override { return -1; }
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text /*kind*/, const QString & /*text*/) override {}
    QRect rect() const override;
    QAccessible::Role role() const override { return QAccessible::Cell; }
    QAccessible::State state() const override;
    void *interface_cast(QAccessible::InterfaceType type) override;

    bool isSelected() const override;
    QList<QAccessibleInterface *> columnHeaderCells() const override { return {}; }
    QList<QAccessibleInterface *> rowHeaderCells() const override;
    int columnIndex() const override { return mColumn; }
    int rowIndex() const override { return mRow; }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface *table() const override;

private:
    AccessibleGraph *mTable;
    int mRow;
    int mColumn;
};

} // namespace TC
