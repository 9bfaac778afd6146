#pragma once

#include <QString>
#include <QtGlobal>

namespace terminal {

struct Catalogue;

/// A stretch of a trading day, both ends included, in milliseconds since the epoch at which it is traded.
struct TradedSpan {
    int day = 0; ///< the trading day
    qint64 start = 0;
    qint64 end = 0;
};

/// The stretch that a chart means. A chart dates all minutes of a trading day with that day, while the night session in
/// front of it lies on an evening before: for a Monday that of Friday, and past midnight on the Saturday. A chart of the
/// running day has the date of the clock instead, so that tonight's minutes of today belong to the day that runs `now`.
/// Times of what does not trade at night stay as they are.
TradedSpan tradedSpan(const Catalogue &catalogue, const QString &key, qint64 chartStart, qint64 chartEnd,
                      qint64 now);

} // namespace terminal
