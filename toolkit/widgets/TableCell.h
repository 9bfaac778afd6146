#pragma once

#include <QTableWidgetItem>

namespace GZ {

/// Roles of a cell of CStandardTable, beside those of Qt.
enum ETableRole : int {
    eSortValue = Qt::UserRole, ///< number to sort by
    eRowNumber, ///< running number of the row, in its first cell
    eColorKey, ///< of the text, in the theme
    eRecordKey, ///< key of the record in the row, in its first cell
};

/// Whether a cell sorts before another: numbers by size and before texts, texts by the user's language. Null, an empty
/// cell, comes first.
bool sortsBefore(const QTableWidgetItem *a, const QTableWidgetItem *b);

} // namespace GZ
