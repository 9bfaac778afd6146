#pragma once

#include "terminal/market/Tick.h"

#include <QString>

namespace terminal {

class CMarketStore;
class SimulatedExchange;

/// The transactions of instruments: the ticks that were imported, and the trades of days that the simulated exchange runs
/// or has run. Of a day of which bars alone are known there are none. Any thread.
class TransactionTape {
public:
    /// Both have to outlive it.
    TransactionTape(CMarketStore &store, SimulatedExchange &exchange) : mStore(store), mExchange(exchange) {}

    /// Those from `start` up to and with `end`, in milliseconds since the epoch, in the order in which they happened; no
    /// more than `limit`, the oldest.
    Ticks between(const QString &key, qint64 start, qint64 end, qint64 limit);

private:
    CMarketStore &mStore;
    SimulatedExchange &mExchange;
};

} // namespace terminal
