#include "terminal/market/DatedSessions.h"

#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketSessions.h"
#include "terminal/market/NightHours.h"

#include <algorithm>

namespace terminal {
namespace {

constexpr int kEveningLine = 1080; ///< 18:00: futures that trade later trade for the day that follows
constexpr int kMorningLine = 300; ///< 05:00: those that trade earlier as well
constexpr int kShortestBreak = 15; ///< minutes
constexpr int kEndOfDay = 1440;

} // namespace

DatedSessions DatedSessions::of(const Instrument &instrument, const MarketCalendar &calendar) {
    DatedSessions dated(instrument.sessions);
    dated.mExchange = exchangeOf(instrument.market);
    dated.mProduct = instrument.product.isEmpty() ? productOfCode(instrument.code) : instrument.product;
    dated.mCalendar = calendar;
    const SessionQuery query{instrument.market, instrument.code, dated.mProduct, instrument.types};
    dated.mIsDated = isFuturesMarket(instrument.market) && instrument.sessions == marketSessions(query) &&
                     nightEndOn(dated.mExchange, dated.mProduct, QDate(2000, 1, 1)).has_value();
    return dated;
}

DatedSessions DatedSessions::anyTime(const QString &market) {
    if (isFuturesMarket(market)) {
        return DaySessions(
            {{kEveningLine + 1, kEndOfDay}, {1, kMorningLine}, {kMorningLine + 1, kEveningLine}});
    }
    if (market == QLatin1String("YSWP")) {
        return DaySessions({{kMorningLine + 1, kEndOfDay}, {1, kMorningLine}});
    }
    return DaySessions({{1, kEndOfDay}});
}

const DaySessions &DatedSessions::at(const QDate &date, int minute) const {
    if (!mIsDated) {
        return mAlways;
    }
    return minute > kEveningLine    ? ofNight(date)
           : minute <= kMorningLine ? ofNight(date.addDays(-1))
                                    : ofDay(date);
}

const DaySessions &DatedSessions::ofDay(const QDate &day) const {
    return mIsDated ? ofNight(mCalendar.eveningBefore(day)) : mAlways;
}

const DaySessions &DatedSessions::ofNight(const QDate &evening) const {
    if (!mIsDated) {
        return mAlways;
    }
    if (!mIsKnown || evening != mEvening) {
        const int end = evening.isNull() ? 0 : nightEndOn(mExchange, mProduct, evening).value_or(0);
        mSessions = commoditySessions(end);
        mEvening = evening;
        mIsKnown = true;
    }
    return mSessions;
}

DaySessions observedSessions(const QDate &day, const std::vector<qint64> &times) {
    DaySessions::Table table;
    QDate dateBefore;
    bool isNight = false;
    for (const qint64 time : times) {
        const QDate date = dateAt(time - kMinuteLength); // 24:00 is of the date that it ends
        const int minute = static_cast<int>((time - timeOf(date, 0)) / kMinuteLength);
        const bool goesOn =
            !table.isEmpty() && date == dateBefore && minute - table.last().second <= kShortestBreak;
        if (goesOn) {
            table.last().second = minute;
        } else {
            table.append(qMakePair(minute, minute));
        }
        isNight = isNight || date < day;
        dateBefore = date;
    }
    if (!table.isEmpty() && !isNight) {
        // A day that begins late would be taken for one with a night.
        table.first().first = std::min(table.first().first, 959);
    }
    return areApart(table) ? DaySessions(table) : DaySessions({{1, kEndOfDay}});
}

} // namespace terminal
