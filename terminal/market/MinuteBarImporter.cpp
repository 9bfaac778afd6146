#include "terminal/market/MinuteBarImporter.h"

#include <algorithm>

namespace terminal {
namespace {

constexpr double kBarReadingPart = 0.4; ///< of the whole work
constexpr size_t kMostRows = 2000000; ///< of an instrument and a year, which has 527 040 minutes at most

} // namespace

MinuteBarImporter::MinuteBarImporter(CMarketStore &store, const ImportOptions &options)
    : TableImporter(store, options, kBarReadingPart) {}

QString MinuteBarImporter::begin(const TableHeadings &headings) {
    mRows.emplace(spoolFolder(), mOptions.memoryOfRows);
    mGroups.clear();
    mTotal = mStored = 0.0;
    QString trouble = recogniseColumns(headings, mColumns);
    mParser.emplace(mColumns);
    return trouble;
}

BarFault MinuteBarImporter::takeRow(int line, std::string_view text) {
    BarRow row;
    size_t number = 0;
    BarFault fault = readRow(*mParser, line, text, row, number);
    if (!fault.isNone()) {
        return fault;
    }
    if (number == mGroups.size()) {
        mGroups.push_back({line, {}});
    }
    const size_t list = mGroups[number].years.emplace(row.date / 10000, mRows->lists()).first->second;
    if (!mRows->add(list, row)) {
        return {line, mRows->error()};
    }
    ++mTotal;
    return mRows->count(list) <= kMostRows
               ? BarFault()
               : BarFault{line, QStringLiteral("more than %1 rows of one instrument and year").arg(kMostRows)};
}

/// The fault of the first row, in the order of the file, in which `look` finds one.
template <class Look> BarFault MinuteBarImporter::firstFault(const Group &group, const Look &look) {
    BarFault first;
    for (const auto &year : group.years) {
        BarFault ofYear;
        const bool good = mRows->each(year.second, [&](const BarRow &row) {
            if (ofYear.isNone()) {
                ofYear = look(row);
            }
        });
        if (!good) {
            return {0, mRows->error()};
        }
        if (!ofYear.isNone() && (first.isNone() || ofYear.line < first.line)) {
            first = ofYear;
        }
    }
    return first;
}

BarFault MinuteBarImporter::finishRows() {
    BarFault fault;
    for (size_t i = 0; i < mGroups.size() && fault.isNone(); ++i) {
        fault = firstFault(mGroups[i], [this](BarRow row) {
            const QString wrong = mParser->finish(row);
            return wrong.isEmpty() ? BarFault() : BarFault{row.line, wrong};
        });
    }
    return fault;
}

BarReading MinuteBarImporter::readingOf(const Instrument &instrument, const BarFigures &figures) const {
    BarReading reading;
    reading.calendar = mStore.catalogue()->calendar(instrument.market);
    reading.sessions = sessionsOf(instrument);
    reading.labelAtStart = mOptions.labelAtStart.value_or(false);
    reading.volumeUnit = volumeUnit(mOptions, instrument.market, figures.money(), figures.weighed());
    reading.hasAverage = mColumns.average >= 0;
    return reading;
}

BarFault MinuteBarImporter::store(ImportTarget &target, const InstrumentName &name, size_t number,
                                  ImportedBars &imported) {
    const Group &group = mGroups[number];
    BarFigures figures;
    BarFault fault = firstFault(group, [&](BarRow row) {
        mParser->finish(row);
        figures.add(row);
        return BarFault();
    });
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    const Instrument *known = catalogue->find(name.market + name.code);
    Instrument instrument = known ? *known : newInstrument(name, figures.priceStep(), figures.nightEnd());
    const BarReading reading = readingOf(instrument, figures);
    BarDays days;
    DaySorter sorter(reading, days);
    if (fault.isNone()) {
        fault = firstFault(group, [&](BarRow row) {
            mParser->finish(row);
            return sorter.check(row);
        });
    }
    if (fault.isNone() &&
        group.years.size() > 1) { // what is wrong in a later year is told before the store is asked
        BarDays tried;
        DaySorter trial(sorter, tried);
        fault = eachDay(group, trial, tried, [](const QDate &) { return BarFault(); });
    }
    if (!fault.isNone()) {
        return fault;
    }
    if (!known) {
        instrument.name = mOptions.name.isEmpty() ? instrument.name : mOptions.name;
        instrument.id = target.putInstrument(instrument);
    }
    return storeDays(target, instrument, group, sorter, days, imported);
}

/// Sorts the rows of an instrument into days, a year at a time, and has each day taken when it is complete.
BarFault MinuteBarImporter::eachDay(const Group &group, DaySorter &sorter, BarDays &days, const TakeDay &take) {
    std::vector<BarRow> rows;
    for (const auto &year : group.years) {
        if (!mRows->read(year.second, rows)) {
            return {0, mRows->error()};
        }
        for (BarRow &row : rows) {
            mParser->finish(row);
        }
        BarFault fault = sorter.add(rows);
        const bool isLast = year.first == group.years.rbegin()->first;
        const std::vector<QDate> complete = !fault.isNone() ? std::vector<QDate>()
                                            : isLast        ? sorter.completeDays()
                                                            : sorter.completePastDays();
        for (auto day = complete.begin(); day != complete.end() && fault.isNone(); ++day) {
            fault = take(*day);
            days.days.remove(*day);
        }
        if (!fault.isNone()) {
            return fault;
        }
    }
    return {};
}

BarFault MinuteBarImporter::storeDays(ImportTarget &target, const Instrument &instrument, const Group &group,
                                      DaySorter &sorter, BarDays &days, ImportedBars &imported) {
    ImportedDays into(target, mOptions.sessionsFromFile);
    const auto lineOfTime = [&](qint64 time) { return lineOf(group, sorter, time); };
    BarFault fault = eachDay(group, sorter, days, [&](const QDate &day) {
        if (!target.isGood()) {
            return BarFault();
        }
        const auto bars = static_cast<int>(days.days[day].size());
        BarFault clash = into.put(instrument, days, day, lineOfTime);
        imported.bars += bars;
        mStored += bars;
        return !clash.isNone() || storingGoesOn(mStored, mTotal)
                   ? clash
                   : BarFault{group.firstLine, ImportText::stopped()};
    });
    if (fault.isNone()) {
        into.finish(instrument, days, imported);
    }
    return fault;
}

/// Line of the row that became the bar of a time.
int MinuteBarImporter::lineOf(const Group &group, const DaySorter &sorter, qint64 time) {
    return firstFault(group,
                      [&](BarRow row) {
                          mParser->finish(row);
                          return sorter.timeOfRow(row) == time ? BarFault{row.line, QStringLiteral("found")}
                                                               : BarFault();
                      })
        .line;
}

} // namespace terminal
