#pragma once

#include "terminal/market/RowTimes.h"
#include "terminal/market/TableHeadings.h"

#include <QByteArray>
#include <QString>

namespace terminal {

/// What a file of market data holds.
enum class ImportKind { Bars, Trades, Snapshots };

/// Tells by the headings what a file holds; a file of neither kind of ticks counts as one of bars.
ImportKind kindOfTable(const TableHeadings &headings);

/// Where a file of ticks has its columns, counted from 0; -1 for one that it does not have.
struct TickColumns : TimeColumns {
    ImportKind kind = ImportKind::Trades;
    char separator = ',';
    int count = 0;
    int symbol = -1;
    int exchange = -1;
    int price = -1; ///< of the trade
    int last = -1; ///< latest price of a snapshot
    int volume = -1; ///< of the trade; of the day so far in a snapshot
    int amount = -1; ///< the same in money
    int totalVolume = -1; ///< of the day so far
    int totalAmount = -1;
    int high = -1; ///< of the day so far
    int low = -1;
    int previousClose = -1;
};

/// Whether two headings, in lower case, are known for the same column.
bool isSameTickColumn(const QString &one, const QString &other);

/// Recognises the columns by their headings, in any order and letter case, English or Chinese; others are passed
/// over. Afterwards `price`, `volume` and `amount` are the columns to read, whatever the kind. Answers an empty text,
/// or what is wrong: a heading that is missing or stands twice.
QString recogniseTickColumns(const TableHeadings &headings, TickColumns &columns);

} // namespace terminal
