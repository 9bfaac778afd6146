#pragma once

/// \file
/// Text and time helpers of the toolkit.

#include "host/Export.h"
#include "host/records/Enumerations.h"
#include "host/records/ExchangeZone.h"

#include <QDateTime>
#include <QString>

#include <string>

namespace GZ {

/// A number as text with a fixed count of decimals.
///
/// `flags` are bits of utils::EFormatNumberFlag: eFormatPercent multiplies by 100 and appends "%";
/// eFormatScaled divides by 10000, 1e8 or 1e12, from those magnitudes on (with a tolerance of 1e-5), and
/// appends "万", "亿" or "万亿". `grouped` puts commas between groups of three digits. A number that is not
/// finite, or is the unset value, gives `fallback`. Negative zero is written without its sign. `decimals` is
/// held to 0..10.
TIMESHARE_EXPORT QString formatDoubleNumber(long double number, int decimals, int flags, bool grouped,
                                            const QString &fallback);

/// Decimals of a value beside a graph: those of `precision`, but at least 2 where eFormatScaled writes the value in
/// units of 万 or larger.
TIMESHARE_EXPORT int getGraphShowTick(double value, int precision);

/// UTF-8 text as QString.
inline QString sToQs(const std::string &text) {
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

/// Whether two names are the same but for their case. Mostly they are to the letter, or not even of the same length.
template <class Name> bool isSameName(const QString &name, const Name &other) {
    return name.size() == other.size() && (name == other || name.compare(other, Qt::CaseInsensitive) == 0);
}

/// Seconds since the epoch as local date and time.
inline QDateTime secondToQDateTime(qint64 seconds) {
    return QDateTime::fromSecsSinceEpoch(seconds);
}

/// Seconds since the epoch as texts of the bus and of files have them, in 32 bits; 4294967295 for a time that is invalid
/// or does not fit.
inline uint secondsOf(const QDateTime &moment) {
    const qint64 seconds = moment.isValid() ? moment.toSecsSinceEpoch() : -1;
    return seconds >= 0 && seconds <= 0xFFFFFFFF ? static_cast<uint>(seconds) : ~0U;
}

/// Calendar day of the exchange (UTC+8), whatever the zone of the machine.
inline QDate exchangeDate(qint64 seconds) {
    return QDateTime::fromSecsSinceEpoch(seconds, Qt::OffsetFromUTC, kExchangeOffset).date();
}

} // namespace GZ

namespace utils {

/// Local clock time of milliseconds since the epoch, as the number HHMMSS.
TIMESHARE_EXPORT int millisecondsToTime(qint64 milliseconds);

} // namespace utils
