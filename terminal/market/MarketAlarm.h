#pragma once

#include "terminal/market/SimulatedClock.h"

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace terminal {

/// What a thread of the market waits on, which has something to do at a time of the market: it sleeps until then, and
/// is woken when that time comes sooner than it was thought, since the clock was set or somebody knows of more to do.
/// Between two looks the thread rests, however much there is to do.
///
/// One thread waits; any may wake it. What wakes a thread that does not wait just then ends its next wait.
class MarketAlarm {
public:
    /// The least between two looks, but for a ring().
    static constexpr std::chrono::milliseconds kRest{100};

    /// The clock has to outlive it.
    explicit MarketAlarm(const SimulatedClock &clock);
    ~MarketAlarm();
    MarketAlarm(const MarketAlarm &) = delete;
    MarketAlarm &operator=(const MarketAlarm &) = delete;

    /// Waits until the clock shows a time, in milliseconds since the epoch, or it is woken.
    void waitUntil(qint64 due);
    /// There is something to do at once.
    void ring();
    /// There is something to do, which has time until the thread has rested.
    void nudge();

private:
    const SimulatedClock &mClock;
    int mListening;
    std::mutex mLock; ///< guards what follows
    std::condition_variable mSignal;
    bool mIsRung = false;
    bool mIsNudged = false;
};

} // namespace terminal
