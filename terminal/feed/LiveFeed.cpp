#include "terminal/feed/LiveFeed.h"

#include "terminal/feed/WireSubject.h"
#include "terminal/threads/SteadyTime.h"

#include <QDateTime>

#include <algorithm>
#include <iterator>
#include <utility>

namespace terminal {
namespace {

constexpr int kLookAround = 500; ///< milliseconds between looks at what has gone quiet

qint64 terminalNow() {
    return QDateTime::currentMSecsSinceEpoch();
}

} // namespace

/// A listener and how far it has been told.
struct LiveFeed::Subscriber {
    QString key;
    int day = 0;
    quint64 told = 0; ///< revision of the day; of the thread that calls
    std::recursive_mutex calling; ///< held while the listener runs; guards the following
    Listener listener;
    bool isActive = true;
    bool isCalled = false;

    void tell(const MinuteBars &bars) {
        std::lock_guard<std::recursive_mutex> hold(calling);
        isCalled = true;
        for (const MinuteBar &bar : bars) {
            if (isActive) {
                listener({key, day, bar});
            }
        }
        isCalled = false;
        if (!isActive) {
            listener = nullptr;
        }
    }
    void end() {
        std::lock_guard<std::recursive_mutex> hold(calling);
        isActive = false;
        if (!isCalled) {
            listener = nullptr;
        }
    }
};

/// An instrument that is listened to. Guarded by the feed's lock, but for what is the reader's.
struct LiveFeed::Followed {
    QString key;
    LiveDay day;
    qint64 askedAt = 0; ///< last time that somebody asked, by the terminal's clock
    qint64 behindSince = 0;
    bool hasNews = false; ///< it is in the feed's list of those
    std::vector<std::shared_ptr<Subscriber>> subscribers;
    bool isReadingWanted = false; ///< a reading is posted or to be repeated
    bool isGone = false;
    std::vector<int> ids; ///< of the line; the reader's
};

LiveFeed::LiveFeed(FeedLine &line, MarketFeed &past, Market market, const Times &times)
    : mLine(line), mPast(past), mMarket(std::move(market)), mTimes(times),
      mListeners(std::make_unique<Worker>()), mReader(std::make_unique<Worker>()) {
    mReport.lineSince = terminalNow();
}

LiveFeed::~LiveFeed() {
    stop();
}

void LiveFeed::start() {
    mLine.listen(clockSubject(), [this](const QByteArray &bytes) { onClock(bytes); });
    mLine.start([this](const LineFailure &state) { onLineState(state); });
    mReader->postAfter(kLookAround, [this] { lookAround(); });
}

void LiveFeed::stop() {
    {
        std::lock_guard<std::mutex> hold(mLock);
        if (std::exchange(mIsStopped, true)) {
            return;
        }
    }
    mLine.stop();
    mReader->finish();
    mListeners->finish();
}

FeedReport LiveFeed::report() const {
    std::lock_guard<std::mutex> hold(mLock);
    FeedReport report = mReport;
    for (const auto &[key, entry] : mFollowed) {
        if (entry->behindSince != 0) {
            ++report.behind;
            report.behindSince =
                report.behindSince == 0 ? entry->behindSince : std::min(report.behindSince, entry->behindSince);
        }
    }
    return report;
}

int LiveFeed::followed() const {
    std::lock_guard<std::mutex> hold(mLock);
    return static_cast<int>(mFollowed.size());
}

/// The entry of an instrument, which is listened to from now on.
LiveFeed::Entry LiveFeed::followLocked(const QString &key) {
    Entry &entry = mFollowed[key];
    if (!entry) {
        entry = std::make_shared<Followed>();
        entry->key = key;
        noteBehindLocked(entry);
        if (!mIsStopped) {
            mReader->post([this, opened = entry] { openEntry(opened); });
        }
    }
    entry->askedAt = terminalNow();
    return entry;
}

/// The minutes up to the close, or those after it.
MinuteBars LiveFeed::partOf(const QString &key, int day, const MinuteBars &bars, bool afterHours) const {
    MinuteBars part;
    std::copy_if(bars.begin(), bars.end(), std::back_inserter(part),
                 [&](const MinuteBar &bar) { return mMarket.isAfterHours(key, day, bar.time) == afterHours; });
    return part;
}

MinuteBars LiveFeed::runningBars(const QString &key, int day, bool afterHours) {
    MinuteBars bars;
    {
        std::lock_guard<std::mutex> hold(mLock);
        const Entry entry = followLocked(key);
        if (entry->day.day() == day) {
            bars = entry->day.bars();
        }
    }
    return partOf(key, day, bars, afterHours);
}

MinuteBars LiveFeed::dayBars(const QString &key, int day) {
    return day != 0 && mMarket.runningDay(key) == day ? runningBars(key, day, false) : mPast.dayBars(key, day);
}

MinuteBars LiveFeed::afterHoursBars(const QString &key, int day) {
    return day != 0 && mMarket.runningDay(key) == day ? runningBars(key, day, true)
                                                      : mPast.afterHoursBars(key, day);
}

MarketFeed::Subscription LiveFeed::subscribe(const QString &key, int day, Listener listener) {
    if (day == 0 || mMarket.runningDay(key) != day || !listener) {
        return {0, mPast.dayBars(key, day)};
    }
    auto subscriber = std::make_shared<Subscriber>();
    subscriber->key = key;
    subscriber->day = day;
    subscriber->listener = std::move(listener);
    Subscription subscription;
    {
        std::lock_guard<std::mutex> hold(mLock);
        const Entry entry = followLocked(key);
        if (entry->day.day() == day) {
            subscription.bars = entry->day.bars();
            subscriber->told = entry->day.revision();
        }
        subscription.id = ++mLastId;
        entry->subscribers.push_back(subscriber);
        mSubscribers[subscription.id] = std::move(subscriber);
    }
    subscription.bars = partOf(key, day, subscription.bars, false);
    return subscription;
}

void LiveFeed::unsubscribe(int id) {
    std::shared_ptr<Subscriber> subscriber;
    {
        std::lock_guard<std::mutex> hold(mLock);
        const auto found = mSubscribers.find(id);
        if (found == mSubscribers.end()) {
            return;
        }
        subscriber = std::move(found->second);
        mSubscribers.erase(found);
        std::vector<std::shared_ptr<Subscriber>> &all = mFollowed[subscriber->key]->subscribers;
        all.erase(std::find(all.begin(), all.end(), subscriber));
    }
    subscriber->end();
}

/// On the reader: from now on the changes come, and what was before them is read.
void LiveFeed::openEntry(const Entry &entry) {
    const std::weak_ptr<Followed> weak = entry;
    const auto take = [this, weak](const QByteArray &bytes) {
        if (const Entry alive = weak.lock()) {
            onRecord(alive, bytes, LiveDay::Origin::Live);
        }
    };
    entry->ids = {mLine.listen(changeSubject(entry->key), take), mLine.listen(minuteSubject(entry->key), take)};
    std::lock_guard<std::mutex> hold(mLock);
    wantReadingLocked(entry);
}

void LiveFeed::closeEntry(const Entry &entry) {
    for (const int id : std::exchange(entry->ids, {})) {
        mLine.forget(id);
    }
}

void LiveFeed::wantReadingLocked(const Entry &entry) {
    if (!std::exchange(entry->isReadingWanted, true) && !mIsStopped) {
        mReader->post([this, entry] { readEntry(entry); });
    }
}

/// On the reader: what the stream has. While there is no server nothing is tried; its return wants a reading.
void LiveFeed::readEntry(const Entry &entry) {
    {
        std::lock_guard<std::mutex> hold(mLock);
        entry->isReadingWanted = false;
        if (mIsStopped || entry->isGone || mReport.line != LineState::Connected) {
            return;
        }
    }
    const bool isWhole = mLine.readKept(minuteSubject(entry->key), [&](const QByteArray &bytes) {
        onRecord(entry, bytes, LiveDay::Origin::Stream);
    });
    std::lock_guard<std::mutex> hold(mLock);
    if (!isWhole) {
        if (!entry->isReadingWanted && !mIsStopped) {
            mReader->postAfter(mTimes.retry, [this, entry] {
                std::lock_guard<std::mutex> again(mLock);
                wantReadingLocked(entry);
            });
        }
        return;
    }
    if (!entry->isReadingWanted) { // else more was missed meanwhile
        entry->day.endReading();
    }
    noteBehindLocked(entry);
}

/// On the line's thread.
void LiveFeed::onLineState(const LineFailure &state) {
    std::lock_guard<std::mutex> hold(mLock);
    if (state.state != mReport.line) {
        mReport.line = state.state;
        mReport.lineSince = terminalNow();
    }
    mReport.silentSince = 0;
    mLastBeat = terminalNow(); // one is due from now on
    for (const auto &[key, entry] : mFollowed) {
        entry->day.loseTouch();
        noteBehindLocked(entry);
        if (state.state == LineState::Connected) {
            wantReadingLocked(entry);
        }
    }
    if (state.state != LineState::Connected) {
        mListeners->post(mMarket.onSilence);
    }
}

void LiveFeed::noteFaultLocked(WireFault fault) {
    if (fault != WireFault::NewerVersion) {
        ++mReport.garbage;
    } else if (mReport.newerSince == 0) {
        mReport.newerSince = terminalNow();
    }
}

void LiveFeed::noteBehindLocked(const Entry &entry) {
    if (!entry->day.isBehind()) {
        entry->behindSince = 0;
    } else if (entry->behindSince == 0) {
        entry->behindSince = terminalNow();
    }
}

void LiveFeed::onRecord(const Entry &entry, const QByteArray &bytes, LiveDay::Origin origin) {
    const WireRecord record = decodeWire(bytes);
    std::lock_guard<std::mutex> hold(mLock);
    if (const auto *bar = std::get_if<WireBar>(&record)) {
        const LiveDay::Taken taken = entry->day.take(*bar, origin);
        if (taken.isNews) {
            if (!std::exchange(entry->hasNews, true)) {
                mNews.push_back(entry);
            }
            postHandOutLocked();
        }
        if (taken.needsStream) {
            wantReadingLocked(entry);
        }
        noteBehindLocked(entry);
        return;
    }
    const auto *fault = std::get_if<WireFault>(&record);
    noteFaultLocked(fault ? *fault : WireFault::Garbage); // a beat has no place here
}

void LiveFeed::onClock(const QByteArray &bytes) {
    const WireRecord record = decodeWire(bytes);
    const auto *beat = std::get_if<WireClock>(&record);
    {
        std::lock_guard<std::mutex> hold(mLock);
        if (!beat) {
            const auto *fault = std::get_if<WireFault>(&record);
            noteFaultLocked(fault ? *fault : WireFault::Garbage);
            return;
        }
        mLastBeat = terminalNow();
        mReport.silentSince = 0;
    }
    mMarket.onBeat(*beat);
}

void LiveFeed::postHandOutLocked() {
    if (!mIsStopped && !std::exchange(mIsHandOutPosted, true)) {
        const auto sinceLast =
            static_cast<int>(std::min<qint64>(steadyMilliseconds() - mHandedOut, mTimes.pause));
        mListeners->postAfter(mTimes.pause - sinceLast, [this] { handOut(); });
    }
}

/// Whether the listeners have not done with what they were told last, for a while; then it is looked again.
bool LiveFeed::isHeldBack() {
    const bool isBehind = mMarket.isBehind && mMarket.isBehind();
    std::lock_guard<std::mutex> hold(mLock);
    if (!isBehind || mIsStopped || steadyMilliseconds() - mHandedOut > mTimes.patience) {
        return false;
    }
    mListeners->postAfter(mTimes.look, [this] { handOut(); });
    return true;
}

/// Tells every listener what is new to it, each minute as it is by now.
void LiveFeed::handOut() {
    if (isHeldBack()) {
        return;
    }
    std::vector<std::pair<std::shared_ptr<Subscriber>, MinuteBars>> due;
    {
        std::lock_guard<std::mutex> hold(mLock);
        mIsHandOutPosted = false;
        mHandedOut = steadyMilliseconds();
        for (const Entry &entry : std::exchange(mNews, {})) {
            entry->hasNews = false;
            for (const std::shared_ptr<Subscriber> &subscriber : entry->subscribers) {
                if (entry->day.day() == subscriber->day) {
                    due.emplace_back(subscriber, entry->day.barsSince(subscriber->told));
                    subscriber->told = entry->day.revision();
                }
            }
        }
    }
    for (const auto &[subscriber, bars] : due) {
        subscriber->tell(partOf(subscriber->key, subscriber->day, bars, false));
    }
}

/// On the reader, now and then: beats that do not come, instruments that nobody wants any more.
void LiveFeed::lookAround() {
    std::vector<Entry> gone;
    {
        std::lock_guard<std::mutex> hold(mLock);
        const qint64 now = terminalNow();
        if (mReport.line == LineState::Connected && mReport.silentSince == 0 &&
            now - mLastBeat > mTimes.silence) {
            mReport.silentSince = mLastBeat;
            mListeners->post(mMarket.onSilence);
        }
        for (auto entry = mFollowed.begin(); entry != mFollowed.end();) {
            if (!entry->second->subscribers.empty()) {
                entry->second->askedAt = now;
            }
            if (now - entry->second->askedAt <= mTimes.interest) {
                ++entry;
                continue;
            }
            entry->second->isGone = true;
            gone.push_back(std::move(entry->second));
            entry = mFollowed.erase(entry);
        }
    }
    for (const Entry &entry : gone) {
        closeEntry(entry);
    }
    mReader->postAfter(kLookAround, [this] { lookAround(); });
}

} // namespace terminal
