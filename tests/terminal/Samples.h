#pragma once

/// \file
/// Instruments, days and minutes that many tests speak of.

#include "terminal/market/MarketDate.h"
#include "terminal/market/MinuteBar.h"

#include <QDate>
#include <QString>

namespace tests {

inline const QString kShare = QStringLiteral("SH600000");
inline const QString kBond = QStringLiteral("SH113050");
inline const QString kSteelFuture = QStringLiteral("SHFERB2701"); ///< 10 tons a contract

inline const QDate kFriday(2026, 11, 20);
constexpr int kToday = 1763654400; // 2025-11-21 00:00 at UTC+8
constexpr int kYesterday = 1763568000; // one day earlier
constexpr qint64 kOpen = kToday * 1000LL + 34200000; // 09:30
constexpr qint64 kMinute = 60000;

inline qint64 clockTime(const QDate &date, int hour, int minute, int second = 0) {
    return terminal::timeOf(date, hour * 60 + minute) + second * 1000;
}

/// A minute of which the price alone is known.
inline terminal::MinuteBar pricedMinute(qint64 time, double price) {
    terminal::MinuteBar bar;
    bar.time = time;
    bar.price = price;
    return bar;
}

} // namespace tests
