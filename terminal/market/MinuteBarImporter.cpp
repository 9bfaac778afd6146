#include "terminal/market/MinuteBarImporter.h"

#include "terminal/market/MarketDate.h"

#include <algorithm>

namespace terminal {
namespace {

constexpr double kReadingPart = 0.4; ///< of the whole work

std::vector<int> clocksOf(const std::vector<BarRow> &rows) {
    std::vector<int> clocks(rows.size());
    std::transform(rows.begin(), rows.end(), clocks.begin(), [](const BarRow &row) { return row.clock; });
    return clocks;
}

/// Line of the row that became the bar of a time.
int lineOf(const std::vector<BarRow> &rows, qint64 time) {
    const auto found = std::find_if(rows.begin(), rows.end(), [time](const BarRow &row) {
        return timeOf(calendarDate(row.date), row.clock) == time;
    });
    return found == rows.end() ? 0 : found->line;
}

} // namespace

bool MinuteBarImporter::goesOn(double part) const {
    return !mProgress || mProgress(static_cast<int>(part * 1000.0), 1000);
}

ImportOutcome MinuteBarImporter::importFile(const QString &path) {
    ImportOutcome outcome;
    BarFault fault = readRows(path, outcome);
    if (fault.isNone()) {
        MarketWriter writer(mStore);
        fault = storeAll(writer, outcome);
        if (fault.isNone() && !writer.commit()) {
            outcome.error = writer.error();
        }
    }
    if (!fault.isNone()) {
        outcome.error = ImportText::located(path, fault);
    }
    if (!outcome.isGood()) {
        outcome.instruments.clear();
    }
    return outcome;
}

BarFault MinuteBarImporter::readRows(const QString &path, ImportOutcome &outcome) {
    BarFault fault = checkMarket(mOptions);
    ImportText text;
    if (fault.isNone()) {
        fault = text.open(path);
    }
    if (!fault.isNone()) {
        return fault;
    }
    const QString trouble = recogniseColumns(text.headings(), mColumns);
    if (!trouble.isEmpty()) {
        return {1, trouble};
    }
    mRows.clear();
    RowInstruments instruments(mOptions, path);
    BarRowParser parser(mColumns);
    const auto takeRow = [&](int line, std::string_view rowText) -> BarFault {
        BarRow row;
        row.line = line;
        const QString wrong = parser.parse(rowText, row);
        if (!wrong.isEmpty()) {
            return {line, wrong};
        }
        size_t number = 0;
        BarFault unnamed = instruments.find(line, parser.symbol(), parser.exchange(), number);
        if (unnamed.isNone()) {
            mRows.resize(std::max(mRows.size(), number + 1));
            mRows[number].push_back(row);
            ++outcome.rows;
        }
        return unnamed;
    };
    fault = text.eachRow(takeRow, [this](double part) { return goesOn(part * kReadingPart); });
    mNames = instruments.names();
    for (Rows &rows : mRows) {
        for (BarRow &row : rows) {
            const QString wrong = fault.isNone() ? parser.finish(row) : QString();
            if (!wrong.isEmpty()) {
                return {row.line, wrong};
            }
        }
    }
    return fault;
}

BarFault MinuteBarImporter::storeAll(MarketWriter &writer, ImportOutcome &outcome) {
    for (size_t i = 0; i < mRows.size() && writer.isGood(); ++i) {
        ImportedBars imported;
        BarFault fault = store(writer, mNames[i], mRows[i], imported);
        if (!fault.isNone()) {
            return fault;
        }
        outcome.instruments.append(imported);
    }
    return {};
}

BarReading MinuteBarImporter::readingOf(const Instrument &instrument, const Rows &rows) const {
    double money = 0.0;
    double weighed = 0.0;
    for (const BarRow &row : rows) {
        money += row.amount;
        weighed += row.close * row.volume;
    }
    BarReading reading;
    reading.sessions = instrument.sessions;
    reading.calendar = mStore.catalogue()->calendar(instrument.market);
    reading.labelAtStart = mOptions.labelAtStart.value_or(false);
    reading.volumeUnit = volumeUnit(mOptions, instrument.market, money, weighed);
    reading.hasAverage = mColumns.average >= 0;
    return reading;
}

BarFault MinuteBarImporter::store(MarketWriter &writer, const InstrumentName &name, Rows &rows,
                                  ImportedBars &imported) {
    const int line = rows.front().line;
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    const Instrument *known = catalogue->find(name.market + name.code);
    Instrument instrument =
        known ? *known : newInstrument(name, priceStep(rows), observedNightEnd(clocksOf(rows)));
    BarDays sorted;
    BarFault fault = sortIntoDays(rows, readingOf(instrument, rows), sorted);
    if (!fault.isNone()) {
        return fault;
    }
    if (!known) {
        instrument.name = mOptions.name.isEmpty() ? instrument.name : mOptions.name;
        instrument.id = writer.putInstrument(instrument);
    }
    ImportedDays days(mStore, writer);
    int done = 0;
    for (auto day = sorted.days.begin(); day != sorted.days.end() && writer.isGood(); ++day) {
        fault = days.put(instrument, day.key(), *day, [&rows](qint64 time) { return lineOf(rows, time); });
        if (!fault.isNone()) {
            return fault;
        }
        imported.bars += static_cast<int>(day->size());
        if (!goesOn(kReadingPart + (1.0 - kReadingPart) * ++done / sorted.days.size())) {
            return {line, ImportText::stopped()};
        }
    }
    days.putCalendar(instrument.market, sorted);
    imported.key = instrument.key();
    imported.firstDay = dayOf(sorted.days.firstKey());
    imported.lastDay = dayOf(sorted.days.lastKey());
    return {};
}

} // namespace terminal
