#include "terminal/market/TickImporter.h"

#include "terminal/market/BarFigures.h"
#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketSessions.h"

#include <algorithm>

namespace terminal {
namespace {

constexpr double kTickReadingPart = 0.25; ///< of the whole work
constexpr int kTicksBetweenReports = 10000;

/// Brings the figures of ticks into shares or contracts, and the money of trades that do not tell it to price by
/// volume where one unit of a volume costs the price.
void convert(std::vector<PlacedTick> &ticks, double unit, bool hasMoney, bool moneyIsPrice) {
    for (PlacedTick &placed : ticks) {
        placed.tick.volume *= unit;
        if (!hasMoney) {
            placed.tick.amount = moneyIsPrice ? placed.tick.price * placed.tick.volume : 0.0;
        }
    }
}

double unitOf(const std::vector<PlacedTick> &ticks, const ImportOptions &options, const Instrument &instrument,
              bool hasMoney) {
    double money = 0.0;
    double weighed = 0.0;
    for (const PlacedTick &placed : ticks) {
        money += placed.tick.amount;
        weighed += placed.tick.price * placed.tick.volume;
    }
    return volumeUnit(options, instrument.market, hasMoney ? money : weighed, weighed);
}

} // namespace

TickImporter::TickImporter(CMarketStore &store, const ImportOptions &options)
    : TableImporter(store, options, kTickReadingPart) {}

QString TickImporter::begin(const TableHeadings &headings) {
    mRows.emplace(spoolFolder(), mOptions.memoryOfRows);
    mGroups.clear();
    QString trouble = recogniseTickColumns(headings, mColumns);
    mParser.emplace(mColumns);
    return trouble;
}

BarFault TickImporter::takeRow(int line, std::string_view text) {
    TickRow row;
    size_t number = 0;
    BarFault fault = readRow(*mParser, line, text, row, number);
    if (!fault.isNone()) {
        return fault;
    }
    if (number == mGroups.size()) {
        mGroups.push_back({line, row.previousClose});
    }
    return mRows->add(number, row) ? BarFault() : BarFault{line, mRows->error()};
}

BarFault TickImporter::finishRows() {
    mTotal = mStored = 0.0;
    BarFault fault;
    for (size_t i = 0; i < mGroups.size() && fault.isNone(); ++i) {
        const bool good = mRows->each(i, [&](TickRow row) {
            const QString wrong = fault.isNone() ? mParser->finish(row) : QString();
            fault = wrong.isEmpty() ? fault : BarFault{row.line, wrong};
        });
        fault = good ? fault : BarFault{0, mRows->error()};
        mTotal += static_cast<double>(mRows->count(i));
    }
    return fault;
}

/// The record that the store has of an instrument, or a new one without a row.
Instrument TickImporter::instrumentOf(const InstrumentName &name, const Group &group,
                                      const std::vector<TickRow> &rows) const {
    if (const Instrument *known = mStore.catalogue()->find(name.market + name.code)) {
        return *known;
    }
    BarFigures figures;
    double before = 0.0;
    for (const TickRow &row : rows) {
        if (row.volume > 0.0 && row.price != before) {
            before = row.price;
            figures.addPrice(row.price);
            figures.addMinute(row.time.clock / 60000);
        }
    }
    Instrument instrument = newInstrument(name, figures.priceStep(), figures.nightEnd());
    instrument.name = mOptions.name.isEmpty() ? instrument.name : mOptions.name;
    instrument.lastClose = group.previousClose > 0.0 ? group.previousClose : instrument.lastClose;
    return instrument;
}

BarFault TickImporter::store(ImportTarget &target, const InstrumentName &name, size_t number,
                             ImportedBars &imported) {
    const Group &group = mGroups[number];
    std::vector<TickRow> rows;
    if (!mRows->read(number, rows)) {
        return {0, mRows->error()};
    }
    for (TickRow &row : rows) {
        mParser->finish(row);
    }
    Instrument instrument = instrumentOf(name, group, rows);
    std::vector<PlacedTick> ticks;
    BarFault fault = placeTicks(rows, mColumns.kind, sessionsOf(instrument), ticks);
    if (!fault.isNone()) {
        return fault;
    }
    if (ticks.empty()) {
        return {group.firstLine, QStringLiteral("nothing was traded of %1").arg(instrument.key())};
    }
    mTotal -= static_cast<double>(rows.size() - ticks.size());
    rows = std::vector<TickRow>(); // a large file's memory
    const bool hasMoney = mColumns.amount >= 0;
    convert(ticks, unitOf(ticks, mOptions, instrument, hasMoney), hasMoney, !isFuturesMarket(name.market));
    BarReading reading;
    reading.sessions = sessionsOf(instrument);
    reading.calendar = mStore.catalogue()->calendar(instrument.market);
    std::vector<BarRow> minutes = minutesOfTicks(ticks);
    BarDays days;
    fault = sortIntoDays(minutes, reading, days);
    if (fault.isNone() && instrument.id == 0) {
        instrument.id = target.putInstrument(instrument);
    }
    return fault.isNone() ? storeDays(target, instrument, days, ticks, imported) : fault;
}

BarFault TickImporter::storeDays(ImportTarget &target, const Instrument &instrument, const BarDays &days,
                                 const std::vector<PlacedTick> &ticks, ImportedBars &imported) {
    ImportedDays bars(target, mOptions.sessionsFromFile);
    const QMap<QDate, std::vector<PlacedTick>> byDay = ticksOfDays(ticks, days);
    for (auto day = days.days.begin(); day != days.days.end() && target.isGood(); ++day) {
        const std::vector<PlacedTick> &ticksOfDay = byDay[day.key()];
        const auto lineOf = [&ticksOfDay](qint64 time) {
            const auto found =
                std::find_if(ticksOfDay.begin(), ticksOfDay.end(), [time](const PlacedTick &tick) {
                    return timeOf(calendarDate(tick.date), tick.minute) == time;
                });
            return found == ticksOfDay.end() ? 0 : found->line;
        };
        BarFault fault = bars.put(instrument, days, day.key(), lineOf);
        if (fault.isNone()) {
            fault = putTicks(target, instrument, day.key(), ticksOfDay);
        }
        if (!fault.isNone()) {
            return fault;
        }
        imported.bars += static_cast<int>(day->size());
        imported.ticks += static_cast<int>(ticksOfDay.size());
    }
    bars.finish(instrument, days, imported);
    return {};
}

BarFault TickImporter::putTicks(ImportTarget &target, const Instrument &instrument, const QDate &day,
                                const std::vector<PlacedTick> &ticks) {
    const Ticks stored = target.importedTicks(instrument.id, dayOf(day));
    if (!stored.empty()) {
        const auto same = [](const PlacedTick &placed, const Tick &tick) { return placed.tick == tick; };
        const auto other = std::mismatch(ticks.begin(), ticks.end(), stored.begin(), stored.end(), same);
        if (other.first == ticks.end() && other.second == stored.end()) {
            return {};
        }
        return {other.first == ticks.end() ? ticks.back().line : other.first->line,
                QStringLiteral("%1 of %2 is in the store with other ticks")
                    .arg(day.toString(Qt::ISODate), instrument.key())};
    }
    int ordinal = 0;
    for (const PlacedTick &placed : ticks) {
        if (!target.putTick(instrument.id, dayOf(day), ordinal, placed.tick)) {
            break;
        }
        if (++ordinal % kTicksBetweenReports == 0 && !storingGoesOn(mStored + ordinal, mTotal)) {
            return {placed.line, ImportText::stopped()};
        }
    }
    mStored += ordinal;
    return {};
}

} // namespace terminal
