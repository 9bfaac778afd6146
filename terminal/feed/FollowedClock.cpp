#include "terminal/feed/FollowedClock.h"

#include <algorithm>
#include <cmath>

namespace terminal {
namespace {

constexpr double kSlack = 500.0; ///< milliseconds of real time that the clock may be off

} // namespace

void FollowedClock::onBeat(const WireClock &beat) {
    if (beat.pace <= 0.0) {
        mClock.pause();
        mClock.setTime(beat.market);
        return;
    }
    mClock.setPace(beat.pace);
    const double off = std::abs(static_cast<double>(mClock.now() - beat.market));
    if (off > kSlack * std::max(1.0, beat.pace)) {
        mClock.setTime(beat.market);
    }
    mClock.resume();
}

} // namespace terminal
