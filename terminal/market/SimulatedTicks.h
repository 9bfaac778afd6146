#pragma once

#include "terminal/market/MinuteBar.h"
#include "terminal/market/Tick.h"

#include <optional>
#include <vector>

namespace terminal {

/// One publication of a bar: from `at` on, in milliseconds since the epoch, the market shows it so.
struct SimulatedTick {
    qint64 at = 0;
    MinuteBar bar;
};

/// No publication of a bar comes later than this after its minute.
constexpr qint64 kLongestLag = 240000;

/// How one bar of a finished day came about: published some times while its minute runs, growing, the last time as
/// it stays. The auction, which is the first bar, comes at once. Several may come in the same moment; now and then the
/// last one is late, or wrong at first and revised some minutes after. Ascending; the same input gives the same.
std::vector<SimulatedTick> ticksOfBar(const MinuteBars &day, size_t index, quint64 seed);

/// The bars of a day as they stand at a time.
MinuteBars barsAt(const MinuteBars &day, qint64 time, quint64 seed);

/// Publications after `from` up to and with `to`, of the whole day, in the order in which they come.
std::vector<SimulatedTick> ticksBetween(const MinuteBars &day, qint64 from, qint64 to, quint64 seed);

/// When the next publication of the day after a time comes; nothing when there is none any more.
std::optional<qint64> nextTickAfter(const MinuteBars &day, qint64 time, quint64 seed);

/// The trades that such publications up to a time tell, in the order of time: what a publication adds to the volume of
/// its bar was traded then, at the latest when its minute ended, for the price that it shows.
Ticks tradesUntil(const MinuteBars &day, qint64 time, quint64 seed);

} // namespace terminal
