#pragma once

#include "terminal/market/Instrument.h"

namespace terminal {

/// Market and code that a file tells of an instrument; empty where it does not.
struct InstrumentName {
    QString market;
    QString code;
};

/// Reads a symbol such as "600519", "000001.SZ", "000001.XSHG" or "SZ000001", and the exchange that stands beside
/// it. A suffix or exchange that is none of the known ones leaves the market empty.
InstrumentName readSymbol(const QString &symbol, const QString &exchange);

/// The instrument that the name of a file tells by a symbol with its exchange, as "tick_000001.SZ_20180903.csv" or
/// "SZ000001.csv"; empty when there is none.
InstrumentName instrumentOfFileName(const QString &fileName);

/// The market that a share code is of as a rule, by its first digit: "SH", "SZ" or "BJ"; empty for other codes. Indexes
/// may be of another.
QString likelyMarket(const QString &code);

/// What a file tells of an instrument, completed by its name: by a symbol with its exchange, else by a share code of
/// six digits and the market that it is likely to be of.
InstrumentName completeName(InstrumentName told, const QString &fileName);

/// The record of an instrument that the store does not have: kind and types by the ranges of codes of its market, the
/// sessions of its market. `nightEnd` is where the night session of a future of an unknown product ends, in minutes, 0
/// for none.
Instrument newInstrument(const InstrumentName &name, double priceTick, int nightEnd);

} // namespace terminal
