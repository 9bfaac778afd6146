#pragma once

#include "host/services/CLinkageManager.h"
#include "terminal/market/MarketFeed.h"
#include "terminal/market/SimulatedClock.h"
#include "terminal/trade/TradeFigures.h"
#include "terminal/trade/TradeLedger.h"

#include <atomic>
#include <vector>

namespace terminal {

/// The figures of the user's deals of the running day, by clock minute up to now, and how far his prices lie apart. Of no
/// deals there are none. Profits and balances are worked out while they are wanted. Any thread.
class TradeCurves {
public:
    using Keys = TC::CLinkageManager::Keys;
    using TimedAmounts = TC::CLinkageManager::TimedAmounts;
    using TimedValues = TC::CLinkageManager::TimedValues;

    /// Whose deals, in what.
    struct Scope {
        const Keys &instruments;
        const Keys &accounts;
        const Keys &strategies;
        bool filter = false; ///< by the strategies
    };

    /// All of them outlive the curves.
    TradeCurves(CMarketStore &market, MarketFeed &feed, const SimulatedClock &clock, TradeLedger &ledger);

    TimedAmounts amounts(const Scope &scope);
    TimedValues profits(const Scope &scope);
    TimedValues balances(const Scope &scope);
    double orderAmplitude(const Keys &instruments, const Keys &accounts);
    double dealAmplitude(const Keys &instruments, const Keys &accounts);

    // Answers whether that is another choice than before.
    bool wantProfits(bool wanted) { return mProfitsWanted.exchange(wanted) != wanted; }
    bool wantBalances(bool wanted) { return mBalancesWanted.exchange(wanted) != wanted; }
    bool isAnyWanted() const { return mProfitsWanted || mBalancesWanted; }

private:
    using SpanOf = TradeBook::Span (TradeBook::*)(const std::string &, const Keys &) const;

    int runningDay(const std::string &instrument) const;
    std::vector<TradeFigures> figures(const Scope &scope);
    double largestAmplitude(const Keys &instruments, const Keys &accounts, SpanOf span);

    CMarketStore &mMarket;
    MarketFeed &mFeed;
    const SimulatedClock &mClock;
    TradeLedger &mLedger;
    std::atomic<bool> mProfitsWanted{false};
    std::atomic<bool> mBalancesWanted{false};
};

} // namespace terminal
