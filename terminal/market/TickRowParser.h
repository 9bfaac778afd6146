#pragma once

#include "terminal/market/RowTimes.h"
#include "terminal/market/TickColumns.h"

#include <QString>

#include <string_view>

namespace terminal {

/// One row of a file of ticks, as it stands but for noise in the prices.
struct TickRow {
    int line = 0; ///< of the file, from 1
    RowTime time;
    double price = 0.0; ///< 0 while a snapshot's day has no trade
    double volume = 0.0; ///< of the trade, or of the day so far
    double amount = 0.0; ///< the same; 0 without that column
    double high = 0.0; ///< of the day so far; 0 without that column
    double low = 0.0;
    double previousClose = 0.0; ///< of the day before; 0 when the file does not tell
};

/// Reads rows, one line at a time, without looking at any other source of knowledge.
class TickRowParser {
public:
    explicit TickRowParser(const TickColumns &columns) : mColumns(columns), mTimes(columns) {}

    /// Reads a line without its end. Answers an empty text, or what is wrong with it.
    QString parse(std::string_view line, TickRow &row);
    /// Texts of the last row, empty without that column.
    std::string_view symbol() const { return mFields.at(mColumns.symbol); }
    std::string_view exchange() const { return mFields.at(mColumns.exchange); }

    /// Turns a clock of mere digits into milliseconds, when all rows have been read. Answers an empty text, or what is
    /// wrong with it.
    QString finish(TickRow &row) const { return mTimes.finish(row.time); }

private:
    TickColumns mColumns;
    RowTimes mTimes;
    RowFields mFields;
};

} // namespace terminal
