#pragma once

#include "terminal/market/Catalogue.h"
#include "terminal/market/MinuteBar.h"
#include "terminal/trade/DemoRoster.h"

#include <QStringList>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace terminal {

/// One day of the instruments that a demonstration account trades: the minutes in which any of them trades, the one that
/// is traded next, and the last prices before it.
class DemoMarketDay {
public:
    /// The bar of an instrument that ends at a time, or null when the minute has none.
    using Bars = std::function<const MinuteBar *(const QString &instrument, qint64 time)>;

    struct Quote {
        std::string market;
        std::string code;
        bool isFuture = false;
        std::vector<qint64> minutes; ///< ends of those that it trades in, ascending
        double priceTick = 0.01;
        double last = 0.0; ///< 0 before the first price
    };

    /// Instruments that the catalogue does not know are left out, and all of them on a day without trading.
    DemoMarketDay(const DemoAccount &account, const Catalogue &catalogue, int day);

    const QStringList &instruments() const { return mInstruments; }
    /// Ends of the minutes, ascending.
    const std::vector<qint64> &minutes() const { return mMinutes; }
    /// The place of the next minute; their number when the day is over.
    size_t next() const { return mNext; }
    bool isOver() const { return mNext >= mMinutes.size(); }
    bool isLastMinute() const { return mNext + 1 == mMinutes.size(); }
    /// End of the next minute; 0 when the day is over.
    qint64 nextMinute() const { return isOver() ? 0 : mMinutes[mNext]; }
    /// A time within the next minute.
    qint64 secondOfMinute(int second) const;

    /// What is known of an instrument of the day; null for others.
    const Quote *find(const QString &instrument) const;
    /// The same; null also when there is no price yet or the instrument does not trade in the next minute.
    const Quote *quoteOf(const QString &instrument) const;
    /// Takes the prices of the next minute and goes on to the one that follows.
    void advance(const Bars &bars);

private:
    void add(const Catalogue &catalogue, const QString &key, int day);

    QStringList mInstruments;
    std::map<QString, Quote> mQuotes;
    std::vector<qint64> mMinutes;
    size_t mNext = 0;
};

} // namespace terminal
