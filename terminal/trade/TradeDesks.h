#pragma once

#include "terminal/market/MarketFeed.h"
#include "terminal/trade/DemoTrader.h"
#include "terminal/trade/TradeLedger.h"

#include <deque>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace terminal {

/// The demonstration accounts at work: each trades the running day of its instruments as far as the market's time has
/// come, and past days that are not recorded to their end.
///
/// What a desk has traded is in the ledger, in the order of the minutes. A day that is started in the middle, or anew
/// since the time has jumped back, is traded up to the time again with the same records and the user's cancellations.
/// Not for several threads at once.
class TradeDesks {
public:
    /// Milliseconds after its end at which a minute is traded: its prices are known for good then.
    static constexpr qint64 kSettled = 35000;

    /// All of them outlive the desks. `figuresWanted` is asked after every minute.
    TradeDesks(CMarketStore &market, MarketFeed &feed, TradeLedger &ledger,
               std::function<bool()> figuresWanted);

    /// Trades up to a market time, milliseconds since the epoch, and cancels tasks at the times that the user asked for.
    /// Answers the market time at which there is more to do, `now` when something has to be written again.
    qint64 advance(qint64 now, std::vector<TradeCancel> asked);
    /// Records the newest past day that is not complete yet, up to a market time; false when there is none.
    bool recordPastDay(qint64 now);

private:
    /// An account at work.
    struct Desk {
        const DemoAccount *plan = nullptr;
        std::unique_ptr<DemoTrader> trader;
        std::deque<TradeCancel> cancels; ///< of the day, still to come
        qint64 traded = 0; ///< end of the last minute traded

        qint64 dueAfter(qint64 now) const;
    };

    int runningDayOf(const DemoAccount &account, qint64 now) const;
    void trade(Desk &desk, qint64 now);
    void cancel(TradeCancel &cancel, qint64 now);
    void beginDay(Desk &desk, int day);
    void open(Desk &desk, int day);
    void tradeUpTo(Desk &desk, qint64 now);
    void listPastDays();

    CMarketStore &mMarket;
    MarketFeed &mFeed;
    TradeLedger &mLedger;
    const std::function<bool()> mFiguresWanted;
    std::vector<Desk> mDesks;
    std::deque<std::pair<const DemoAccount *, int>> mPastDays; ///< still to be recorded
    bool mPastDaysKnown = false;
};

} // namespace terminal
