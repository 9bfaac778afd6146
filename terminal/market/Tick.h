#pragma once

#include <QtGlobal>

#include <vector>

namespace terminal {

/// A trade, or what was traded between two snapshots.
struct Tick {
    qint64 time = 0; ///< milliseconds since the epoch
    double price = 0.0; ///< of the trade, or the latest at the time of the snapshot
    double volume = 0.0; ///< in shares or contracts
    double amount = 0.0; ///< in money; 0 when the source does not know it
};

inline bool operator==(const Tick &a, const Tick &b) {
    return a.time == b.time && a.price == b.price && a.volume == b.volume && a.amount == b.amount;
}
inline bool operator!=(const Tick &a, const Tick &b) {
    return !(a == b);
}

/// Ticks in the order in which they happened.
using Ticks = std::vector<Tick>;

} // namespace terminal
