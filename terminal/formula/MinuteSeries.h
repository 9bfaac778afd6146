#pragma once

#include "terminal/market/MinuteBar.h"

namespace terminal {

/// What taking in a bar did to a day's bars.
enum class BarChange {
    None, ///< the bar was there already, as it is
    Last, ///< the last bar changed, or one was added behind it
    Earlier, ///< an earlier bar changed, or one came late
};

/// Takes a bar into bars that ascend by time: replaces the one of the same time, or goes to its place.
BarChange takeBar(MinuteBars &bars, const MinuteBar &bar);

/// A day's bars on the positions of its axis.
struct PlacedBars {
    std::vector<qint64> leading; ///< times of the positions before the first bar
    MinuteBars bars; ///< one a position, from the first bar to the last
};

/// Puts bars on the positions of a day, both ascending in time. A position without a bar repeats the price and the
/// average before it, with no volume. A bar that is on no position is left out. Without positions the bars stand as
/// they are.
PlacedBars placeBars(const MinuteBars &bars, const std::vector<qint64> &positions);

} // namespace terminal
