#pragma once

#include "terminal/market/Catalogue.h"

#include <QVector>

namespace terminal {

/// How a simulated instrument trades.
struct SimulatedInstrument {
    Instrument instrument;
    double basePrice = 10.0; ///< close before its first day
    double dayVolume = 1e6; ///< shares or contracts of an ordinary day
    double volatility = 0.015; ///< standard deviation of a day's return
    double limit = 0.0; ///< largest move from the previous close, as a fraction; 0 for none
    double multiplier = 1.0; ///< money of one contract at a price of 1
    double quietShare = 0.0; ///< share of the minutes without any trade
    double haltChance = 0.0; ///< chance that a day has a halt of some minutes
    int volumeStep = 1; ///< volumes are multiples of it
};

/// The made-up market: its instruments, and what belongs to them. No prices of it are those of a real day.
const QVector<SimulatedInstrument> &simulatedInstruments();
/// The one of a key; null when there is none.
const SimulatedInstrument *findSimulated(const QString &key);
/// Sectors, convertible links, listed pairs, user-defined indexes and portfolios of the made-up market. Its
/// instruments are left empty.
const Catalogue &simulatedLinks();

} // namespace terminal
