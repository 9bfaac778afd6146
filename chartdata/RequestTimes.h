#pragma once

#include "host/records/RPCFormulaResult.h"

#include <QString>

namespace TC {

/// \file
/// Which time a request covers, and whether it goes on with the running stream.

/// What a request asks for.
enum EDataDemand : qint32 {
    eHistoryOnly = 1,
    eHistoryAndStream = 3,
};

struct RequestTimes {
    se::TimePosition start; ///< milliseconds since the epoch, then 0
    se::TimePosition end;
    EDataDemand demand = eHistoryOnly;
};

/// The market whose calendar tells the last trading day of a request: user-defined indexes ("CD") follow "SH".
QString calendarMarket(const QString &market);

/// Times of an ordinary request. `start` and `end` bound the trading day in milliseconds since the epoch;
/// `lastTradingDay` is the midnight of the market's last trading day in seconds. Only a day that ends after
/// that midnight gets the stream; market "YSWP" trades two hours past midnight, which still belong to the day
/// before. A user-defined index runs from the last trading day on, without an end.
RequestTimes requestTimes(const QString &market, qint64 start, qint64 end, int lastTradingDay);

/// Times of the after-hours fixed-price session, 15:05:00 to 15:30:00; `start` is the day's midnight.
RequestTimes fixedPriceTimes(qint64 start, qint64 end, int lastTradingDay);

} // namespace TC
