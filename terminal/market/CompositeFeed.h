#pragma once

#include "terminal/market/CompositeBars.h"
#include "terminal/market/MarketFeed.h"

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace terminal {

/// The members of a key on a trading day, or nothing when the key is that of an instrument. Any thread.
using CompositionSource =
    std::function<std::optional<std::vector<CompositeMember>>(const QString &key, int day)>;

/// A feed that also knows user-defined indexes and portfolios: it computes them from their members, and a change of a
/// member changes them. Everything else is the other feed's.
class CompositeFeed : public MarketFeed {
public:
    /// The other feed has to outlive this one.
    CompositeFeed(MarketFeed &feed, CompositionSource source) : mFeed(feed), mSource(std::move(source)) {}

    MinuteBars dayBars(const QString &key, int day) override;
    /// None for a composite.
    MinuteBars afterHoursBars(const QString &key, int day) override;
    Subscription subscribe(const QString &key, int day, Listener listener) override;
    void unsubscribe(int id) override;

private:
    struct Composite;

    MarketFeed &mFeed;
    const CompositionSource mSource;
    std::mutex mLock; ///< guards what follows
    std::map<int, std::vector<int>> mParts; ///< subscriptions of the members, by that of the composite
    int mLastId = 0; ///< those of composites are negative
};

} // namespace terminal
