#include "terminal/market/DayMerge.h"

#include "terminal/market/BarDays.h"

#include <algorithm>

namespace terminal {
namespace {

/// All that an import can change of a bar but for its average, which depends on the day's other bars.
bool sameTrade(const MinuteBar &a, const MinuteBar &b) {
    return a.open == b.open && a.high == b.high && a.low == b.low && a.price == b.price &&
           a.volume == b.volume && a.amount == b.amount;
}

} // namespace

std::optional<qint64> mergeBars(const MinuteBars &known, MinuteBars &bars) {
    if (known.empty()) {
        return std::nullopt;
    }
    MinuteBars merged;
    auto old = known.begin();
    for (const MinuteBar &bar : bars) {
        for (; old != known.end() && old->time < bar.time; ++old) {
            merged.push_back(*old);
        }
        if (old != known.end() && old->time == bar.time) {
            if (!sameTrade(*old, bar)) {
                return bar.time;
            }
            ++old;
        }
        merged.push_back(bar);
    }
    merged.insert(merged.end(), old, known.end());
    bars = std::move(merged);
    return std::nullopt;
}

void clearFilledAverages(MinuteBars &bars) {
    MinuteBars bare = bars;
    for (MinuteBar &bar : bare) {
        bar.average = 0.0;
    }
    MinuteBars filled = bare;
    fillAverages(filled);
    if (filled == bars) {
        bars = std::move(bare);
    }
}

} // namespace terminal
