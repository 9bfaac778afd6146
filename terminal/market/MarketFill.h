#pragma once

#include "terminal/market/CMarketStore.h"

#include <functional>

namespace terminal {

/// Hears of long work: steps done and steps in all. Answering false stops the work.
using Progress = std::function<bool(int done, int total)>;

/// The seed of the made-up market.
constexpr quint64 kMarketSeed = 20260101;
/// Trading days that a new store has, the current one among them.
constexpr int kFilledDays = 30;

/// Fills a new store with the made-up market, or adds the days since the last time, up to the trading day of `now`
/// (milliseconds since the epoch). Days that are stored are left as they are, imported ones among them. All or
/// nothing; answers an empty text or what went wrong ("stopped" when `progress` said so).
QString fillStore(CMarketStore &store, qint64 now, const Progress &progress = {});

/// Puts the instruments of the made-up market, without their days, into a store that has none. Answers an empty text or what went
/// wrong.
QString putInstruments(CMarketStore &store);
/// Whether filling a store would add days.
bool lacksDays(CMarketStore &store, qint64 now);

/// Makes a store one of served days: it is filled with the instruments alone and never with made-up days. Answers an empty
/// text or why not: it has made-up days already, or what went wrong.
QString keepServedDays(CMarketStore &store);
/// Whether it is one.
bool hasServedDays(CMarketStore &store);

} // namespace terminal
