#pragma once

#include "terminal/market/Instrument.h"

#include <string_view>

namespace terminal {

/// Market and code that a file tells of an instrument; empty where it does not.
struct InstrumentName {
    QString market;
    QString code;
};

/// Reads a symbol such as "600519", "000001.SZ", "000001.XSHG" or "SZ000001", and the exchange that stands beside
/// it. A suffix or exchange that is none of the known ones leaves the market empty.
InstrumentName readSymbol(const QString &symbol, const QString &exchange);

/// The record of an instrument that the store does not have: kind and types by the ranges of codes of its market, the
/// sessions of its market. `nightEnd` is where the night session of a future of an unknown product ends, in minutes, 0
/// for none.
Instrument newInstrument(const InstrumentName &name, double priceTick, int nightEnd);

} // namespace terminal
