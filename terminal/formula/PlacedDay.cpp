#include "terminal/formula/PlacedDay.h"

#include <algorithm>
#include <utility>

namespace terminal {

PlacedDay::PlacedDay(MinuteBars bars, std::vector<qint64> positions)
    : mPositions(std::move(positions)), mBars(std::move(bars)), mPlaced(placeBars(mBars, mPositions)) {}

const PlacedBars &PlacedDay::placed() {
    if (mIsStale) {
        mPlaced = placeBars(mBars, mPositions);
        mIsStale = false;
    }
    return mPlaced;
}

/// Whether a time is the position that follows the last placed bar.
bool PlacedDay::isNextPosition(qint64 time) const {
    const auto next = std::upper_bound(mPositions.begin(), mPositions.end(), mPlaced.bars.back().time);
    return mPositions.empty() || (next != mPositions.end() && *next == time);
}

SeriesChange PlacedDay::take(const MinuteBar &bar) {
    const size_t before = mBars.size();
    const BarChange change = takeBar(mBars, bar);
    if (change == BarChange::None) {
        return SeriesChange::None;
    }
    MinuteBars &placed = mPlaced.bars;
    if (change == BarChange::Last && !mIsStale && !placed.empty()) {
        if (placed.back().time == bar.time) {
            placed.back() = bar;
            return SeriesChange::LastPoint;
        }
        if (mBars.size() == before) {
            return SeriesChange::None; // a bar on no position has changed
        }
        if (isNextPosition(bar.time)) {
            placed.push_back(bar);
            return SeriesChange::NewPoint;
        }
    }
    // An earlier minute, the first one, or minutes without a trade in between.
    mIsStale = true;
    return SeriesChange::Whole;
}

} // namespace terminal
