#include "terminal/market/ImportedDays.h"

#include "terminal/market/DayMerge.h"
#include "terminal/market/MarketDate.h"

#include <algorithm>

namespace terminal {
bool isShareMarket(const QString &market) {
    return market == QLatin1String("SH") || market == QLatin1String("SZ") || market == QLatin1String("BJ");
}

double volumeUnit(const ImportOptions &options, const QString &market, double money, double weighed) {
    if (options.volumeInLots) {
        return *options.volumeInLots ? kLot : 1.0;
    }
    // Money by price and volume is near 1 when the volume is in shares, and near 100 when it is in lots.
    const double ratio = isShareMarket(market) && weighed > 0.0 ? money / weighed : 1.0;
    return ratio > kLot / 2.0 && ratio < kLot * 2.0 ? kLot : 1.0;
}

BarFault ImportedDays::put(const Instrument &instrument, const BarDays &days, const QDate &day,
                           const LineOf &lineOf) {
    MinuteBars bars = days.days.value(day);
    BarFault clash = mergeStored(instrument, dayOf(day), lineOf, bars);
    if (clash.isNone()) {
        fillAverages(bars);
        mTarget.putDay(instrument.id, dayOf(day), BarSource::Imported, bars);
        mTarget.putDaySessions(instrument.id, dayOf(day),
                               keptSessions(instrument, days.sessions.value(day), day, bars));
    }
    return clash;
}

/// The sessions to keep with a day; none when they are those of the instrument. Bars of earlier imports may show more
/// than is known of the day.
DaySessions ImportedDays::keptSessions(const Instrument &instrument, const DaySessions &ofDay, const QDate &day,
                                       const MinuteBars &bars) const {
    const auto isTraded = [&ofDay](const MinuteBar &bar) {
        return ofDay.placeOf(minuteAt(bar.time)).has_value();
    };
    if (mSessionsFromFile || !std::all_of(bars.begin(), bars.end(), isTraded)) {
        std::vector<qint64> times(bars.size());
        std::transform(bars.begin(), bars.end(), times.begin(), [](const MinuteBar &bar) { return bar.time; });
        return observedSessions(day, times);
    }
    return ofDay == instrument.sessions ? DaySessions() : ofDay;
}

void ImportedDays::finish(const Instrument &instrument, const BarDays &days, ImportedBars &imported) {
    for (const QDate &day : days.unknownDays) {
        mTarget.putTradingDay(instrument.market, day, true);
    }
    for (const QDate &day : days.restDays) {
        mTarget.putTradingDay(instrument.market, day, false);
    }
    for (auto told = days.previousCloses.begin(); told != days.previousCloses.end(); ++told) {
        mTarget.putPreviousClose(instrument.id, dayOf(told.key()), *told);
    }
    imported.key = instrument.key();
    imported.repeated = days.repeated;
    imported.firstDay = dayOf(days.sessions.firstKey());
    imported.lastDay = dayOf(days.sessions.lastKey());
}

/// Adds the bars of the day that an earlier import left in the store.
BarFault ImportedDays::mergeStored(const Instrument &instrument, int day, const LineOf &lineOf,
                                   MinuteBars &bars) {
    const std::optional<qint64> other = mergeBars(mTarget.importedBars(instrument.id, day), bars);
    if (other) {
        return {lineOf(*other), QStringLiteral("%1 of %2 is in the store with other values")
                                    .arg(marketDateTime(*other).toString(QStringLiteral("yyyy-MM-dd HH:mm")),
                                         instrument.key())};
    }
    return {};
}

} // namespace terminal
