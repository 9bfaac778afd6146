#pragma once

#include "terminal/market/BarColumns.h"
#include "terminal/market/RowTimes.h"

#include <QString>

#include <string_view>

namespace terminal {

/// One row of a file of minute bars, as it stands.
struct BarRow {
    int line = 0; ///< of the file, from 1
    int date = 0; ///< calendar date as yyyymmdd
    int tradingDay = 0; ///< the same; 0 when the file does not tell
    int clock = 0; ///< minute since midnight; as digits while BarRowParser::finish() has not been called
    bool digits = false;
    double open = 0.0; ///< 0 when the source does not know it
    double high = 0.0;
    double low = 0.0;
    double close = 0.0;
    double volume = 0.0;
    double amount = 0.0; ///< 0 without that column
    double average = 0.0; ///< 0 without that column
    double previousClose = 0.0; ///< of the day before; 0 when the file does not tell
};

/// Reads rows, one line at a time, without looking at any other source of knowledge.
class BarRowParser {
public:
    explicit BarRowParser(const BarColumns &columns) : mColumns(columns), mTimes(columns) {}

    /// Reads a line without its end. Answers an empty text, or what is wrong with it.
    QString parse(std::string_view line, BarRow &row);
    /// Texts of the last row, empty without that column.
    std::string_view symbol() const { return mFields.at(mColumns.symbol); }
    std::string_view exchange() const { return mFields.at(mColumns.exchange); }

    /// Turns clocks that stand as mere digits into minutes: HHMM, HHMMSS or HHMMSSmmm without the leading zeros,
    /// whichever the longest one of the file shows. Answers an empty text, or what is wrong with the clock of `row`.
    QString finish(BarRow &row) const;

private:
    static QString takeMinute(const RowTime &time, BarRow &row);

    BarColumns mColumns;
    RowFields mFields;
    RowTimes mTimes;
};

} // namespace terminal
