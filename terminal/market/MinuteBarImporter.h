#pragma once

#include "terminal/market/BarDays.h"
#include "terminal/market/CMarketStore.h"
#include "terminal/market/ImportOptions.h"
#include "terminal/market/ImportText.h"
#include "terminal/market/ImportedDays.h"
#include "terminal/market/MarketFill.h"
#include "terminal/market/RowInstruments.h"

#include <QString>

#include <vector>

namespace terminal {

/// Imports files of minute bars into a store: a file is taken in whole, or the store stays as it was. Simulated days
/// give way to imported ones; minutes that were imported before have to be the same. An instrument that the store
/// does not have is made, with the sessions of its market.
class MinuteBarImporter {
public:
    MinuteBarImporter(CMarketStore &store, const ImportOptions &options) : mStore(store), mOptions(options) {}

    /// Hears of the progress in thousandths; answering false stops the import.
    void setProgress(const Progress &progress) { mProgress = progress; }

    ImportOutcome importFile(const QString &path);

private:
    using Rows = std::vector<BarRow>;

    BarFault readRows(const QString &path, ImportOutcome &outcome);
    BarFault storeAll(MarketWriter &writer, ImportOutcome &outcome);
    BarFault store(MarketWriter &writer, const InstrumentName &name, Rows &rows, ImportedBars &imported);
    BarReading readingOf(const Instrument &instrument, const Rows &rows) const;
    bool goesOn(double part) const;

    CMarketStore &mStore;
    const ImportOptions mOptions;
    Progress mProgress;
    BarColumns mColumns;
    std::vector<InstrumentName> mNames; ///< of the file's instruments
    std::vector<Rows> mRows; ///< of each of them
};

} // namespace terminal
