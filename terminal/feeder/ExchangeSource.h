#pragma once

#include "terminal/feeder/FeedSource.h"
#include "terminal/market/SimulatedExchange.h"

#include <QHash>

namespace terminal {

/// The simulated exchange with all of its instruments.
class ExchangeSource : public FeedSource {
public:
    /// The store is filled; both outlive the source.
    ExchangeSource(CMarketStore &store, const SimulatedClock &clock) : mStore(store), mExchange(store, clock) {}

    void advance(Listener &listener) override;

private:
    struct Followed {
        int day = 0;
        int subscription = 0;
        bool hasAfterHours = false;
        MinuteBars afterHours; ///< as told
    };

    void follow(const Instrument &instrument, Followed &followed, Listener &listener);
    void lookAfterHours(const QString &key, Followed &followed, Listener &listener);

    CMarketStore &mStore;
    SimulatedExchange mExchange;
    QHash<QString, Followed> mFollowed; ///< by key
    std::vector<MinuteUpdate> mChanges; ///< of the advance that is under way
};

} // namespace terminal
