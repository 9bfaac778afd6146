#pragma once

#include "terminal/market/MarketFeed.h"

namespace terminal {

/// A market that can be published: it tells what happens up to the time of its clock.
class FeedSource {
public:
    class Listener {
    public:
        virtual ~Listener() = default;
        /// An instrument has come to this trading day; its bars so far.
        virtual void onDay(const QString &key, int day, const MinuteBars &bars) = 0;
        virtual void onChange(const MinuteUpdate &change) = 0;
    };

    virtual ~FeedSource() = default;
    /// Tells what has happened since the last call. One thread.
    virtual void advance(Listener &listener) = 0;
};

} // namespace terminal
