#pragma once

#include "terminal/market/CMarketStore.h"
#include "terminal/market/ImportOptions.h"
#include "terminal/market/ImportText.h"
#include "terminal/market/ImportedDays.h"
#include "terminal/market/MarketFill.h"
#include "terminal/market/RowInstruments.h"
#include "terminal/market/TickDays.h"

#include <QString>

#include <vector>

namespace terminal {

/// Imports files of trades or of snapshots into a store, together with the minute bars that they make: a file is taken
/// in whole, or the store stays as it was. Simulated days give way to imported ones. A day that has ticks already has
/// to get the same ones; minutes that were imported before have to be the same. An instrument that the store does not
/// have is made, with the sessions of its market.
class TickImporter {
public:
    TickImporter(CMarketStore &store, const ImportOptions &options) : mStore(store), mOptions(options) {}

    /// Hears of the progress in thousandths; answering false stops the import.
    void setProgress(const Progress &progress) { mProgress = progress; }

    ImportOutcome importFile(const QString &path);

private:
    /// The rows of one instrument of the file.
    struct Group {
        std::vector<TickRow> rows;
        double previousClose = 0.0; ///< by the first row; 0 when it is not told
    };

    BarFault readRows(const QString &path, ImportOutcome &outcome);
    BarFault finishRows(const TickRowParser &parser);
    BarFault storeAll(MarketWriter &writer, ImportOutcome &outcome);
    BarFault store(MarketWriter &writer, const InstrumentName &name, Group &group, ImportedBars &imported);
    BarFault storeDays(MarketWriter &writer, const Instrument &instrument, const BarDays &days,
                       const std::vector<PlacedTick> &ticks, ImportedBars &imported);
    BarFault putTicks(MarketWriter &writer, const Instrument &instrument, const QDate &day,
                      const std::vector<PlacedTick> &ticks);
    Instrument instrumentOf(const InstrumentName &name, const Group &group) const;
    bool goesOn(double part) const;

    CMarketStore &mStore;
    const ImportOptions mOptions;
    Progress mProgress;
    TickColumns mColumns;
    std::vector<InstrumentName> mNames; ///< of the file's instruments
    std::vector<Group> mGroups; ///< of each of them
    double mTotal = 0.0; ///< ticks to store, of all instruments
    double mStored = 0.0;
};

} // namespace terminal
