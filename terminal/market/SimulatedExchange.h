#pragma once

#include "terminal/market/CMarketStore.h"
#include "terminal/market/MarketAlarm.h"
#include "terminal/market/MarketFeed.h"
#include "terminal/market/SimulatedClock.h"
#include "terminal/market/Tick.h"

#include <QHash>

#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <thread>

namespace terminal {

/// The exchange of the made-up market: it runs the current trading day of every simulated instrument by its clock,
/// and answers other days from the store. A day that is over is kept in the store. Pace, pause and jumps are the
/// clock's. The same day, seed and times give the same updates.
class SimulatedExchange : public MarketFeed {
public:
    /// The store has to be filled up to the clock's time. Both have to outlive the exchange.
    SimulatedExchange(CMarketStore &store, const SimulatedClock &clock);
    ~SimulatedExchange() override;

    /// Another market runs the day: from now on this one makes up nothing, and answers what is stored. Before any other
    /// call.
    void close() { mIsClosed = true; }
    bool isClosed() const { return mIsClosed; }
    /// What is known of running days goes: the days before them, which they go on from, have been filled.
    void forgetRunningDays();
    /// Runs on a thread of its own until stop(), which sleeps until the next price or day.
    void start();
    /// Ends that thread. No listener is called afterwards.
    void stop();
    /// Hands out what has happened up to the clock's time, on the calling thread. For a caller without the thread.
    /// Answers the market time at which there is more to do, which has come already where it has to be tried again.
    qint64 advance();

    /// The trading day of an instrument's market by the clock; 0 for an unknown instrument.
    int runningDay(const QString &key) const;

    /// Trades up to now of a day that the exchange runs or has run, after-hours trades included; empty of any other.
    Ticks trades(const QString &key, int day);

    MinuteBars dayBars(const QString &key, int day) override;
    MinuteBars afterHoursBars(const QString &key, int day) override;
    Subscription subscribe(const QString &key, int day, Listener listener) override;
    void unsubscribe(int id) override;

private:
    struct Subscriber;
    using WholeDay = std::shared_ptr<const MinuteBars>;
    /// Which minutes of a day are asked for.
    enum class Part { Ordinary, AfterHours };

    void run();
    bool keepFinishedDays();
    bool isRunning(const Instrument &instrument, int day, int runningDay);
    MinuteBars barsOf(const QString &key, int day, Part part, qint64 now);
    WholeDay runningBars(const Instrument &instrument, int day, Part part);
    MinuteBars simulatedDay(const Instrument &instrument, int day);
    qint64 deliver(Subscriber &subscriber, qint64 now, qint64 due);

    CMarketStore &mStore;
    const SimulatedClock &mClock;
    bool mIsClosed = false;

    std::mutex mLock; ///< guards the following
    std::map<int, std::shared_ptr<Subscriber>> mSubscribers;
    QHash<QString, QPair<int, WholeDay>> mRunning; ///< day and bars of the running day, by key and part
    int mLastId = 0;

    std::mutex mAdvancing; ///< one call of advance() at a time
    QHash<QString, int> mDays; ///< running day by market, as of the last advance()

    std::thread mThread;
    std::atomic<bool> mStopping{false};
    MarketAlarm mAlarm{mClock};
    int mListening; ///< to the store
};

/// A good start for a simulated market when it is `now` (milliseconds since the epoch): the opening auction of the
/// trading day of the Chinese share market, today's or the last one.
qint64 simulationStart(const Catalogue &catalogue, qint64 now);

} // namespace terminal
