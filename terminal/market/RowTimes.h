#pragma once

#include "terminal/market/RowFields.h"

#include <QString>

namespace terminal {

/// Where a table has its times, as columns counted from 0; -1 for one that it does not have.
struct TimeColumns {
    int dateTime = -1; ///< date and clock in one
    int date = -1; ///< both of these, or the one above
    int clock = -1;
    int tradingDay = -1; ///< the day that a night belongs to
};

/// The time of a row.
struct RowTime {
    int date = 0; ///< calendar date as yyyymmdd
    int tradingDay = 0; ///< the same; 0 when the file does not tell
    int clock = 0; ///< milliseconds since midnight; as digits while RowTimes::finish() has not been called
    bool digits = false;
};

/// Reads the times of a table's rows.
class RowTimes {
public:
    explicit RowTimes(const TimeColumns &columns) : mColumns(columns) {}

    /// Answers an empty text, or what is wrong.
    QString read(const RowFields &fields, RowTime &time);
    /// Turns a clock that stands as mere digits into milliseconds: HHMM, HHMMSS or HHMMSSmmm without the leading
    /// zeros, whichever the longest one read so far shows. Answers an empty text, or what is wrong.
    QString finish(RowTime &time) const;

private:
    TimeColumns mColumns;
    int mLargestClock = 0;
};

} // namespace terminal
