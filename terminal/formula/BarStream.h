#pragma once

#include "terminal/market/MarketFeed.h"
#include "terminal/threads/WorkPlace.h"

#include <map>
#include <memory>
#include <mutex>

namespace terminal {

/// The bars of one instrument's day as a request reads them: those up to now, and in a stream every change from then on.
///
/// All of it belongs to the request's place of work: changes are brought there, and none after close(). What the feed
/// brings until the place comes to it goes together, of each minute what it is at last: no more than the minutes of a
/// day wait. The feed has no stream of the minutes after hours: there are few of them, and it is asked once a second.
class BarStream {
public:
    /// Takes the minutes that have changed, ascending.
    using Take = std::function<void(const MinuteBars &)>;

    /// The feed and the place have to outlive it.
    BarStream(MarketFeed &feed, WorkPlace &home, QString key, int day, bool isAfterHours = false);

    /// The bars up to now.
    MinuteBars bars() const;
    /// The bars up to now, and `take` is called with what changes. `owner` keeps this stream alive during a call; it is
    /// not kept alive by the stream.
    MinuteBars open(const std::shared_ptr<const void> &owner, Take take);
    /// Once it is open: whether anything may change. Those of a day that does not run are all there.
    bool isLive() const { return mIsAfterHours || mSubscription != 0; }
    /// Not from a call of `take`.
    void close();

private:
    void look(const std::shared_ptr<const void> &owner);
    void note(const MinuteBar &bar, const std::shared_ptr<const void> &owner);
    void takeWaiting();

    MarketFeed &mFeed;
    WorkPlace &mHome;
    const QString mKey;
    const int mDay;
    const bool mIsAfterHours;
    Take mTake; ///< empty while it is closed
    int mSubscription = 0;
    std::mutex mLock; ///< guards what follows
    std::map<qint64, MinuteBar> mWaiting; ///< changes by time; a job is posted for them
};

} // namespace terminal
