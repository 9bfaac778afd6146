#pragma once

#include "terminal/feed/FeedLine.h"
#include "terminal/feed/FeedReport.h"
#include "terminal/feed/LiveDay.h"
#include "terminal/market/MarketFeed.h"
#include "terminal/threads/Worker.h"

#include <map>
#include <memory>
#include <mutex>
#include <vector>

namespace terminal {

/// The prices of a running market that a server sends, of past days those of another feed.
///
/// It listens to what somebody has subscribed to or has asked for lately, and to nothing else. No operation waits for the
/// server: a day is answered as far as it has come, and what comes later, the morning from the stream included, reaches
/// the listeners. What the server sends is merged at once and handed out together, at once after a pause and in a burst with
/// pauses in between, for as long as the listeners have not done with the last: no more than the minutes of a day wait.
class LiveFeed : public MarketFeed {
public:
    /// What the feed has to know of its market. Any thread.
    struct Market {
        std::function<int(const QString &key)> runningDay; ///< 0 for an unknown instrument
        std::function<bool(const QString &key, int day, qint64 time)> isAfterHours;
        std::function<void(const WireClock &beat)> onBeat; ///< the time of the market
        std::function<void()> onSilence; ///< nothing is heard of the market any more
        std::function<bool()>
            isBehind; ///< whether what the listeners were told is still under way; null for never
    };
    /// How long things take, in milliseconds.
    struct Times {
        int silence = 3000; ///< without a beat
        int interest = 30000; ///< in an instrument that was asked for and that nobody has subscribed to
        int retry = 1000; ///< between readings of the stream that fail
        int pause = 12; ///< between turns of handing out
        int look = 3; ///< between looks whether listeners that are behind still are
        int patience = 500; ///< with them
    };

    /// The line and the feed of past days outlive it.
    LiveFeed(FeedLine &line, MarketFeed &past, Market market)
        : LiveFeed(line, past, std::move(market), Times()) {}
    LiveFeed(FeedLine &line, MarketFeed &past, Market market, const Times &times);
    ~LiveFeed() override;

    /// Goes to the server.
    void start();
    /// Ends that. No listener is called afterwards.
    void stop();
    FeedReport report() const;
    /// Instruments that are listened to.
    int followed() const;

    MinuteBars dayBars(const QString &key, int day) override;
    MinuteBars afterHoursBars(const QString &key, int day) override;
    Subscription subscribe(const QString &key, int day, Listener listener) override;
    void unsubscribe(int id) override;

private:
    struct Subscriber;
    struct Followed;
    using Entry = std::shared_ptr<Followed>;

    Entry followLocked(const QString &key);
    MinuteBars partOf(const QString &key, int day, const MinuteBars &bars, bool afterHours) const;
    MinuteBars runningBars(const QString &key, int day, bool afterHours);
    void openEntry(const Entry &entry);
    void closeEntry(const Entry &entry);
    void wantReadingLocked(const Entry &entry);
    void readEntry(const Entry &entry);
    void onLineState(const LineFailure &state);
    void onRecord(const Entry &entry, const QByteArray &bytes, LiveDay::Origin origin);
    void onClock(const QByteArray &bytes);
    void noteFaultLocked(WireFault fault);
    void noteBehindLocked(const Entry &entry);
    void postHandOutLocked();
    bool isHeldBack();
    void handOut();
    void lookAround();

    FeedLine &mLine;
    MarketFeed &mPast;
    const Market mMarket;
    const Times mTimes;

    mutable std::mutex mLock; ///< guards what follows
    std::map<QString, Entry> mFollowed; ///< by key; what has a subscriber stays
    std::vector<Entry> mNews; ///< what has changed since the last handing out
    std::map<int, std::shared_ptr<Subscriber>> mSubscribers;
    int mLastId = 0;
    FeedReport mReport; ///< but for what is behind
    qint64 mLastBeat = 0; ///< by the terminal's clock
    bool mIsHandOutPosted = false;
    qint64 mHandedOut = 0; ///< last time, in steady milliseconds
    bool mIsStopped = false;

    std::unique_ptr<Worker> mListeners; ///< calls them
    std::unique_ptr<Worker> mReader; ///< speaks with the server
};

} // namespace terminal
