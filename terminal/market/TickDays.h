#pragma once

#include "terminal/market/BarDays.h"
#include "terminal/market/Tick.h"
#include "terminal/market/TickRowParser.h"

#include <QDate>
#include <QMap>

#include <optional>
#include <vector>

namespace terminal {

/// A tick and the minute that it counts for.
struct PlacedTick {
    Tick tick;
    int line = 0; ///< of the file, from 1
    int date = 0; ///< of the minute, as yyyymmdd
    int minute = 0; ///< 1 to 1440 of that date
    int tradingDay = 0; ///< as the file tells it; 0 when it does not
    double high = 0.0; ///< highest price since the tick before
    double low = 0.0;
    double previousClose = 0.0; ///< of the trading day before; 0 when the file does not tell
};

/// The minute that a moment counts for, in minutes since midnight, 0 for 24:00 of the day before: the one that ends at
/// or after it. What comes before the opening counts for the first minute of the day, what is matched at a close and
/// told some minutes after it for the last minute of its session, and the very moment of a reopening for the first
/// minute. Nothing when the market does not trade then. `milliseconds` are those since midnight.
std::optional<int> minuteOfTick(const DaySessions &sessions, int milliseconds);

/// The trades of rows: each row by itself, or what the volume of the day has grown by from snapshot to snapshot. Sorts
/// the rows by time, equal times in the order of the file. Volumes and amounts stay in the units of the file. A fault
/// for a trade outside the sessions, and for a day's volume that falls.
BarFault placeTicks(std::vector<TickRow> &rows, ImportKind kind, const DatedSessions &sessions,
                    std::vector<PlacedTick> &ticks);

/// The minutes of ticks in the order of time. The line of a minute is that of its first tick.
std::vector<BarRow> minutesOfTicks(const std::vector<PlacedTick> &ticks);

/// The ticks of each of the days, by where the minutes of the days end. Both in the order of time.
QMap<QDate, std::vector<PlacedTick>> ticksOfDays(const std::vector<PlacedTick> &ticks, const BarDays &days);

} // namespace terminal
