#pragma once

#include "terminal/market/BarDays.h"
#include "terminal/market/CMarketStore.h"
#include "terminal/market/ImportedInstrument.h"
#include "terminal/market/MarketFill.h"
#include "terminal/market/MarketWriter.h"

#include <QString>
#include <QVector>

#include <optional>

namespace terminal {

/// What a file of minute bars may leave open.
struct ImportOptions {
    QString market; ///< market word, when the file does not tell
    QString code; ///< code of the one instrument, when the file does not tell
    std::optional<bool>
        volumeInLots; ///< of 100 shares; without it the amounts decide, and shares when there are none
    std::optional<bool>
        labelAtStart; ///< minutes are labelled by their start; by their end when nothing is said
};

/// What was imported of one instrument.
struct ImportedBars {
    QString key;
    int firstDay = 0; ///< trading days, seconds since the epoch at their midnight (UTC+8)
    int lastDay = 0;
    int bars = 0; ///< minutes that are new or took the place of simulated ones
};

/// Outcome of an import.
struct ImportOutcome {
    QString error; ///< empty, or one line "FILE:LINE: reason"
    QVector<ImportedBars> instruments;

    bool isGood() const { return error.isEmpty(); }
};

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
    /// The rows of one instrument of the file.
    struct Group {
        InstrumentName name;
        std::vector<BarRow> rows;
    };

    QString checkOptions() const;
    BarFault readRows(std::string_view text);
    BarFault takeRow(const BarRow &row, const BarRowParser &parser);
    BarFault nameGroup(InstrumentName told, int line, Group &group) const;
    BarFault store(MarketWriter &writer, Group &group, ImportedBars &imported);
    BarFault mergeStored(const Instrument &instrument, const QDate &day, const std::vector<BarRow> &rows,
                         MinuteBars &bars) const;
    double volumeUnit(const Group &group) const;
    bool goesOn(double part) const;

    CMarketStore &mStore;
    const ImportOptions mOptions;
    Progress mProgress;
    BarColumns mColumns;
    std::vector<Group> mGroups;
    QHash<QByteArray, size_t> mGroupOf; ///< by symbol and exchange as they stand in the file
    QByteArray mLastSymbol;
    size_t mLastGroup = 0;
};

} // namespace terminal
