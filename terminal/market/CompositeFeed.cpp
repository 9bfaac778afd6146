#include "terminal/market/CompositeFeed.h"

#include <algorithm>
#include <utility>

namespace terminal {
namespace {

std::vector<MinuteBars> barsOf(MarketFeed &feed, const std::vector<CompositeMember> &members, int day) {
    std::vector<MinuteBars> bars;
    for (const CompositeMember &member : members) {
        bars.push_back(feed.dayBars(member.key, day));
    }
    return bars;
}

} // namespace

/// A composite that somebody listens to.
struct CompositeFeed::Composite {
    QString key;
    int day = 0;
    Listener listener;
    std::vector<CompositeMember> members;

    std::mutex lock; ///< guards what follows
    std::vector<MinuteBars> bars; ///< of the members
    MinuteBars composite;
    std::vector<std::pair<size_t, MinuteBar>> early; ///< changes that came before all members were there
    bool ready = false;

    /// On the feed's thread.
    void take(size_t member, const MinuteBar &bar) {
        MinuteBars changed;
        {
            std::lock_guard<std::mutex> hold(lock);
            if (!ready) {
                early.emplace_back(member, bar);
                return;
            }
            changed = takeMemberBar(members, bars, composite, member, bar);
        }
        for (const MinuteBar &minute : changed) {
            listener({key, day, minute});
        }
    }
    /// All bars of all members are there; answers the composite's.
    MinuteBars begin(std::vector<MinuteBars> first) {
        std::lock_guard<std::mutex> hold(lock);
        bars = std::move(first);
        composite = composeBars(members, bars);
        for (const auto &change : std::exchange(early, {})) {
            takeMemberBar(members, bars, composite, change.first, change.second);
        }
        ready = true;
        return composite;
    }
};

MinuteBars CompositeFeed::dayBars(const QString &key, int day) {
    const auto members = mSource(key, day);
    return members ? composeBars(*members, barsOf(mFeed, *members, day)) : mFeed.dayBars(key, day);
}

MinuteBars CompositeFeed::afterHoursBars(const QString &key, int day) {
    return mSource(key, day) ? MinuteBars() : mFeed.afterHoursBars(key, day);
}

MarketFeed::Subscription CompositeFeed::subscribe(const QString &key, int day, Listener listener) {
    auto members = mSource(key, day);
    if (!members) {
        return mFeed.subscribe(key, day, std::move(listener));
    }
    const auto composite = std::make_shared<Composite>();
    composite->key = key;
    composite->day = day;
    composite->listener = std::move(listener);
    composite->members = std::move(*members);
    std::vector<int> parts;
    std::vector<MinuteBars> bars;
    for (size_t i = 0; i < composite->members.size(); ++i) {
        Subscription part =
            mFeed.subscribe(composite->members[i].key, day,
                            [composite, i](const MinuteUpdate &update) { composite->take(i, update.bar); });
        if (part.id != 0) {
            parts.push_back(part.id);
        }
        bars.push_back(std::move(part.bars));
    }
    Subscription whole;
    whole.bars = composite->begin(std::move(bars));
    if (!parts.empty()) {
        std::lock_guard<std::mutex> hold(mLock);
        whole.id = --mLastId;
        mParts[whole.id] = std::move(parts);
    }
    return whole;
}

void CompositeFeed::unsubscribe(int id) {
    if (id >= 0) {
        mFeed.unsubscribe(id);
        return;
    }
    std::vector<int> parts;
    {
        std::lock_guard<std::mutex> hold(mLock);
        const auto found = mParts.find(id);
        if (found != mParts.end()) {
            parts = std::move(found->second);
            mParts.erase(found);
        }
    }
    for (const int part : parts) {
        mFeed.unsubscribe(part);
    }
}

} // namespace terminal
