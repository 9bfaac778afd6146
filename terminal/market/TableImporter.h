#pragma once

#include "terminal/market/CMarketStore.h"
#include "terminal/market/ImportOptions.h"
#include "terminal/market/ImportText.h"
#include "terminal/market/ImportedDays.h"
#include "terminal/market/MarketFill.h"
#include "terminal/market/RowInstruments.h"

#include <QFileInfo>
#include <QString>

#include <optional>
#include <string_view>
#include <vector>

namespace terminal {

/// Imports a file of market data into a store: reads its rows and then stores its instruments in one transaction, so
/// that a file is taken in whole, or the store stays as it was. The kinds of files differ in their columns and in what
/// is stored of their rows.
class TableImporter {
public:
    virtual ~TableImporter() = default;
    TableImporter(const TableImporter &) = delete;
    TableImporter &operator=(const TableImporter &) = delete;

    /// Hears of the progress in thousandths; answering false stops the import.
    void setProgress(const Progress &progress) { mProgress = progress; }
    /// Puts the files elsewhere than into the store, which then tells what is known of instruments and calendars.
    void setTarget(const ImportTargetMaker &maker) { mMakeTarget = maker; }

    ImportOutcome importFile(const QString &path);

protected:
    /// `readingPart` (0 to 1) is what the reading takes of the whole work.
    TableImporter(CMarketStore &store, const ImportOptions &options, double readingPart)
        : mStore(store), mOptions(options), mReadingPart(readingPart) {}

    /// Starts a file by its headings. Answers an empty text, or what is wrong with them.
    virtual QString begin(const TableHeadings &headings) = 0;
    /// Keeps a row with those of its instrument, see readRow().
    virtual BarFault takeRow(int line, std::string_view text) = 0;
    /// Completes the rows when all have been taken, see finish().
    virtual BarFault finishRows() = 0;
    /// Stores the rows of the instrument of a number.
    virtual BarFault store(ImportTarget &target, const InstrumentName &name, size_t number,
                           ImportedBars &imported) = 0;

    /// Reads a row, and tells the number of its instrument in the order in which they were met.
    template <class Parser, class Row>
    BarFault readRow(Parser &parser, int line, std::string_view text, Row &row, size_t &number) {
        row.line = line;
        const QString wrong = parser.parse(text, row);
        return wrong.isEmpty() ? mInstruments->find(line, parser.symbol(), parser.exchange(), number)
                               : BarFault{line, wrong};
    }

    /// When an instrument trades: as is known of it, or at any time when the file is to show that.
    DatedSessions sessionsOf(const Instrument &instrument) const {
        return mOptions.sessionsFromFile
                   ? DatedSessions::anyTime(instrument.market)
                   : DatedSessions::of(instrument, mStore.catalogue()->calendar(instrument.market));
    }

    /// Where rows wait that do not fit into memory: on the disk that is to have room for them anyway.
    QString spoolFolder() const { return QFileInfo(mStore.path()).path(); }

    /// Reports that `done` of `total` is stored; false when the import is to stop.
    bool storingGoesOn(double done, double total) const {
        return goesOn(mReadingPart + (1.0 - mReadingPart) * done / total);
    }

    CMarketStore &mStore;
    const ImportOptions mOptions;

private:
    BarFault readFile(const QString &path, ImportOutcome &outcome);
    BarFault storeAll(ImportTarget &target, ImportOutcome &outcome);
    bool goesOn(double part) const;

    const double mReadingPart;
    Progress mProgress;
    ImportTargetMaker mMakeTarget; ///< none for the store
    std::optional<RowInstruments> mInstruments; ///< of the file
};

} // namespace terminal
