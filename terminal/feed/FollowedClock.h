#pragma once

#include "terminal/feed/WireRecord.h"
#include "terminal/market/SimulatedClock.h"

namespace terminal {

/// Keeps the terminal's clock at the time of the market that a feed tells. Any thread.
class FollowedClock {
public:
    /// The clock outlives it.
    explicit FollowedClock(SimulatedClock &clock) : mClock(clock) {}

    void onBeat(const WireClock &beat);
    /// The market is not heard of: its time stands still.
    void onSilence() { mClock.pause(); }

private:
    SimulatedClock &mClock;
};

} // namespace terminal
