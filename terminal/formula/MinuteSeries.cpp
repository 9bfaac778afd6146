#include "terminal/formula/MinuteSeries.h"

#include <algorithm>

namespace terminal {

BarChange takeBar(MinuteBars &bars, const MinuteBar &bar) {
    const auto place = std::lower_bound(bars.begin(), bars.end(), bar.time,
                                        [](const MinuteBar &b, qint64 time) { return b.time < time; });
    const BarChange change = bars.end() - place <= 1 ? BarChange::Last : BarChange::Earlier;
    if (place == bars.end()) {
        bars.push_back(bar);
        return BarChange::Last;
    }
    if (place->time != bar.time) {
        bars.insert(place, bar);
        return BarChange::Earlier;
    }
    if (*place == bar) {
        return BarChange::None;
    }
    *place = bar;
    return change;
}

namespace {

/// A minute without a trade.
MinuteBar quietMinute(qint64 time, const MinuteBar &before) {
    MinuteBar quiet;
    quiet.time = time;
    quiet.open = quiet.high = quiet.low = quiet.price = before.price;
    quiet.average = before.average;
    return quiet;
}

} // namespace

PlacedBars placeBars(const MinuteBars &bars, const std::vector<qint64> &positions) {
    PlacedBars placed;
    if (positions.empty()) {
        placed.bars = bars;
        return placed;
    }
    auto bar = bars.begin();
    for (const qint64 time : positions) {
        while (bar != bars.end() && bar->time < time) {
            ++bar;
        }
        if (bar == bars.end()) {
            break;
        }
        if (bar->time == time) {
            placed.bars.push_back(*bar);
        } else if (placed.bars.empty()) {
            placed.leading.push_back(time);
        } else {
            placed.bars.push_back(quietMinute(time, placed.bars.back()));
        }
    }
    return placed;
}

} // namespace terminal
