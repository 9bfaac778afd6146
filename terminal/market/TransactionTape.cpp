#include "terminal/market/TransactionTape.h"

#include "terminal/market/CMarketStore.h"
#include "terminal/market/MarketDate.h"
#include "terminal/market/SimulatedExchange.h"

#include <algorithm>
#include <limits>

namespace terminal {
namespace {

constexpr int kSecondsOfDay = 86400;
constexpr int kLongestWeekend = 15; ///< calendar days that a night session may lie before its trading day

/// The day of a time; any number is held to those that days have.
int dayOfTime(qint64 time) {
    constexpr qint64 kLast = std::numeric_limits<int>::max() - qint64(kLongestWeekend + 2) * kSecondsOfDay;
    return dayOf(dateAt(std::clamp<qint64>(time, 0, kLast * 1000)));
}

} // namespace

Ticks TransactionTape::between(const QString &key, qint64 start, qint64 end, qint64 limit) {
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    const Instrument *instrument = catalogue->find(key);
    if (!instrument || start > end) {
        return {};
    }
    QVector<int> days = mStore.days(instrument->id);
    const int running = mExchange.runningDay(key);
    if (!days.contains(running)) {
        days.append(running);
    }
    const int first = dayOfTime(start);
    const int last = dayOfTime(end) + kLongestWeekend * kSecondsOfDay;
    Ticks found;
    for (const int day : days) {
        if (day < first || day > last) {
            continue;
        }
        Ticks ticks = mStore.ticks(instrument->id, day);
        if (ticks.empty()) {
            ticks = mExchange.trades(key, day);
        }
        for (const Tick &tick : ticks) {
            if (tick.time >= start && tick.time <= end && static_cast<qint64>(found.size()) < limit) {
                found.push_back(tick);
            }
        }
    }
    return found;
}

} // namespace terminal
