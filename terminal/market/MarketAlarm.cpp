#include "terminal/market/MarketAlarm.h"

#include <algorithm>

namespace terminal {

MarketAlarm::MarketAlarm(const SimulatedClock &clock)
    : mClock(clock), mListening(clock.changes().add([this] { nudge(); })) {}

MarketAlarm::~MarketAlarm() {
    mClock.changes().remove(mListening);
}

void MarketAlarm::waitUntil(qint64 due) {
    std::unique_lock<std::mutex> hold(mLock);
    mSignal.wait_for(hold, kRest, [this] { return mIsRung; });
    while (!mIsRung && !mIsNudged) {
        const std::optional<qint64> left = mClock.realTimeUntil(due);
        if (!left) {
            mSignal.wait(hold); // for ever, as things are
        } else if (*left > 0) {
            // A real time that is not the machine's own cannot be waited for, but looked at.
            mSignal.wait_for(hold, mClock.isMachineTime() ? std::chrono::milliseconds(*left) : kRest);
        } else {
            break;
        }
    }
    mIsRung = false;
    mIsNudged = false;
}

void MarketAlarm::ring() {
    {
        std::lock_guard<std::mutex> hold(mLock);
        mIsRung = true;
    }
    mSignal.notify_all();
}

void MarketAlarm::nudge() {
    {
        std::lock_guard<std::mutex> hold(mLock);
        mIsNudged = true;
    }
    mSignal.notify_all();
}

} // namespace terminal
