#pragma once

#include "terminal/market/DaySessions.h"
#include "terminal/market/Instrument.h"
#include "terminal/market/MarketCalendar.h"

#include <vector>

namespace terminal {

/// The sessions of an instrument as they were on each of its days: the nights of futures have changed over the years,
/// and some were not held. For one thread.
class DatedSessions {
public:
    DatedSessions() = default;
    /// The same on all days.
    DatedSessions(const DaySessions &always) : mAlways(always) {}

    /// Those of an instrument: its own, and for futures whose history is known those of the day.
    static DatedSessions of(const Instrument &instrument, const MarketCalendar &calendar);
    /// All minutes, for a market whose hours are to be seen from its trades: evenings and nights are those of the day
    /// that follows where futures are traded.
    static DatedSessions anyTime(const QString &market);

    /// Those in force at a minute of a calendar date, 1 to 1440.
    const DaySessions &at(const QDate &date, int minute) const;
    /// Those of the trading day whose night is that of an evening; null for a day without one.
    const DaySessions &ofNight(const QDate &evening) const;
    /// Those of a trading day that has a night when its calendar says so.
    const DaySessions &ofDay(const QDate &day) const;

private:
    DaySessions mAlways;
    bool mIsDated = false;
    QString mExchange;
    QString mProduct;
    MarketCalendar mCalendar;
    // The evening that was asked for last:
    mutable bool mIsKnown = false;
    mutable QDate mEvening;
    mutable DaySessions mSessions;
};

/// The sessions that the minutes of a trading day show, given by the times of their ends in ascending order: what lies
/// closer together than the shortest break is one session.
DaySessions observedSessions(const QDate &day, const std::vector<qint64> &times);

} // namespace terminal
