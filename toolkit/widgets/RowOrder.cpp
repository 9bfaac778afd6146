#include "toolkit/widgets/RowOrder.h"

#include "toolkit/widgets/TableCell.h"

#include <QTableWidget>
#include <QVector>

#include <algorithm>
#include <numeric>

namespace GZ {
namespace {

RowHead *headOf(const QTableWidget &table, int row) {
    return static_cast<RowHead *>(table.item(row, 0));
}

} // namespace

void RowOrder::added(int first) {
    if (first == 0) {
        mNextNumber = 0;
    }
    for (int row = first; row < mTable.rowCount() && mTable.columnCount() > 0; ++row) {
        headOf(mTable, row)->mNumber = mNextNumber++;
    }
}

void RowOrder::sortBy(int column, Qt::SortOrder order) {
    mColumn = column < mTable.columnCount() ? std::max(column, -1) : -1;
    mOrder = order;
    apply();
}

void RowOrder::apply() {
    place(sortedRows());
}

void RowOrder::rearrange(const QList<int> &rows) {
    for (int at = 0; at < rows.size() && mTable.columnCount() > 0; ++at) {
        headOf(mTable, rows[at])->mNumber = at;
    }
    mNextNumber = rows.size();
    apply();
}

QList<int> RowOrder::sortedRows() const {
    QVector<int> rows(mTable.columnCount() > 0 ? mTable.rowCount() : 0);
    std::iota(rows.begin(), rows.end(), 0);
    std::sort(rows.begin(), rows.end(), [this](int a, int b) {
        if (mColumn >= 0) {
            const QTableWidgetItem *left = mTable.item(mOrder == Qt::AscendingOrder ? a : b, mColumn);
            const QTableWidgetItem *right = mTable.item(mOrder == Qt::AscendingOrder ? b : a, mColumn);
            if (sortsBefore(left, right) || sortsBefore(right, left)) {
                return sortsBefore(left, right);
            }
        }
        return headOf(mTable, a)->mNumber < headOf(mTable, b)->mNumber;
    });
    return rows.toList();
}

/// Puts the rows into another order: place 0 gets the row `rows[0]`. All move at once, in the model.
void RowOrder::place(const QList<int> &rows) {
    if (std::is_sorted(rows.begin(), rows.end())) {
        return;
    }
    for (int at = 0; at < rows.size(); ++at) {
        headOf(mTable, rows[at])->mPlace = at;
    }
    mTable.model()->sort(0, Qt::AscendingOrder);
}

} // namespace GZ
