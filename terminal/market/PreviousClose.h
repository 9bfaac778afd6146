#pragma once

#include "host/records/Enumerations.h"
#include "terminal/market/CMarketStore.h"

#include <QString>

namespace terminal {

/// What the changes of a trading day are counted from.
struct PreviousClose {
    double price = TC::kUnsetValue; ///< unset when nothing is known of the day
    bool isFirstOpen = false; ///< the close before is not known: it is the first price of the day itself
};

/// The close before a day of an instrument: as the source of the day tells it, whatever that is; else that of the
/// trading day before when it is stored. In years whose holidays are unknown it is the last stored day of the two weeks
/// before. A simulated day without one has the instrument's reference price, any other one its own first price.
PreviousClose previousCloseOf(CMarketStore &store, const QString &key, int day);

} // namespace terminal
