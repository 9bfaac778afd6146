#include "terminal/market/SimulatedClock.h"

#include "terminal/market/MarketDate.h"

#include <algorithm>
#include <chrono>

namespace terminal {
namespace {

qint64 steadyMilliseconds() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

/// Also takes what is no number.
double boundedPace(double pace) {
    return pace >= SimulatedClock::kSlowest ? std::min(pace, SimulatedClock::kFastest)
                                            : SimulatedClock::kSlowest;
}

} // namespace

SimulatedClock::SimulatedClock(qint64 start, double pace, RealTime real)
    : mReal(real ? std::move(real) : RealTime(steadyMilliseconds)), mMarketBase(start), mRealBase(mReal()),
      mPace(boundedPace(pace)) {}

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
    std::lock_guard<std::mutex> hold(mLock);
    mMarketBase = nowLocked();
    mRealBase = mReal();
    mPace = boundedPace(pace);
}

double SimulatedClock::pace() const {
    std::lock_guard<std::mutex> hold(mLock);
    return mPace;
}

void SimulatedClock::pause() {
    std::lock_guard<std::mutex> hold(mLock);
    mMarketBase = nowLocked();
    mPaused = true;
}

void SimulatedClock::resume() {
    std::lock_guard<std::mutex> hold(mLock);
    if (mPaused) {
        mRealBase = mReal();
        mPaused = false;
    }
}

bool SimulatedClock::isPaused() const {
    std::lock_guard<std::mutex> hold(mLock);
    return mPaused;
}

void SimulatedClock::setTime(qint64 time) {
    std::lock_guard<std::mutex> hold(mLock);
    mMarketBase = time;
    mRealBase = mReal();
}

} // namespace terminal
