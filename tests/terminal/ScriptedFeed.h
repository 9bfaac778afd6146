#pragma once

#include "terminal/market/MarketFeed.h"

#include <QMap>
#include <QPair>

#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>

namespace tests {

/// A feed whose days and changes the test writes. One day runs; its changes reach the listeners on the thread that
/// calls change().
class ScriptedFeed : public terminal::MarketFeed {
public:
    using Bars = terminal::MinuteBars;

    void setBars(const QString &key, int day, Bars bars) { mBars[{key, day}] = std::move(bars); }
    void setAfterHours(const QString &key, int day, Bars bars) {
        std::lock_guard<std::mutex> hold(mLock);
        mAfterHours[{key, day}] = std::move(bars);
    }
    void setRunningDay(int day) { mRunningDay = day; }

    Bars dayBars(const QString &key, int day) override {
        std::lock_guard<std::mutex> hold(mLock);
        return mBars.value({key, day});
    }
    Bars afterHoursBars(const QString &key, int day) override {
        std::lock_guard<std::mutex> hold(mLock);
        return mAfterHours.value({key, day});
    }
    Subscription subscribe(const QString &key, int day, Listener listener) override {
        std::lock_guard<std::mutex> hold(mLock);
        Subscription subscription;
        subscription.bars = mBars.value({key, day});
        if (day == mRunningDay) {
            subscription.id = ++mLastId;
            mListeners[subscription.id] = {key, day, std::make_shared<Listener>(std::move(listener))};
        }
        return subscription;
    }
    void unsubscribe(int id) override {
        Entry gone; // released outside the lock
        std::unique_lock<std::mutex> hold(mLock);
        const auto found = mListeners.find(id);
        if (found != mListeners.end()) {
            gone = std::move(found->second);
            mListeners.erase(found);
        }
        mIdle.wait(hold, [this] { return !mCalling; });
    }

    /// Changes the running day of an instrument and tells its listeners, one call at a time.
    void change(const QString &key, const terminal::MinuteBar &bar) {
        std::vector<std::shared_ptr<Listener>> listeners;
        terminal::MinuteUpdate update{key, mRunningDay, bar};
        {
            std::unique_lock<std::mutex> hold(mLock);
            mIdle.wait(hold, [this] { return !mCalling; });
            mCalling = true;
            Bars &bars = mBars[{key, mRunningDay}];
            auto place = bars.begin();
            while (place != bars.end() && place->time < bar.time) {
                ++place;
            }
            if (place != bars.end() && place->time == bar.time) {
                *place = bar;
            } else {
                bars.insert(place, bar);
            }
            for (const auto &entry : mListeners) {
                if (entry.second.key == key) {
                    listeners.push_back(entry.second.listener);
                }
            }
        }
        for (const auto &listener : listeners) {
            (*listener)(update);
        }
        listeners.clear();
        std::lock_guard<std::mutex> hold(mLock);
        mCalling = false;
        mIdle.notify_all();
    }

    int listeners() const {
        std::lock_guard<std::mutex> hold(mLock);
        return static_cast<int>(mListeners.size());
    }

private:
    struct Entry {
        QString key;
        int day = 0;
        std::shared_ptr<Listener> listener;
    };

    mutable std::mutex mLock; ///< guards what follows
    std::condition_variable mIdle;
    QMap<QPair<QString, int>, Bars> mBars;
    QMap<QPair<QString, int>, Bars> mAfterHours;
    std::map<int, Entry> mListeners;
    int mRunningDay = 0;
    int mLastId = 0;
    bool mCalling = false;
};

} // namespace tests
