#pragma once

#include "terminal/market/SimulatedRandom.h"
#include "terminal/trade/DemoMarketDay.h"
#include "terminal/trade/DemoWallet.h"

#include <vector>

namespace terminal {

/// The trading of one demonstration account on one day, minute by minute. The orders of a minute are made at its
/// start, near the last price; what trades in the minute fills them, in part or whole; what waits too long is
/// cancelled. Only what the account can pay and deliver is ordered, in the sessions of the instrument, and futures are
/// closed in their last minutes. The same day and bars give the same records, at whatever pace the minutes come.
///
/// Only the prices of a minute are used and whether it had a trade, since a minute's volume may be revised later.
class DemoTrader {
public:
    using Bars = DemoMarketDay::Bars;

    /// Instruments that the catalogue does not know are left out.
    DemoTrader(const DemoAccount &account, const Catalogue &catalogue, int day);

    int day() const { return mDay; }
    const TradeAccount &account() const { return mAccount.account; }
    const QStringList &instruments() const { return mMarket.instruments(); }
    /// End of the next minute to trade; 0 when the day is over.
    qint64 nextMinute() const { return mMarket.nextMinute(); }

    /// Trades the next minute and answers what it changed. Nothing when the day is over.
    TradeChanges step(const Bars &bars);
    /// Cancels a task and what rests of its orders. Nothing for an unknown task or one that has ended.
    TradeChanges cancelTask(int id, qint64 time);

private:
    /// An order that a desk is going to make.
    struct Intent {
        size_t minute = 0; ///< index
        size_t desk = 0;
        bool buy = true;
        double edge = 0.0; ///< see limitPrice()
        int volume = 0;
        size_t life = 0; ///< minutes
        bool rejected = false;
    };
    struct OpenOrder {
        TradeOrder order;
        size_t deadline = 0; ///< index of the minute after which it is cancelled
        int lot = 1;
        int fills = 0;
        size_t item = 0; ///< of its task
        SimulatedRandom random{0};
    };
    struct RunningTask {
        TradeTask task;
        size_t announced = 0; ///< indexes of minutes
        size_t first = 0;
        size_t last = 0;
        const DemoTask *plan = nullptr;
        bool isListed = false;
    };

    void planOrders();
    void planTasks();
    void placeIntents();
    void runTask(RunningTask &running);
    void startTask(RunningTask &running);
    void slice(RunningTask &running, size_t item);
    void closeFuture(const QString &key);
    void place(TradeOrder order, int lot, size_t life, size_t item, bool rejected);
    void match(const Bars &bars);
    void fill(OpenOrder &open, const MinuteBar &bar);
    void expire();
    void countForTask(const OpenOrder &open, int volume);
    void cancel(OpenOrder &open);
    template <class Condition> void cancelOrders(Condition isCancelled);
    TradeChanges takeChanges();

    const DemoAccount &mAccount;
    const int mDay;
    const quint64 mSeed;
    DemoMarketDay mMarket;
    DemoWallet mWallet;
    std::vector<Intent> mIntents; ///< by minute
    size_t mNextIntent = 0;
    std::vector<RunningTask> mTasks;
    std::vector<OpenOrder> mOpen;
    int mOrderNumber = 0;
    TradeChanges mChanges; ///< of the step under way; a record may be told more than once, the last time counts
};

} // namespace terminal
