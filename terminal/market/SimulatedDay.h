#pragma once

#include "terminal/market/MinuteBar.h"
#include "terminal/market/SimulatedInstruments.h"

#include <QDate>
#include <QPair>

namespace terminal {

constexpr int kStockClose = 900; ///< 15:00, the last minute of ordinary trading of shares

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
