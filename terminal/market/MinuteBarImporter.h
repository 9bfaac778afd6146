#pragma once

#include "terminal/market/BarFigures.h"
#include "terminal/market/DaySorter.h"
#include "terminal/market/RowSpool.h"
#include "terminal/market/TableImporter.h"

#include <functional>
#include <map>

namespace terminal {

/// Imports files of minute bars into a store: a file is taken in whole, or the store stays as it was. Simulated days
/// give way to imported ones; minutes that were imported before have to be the same. An instrument that the store
/// does not have is made, with the sessions of its market.
class MinuteBarImporter : public TableImporter {
public:
    MinuteBarImporter(CMarketStore &store, const ImportOptions &options);

private:
    /// The rows of one instrument of the file: lists of the spool, by calendar year.
    struct Group {
        int firstLine = 0;
        std::map<int, size_t> years;
    };
    /// What is done with a day.
    using TakeDay = std::function<BarFault(const QDate &day)>;

    QString begin(const TableHeadings &headings) override;
    BarFault takeRow(int line, std::string_view text) override;
    BarFault finishRows() override;
    BarFault store(ImportTarget &target, const InstrumentName &name, size_t number,
                   ImportedBars &imported) override;
    template <class Look> BarFault firstFault(const Group &group, const Look &look);
    BarReading readingOf(const Instrument &instrument, const BarFigures &figures) const;
    BarFault eachDay(const Group &group, DaySorter &sorter, BarDays &days, const TakeDay &take);
    BarFault storeDays(ImportTarget &target, const Instrument &instrument, const Group &group,
                       DaySorter &sorter, BarDays &days, ImportedBars &imported);
    int lineOf(const Group &group, const DaySorter &sorter, qint64 time);

    BarColumns mColumns;
    std::optional<BarRowParser> mParser; ///< of the file
    std::optional<RowSpool<BarRow>> mRows; ///< of the file
    std::vector<Group> mGroups; ///< of each of the file's instruments
    double mTotal = 0.0; ///< rows of all
    double mStored = 0.0;
};

} // namespace terminal
