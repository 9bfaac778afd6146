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

} // namespace terminal
