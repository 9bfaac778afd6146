#pragma once

#include "terminal/market/BarDays.h"
#include "terminal/market/TableImporter.h"

namespace terminal {

/// Imports files of minute bars into a store: a file is taken in whole, or the store stays as it was. Simulated days
/// give way to imported ones; minutes that were imported before have to be the same. An instrument that the store
/// does not have is made, with the sessions of its market.
class MinuteBarImporter : public TableImporter {
public:
    MinuteBarImporter(CMarketStore &store, const ImportOptions &options);

private:
    using Rows = std::vector<BarRow>;

    QString begin(const TableHeadings &headings) override;
    BarFault takeRow(int line, std::string_view text) override;
    BarFault finishRows() override;
    BarFault store(ImportTarget &target, const InstrumentName &name, size_t number,
                   ImportedBars &imported) override;
    BarReading readingOf(const Instrument &instrument, const Rows &rows) const;

    BarColumns mColumns;
    std::optional<BarRowParser> mParser; ///< of the file
    std::vector<Rows> mRows; ///< of each of the file's instruments
};

} // namespace terminal
