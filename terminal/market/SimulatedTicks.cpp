#include "terminal/market/SimulatedTicks.h"

#include "terminal/market/MarketDate.h"
#include "terminal/market/SimulatedRandom.h"

#include <algorithm>
#include <cmath>

namespace terminal {
namespace {

constexpr qint64 kAuctionLead = 5 * kMinuteLength; ///< the auction is over five minutes before trading starts
constexpr int kMostTicks = 12;
constexpr double kReviseChance = 1.0 / 60.0;
constexpr double kLateChance = 1.0 / 60.0;
constexpr double kFirstGuess = 0.96; ///< part of the volume that is known before a revision

/// The bar when a part of its volume is done, having been at `prices` so far.
MinuteBar partialBar(const MinuteBar &whole, const MinuteBar *before, double part,
                     const std::vector<double> &prices, size_t seen) {
    MinuteBar bar = whole;
    const auto end = prices.begin() + static_cast<std::ptrdiff_t>(seen);
    bar.open = prices.front();
    bar.high = *std::max_element(prices.begin(), end);
    bar.low = *std::min_element(prices.begin(), end);
    bar.price = prices[seen - 1];
    bar.volume = std::floor(whole.volume * part);
    bar.amount = whole.volume > 0.0 ? whole.amount * (bar.volume / whole.volume) : 0.0;
    const double from = before ? before->average : whole.average;
    bar.average = from + (whole.average - from) * part;
    return bar;
}

/// The way of the price through a minute: open, both extremes in either order, some between, last.
std::vector<double> pricePath(const MinuteBar &bar, int count, SimulatedRandom &random) {
    std::vector<double> path{bar.open > 0.0 ? bar.open : bar.price};
    const bool highFirst = random.uniform() < 0.5;
    path.push_back(highFirst ? bar.high : bar.low);
    for (int i = 4; i < count; ++i) {
        const double pick = random.uniform();
        path.push_back(pick < 0.33 ? path.front() : pick < 0.66 ? bar.price : path.back());
    }
    path.push_back(highFirst ? bar.low : bar.high);
    path.push_back(bar.price);
    return path;
}

} // namespace

std::vector<SimulatedTick> ticksOfBar(const MinuteBars &day, size_t index, quint64 seed) {
    const MinuteBar &whole = day[index];
    if (index == 0) {
        return {{whole.time - kAuctionLead, whole}};
    }
    SimulatedRandom random(SimulatedRandom::mix(seed, static_cast<quint64>(whole.time)));
    const int count = whole.volume > 0.0 ? 4 + random.below(kMostTicks - 3) : 1;
    std::vector<qint64> moments;
    for (int i = 0; i + 1 < count; ++i) {
        moments.push_back(whole.time - kMinuteLength + 1000LL * (1 + random.below(59))); // some share a moment
    }
    std::sort(moments.begin(), moments.end());
    moments.push_back(whole.time);
    const double fate = random.uniform();
    if (fate < kLateChance) {
        moments.back() += 2000 + random.below(30) * 1000LL;
    }
    const std::vector<double> path = pricePath(whole, count, random);
    std::vector<SimulatedTick> ticks;
    for (int i = 0; i < count; ++i) {
        const bool last = i + 1 == count;
        const bool revised = last && whole.volume > 0.0 && fate > 1.0 - kReviseChance;
        const double part = last ? (revised ? kFirstGuess : 1.0) : (i + 1.0) / (count + 1.0);
        const size_t seen = last ? path.size() : static_cast<size_t>(i + 1);
        const bool asItStays = last && !revised;
        ticks.push_back({moments[static_cast<size_t>(i)],
                         asItStays ? whole : partialBar(whole, &day[index - 1], part, path, seen)});
        if (revised) {
            ticks.push_back({whole.time + kMinuteLength + random.below(120) * 1000LL, whole});
        }
    }
    return ticks;
}

MinuteBars barsAt(const MinuteBars &day, qint64 time, quint64 seed) {
    MinuteBars bars;
    for (size_t i = 0; i < day.size(); ++i) {
        if (day[i].time + kLongestLag <= time) {
            bars.push_back(day[i]);
            continue;
        }
        if (day[i].time - kAuctionLead > time) {
            break;
        }
        const std::vector<SimulatedTick> ticks = ticksOfBar(day, i, seed);
        const auto next = std::find_if(ticks.begin(), ticks.end(),
                                       [time](const SimulatedTick &tick) { return tick.at > time; });
        if (next != ticks.begin()) {
            bars.push_back(std::prev(next)->bar);
        }
    }
    return bars;
}

namespace {

/// The first bar of which a publication may come after a time.
MinuteBars::const_iterator firstToCome(const MinuteBars &day, qint64 time) {
    return std::lower_bound(day.begin(), day.end(), time - kLongestLag,
                            [](const MinuteBar &bar, qint64 at) { return bar.time < at; });
}

} // namespace

std::vector<SimulatedTick> ticksBetween(const MinuteBars &day, qint64 from, qint64 to, quint64 seed) {
    std::vector<SimulatedTick> due;
    for (auto bar = firstToCome(day, from); bar != day.end() && bar->time - kAuctionLead <= to; ++bar) {
        for (const SimulatedTick &tick : ticksOfBar(day, static_cast<size_t>(bar - day.begin()), seed)) {
            if (tick.at > from && tick.at <= to) {
                due.push_back(tick);
            }
        }
    }
    std::stable_sort(due.begin(), due.end(),
                     [](const SimulatedTick &a, const SimulatedTick &b) { return a.at < b.at; });
    return due;
}

std::optional<qint64> nextTickAfter(const MinuteBars &day, qint64 time, quint64 seed) {
    std::optional<qint64> next;
    for (auto bar = firstToCome(day, time); bar != day.end() && (!next || bar->time - kAuctionLead < *next);
         ++bar) {
        for (const SimulatedTick &tick : ticksOfBar(day, static_cast<size_t>(bar - day.begin()), seed)) {
            if (tick.at > time && (!next || tick.at < *next)) {
                next = tick.at;
            }
        }
    }
    return next;
}

Ticks tradesUntil(const MinuteBars &day, qint64 time, quint64 seed) {
    Ticks trades;
    for (size_t i = 0; i < day.size(); ++i) {
        double volume = 0.0;
        double amount = 0.0;
        for (const SimulatedTick &tick : ticksOfBar(day, i, seed)) {
            if (tick.at > time || !(tick.bar.volume > volume)) {
                continue; // to come, or nothing was traded
            }
            trades.push_back({std::min(tick.at, tick.bar.time), tick.bar.price, tick.bar.volume - volume,
                              tick.bar.amount - amount});
            volume = tick.bar.volume;
            amount = tick.bar.amount;
        }
    }
    return trades;
}

} // namespace terminal
