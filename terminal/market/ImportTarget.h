#pragma once

#include "terminal/market/CMarketStore.h"

#include <functional>
#include <memory>

namespace terminal {

/// Where an import puts what it has read, in whole or not at all: nothing is kept without commit(). After an error every further
/// call answers false.
class ImportTarget {
public:
    virtual ~ImportTarget() = default;

    /// Whether all went well so far, and otherwise one line that says what did not.
    virtual bool isGood() const = 0;
    virtual QString error() const = 0;

    /// Adds an instrument with its types and sessions, or replaces the one of the same key; answers its row, 0 on an
    /// error.
    virtual qint64 putInstrument(const Instrument &instrument) = 0;
    /// Declares a date of a market open or closed.
    virtual bool putTradingDay(const QString &market, const QDate &date, bool open) = 0;
    /// Replaces a day of an instrument by these bars, in ascending time. Its ticks stay.
    virtual bool putDay(qint64 instrument, int day, BarSource source, const MinuteBars &bars) = 0;
    /// Adds a tick to a day that has been put; `ordinal` counts the ticks of the day from 0.
    virtual bool putTick(qint64 instrument, int day, int ordinal, const Tick &tick) = 0;
    /// Keeps with a day, which has been put, the close before it as its source tells it.
    virtual bool putPreviousClose(qint64 instrument, int day, double price) = 0;
    /// Keeps with a day, which has been put, its sessions as its source shows them; empty ones are those of the
    /// instrument.
    virtual bool putDaySessions(qint64 instrument, int day, const DaySessions &sessions) = 0;

    /// The bars that earlier imports have left of a day; made-up ones do not count.
    virtual MinuteBars importedBars(qint64 instrument, int day) = 0;
    /// The ticks of a day so far.
    virtual Ticks importedTicks(qint64 instrument, int day) = 0;

    virtual bool commit() = 0;
};

/// Makes the target of an import when its file has been read.
using ImportTargetMaker = std::function<std::unique_ptr<ImportTarget>()>;

} // namespace terminal
