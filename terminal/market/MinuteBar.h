#pragma once

#include <QtGlobal>

#include <vector>

namespace terminal {

/// One minute of trading. Its time is the end of the minute, in milliseconds since the epoch: the trades of
/// 09:30:01 to 09:31:00 make the bar of 09:31. A bar of a night session has the real time of the evening or of the
/// early morning, and belongs to the trading day that follows.
struct MinuteBar {
    qint64 time = 0;
    double open = 0.0; ///< 0 when the source does not know it
    double high = 0.0;
    double low = 0.0;
    double price = 0.0; ///< last price of the minute
    double average = 0.0; ///< average price of the day up to and with this minute
    double volume = 0.0; ///< of this minute alone, in shares or contracts
    double amount = 0.0; ///< of this minute alone, in money; 0 when the source does not know it
};

inline bool operator==(const MinuteBar &a, const MinuteBar &b) {
    return a.time == b.time && a.open == b.open && a.high == b.high && a.low == b.low && a.price == b.price &&
           a.average == b.average && a.volume == b.volume && a.amount == b.amount;
}
inline bool operator!=(const MinuteBar &a, const MinuteBar &b) {
    return !(a == b);
}

/// Bars in the order of their times.
using MinuteBars = std::vector<MinuteBar>;

} // namespace terminal
