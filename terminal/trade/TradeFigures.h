#pragma once

#include "terminal/market/MinuteBar.h"

#include <QtGlobal>

#include <vector>

namespace terminal {

/// Prices of a market and what is dealt there, for one instrument of a day.
struct TradedInstrument {
    /// A deal, as far as the figures need it.
    struct Deal {
        qint64 time = 0; ///< milliseconds since the epoch
        bool buy = true;
        double price = 0.0;
        double volume = 0.0; ///< shares or contracts
        double commission = 0.0; ///< money
    };

    std::vector<Deal> deals; ///< in any order
    MinuteBars bars; ///< of the day up to now
    double multiplier = 1.0; ///< money of one share or contract at a price of 1
};

/// What the user's deals of a day have come to by the end of one minute. Money.
struct TradeFigures {
    qint64 time = 0; ///< end of the minute, milliseconds since the epoch
    double bought = 0.0; ///< price * volume * multiplier of all purchases so far
    double sold = 0.0; ///< the same of all sales
    double profit = 0.0; ///< realised and floating: sold - bought + balance - commissions so far
    double balance =
        0.0; ///< (volume bought - volume sold) * price at the minute * multiplier, of every instrument
};

/// The figures of every minute, cumulative over the day and over all instruments, ascending. The minutes are those of
/// the bars and of the deals; seconds of a deal round up to the minute that ends after them, as the bars' do. The
/// price at a minute is that of the last bar up to it; before the first one, that of the instrument's last deal.
/// Nothing is counted of overnight positions: the figures are those of the day's own deals. Deals and bars without
/// a usable price or volume are left out.
std::vector<TradeFigures> figuresByMinute(const std::vector<TradedInstrument> &instruments);

/// Largest relative distance of prices between `lowest` and `highest` from a close; 0 when a price or the close is
/// not a positive number.
double amplitude(double lowest, double highest, double close);

/// What a deal costs: `rate` of the amount, at least `minimum`, and `sellTax` of the amount of a sale.
struct FeeSchedule {
    double rate = 0.0;
    double minimum = 0.0; ///< money
    double sellTax = 0.0;
};
double commissionOf(const FeeSchedule &fees, bool buy, double amount);

} // namespace terminal
