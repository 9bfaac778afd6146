#pragma once

#include <QTableWidgetItem>

namespace GZ {

/// Roles of a cell of CStandardTable, beside those of Qt.
enum ETableRole : int {
    eSortValue = Qt::UserRole, ///< number to sort by
    eColorKey, ///< of the text, in the theme
    eRecordKey, ///< key of the record in the row, in its first cell
};

/// The first cell of a row, which knows where the row is to lie.
class RowHead : public QTableWidgetItem {
public:
    bool operator<(const QTableWidgetItem &other) const override {
        return mPlace < static_cast<const RowHead &>(other).mPlace;
    }

    int mNumber = 0; ///< running number of the row
    int mPlace = 0; ///< of the row, while the rows are put into order
};

/// Whether a cell sorts before another: numbers by size and before texts, texts by the user's language. Null, an empty
/// cell, comes first.
bool sortsBefore(const QTableWidgetItem *a, const QTableWidgetItem *b);

} // namespace GZ
