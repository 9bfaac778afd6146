#include "terminal/market/MarketDate.h"

#include "host/records/ExchangeZone.h"

namespace terminal {
namespace {

constexpr int kDaySeconds = 86400;
constexpr qint64 kDayMs = kDaySeconds * 1000LL;
constexpr qint64 kEpochJulianDay =
    2440588; // 1970-01-01; a constant, so that dates of other constants are right

qint64 floorDivide(qint64 number, qint64 by) {
    return number / by - (number % by < 0 ? 1 : 0);
}

} // namespace

int dayOf(const QDate &date) {
    return date.isValid()
               ? static_cast<int>((date.toJulianDay() - kEpochJulianDay) * kDaySeconds - GZ::kExchangeOffset)
               : 0;
}

QDate dateOf(int day) {
    return dateAt(day * 1000LL);
}

qint64 timeOf(const QDate &date, int minute) {
    return dayOf(date) * 1000LL + minute * 60000LL;
}

QDate dateAt(qint64 time) {
    return QDate::fromJulianDay(kEpochJulianDay + floorDivide(time + GZ::kExchangeOffset * 1000LL, kDayMs));
}

int minuteAt(qint64 time) {
    const qint64 local = time + GZ::kExchangeOffset * 1000LL;
    return static_cast<int>((local - floorDivide(local, kDayMs) * kDayMs) / 60000);
}

QDateTime marketDateTime(qint64 time) {
    return QDateTime::fromMSecsSinceEpoch(time, Qt::OffsetFromUTC, GZ::kExchangeOffset);
}

} // namespace terminal
