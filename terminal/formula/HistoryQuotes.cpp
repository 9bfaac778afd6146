#include "terminal/formula/HistoryQuotes.h"

#include "host/services/CHostClock.h"
#include "terminal/market/MarketDate.h"

#include <algorithm>
#include <limits>

namespace terminal {
namespace {

constexpr int kTransactions = 1806; ///< kind of data
constexpr int kSecondsOfDay = 86400;
constexpr int kLongestRange = 3660; ///< days looked at for one range
constexpr int kLongestWeekend = 15; ///< calendar days that a night session may lie before its trading day

std::shared_ptr<quoter::QuoterBase> quoteOf(qint64 time, double price) {
    const auto quote = std::make_shared<quoter::QuoterBase>();
    quote->mTime = time;
    quote->mPrice = price;
    return quote;
}

/// The day of a time, held to the range of a 32-bit count of seconds, so that any number makes a day.
int heldDay(qint64 milliseconds) {
    return dayOf(dateAt(std::clamp<qint64>(milliseconds, 0, std::numeric_limits<int>::max() * 1000LL)));
}

} // namespace

HistoryQuotes::Quotes HistoryQuotes::daysOf(const QString &key, int first, int last, int most) const {
    Quotes days;
    int looked = 0;
    for (qint64 day = last; day >= first && static_cast<int>(days.size()) < most && looked < kLongestRange;
         day -= kSecondsOfDay, ++looked) {
        const MinuteBars bars = mFeed.dayBars(key, static_cast<int>(day));
        if (!bars.empty()) {
            days.push_back(quoteOf(day * 1000, bars.back().price));
        }
    }
    std::reverse(days.begin(), days.end());
    return days;
}

HistoryQuotes::Quotes HistoryQuotes::days(const se::RPCFetchCacheDataParam &param) const {
    const int first = heldDay(param.mStart);
    const int last = heldDay(std::min<qint64>(param.mEnd, TC::hostNow().toMSecsSinceEpoch()));
    Quotes records;
    for (const std::string &code : param.mCodes) {
        const Quotes days = daysOf(QString::fromStdString(param.mMarket + code), first, last,
                                   param.mCount > 0 ? param.mCount : kLongestRange);
        records.insert(records.end(), days.begin(), days.end());
    }
    return records;
}

HistoryQuotes::Quotes HistoryQuotes::between(const quoter::TSMetaInfo &meta,
                                             const quoter::TRegionInfo &region) const {
    const QString key = QString::fromStdString(meta.mMarket + meta.mCode);
    return meta.mDataKind == kTransactions ? transactions(key, region) : minutes(key, region);
}

HistoryQuotes::Quotes HistoryQuotes::transactions(const QString &key, const quoter::TRegionInfo &region) const {
    Quotes quotes;
    for (const Tick &tick :
         mTransactions ? mTransactions(key, region.mStart, region.mEnd, region.mLimit) : Ticks()) {
        const auto quote = std::make_shared<quoter::QuoterTransaction>();
        quote->mTime = tick.time;
        quote->mPrice = tick.price;
        quote->mVolume = tick.volume;
        quote->mAmount = tick.amount;
        quotes.push_back(quote);
    }
    return quotes;
}

HistoryQuotes::Quotes HistoryQuotes::minutes(const QString &key, const quoter::TRegionInfo &region) const {
    Quotes quotes;
    const qint64 first = heldDay(region.mStart);
    const qint64 last = heldDay(region.mEnd) + qint64(kLongestWeekend) * kSecondsOfDay;
    const qint64 until = std::min(last, first + qint64(kLongestRange) * kSecondsOfDay);
    for (qint64 day = first; day <= until; day += kSecondsOfDay) {
        for (const MinuteBar &bar : mFeed.dayBars(key, static_cast<int>(day))) {
            if (bar.time >= region.mStart && bar.time <= region.mEnd &&
                static_cast<qint64>(quotes.size()) < region.mLimit) {
                quotes.push_back(quoteOf(bar.time, bar.price));
            }
        }
    }
    return quotes;
}

} // namespace terminal
