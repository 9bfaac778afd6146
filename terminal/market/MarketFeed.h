#pragma once

#include "terminal/market/MinuteBar.h"

#include <QString>

#include <functional>

namespace terminal {

/// One change of a running day. The bar replaces the one of the same time, or is new. Bars mostly come in the order
/// of time and the last one grows until its minute is over; now and then an earlier one is revised or comes late.
struct MinuteUpdate {
    QString key; ///< instrument, such as "SH600000"
    int day = 0; ///< trading day, seconds since the epoch at its midnight (UTC+8)
    MinuteBar bar;
};

/// Where prices come from: the bars of any day, and what the running day adds to them. Every operation may be
/// called from any thread.
class MarketFeed {
public:
    using Listener = std::function<void(const MinuteUpdate &)>;

    /// What a subscriber starts with: the bars of the day up to now. Every later change reaches the listener, and
    /// none that is in the bars already.
    struct Subscription {
        int id = 0; ///< 0 when the day is not a running one: the bars are all there will be
        MinuteBars bars;
    };

    virtual ~MarketFeed() = default;

    /// Bars of a trading day up to now, after-hours minutes excluded. Empty for an unknown instrument, a day without
    /// trading and a day to come.
    virtual MinuteBars dayBars(const QString &key, int day) = 0;
    /// Minutes of trading at the closing price after the close, of instruments that have them.
    virtual MinuteBars afterHoursBars(const QString &key, int day) = 0;
    /// The bars up to now and, for the running day of the instrument, its changes from then on. The listener is
    /// called on the feed's own thread, one call at a time. It may call the feed.
    virtual Subscription subscribe(const QString &key, int day, Listener listener) = 0;
    /// Ends a subscription; an unknown id is harmless. After it has returned the listener is not called any more, and
    /// has been released, unless the call comes from within that listener.
    virtual void unsubscribe(int id) = 0;
};

} // namespace terminal
