#pragma once

#include <QList>
#include <Qt>

class QTableWidget;

namespace GZ {

/// The order of a table's rows: that in which they were added, or by a column, where equal rows keep it. A row that
/// moves takes along its widgets and that it is selected. Each row has a RowHead in its first column.
class RowOrder {
public:
    explicit RowOrder(QTableWidget &table) : mTable(table) {}

    int column() const { return mColumn; } ///< -1 for the order in which they were added
    Qt::SortOrder order() const { return mOrder; }

    /// Rows from `first` on were added at the end.
    void added(int first);
    /// Sorts by a column; one that the table does not have is none.
    void sortBy(int column, Qt::SortOrder order);
    void forget() { mColumn = -1; } ///< the sorting; the rows stay where they are
    /// Sorts rows in that came since.
    void apply();
    /// From now on the rows were added in another order: place 0 gets the row `rows[0]`.
    void rearrange(const QList<int> &rows);

private:
    QList<int> sortedRows() const;
    void place(const QList<int> &rows);

    QTableWidget &mTable;
    int mColumn = -1;
    Qt::SortOrder mOrder = Qt::AscendingOrder;
    int mNextNumber = 0; ///< of the next row that is added
};

} // namespace GZ
