#include "terminal/market/TradedSpan.h"

#include "terminal/market/Compositions.h"
#include "terminal/market/MarketDate.h"

namespace terminal {
namespace {

constexpr int kNightBegins = 960; ///< 16:00: no day session goes on for longer
constexpr int kNightIsOver = 300; ///< 05:00

/// The trading day of a chart on which a stretch begins.
QDate tradingDayOf(const MarketCalendar &calendar, qint64 chartStart, qint64 now) {
    const QDate date = dateAt(chartStart);
    if (date == dateAt(now) && minuteAt(chartStart) >= kNightBegins) {
        return calendar.dayAt(now, true);
    }
    return calendar.isTradingDay(date) ? date : calendar.next(date);
}

/// The date on which the clock of a time comes in a trading day, for one with a night session on an evening.
QDate tradedDate(qint64 time, const QDate &day, const QDate &evening) {
    const int minute = minuteAt(time);
    return minute >= kNightBegins ? evening : minute < kNightIsOver ? evening.addDays(1) : day;
}

} // namespace

TradedSpan tradedSpan(const Catalogue &catalogue, const QString &key, qint64 chartStart, qint64 chartEnd,
                      qint64 now) {
    const Instrument *instrument = catalogue.find(key);
    const Instrument *axis = instrument ? instrument : axisFutureOf(catalogue, key);
    if (!axis || !axis->sessions.hasNight()) {
        return {dayOf(dateAt(chartStart)), chartStart, chartEnd};
    }
    const MarketCalendar calendar = catalogue.calendar(axis->market);
    const QDate day = tradingDayOf(calendar, chartStart, now);
    const QDate held = calendar.eveningBefore(day);
    const QDate evening = held.isNull() ? calendar.previous(day) : held; // where no night was held nothing lies
    const auto traded = [&](qint64 time) {
        const qint64 midnight = timeOf(dateAt(time), 0);
        return timeOf(tradedDate(time, day, evening), 0) + (time - midnight);
    };
    return {dayOf(day), traded(chartStart), traded(chartEnd)};
}

} // namespace terminal
