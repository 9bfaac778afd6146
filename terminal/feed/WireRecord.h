#pragma once

#include "terminal/market/MinuteBar.h"

#include <QByteArray>

#include <variant>

namespace terminal {

// The records that a feed sends, as bytes. docs/wire.md shows the layout, byte by byte.

/// What a bar is sent as.
enum class WireKind : quint8 {
    Change = 1, ///< a minute as it stands after a change
    Minute = 2, ///< a minute that is over, for those who come later
};

/// A bar of a running day, with its place among all that the feed tells of its instrument. Records are told apart by
/// run and sequence, and of two of the same minute the one with the greater pair holds.
struct WireBar {
    WireKind kind = WireKind::Change;
    quint64 run = 0; ///< of the feed: when it was started, in milliseconds since the epoch
    quint64 sequence = 0; ///< of the change among those of the instrument in this run, from 1
    /// Of a change: how many changes directly before it were of the same minute, which it replaces. Of a minute, which may
    /// be negative: added to its sequence it is a change up to which the stream tells all.
    qint32 span = 0;
    int day = 0; ///< trading day, seconds since the epoch at its midnight (UTC+8)
    qint64 published = 0; ///< when it was sent, in milliseconds since the epoch by the sender's clock
    MinuteBar bar;
};

/// The feed's beat: where the time of its market is. It comes some times a second, whatever is traded.
struct WireClock {
    quint64 run = 0;
    quint64 beat = 0; ///< from 1 in this run
    qint64 published = 0;
    qint64 market = 0; ///< time of the market, milliseconds since the epoch
    double pace = 1.0; ///< market seconds a second; 0 while the market is stopped
};

/// Why bytes are not taken.
enum class WireFault {
    Short, ///< of a known kind, with bytes missing
    Garbage, ///< no record, or one that cannot be right
    NewerVersion, ///< a record of a later version than this program knows
};

using WireRecord = std::variant<WireBar, WireClock, WireFault>;

constexpr int kWireVersion = 1; ///< that is written and read here

QByteArray encodeWire(const WireBar &record);
QByteArray encodeWire(const WireClock &clock);

/// Any bytes. What is answered as a bar has finite numbers, a price that is not 0 and a minute of that day.
WireRecord decodeWire(const QByteArray &bytes);

} // namespace terminal
