#include "chartdata/RequestTimes.h"

namespace TC {
namespace {

constexpr qint64 kTwoHours = 7200000;
constexpr qint64 kFixedPriceStart = 54300000; // 15:05:00
constexpr qint64 kFixedPriceEnd = 55800000; // 15:30:00
constexpr qint64 kNoEnd = 2147483632000;

bool isUserIndex(const QString &market) {
    return market == QLatin1String("CD");
}

EDataDemand demandOf(qint64 end, qint64 threshold) {
    return end > threshold ? eHistoryAndStream : eHistoryOnly;
}

} // namespace

QString calendarMarket(const QString &market) {
    return isUserIndex(market) ? QStringLiteral("SH") : market;
}

RequestTimes requestTimes(const QString &market, qint64 start, qint64 end, int lastTradingDay) {
    const qint64 last = lastTradingDay * 1000LL;
    const qint64 threshold = market == QLatin1String("YSWP") ? last + kTwoHours : last;
    RequestTimes times{{start, 0}, {end, 0}, demandOf(end, threshold)};
    if (isUserIndex(market)) {
        times.start = {last, 0};
        times.end = {kNoEnd, 0};
    }
    return times;
}

RequestTimes fixedPriceTimes(qint64 start, qint64 end, int lastTradingDay) {
    return {{start + kFixedPriceStart, 0}, {start + kFixedPriceEnd, 0}, demandOf(end, lastTradingDay * 1000LL)};
}

} // namespace TC
