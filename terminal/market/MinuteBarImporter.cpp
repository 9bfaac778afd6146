#include "terminal/market/MinuteBarImporter.h"

#include "terminal/market/MarketDate.h"

#include <algorithm>

namespace terminal {
namespace {

constexpr double kBarReadingPart = 0.4; ///< of the whole work

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

MinuteBarImporter::MinuteBarImporter(CMarketStore &store, const ImportOptions &options)
    : TableImporter(store, options, kBarReadingPart) {}

QString MinuteBarImporter::begin(const TableHeadings &headings) {
    mRows.clear();
    QString trouble = recogniseColumns(headings, mColumns);
    mParser.emplace(mColumns);
    return trouble;
}

BarFault MinuteBarImporter::takeRow(int line, std::string_view text) {
    BarRow row;
    size_t number = 0;
    BarFault fault = readRow(*mParser, line, text, row, number);
    if (fault.isNone()) {
        mRows.resize(std::max(mRows.size(), number + 1));
        mRows[number].push_back(row);
    }
    return fault;
}

BarFault MinuteBarImporter::finishRows() {
    BarFault fault;
    for (size_t i = 0; i < mRows.size() && fault.isNone(); ++i) {
        fault = finish(*mParser, mRows[i]);
    }
    return fault;
}

BarReading MinuteBarImporter::readingOf(const Instrument &instrument, const Rows &rows) const {
    double money = 0.0;
    double weighed = 0.0;
    for (const BarRow &row : rows) {
        money += row.amount;
        weighed += row.close * row.volume;
    }
    BarReading reading;
    reading.calendar = mStore.catalogue()->calendar(instrument.market);
    reading.sessions = sessionsOf(instrument);
    reading.labelAtStart = mOptions.labelAtStart.value_or(false);
    reading.volumeUnit = volumeUnit(mOptions, instrument.market, money, weighed);
    reading.hasAverage = mColumns.average >= 0;
    return reading;
}

BarFault MinuteBarImporter::store(ImportTarget &target, const InstrumentName &name, size_t number,
                                  ImportedBars &imported) {
    Rows &rows = mRows[number];
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
        instrument.id = target.putInstrument(instrument);
    }
    ImportedDays days(target, mOptions.sessionsFromFile);
    int done = 0;
    for (auto day = sorted.days.begin(); day != sorted.days.end() && target.isGood(); ++day) {
        fault = days.put(instrument, sorted, day.key(), [&rows](qint64 time) { return lineOf(rows, time); });
        if (!fault.isNone()) {
            return fault;
        }
        imported.bars += static_cast<int>(day->size());
        if (!storingGoesOn(++done, sorted.days.size())) {
            return {line, ImportText::stopped()};
        }
    }
    days.finish(instrument, sorted, imported);
    return {};
}

} // namespace terminal
