#include "terminal/formula/FormulaService.h"

#include "host/services/CHostClock.h"
#include "terminal/market/MarketDate.h"

#include <algorithm>
#include <limits>

namespace terminal {
namespace {

using Quotes = std::vector<std::shared_ptr<quoter::QuoterBase>>;

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

Quotes transactionQuotes(const Ticks &ticks) {
    Quotes quotes;
    quotes.reserve(ticks.size());
    for (const Tick &tick : ticks) {
        const auto quote = std::make_shared<quoter::QuoterTransaction>();
        quote->mTime = tick.time;
        quote->mPrice = tick.price;
        quote->mVolume = tick.volume;
        quote->mAmount = tick.amount;
        quotes.push_back(quote);
    }
    return quotes;
}

/// Time held to the range of a 32-bit count of seconds, so that any number makes a day.
qint64 heldTime(qint64 milliseconds) {
    return std::clamp<qint64>(milliseconds, 0, std::numeric_limits<int>::max() * 1000LL);
}

} // namespace

void FormulaService::fetchCacheData(se::RPCFetchCacheDataParam &param, Quotes &records) {
    records.clear();
    const int first = dayOf(dateAt(heldTime(param.mStart)));
    const int last = dayOf(dateAt(std::min(heldTime(param.mEnd), TC::hostNow().toMSecsSinceEpoch())));
    const int wanted = param.mCount > 0 ? param.mCount : kLongestRange;
    for (const std::string &code : param.mCodes) {
        const QString key = QString::fromStdString(param.mMarket + code);
        Quotes days;
        int looked = 0;
        for (qint64 day = last;
             day >= first && static_cast<int>(days.size()) < wanted && looked < kLongestRange;
             day -= kSecondsOfDay, ++looked) {
            const MinuteBars bars = mFeed.dayBars(key, static_cast<int>(day));
            if (!bars.empty()) {
                days.push_back(quoteOf(day * 1000, bars.back().price));
            }
        }
        records.insert(records.end(), days.rbegin(), days.rend());
    }
}

std::vector<std::shared_ptr<quoter::QuoterBase>>
FormulaService::minuteQuotes(const QString &key, const quoter::TRegionInfo &region) {
    Quotes quotes;
    const qint64 first = dayOf(dateAt(heldTime(region.mStart)));
    const qint64 last = dayOf(dateAt(heldTime(region.mEnd))) + qint64(kLongestWeekend) * kSecondsOfDay;
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

void FormulaService::requestHistoryQuote(const quoter::TSMetaInfo &meta, const quoter::TRegionInfo &region,
                                         TC::HistoryQuoteCallback onQuotes) {
    const QString key = QString::fromStdString(meta.mMarket + meta.mCode);
    // The callback never becomes the worker's: it would be released there.
    auto callback = std::make_shared<TC::HistoryQuoteCallback>(std::move(onQuotes));
    const bool transactions = meta.mDataKind == kTransactions;
    mWorkers.front()->post([this, key, region, transactions, callback]() mutable {
        Quotes quotes;
        if (!transactions) {
            quotes = minuteQuotes(key, region);
        } else if (mTransactions) {
            quotes = transactionQuotes(mTransactions(key, region.mStart, region.mEnd, region.mLimit));
        }
        mQueue.post([callback = std::move(callback), quotes = std::move(quotes)] {
            if (*callback) {
                (*callback)(0, 0, quotes, QString());
            }
        });
    });
}

} // namespace terminal
