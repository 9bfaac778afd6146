#pragma once

#include "terminal/market/MarketFeed.h"
#include "terminal/threads/Worker.h"

#include <memory>

namespace terminal {

/// The bars of one instrument's day as a request reads them: those up to now, and in a stream every change from then on.
///
/// All of it belongs to the request's worker: changes are brought there, in the order of the feed and none twice, and
/// none after close(). What the feed brings while the worker is busy queues up behind. The feed has no stream of the
/// minutes after hours: there are few of them, and it is asked once a second.
class BarStream {
public:
    using Take = std::function<void(const MinuteBar &)>;

    /// The feed and the worker have to outlive it.
    BarStream(MarketFeed &feed, Worker &home, QString key, int day, bool isAfterHours = false);

    /// The bars up to now.
    MinuteBars bars() const;
    /// The bars up to now, and `take` is called with what changes. `owner` keeps this stream alive during a call; it is
    /// not kept alive by the stream.
    MinuteBars open(const std::shared_ptr<const void> &owner, Take take);
    /// Not from a call of `take`.
    void close();

private:
    void look(const std::shared_ptr<const void> &owner);

    MarketFeed &mFeed;
    Worker &mHome;
    const QString mKey;
    const int mDay;
    const bool mIsAfterHours;
    Take mTake; ///< empty while it is closed
    int mSubscription = 0;
};

} // namespace terminal
