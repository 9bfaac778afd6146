#include "terminal/formula/BarStream.h"

#include <utility>

namespace terminal {
namespace {

constexpr int kLookMilliseconds = 1000; ///< between looks at the after-hours minutes

} // namespace

BarStream::BarStream(MarketFeed &feed, WorkPlace &home, QString key, int day, bool isAfterHours)
    : mFeed(feed), mHome(home), mKey(std::move(key)), mDay(day), mIsAfterHours(isAfterHours) {}

MinuteBars BarStream::bars() const {
    return mIsAfterHours ? mFeed.afterHoursBars(mKey, mDay) : mFeed.dayBars(mKey, mDay);
}

MinuteBars BarStream::open(const std::shared_ptr<const void> &owner, Take take) {
    mTake = std::move(take);
    if (mIsAfterHours) {
        mHome.postAfter(kLookMilliseconds, [this, owner] { look(owner); });
        return bars();
    }
    const std::weak_ptr<const void> weak = owner;
    MarketFeed::Subscription subscription =
        mFeed.subscribe(mKey, mDay, [this, weak](const MinuteUpdate &change) {
            if (const std::shared_ptr<const void> alive = weak.lock()) {
                note(change.bar, alive);
            }
        });
    mSubscription = subscription.id;
    return std::move(subscription.bars);
}

void BarStream::note(const MinuteBar &bar, const std::shared_ptr<const void> &owner) {
    bool isFirst = false;
    {
        std::lock_guard<std::mutex> hold(mLock);
        isFirst = mWaiting.empty();
        mWaiting[bar.time] = bar;
    }
    if (isFirst) {
        mHome.post([this, owner] { takeWaiting(); });
    }
}

void BarStream::takeWaiting() {
    std::map<qint64, MinuteBar> waiting;
    {
        std::lock_guard<std::mutex> hold(mLock);
        waiting.swap(mWaiting);
    }
    if (!mTake) {
        return;
    }
    MinuteBars bars;
    for (const auto &[time, bar] : waiting) {
        bars.push_back(bar);
    }
    mTake(bars);
}

void BarStream::look(const std::shared_ptr<const void> &owner) {
    if (mTake) {
        mTake(bars());
        mHome.postAfter(kLookMilliseconds, [this, owner] { look(owner); });
    }
}

void BarStream::close() {
    mFeed.unsubscribe(std::exchange(mSubscription, 0));
    mTake = nullptr;
}

} // namespace terminal
