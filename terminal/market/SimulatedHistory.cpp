#include "terminal/market/SimulatedHistory.h"

#include "host/services/CHostClock.h"
#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketFill.h"
#include "terminal/market/MarketWriter.h"
#include "terminal/market/SimulatedDay.h"

#include <QCoreApplication>

#include <algorithm>
#include <limits>

namespace terminal {
namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(SimulatedHistory)
};

constexpr int kMostDays = 2500; ///< of one request, about ten years

MinuteBars simulate(const SimulatedInstrument &simulated, const MarketCalendar &calendar, int day,
                    double close) {
    const QDate date = dateOf(day);
    return simulateDay(simulated, {date, calendar.eveningBefore(date), close, kMarketSeed});
}

} // namespace

MinuteBars closingAt(MinuteBars bars, double close, double tick) {
    if (bars.empty() || bars.back().price <= 0.0) {
        return bars;
    }
    const double factor = close / bars.back().price;
    for (MinuteBar &bar : bars) {
        for (double *price : {&bar.open, &bar.high, &bar.low, &bar.price}) {
            *price = roundToTick(*price * factor, tick);
        }
        bar.average *= factor;
        bar.amount *= factor;
    }
    return bars;
}

QVector<int> SimulatedHistory::missingDays(const QString &key, qint64 start, qint64 end) {
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    const Instrument *instrument = catalogue->find(key);
    QVector<int> missing;
    if (!instrument || !findSimulated(key)) {
        return missing;
    }
    const MarketCalendar calendar = catalogue->calendar(instrument->market);
    const qint64 now = TC::hostNow().toMSecsSinceEpoch();
    const QDate running = calendar.dayAt(now, catalogue->nightMarkets.contains(instrument->market));
    const QDate last = std::min(dateAt(std::min(end, now)), running.addDays(-1));
    const QDate first = std::max(dateAt(std::max<qint64>(0, start)), calendar.shifted(running, -kMostDays));
    const QVector<int> stored = mStore.days(instrument->id);
    for (QDate date = calendar.isTradingDay(first) ? first : calendar.next(first); date <= last;
         date = calendar.next(date)) {
        if (!std::binary_search(stored.begin(), stored.end(), dayOf(date))) {
            missing.append(dayOf(date));
        }
    }
    return missing;
}

/// The close that the first stored day starts from. It was simulated from the base price, and multiplied when it was
/// fetched here.
double SimulatedHistory::closeInFrontOf(const SimulatedInstrument &simulated, qint64 row, int firstDay) {
    const std::optional<DaySummary> first = mStore.summary(row, firstDay);
    if (!first || first->close <= 0.0) {
        return simulated.basePrice;
    }
    if (first->source == BarSource::Imported) {
        return first->open > 0.0 ? first->open : first->close;
    }
    const MarketCalendar calendar = mStore.catalogue()->calendar(simulated.instrument.market);
    const MinuteBars bars = simulate(simulated, calendar, firstDay, simulated.basePrice);
    return bars.empty() ? simulated.basePrice : simulated.basePrice * first->close / bars.back().price;
}

QString SimulatedHistory::fetchDay(const QString &key, int day) {
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    const Instrument *instrument = catalogue->find(key);
    const SimulatedInstrument *simulated = findSimulated(key);
    if (!instrument || !simulated) {
        return Words::tr("没有 %1 的历史行情可以下载").arg(key);
    }
    const MarketCalendar calendar = catalogue->calendar(instrument->market);
    const std::optional<DaySummary> before = mStore.summaryBefore(instrument->id, day);
    const QVector<int> stored = mStore.days(instrument->id);
    MinuteBars bars = simulate(*simulated, calendar, day,
                               before && before->close > 0.0 ? before->close : simulated->basePrice);
    if (!before && !stored.isEmpty()) {
        bars = closingAt(std::move(bars), closeInFrontOf(*simulated, instrument->id, stored.first()),
                         instrument->priceTick);
    }
    MarketWriter writer(mStore);
    if (writer.putDay(instrument->id, day, BarSource::Simulated, bars)) {
        writer.commit();
    }
    return writer.error();
}

} // namespace terminal
