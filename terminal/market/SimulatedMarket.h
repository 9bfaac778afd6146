#pragma once

#include "terminal/market/Catalogue.h"
#include "terminal/market/MinuteBar.h"

#include <QVector>

#include <vector>

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
/// Sectors, convertible links, listed pairs, user-defined indexes and portfolios of the made-up market. Its
/// instruments are left empty.
const Catalogue &simulatedLinks();

/// Where a simulated day starts from.
struct SimulatedDayInput {
    QDate day;
    QDate evening; ///< date of the night session in front; null when there is none
    double previousClose = 0.0;
    quint64 seed = 0;
};

/// Bars of a whole day, after-hours minutes included. The same input gives the same bars: an auction, volume that is
/// high at both ends of the day, prices on the tick and within the limits, minutes without a trade, and now and then
/// a halt or a day at the limit.
MinuteBars simulateDay(const SimulatedInstrument &instrument, const SimulatedDayInput &input);

/// Largest and smallest price of a day; (0, 0) without a limit.
QPair<double, double> priceLimits(const SimulatedInstrument &instrument, double previousClose);
/// The net value of a fund's unit at the close of the day before `day`: the close of that day over a premium of at most
/// 0.2 per cent either way, which the fund and the day decide, to four decimals. No number without a close.
double simulatedNetValue(const QString &key, int day, double previousClose);
/// The price of the grid of ticks that is nearest.
double roundToTick(double price, double tick);

} // namespace terminal
