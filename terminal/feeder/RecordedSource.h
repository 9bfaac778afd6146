#pragma once

#include "terminal/feeder/FeedSource.h"
#include "terminal/market/CMarketStore.h"
#include "terminal/market/SimulatedClock.h"

#include <map>

namespace terminal {

/// A stored day of all instruments that have it, played again: each of its minutes grows and is then as it is stored.
class RecordedSource : public FeedSource {
public:
    /// The clock outlives the source; it stands at the time from which on the day is played.
    RecordedSource(CMarketStore &store, const SimulatedClock &clock, int day);

    bool isEmpty() const { return mDays.empty(); }
    /// The end of its first and of its last minute, in milliseconds since the epoch.
    qint64 first() const { return mFirst; }
    qint64 last() const { return mLast; }

    void advance(Listener &listener) override;

private:
    const SimulatedClock &mClock;
    const int mDay;
    std::map<QString, MinuteBars> mDays; ///< by key
    qint64 mFirst = 0;
    qint64 mLast = 0;
    qint64 mTold = -1; ///< market time up to which all is told; -1 before the first call
};

} // namespace terminal
