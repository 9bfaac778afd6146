#pragma once

#include <QPair>
#include <QTime>
#include <QVector>

#include <string>

/// \file
/// Arithmetic of the trading-time axis: sessions, positions and pixels of one trading day.
///
/// A minute is a count of whole minutes since midnight; 570 is 09:30, 1440 is 24:00. A session is a pair of its
/// first and last minute, both of which are positions. A position (index) stands for one trading minute; breaks
/// between sessions take no room. All functions accept any numbers and any sessions.

namespace TC {

using Sessions = QVector<QPair<int, int>>;

/// Sessions of a trading day, in axis order, and the number of its positions.
struct TradingDay {
    Sessions sessions;
    int pointCount = 0;
};

/// The built-in kinds of trading day.
enum class ETradingDay {
    Night, ///< futures with a night session: the evening comes first
    TreasuryFutures, ///< treasury-bond futures
    CommodityFutures, ///< commodity futures without a night session
    HongKong, ///< Hong Kong and the connect markets
    Overseas, ///< the overseas futures market
    AfterHours, ///< growth-board stock with the after-hours session shown
    LongAfternoon, ///< stock whose afternoon lasts until the end of the after-hours session
    Stock, ///< the usual day, of everything else
};

/// The built-in table. AfterHours has sessions of 267 minutes and 266 positions, so its last minute is not shown.
TradingDay tradingDay(ETradingDay kind);

/// The usual stock day, extended by an after-hours session that adjoins it when `afterHours` is set.
TradingDay stockDay(bool afterHours);

/// Kind of day of a market without a night session, from the exact market word. `productId` is that of the
/// instrument shown, empty when there is none. Stocks of SH and SZ, which need the instrument's types, get Stock.
ETradingDay tradingDayOfMarket(const std::string &market, const std::string &code,
                               const std::string &productId);

/// Minute that a clock time stands for: the one that ends at it, so seconds round up. Negative for a null time.
int axisMinute(const QTime &time);

/// Position of a minute. On an axis without night session a minute before the open gives 0, one in a break the
/// last position before it, one after the close the last position. With `night` the evening and the day part are
/// told apart at 16:00; a minute in a gap comes out too low and may be negative, and a minute after midnight is
/// one lower than its position.
int indexOfMinute(const Sessions &sessions, int minute, bool night);

/// Minute of a position; one beyond the last counts as the last. -1 when the sessions have no such position.
int minuteOfIndex(const TradingDay &day, int index);

/// Pixel of a position on a graph `width` pixels wide: 1 for the first, near width - 1 for the last.
int pixelOfIndex(double width, int pointCount, int index);

/// Position nearest to a pixel, 0 to pointCount - 1; -1 on a graph without width or an axis without positions.
int indexOfPixel(double width, int pointCount, int x);

} // namespace TC
