#include "terminal/feeder/RecordedSource.h"

#include "terminal/market/MarketFill.h"
#include "terminal/market/SimulatedRandom.h"
#include "terminal/market/SimulatedTicks.h"

#include <algorithm>

namespace terminal {
namespace {

quint64 recordedSeed(const QString &key) {
    return SimulatedRandom::mix(kMarketSeed, key);
}

} // namespace

RecordedSource::RecordedSource(CMarketStore &store, const SimulatedClock &clock, int day)
    : mClock(clock), mDay(day) {
    for (const Instrument &instrument : store.catalogue()->instruments) {
        MinuteBars bars = store.bars(instrument.id, day);
        if (!bars.empty()) {
            mFirst = mDays.empty() ? bars.front().time : std::min(mFirst, bars.front().time);
            mLast = std::max(mLast, bars.back().time);
            mDays[instrument.key()] = std::move(bars);
        }
    }
}

void RecordedSource::advance(Listener &listener) {
    const qint64 now = mClock.now();
    for (const auto &[key, bars] : mDays) {
        if (mTold < 0) {
            listener.onDay(key, mDay, barsAt(bars, now, recordedSeed(key)));
            continue;
        }
        for (const SimulatedTick &tick : ticksBetween(bars, mTold, now, recordedSeed(key))) {
            listener.onChange({key, mDay, tick.bar});
        }
    }
    mTold = std::max(mTold, now);
}

} // namespace terminal
