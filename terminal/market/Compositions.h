#pragma once

#include "terminal/market/CMarketStore.h"
#include "terminal/market/CompositeBars.h"
#include "terminal/market/DaySessions.h"

#include <functional>
#include <optional>
#include <vector>

namespace terminal {

/// The close of the trading day before `day`, 0 or TC::kUnsetValue when it is not known.
using PreviousCloseOf = std::function<double(const QString &key, int day)>;

/// The members of a user-defined index or a portfolio on a trading day; nothing for any other key.
///
/// An index has members of equal weight at the close of the day before, and so its level is
///     level before the day * mean over the members of price / previous close.
/// The level before the day of its start, and before every day of an index without a start, is its base value (100
/// when that is 0); from then on it is the level at the close of the day before. Members without a previous close do
/// not count.
///
/// A portfolio is worth the sum of quantity * contract multiplier * price; a short position counts negative, and a
/// future with its whole contract value.
std::optional<std::vector<CompositeMember>> compositionOf(CMarketStore &store, const QString &key, int day,
                                                          const PreviousCloseOf &previousClose);

/// The future that tells the axis of a portfolio: the last one of its positions; null for any other key, and when a
/// portfolio holds none.
const Instrument *axisFutureOf(const Catalogue &catalogue, const QString &key);
/// The sessions on whose positions a composite is drawn: those that its last futures position tells, otherwise those of
/// mainland shares.
DaySessions compositeSessions(const Catalogue &catalogue, const QString &key);

} // namespace terminal
