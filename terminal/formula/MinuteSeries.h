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

} // namespace terminal
