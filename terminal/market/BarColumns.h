#pragma once

#include "terminal/market/RowTimes.h"
#include "terminal/market/TableHeadings.h"

#include <QString>

namespace terminal {

/// Where a file of minute bars has its columns, counted from 0; -1 for one that it does not have.
struct BarColumns : TimeColumns {
    char separator = ',';
    int count = 0;
    int symbol = -1;
    int exchange = -1;
    int open = -1;
    int high = -1;
    int low = -1;
    int close = -1;
    int volume = -1;
    int amount = -1;
    int average = -1; ///< average price of the day so far
    int previousClose = -1; ///< of the day before
};

/// Whether two headings, in lower case, are known for the same column.
bool isSameBarColumn(const QString &one, const QString &other);

/// Recognises the columns by their headings, in any order and letter case, English or Chinese; others are passed
/// over. Answers an empty text, or what is wrong: a heading that is missing or stands twice.
QString recogniseColumns(const TableHeadings &headings, BarColumns &columns);

} // namespace terminal
