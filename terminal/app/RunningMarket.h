#pragma once

#include "terminal/feed/FollowedClock.h"
#include "terminal/feed/LiveFeed.h"
#include "terminal/market/SimulatedExchange.h"

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>

namespace terminal {

/// Where the running day comes from: the terminal's own exchange, or the feed of a server, whose time the clock then has.
class RunningMarket {
public:
    /// Both outlive it. The clock stands still until start().
    RunningMarket(CMarketStore &store, SimulatedClock &clock)
        : mStore(store), mClock(clock), mExchange(store, clock) {}
    ~RunningMarket() { stop(); }
    RunningMarket(const RunningMarket &) = delete;
    RunningMarket &operator=(const RunningMarket &) = delete;

    /// Takes the running day from a server from now on, before anything else is asked of the market. Waits a moment for its
    /// time, and does without when none comes. Answers an empty text or what is wrong with the address.
    QString follow(const QString &url);
    bool isFollowing() const { return mLive != nullptr; }
    /// Whether there is a running day at all: beside the past days of a server none is made up.
    bool hasMarket() const { return isFollowing() || hasOwnMarket(); }
    /// Whether it is the terminal's own exchange, which can be stopped.
    bool hasOwnMarket() const { return !isFollowing() && !mExchange.isClosed(); }

    /// Tells whether what listeners were told is still under way; before start(), and asked on any thread until stop().
    void setBehindCheck(std::function<bool()> isBehind);

    /// The store has the days before the running one.
    void start();
    bool isStarted() const { return mIsStarted; }
    /// No listener is called afterwards.
    void stop();

    SimulatedExchange &exchange() { return mExchange; }
    /// The prices of instruments.
    MarketFeed &feed();
    /// What is missing of a server's market and since when; empty when nothing is.
    QString trouble() const;
    /// Stops the clock or lets it go on, where it is the terminal's own; answers whether it stands still by that.
    bool setPaused(bool paused);

private:
    LiveFeed::Market marketOfFeed();

    CMarketStore &mStore;
    SimulatedClock &mClock;
    SimulatedExchange mExchange;
    bool mIsStarted = false;
    FollowedClock mFollowed{mClock};
    std::mutex mLock; ///< guards what follows
    std::condition_variable mBeat;
    bool mHasBeat = false;
    std::function<bool()> mIsBehind;
    std::unique_ptr<FeedLine> mLine;
    std::unique_ptr<LiveFeed> mLive; ///< null with the terminal's own market
};

} // namespace terminal
