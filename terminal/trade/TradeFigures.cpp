#include "terminal/trade/TradeFigures.h"

#include "host/records/Enumerations.h"
#include "terminal/market/MarketDate.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace terminal {
namespace {

bool isPositive(double number) {
    return std::isfinite(number) && number > 0.0 && number < TC::kUnsetValue;
}

qint64 minuteEnd(qint64 time) {
    return (time + kMinuteLength - 1) / kMinuteLength * kMinuteLength;
}

/// Adds one instrument's figures to the minutes, which have all of its own among them.
void addInstrument(const TradedInstrument &instrument, std::map<qint64, TradeFigures> &minutes) {
    std::vector<TradedInstrument::Deal> deals;
    for (const TradedInstrument::Deal &deal : instrument.deals) {
        if (isPositive(deal.price) && isPositive(deal.volume)) {
            deals.push_back(deal);
        }
    }
    std::stable_sort(deals.begin(), deals.end(), [](const auto &a, const auto &b) { return a.time < b.time; });
    double bought = 0.0, sold = 0.0, position = 0.0, commissions = 0.0, price = 0.0;
    bool priced = false; // by a bar
    auto deal = deals.cbegin();
    auto bar = instrument.bars.cbegin();
    for (auto &entry : minutes) {
        for (; deal != deals.cend() && minuteEnd(deal->time) <= entry.first; ++deal) {
            const double amount = deal->price * deal->volume * instrument.multiplier;
            (deal->buy ? bought : sold) += amount;
            position += deal->buy ? deal->volume : -deal->volume;
            commissions += std::isfinite(deal->commission) ? deal->commission : 0.0;
            price = priced ? price : deal->price;
        }
        for (; bar != instrument.bars.cend() && bar->time <= entry.first; ++bar) {
            price = isPositive(bar->price) ? bar->price : price;
            priced = priced || isPositive(bar->price);
        }
        const double balance = position * price * instrument.multiplier;
        entry.second.bought += bought;
        entry.second.sold += sold;
        entry.second.balance += balance;
        entry.second.profit += sold - bought + balance - commissions;
    }
}

} // namespace

std::vector<TradeFigures> figuresByMinute(const std::vector<TradedInstrument> &instruments) {
    std::map<qint64, TradeFigures> minutes;
    for (const TradedInstrument &instrument : instruments) {
        for (const MinuteBar &bar : instrument.bars) {
            minutes[minuteEnd(bar.time)].time = minuteEnd(bar.time);
        }
        for (const TradedInstrument::Deal &deal : instrument.deals) {
            minutes[minuteEnd(deal.time)].time = minuteEnd(deal.time);
        }
    }
    for (const TradedInstrument &instrument : instruments) {
        addInstrument(instrument, minutes);
    }
    std::vector<TradeFigures> figures;
    figures.reserve(minutes.size());
    for (const auto &entry : minutes) {
        figures.push_back(entry.second);
    }
    return figures;
}

double amplitude(double lowest, double highest, double close) {
    if (!isPositive(lowest) || !isPositive(highest) || !isPositive(close)) {
        return 0.0;
    }
    return std::max(std::abs(highest - close), std::abs(lowest - close)) / close;
}

double commissionOf(const FeeSchedule &fees, bool buy, double amount) {
    return std::max(fees.rate * amount, fees.minimum) + (buy ? 0.0 : fees.sellTax * amount);
}

} // namespace terminal
