#include "toolkit/widgets/ReadyWidgets.h"

#include <QDialog>
#include <QTableWidget>

#include <algorithm>
#include <utility>

namespace GZ {

ReadyWidgets::ReadyWidgets(QTableWidget &table, Placer place) : mTable(table), mPlace(std::move(place)) {}

void ReadyWidgets::setMaker(int column, Maker maker, int alignment) {
    mColumns[column] = {std::move(maker), alignment};
}

void ReadyWidgets::make(int row, int column) {
    const auto maker = mColumns.constFind(column);
    if (maker == mColumns.constEnd() || row < 0 || row >= mTable.rowCount() || mTable.cellWidget(row, column)) {
        return;
    }
    if (QWidget *widget = maker->make(row)) {
        mPlace(row, column, widget, maker->alignment);
        mMade.append(mTable.model()->index(row, column));
    }
}

void ReadyWidgets::update() {
    if (mColumns.isEmpty()) {
        return;
    }
    const int first = std::max(mTable.rowAt(0), 0);
    const int lastSeen = mTable.rowAt(mTable.viewport()->height() - 1);
    const int end = std::min(std::max(first + kReadyRows, lastSeen + 1), mTable.rowCount());
    endFarFrom(first, end);
    for (int row = first; row < end; ++row) {
        for (auto column = mColumns.constBegin(); column != mColumns.constEnd(); ++column) {
            make(row, column.key());
        }
    }
}

/// A cell that has a window of its own open stays.
void ReadyWidgets::endFarFrom(int first, int end) {
    const auto isOver = [this, first, end](const QPersistentModelIndex &cell) {
        const QWidget *widget = cell.isValid() ? mTable.cellWidget(cell.row(), cell.column()) : nullptr;
        if (!widget) {
            return true;
        }
        const bool isFar = cell.row() < first - kReadyRows || cell.row() >= end + kReadyRows;
        if (!isFar || widget->findChild<QDialog *>()) {
            return false;
        }
        mTable.removeCellWidget(cell.row(), cell.column());
        return true;
    };
    mMade.erase(std::remove_if(mMade.begin(), mMade.end(), isOver), mMade.end());
}

} // namespace GZ
