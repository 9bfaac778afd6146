#include "terminal/formula/BarStream.h"

#include <utility>

namespace terminal {
namespace {

constexpr int kLookMilliseconds = 1000; ///< between looks at the after-hours minutes

} // namespace

BarStream::BarStream(MarketFeed &feed, Worker &home, QString key, int day, bool isAfterHours)
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
                mHome.post([this, alive, bar = change.bar] {
                    if (mTake) {
                        mTake(bar);
                    }
                });
            }
        });
    mSubscription = subscription.id;
    return std::move(subscription.bars);
}

void BarStream::look(const std::shared_ptr<const void> &owner) {
    for (const MinuteBar &bar : mTake ? bars() : MinuteBars()) {
        mTake(bar);
    }
    if (mTake) {
        mHome.postAfter(kLookMilliseconds, [this, owner] { look(owner); });
    }
}

void BarStream::close() {
    mFeed.unsubscribe(std::exchange(mSubscription, 0));
    mTake = nullptr;
}

} // namespace terminal
