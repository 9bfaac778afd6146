#pragma once

#include "terminal/market/BarRowParser.h"
#include "terminal/market/DatedSessions.h"
#include "terminal/market/LeftOutRows.h"
#include "terminal/market/MarketCalendar.h"
#include "terminal/market/MinuteBar.h"

#include <QDate>
#include <QMap>
#include <QVector>

#include <vector>

namespace terminal {

/// How the rows of one instrument are to be read.
struct BarReading {
    DatedSessions sessions;
    MarketCalendar calendar;
    bool labelAtStart = false;
    double volumeUnit = 1.0; ///< shares or contracts in one unit of the file's volume
    bool hasAverage = false;
};

/// The bars of one instrument, by trading day.
struct BarDays {
    QMap<QDate, MinuteBars> days;
    QMap<QDate, double> previousCloses; ///< of the days before these, where the file tells them
    QMap<QDate, DaySessions> sessions; ///< of these days
    LeftOutRows repeated; ///< whose minute stands before with the same values
    QVector<QDate> unknownDays; ///< trading days that the calendar does not have
    QVector<QDate> restDays; ///< weekdays that a night's bars show to be none
};

/// The date of a number such as 20180102.
QDate calendarDate(int yyyymmdd);
/// The number of a date.
int dateNumber(const QDate &date);

/// Puts rows on their trading days: a night belongs to the day that the file tells, else to the next day that has bars
/// of a day session, or to the next one of the calendar when the file ends before. Rows of the same minute have to be equal, and count once. Sorts
/// `rows`.
BarFault sortIntoDays(std::vector<BarRow> &rows, const BarReading &reading, BarDays &result);

/// Fills in the average prices of a day that its source did not tell (0): money by volume when there is money, prices
/// weighed by volume otherwise.
void fillAverages(MinuteBars &bars);

} // namespace terminal
