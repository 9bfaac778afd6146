#pragma once

#include <QDate>
#include <QDateTime>

namespace terminal {

// Dates and clock minutes of the exchange, which is at UTC+8 all year, whatever the zone of the process. A day is a
// count of seconds since the epoch at its midnight, a minute is counted from midnight (570 is 09:30, 1440 is 24:00),
// and a time is in milliseconds since the epoch.

constexpr int kMinuteLength = 60000; ///< milliseconds

/// The day of a calendar date; 0 for a null date.
int dayOf(const QDate &date);
/// The calendar date of a day.
QDate dateOf(int day);
/// The time of a clock minute of a date; 1440 and more lie on the dates that follow.
qint64 timeOf(const QDate &date, int minute);
/// The calendar date of a time.
QDate dateAt(qint64 time);
/// The clock minute of a time, 0 to 1439.
int minuteAt(qint64 time);
/// A time as date and clock of the exchange.
QDateTime marketDateTime(qint64 time);

} // namespace terminal
