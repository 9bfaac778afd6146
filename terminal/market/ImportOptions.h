#pragma once

#include "terminal/market/LeftOutRows.h"
#include "terminal/market/TickColumns.h"

#include <QString>
#include <QVector>

#include <optional>

namespace terminal {

/// What a file of market data may leave open.
struct ImportOptions {
    QString market; ///< market word, when the file does not tell
    QString code; ///< code of the one instrument, when the file does not tell
    std::optional<bool>
        volumeInLots; ///< of 100 shares; without it the amounts decide, and shares when there are none
    std::optional<bool>
        labelAtStart; ///< minutes are labelled by their start; by their end when nothing is said
    bool sessionsFromFile =
        false; ///< each day trades when the file's rows show it, whatever is known of the market
    QString columns{}; ///< which column is what, see ColumnChoice; recognised by the headings when empty
    QString name{}; ///< of the one instrument, when the store does not have it yet; else its code
    size_t memoryOfRows = 64000000; ///< bytes; the rows of a file that are over it wait on the disk
};

/// What was imported of one instrument.
struct ImportedBars {
    QString key;
    int firstDay = 0; ///< trading days, seconds since the epoch at their midnight (UTC+8)
    int lastDay = 0;
    int bars = 0; ///< minutes that are new or took the place of simulated ones
    int ticks = 0; ///< trades, and snapshots between which something was traded
    LeftOutRows repeated; ///< rows that say again what stands before
};

/// Outcome of an import.
struct ImportOutcome {
    QString error; ///< empty, or one line "FILE:LINE: reason"
    LeftOutRows leftOut; ///< with an error, the rows that are wrong, as far as the file was read
    QVector<ImportedBars> instruments;
    int rows = 0; ///< rows read

    bool isGood() const { return error.isEmpty(); }
};

} // namespace terminal
