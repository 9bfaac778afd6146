#pragma once

#include <QDate>
#include <QMap>
#include <QString>

namespace terminal {

/// Trading days of one market: weekdays without the holidays of its place, and the exceptions that the store knows.
/// A night session belongs to the trading day that follows; it is held on the evening of a trading day when no
/// holiday lies between, so that Friday's belongs to Monday, and none is held before a holiday.
class MarketCalendar {
public:
    enum class Place {
        Mainland, ///< the Chinese exchanges
        HongKong,
        Connect, ///< open when both of them are
        Overseas, ///< weekdays
    };

    MarketCalendar() = default;
    explicit MarketCalendar(Place place) : mPlace(place) {}
    /// The calendar of a market word; an unknown one trades as the mainland does.
    static MarketCalendar ofMarket(const QString &market);

    /// Declares a date open or closed, whatever the rule says.
    void setException(const QDate &date, bool open) { mExceptions[date] = open; }

    /// Whether the holidays of a year are known; without them every weekday counts.
    bool knowsYear(int year) const;
    bool isTradingDay(const QDate &date) const;
    /// First trading day after a date, last one before it.
    QDate next(const QDate &date) const;
    QDate previous(const QDate &date) const;
    /// The trading day `shift` trading days away. A date that is none counts as the last trading day before it, and
    /// a shift of 0 answers that one.
    QDate shifted(const QDate &date, int shift) const;
    /// Evening of the night session that belongs to a trading day; null when none is held.
    QDate eveningBefore(const QDate &day) const;
    /// The trading day at a time, in milliseconds since the epoch: on a trading day itself from midnight on, otherwise
    /// the last one before. With `night` the next trading day starts with the call auction of its night session.
    QDate dayAt(qint64 time, bool night) const;
    /// The first time after one at which any calendar may answer another day: a midnight, or the auction of an evening.
    static qint64 nextChangeAfter(qint64 time);

private:
    Place mPlace = Place::Mainland;
    QMap<QDate, bool> mExceptions;
};

} // namespace terminal
