#pragma once

#include <QDate>
#include <QTime>

namespace TC {

// The bounds of a stretch: seconds since the epoch, which a time edit shows as a time of day, with the date beside it.

/// Seconds since the epoch of a local date and time, 0 to 4294967295; an invalid date gives the largest.
qint64 secondOf(const QDate &date, const QTime &time);
/// The local date of seconds since the epoch.
QDate dateOf(qint64 second);
/// The local time of day of seconds since the epoch.
QTime clockOf(qint64 second);

} // namespace TC
