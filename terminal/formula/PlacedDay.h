#pragma once

#include "terminal/formula/MinuteSeries.h"

#include <QString>

#include <functional>
#include <vector>

namespace terminal {

/// The times of all positions of an instrument's trading day, ascending; empty when they are not known.
using DayPositions = std::function<std::vector<qint64>(const QString &key, int day)>;

/// What a new bar did to the series of a day.
enum class SeriesChange {
    None,
    LastPoint, ///< the last point alone has changed
    NewPoint, ///< one point has been added behind it
    Whole, ///< more than one point
};

/// The bars of a day on the positions of its axis, while the day goes on.
///
/// The placed bars are always those that placeBars() makes of all bars taken so far: a bar at the end goes straight to
/// its place, and after any other they are placed anew when they are asked for next. Not for several threads at once.
class PlacedDay {
public:
    PlacedDay() = default;
    /// Both ascending; without positions the bars stand as they are.
    PlacedDay(MinuteBars bars, std::vector<qint64> positions);

    SeriesChange take(const MinuteBar &bar);
    const PlacedBars &placed();

private:
    bool isNextPosition(qint64 time) const;

    std::vector<qint64> mPositions;
    MinuteBars mBars; ///< as they were given
    PlacedBars mPlaced;
    bool mIsStale = false; ///< mPlaced has to be made anew
};

} // namespace terminal
