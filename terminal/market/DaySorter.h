#pragma once

#include "terminal/market/BarDays.h"

#include <set>

namespace terminal {

/// Sorts the rows of one instrument into its days, a stretch of time after the other, so that the days that are behind can
/// go elsewhere meanwhile. All rows are checked, in any order, before the first are added.
class DaySorter {
public:
    /// Both have to stay.
    DaySorter(const BarReading &reading, BarDays &result) : mReading(reading), mResult(result) {}
    /// One that takes for checked what another has checked.
    DaySorter(const DaySorter &other, BarDays &result)
        : mReading(other.mReading), mResult(result), mDaysWithRows(other.mDaysWithRows) {}

    /// Checks that a row's minute is traded, and notes its day.
    BarFault check(const BarRow &row);
    /// Puts rows on their days and sorts them; they are later than those that were added before.
    BarFault add(std::vector<BarRow> &rows);
    /// Completes the days that rows to come cannot be of, or all of them at the end, with their sessions and what the
    /// calendar does not know of them. Answers them in order.
    std::vector<QDate> completePastDays();
    std::vector<QDate> completeDays() { return completeDaysBefore(QDate()); }

    /// When a row's minute ends, as a time.
    qint64 timeOfRow(BarRow row) const;

private:
    void moveToEnd(BarRow &row) const;
    std::optional<DaySessions::Place> placeOf(int date, int minute) const;
    QString hint(const BarRow &row) const;
    BarFault take(const BarRow &row, const BarRow &before);
    BarFault enterSession(const BarRow &row);
    BarFault enterNight(const BarRow &row, const QDate &evening, QDate &day);
    bool follows(const QDate &day, const QDate &evening) const;
    QDate dayOfNight(const QDate &evening);
    std::vector<QDate> completeDaysBefore(const QDate &end);

    const BarReading &mReading;
    BarDays &mResult;
    std::set<int> mDaysWithRows;
    int mLastChecked = 0; ///< the one of these that was met last
    QMap<QDate, QDate> mNights; ///< evening by trading day
    BarRow mBefore; ///< the last row taken; none with a date of 0
    // The session that it was in:
    int mDate = 0;
    int mDateEnd = 0; ///< minute after its last one
    int mTradingDay = 0;
    qint64 mMidnight = 0;
    MinuteBars *mBars = nullptr;
    QDate mDay;
    double mPreviousClose = 0.0; ///< before that day; 0 as long as it is not told
};

} // namespace terminal
