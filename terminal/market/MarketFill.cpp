#include "terminal/market/MarketFill.h"

#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketWriter.h"
#include "terminal/market/SimulatedDay.h"

#include <algorithm>

namespace terminal {
namespace {

const QString kFilledNote = QStringLiteral("simulated market");
const QString kServedNote = QStringLiteral("days from a server");

bool putLinks(MarketWriter &writer) {
    const Catalogue &links = simulatedLinks();
    for (const Sector &sector : links.sectors) {
        writer.addSector(sector);
    }
    for (auto entry = links.convertibles.begin(); entry != links.convertibles.end(); ++entry) {
        for (const QString &share : *entry) {
            writer.addConvertible(entry.key(), share);
        }
    }
    for (auto entry = links.hShareOf.begin(); entry != links.hShareOf.end(); ++entry) {
        writer.addListedPair(entry.key(), *entry);
    }
    for (const UserIndex &index : links.indexes) {
        writer.addIndex(index);
    }
    for (const Portfolio &portfolio : links.portfolios) {
        writer.addPortfolio(portfolio);
    }
    return writer.isGood();
}

/// Instruments and links of a store that has none of them yet.
bool putMarket(MarketWriter &writer) {
    for (const SimulatedInstrument &simulated : simulatedInstruments()) {
        if (!writer.putInstrument(simulated.instrument)) {
            return false;
        }
    }
    return putLinks(writer) && writer.putNote(kFilledNote, QString::number(kMarketSeed));
}

/// Tells a store that was filled before what stands under an instrument by now, and makes one anew that was set aside.
bool refreshInstrument(MarketWriter &writer, const Instrument *stored, const Instrument &simulated) {
    if (!stored) {
        return writer.putInstrument(simulated) != 0;
    }
    if (!stored->simulated || stored->underlyingKey() == simulated.underlyingKey()) {
        return true;
    }
    Instrument updated = *stored;
    updated.underlyingMarket = simulated.underlyingMarket;
    updated.underlyingCode = simulated.underlyingCode;
    return writer.putInstrument(updated);
}

QSet<QString> simulatedNightMarkets() {
    QSet<QString> markets;
    for (const SimulatedInstrument &simulated : simulatedInstruments()) {
        if (simulated.instrument.sessions.hasNight()) {
            markets.insert(simulated.instrument.market);
        }
    }
    return markets;
}

QDate firstFilled(const MarketCalendar &calendar, const QDate &last) {
    return calendar.shifted(last, 1 - kFilledDays);
}

/// The days from the first one up to and with the last.
bool areAllStored(const QVector<int> &stored, const MarketCalendar &calendar, QDate first, const QDate &last) {
    for (; first <= last; first = calendar.next(first)) {
        if (!std::binary_search(stored.begin(), stored.end(), dayOf(first))) {
            return false;
        }
    }
    return true;
}

/// Adds the missing days of one instrument, up to and with `last`.
bool fillDays(CMarketStore &store, MarketWriter &writer, const SimulatedInstrument &simulated, qint64 row,
              const MarketCalendar &calendar, const QDate &last) {
    const QDate first = firstFilled(calendar, last);
    if (areAllStored(store.days(row), calendar, first, last)) {
        return true;
    }
    const std::optional<DaySummary> before = store.summaryBefore(row, dayOf(first));
    const bool goesOn = before && before->source == BarSource::Simulated && before->close > 0.0;
    double close = goesOn ? before->close : simulated.basePrice;
    for (QDate day = first; day <= last; day = calendar.next(day)) {
        if (const std::optional<DaySummary> stored = store.summary(row, dayOf(day))) {
            close = stored->close > 0.0 ? stored->close : close;
            continue;
        }
        const MinuteBars bars = simulateDay(simulated, {day, calendar.eveningBefore(day), close, kMarketSeed});
        if (!writer.putDay(row, dayOf(day), BarSource::Simulated, bars)) {
            return false;
        }
        close = bars.empty() ? close : bars.back().price;
    }
    return true;
}

} // namespace

bool hasServedDays(CMarketStore &store) {
    return !store.note(kServedNote).isEmpty();
}

QString keepServedDays(CMarketStore &store) {
    if (hasServedDays(store)) {
        return {};
    }
    if (!store.note(kFilledNote).isEmpty()) {
        return QStringLiteral(
                   "%1: has days of the made-up market, which do not go with those of a server: give another "
                   "file with --store")
            .arg(store.path());
    }
    MarketWriter writer(store);
    if (writer.putNote(kServedNote, QStringLiteral("1"))) {
        writer.commit();
    }
    return writer.error();
}

QString putInstruments(CMarketStore &store) {
    if (!store.note(kFilledNote).isEmpty()) {
        return {};
    }
    MarketWriter writer(store);
    if (putMarket(writer)) {
        writer.commit();
    }
    return writer.error();
}

bool lacksDays(CMarketStore &store, qint64 now) {
    if (hasServedDays(store)) {
        return false;
    }
    const std::shared_ptr<const Catalogue> catalogue = store.catalogue();
    const QSet<QString> nightMarkets = simulatedNightMarkets();
    const QVector<SimulatedInstrument> &all = simulatedInstruments();
    return std::any_of(all.begin(), all.end(), [&](const SimulatedInstrument &simulated) {
        const Instrument *stored = catalogue->find(simulated.instrument.key());
        const QString &market = simulated.instrument.market;
        const MarketCalendar calendar = catalogue->calendar(market);
        const QDate last = calendar.dayAt(now, nightMarkets.contains(market));
        return !stored || !areAllStored(store.days(stored->id), calendar, firstFilled(calendar, last), last);
    });
}

QString fillStore(CMarketStore &store, qint64 now, const Progress &progress) {
    const bool isNew = store.note(kFilledNote).isEmpty();
    const bool isServed = hasServedDays(store);
    const QSet<QString> nightMarkets = simulatedNightMarkets();
    const std::shared_ptr<const Catalogue> catalogue = store.catalogue();
    MarketWriter writer(store);
    if (isNew && !putMarket(writer)) {
        return writer.error();
    }
    const int total = simulatedInstruments().size();
    for (int done = 0; done < total && writer.isGood(); ++done) {
        if (progress && !progress(done, total)) {
            return QStringLiteral("%1: filling the store was stopped").arg(store.path());
        }
        const SimulatedInstrument &simulated = simulatedInstruments()[done];
        const QString &market = simulated.instrument.market;
        const MarketCalendar calendar = catalogue->calendar(market);
        refreshInstrument(writer, catalogue->find(simulated.instrument.key()), simulated.instrument);
        const qint64 row = writer.rowOf(simulated.instrument.key());
        if (isServed) {
            continue;
        }
        fillDays(store, writer, simulated, row, calendar, calendar.dayAt(now, nightMarkets.contains(market)));
    }
    if (writer.commit() && progress) {
        progress(total, total);
    }
    return writer.error();
}

} // namespace terminal
