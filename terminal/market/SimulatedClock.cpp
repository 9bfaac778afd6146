#include "terminal/market/SimulatedClock.h"

#include "terminal/market/MarketDate.h"
#include "terminal/threads/SteadyTime.h"

#include <algorithm>
#include <cmath>

namespace terminal {
namespace {

/// Also takes what is no number.
double boundedPace(double pace) {
    return pace >= SimulatedClock::kSlowest ? std::min(pace, SimulatedClock::kFastest)
                                            : SimulatedClock::kSlowest;
}

} // namespace

SimulatedClock::SimulatedClock(qint64 start, double pace, RealTime real)
    : mIsMachineTime(!real), mReal(real ? std::move(real) : RealTime(steadyMilliseconds)), mMarketBase(start),
      mRealBase(mReal()), mPace(boundedPace(pace)) {}

qint64 SimulatedClock::nowLocked() const {
    return mPaused ? mMarketBase
                   : mMarketBase + static_cast<qint64>(static_cast<double>(mReal() - mRealBase) * mPace);
}

qint64 SimulatedClock::now() const {
    std::lock_guard<std::mutex> hold(mLock);
    return nowLocked();
}

QDateTime SimulatedClock::currentDateTime() const {
    return marketDateTime(now());
}

void SimulatedClock::setPace(double pace) {
    {
        std::lock_guard<std::mutex> hold(mLock);
        if (mPace == boundedPace(pace)) {
            return;
        }
        mMarketBase = nowLocked();
        mRealBase = mReal();
        mPace = boundedPace(pace);
    }
    mChanges.call();
}

double SimulatedClock::pace() const {
    std::lock_guard<std::mutex> hold(mLock);
    return mPace;
}

void SimulatedClock::pause() {
    {
        std::lock_guard<std::mutex> hold(mLock);
        if (mPaused) {
            return;
        }
        mMarketBase = nowLocked();
        mPaused = true;
    }
    mChanges.call();
}

void SimulatedClock::resume() {
    {
        std::lock_guard<std::mutex> hold(mLock);
        if (!mPaused) {
            return;
        }
        mRealBase = mReal();
        mPaused = false;
    }
    mChanges.call();
}

bool SimulatedClock::isPaused() const {
    std::lock_guard<std::mutex> hold(mLock);
    return mPaused;
}

void SimulatedClock::setTime(qint64 time) {
    {
        std::lock_guard<std::mutex> hold(mLock);
        if (mPaused && mMarketBase == time) {
            return;
        }
        mMarketBase = time;
        mRealBase = mReal();
    }
    mChanges.call();
}

std::optional<qint64> SimulatedClock::realTimeUntil(qint64 time) const {
    std::lock_guard<std::mutex> hold(mLock);
    const qint64 left = time - nowLocked();
    if (left <= 0) {
        return 0;
    }
    if (mPaused) {
        return std::nullopt;
    }
    return static_cast<qint64>(std::ceil(static_cast<double>(left) / mPace));
}

} // namespace terminal
