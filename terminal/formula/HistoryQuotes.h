#pragma once

#include "host/records/Quotes.h"
#include "terminal/market/MarketFeed.h"
#include "terminal/market/Tick.h"

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace terminal {

/// Where the transactions of an instrument between two times come from, no more than a number of them. Any thread.
using TransactionSource = std::function<Ticks(const QString &key, qint64 start, qint64 end, qint64 limit)>;

/// Quotes of past days, minutes and transactions. Without a state of its own; any thread, blocks.
class HistoryQuotes {
public:
    using Quotes = std::vector<std::shared_ptr<quoter::QuoterBase>>;

    /// The feed has to outlive it.
    explicit HistoryQuotes(MarketFeed &feed) : mFeed(feed) {}

    /// None without it. To be called before the first question.
    void setTransactions(TransactionSource transactions) { mTransactions = std::move(transactions); }

    /// One record a trading day of each instrument in the range, up to now: the newest `mCount` of them, ascending.
    Quotes days(const se::RPCFetchCacheDataParam &param) const;
    /// What lies in a range, ascending, at most `mLimit`: the transactions for the data kind 1806, the minutes for any
    /// other.
    Quotes between(const quoter::TSMetaInfo &meta, const quoter::TRegionInfo &region) const;

private:
    Quotes minutes(const QString &key, const quoter::TRegionInfo &region) const;
    Quotes transactions(const QString &key, const quoter::TRegionInfo &region) const;
    Quotes daysOf(const QString &key, int first, int last, int most) const;

    MarketFeed &mFeed;
    TransactionSource mTransactions;
};

} // namespace terminal
