#pragma once

#include "terminal/market/RowSpool.h"
#include "terminal/market/TableImporter.h"
#include "terminal/market/TickDays.h"

namespace terminal {

/// Imports files of trades or of snapshots into a store, together with the minute bars that they make: a file is taken
/// in whole, or the store stays as it was. Simulated days give way to imported ones. A day that has ticks already has
/// to get the same ones; minutes that were imported before have to be the same. An instrument that the store does not
/// have is made, with the sessions of its market.
class TickImporter : public TableImporter {
public:
    TickImporter(CMarketStore &store, const ImportOptions &options);

private:
    /// One instrument of the file, whose rows are the list of its number.
    struct Group {
        int firstLine = 0;
        double previousClose = 0.0; ///< by the first row; 0 when it is not told
    };

    QString begin(const TableHeadings &headings) override;
    BarFault takeRow(int line, std::string_view text) override;
    BarFault finishRows() override;
    BarFault store(ImportTarget &target, const InstrumentName &name, size_t number,
                   ImportedBars &imported) override;
    BarFault storeDays(ImportTarget &target, const Instrument &instrument, const BarDays &days,
                       const std::vector<PlacedTick> &ticks, ImportedBars &imported);
    BarFault putTicks(ImportTarget &target, const Instrument &instrument, const QDate &day,
                      const std::vector<PlacedTick> &ticks);
    Instrument instrumentOf(const InstrumentName &name, const Group &group,
                            const std::vector<TickRow> &rows) const;

    TickColumns mColumns;
    std::optional<TickRowParser> mParser; ///< of the file
    std::optional<RowSpool<TickRow>> mRows; ///< of the file
    std::vector<Group> mGroups; ///< of each of the file's instruments
    double mTotal = 0.0; ///< ticks to store, of all instruments
    double mStored = 0.0;
};

} // namespace terminal
