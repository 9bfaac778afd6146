#include "terminal/feeder/ExchangeSource.h"

#include <utility>

namespace terminal {

void ExchangeSource::follow(const Instrument &instrument, Followed &followed, Listener &listener) {
    const QString key = instrument.key();
    const int day = mExchange.runningDay(key);
    if (day == followed.day) {
        return;
    }
    mExchange.unsubscribe(std::exchange(followed.subscription, 0));
    followed.day = day;
    followed.hasAfterHours = instrument.hasAfterHours();
    followed.afterHours.clear();
    MarketFeed::Subscription subscription =
        mExchange.subscribe(key, day, [this](const MinuteUpdate &change) { mChanges.push_back(change); });
    followed.subscription = subscription.id;
    listener.onDay(key, day, subscription.bars);
}

void ExchangeSource::lookAfterHours(const QString &key, Followed &followed, Listener &listener) {
    MinuteBars bars = mExchange.afterHoursBars(key, followed.day);
    for (size_t i = 0; i < bars.size(); ++i) {
        if (i >= followed.afterHours.size() || bars[i] != followed.afterHours[i]) {
            listener.onChange({key, followed.day, bars[i]});
        }
    }
    followed.afterHours = std::move(bars);
}

void ExchangeSource::advance(Listener &listener) {
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    for (const Instrument &instrument : catalogue->instruments) {
        if (instrument.simulated) {
            follow(instrument, mFollowed[instrument.key()], listener);
        }
    }
    mExchange.advance();
    for (const MinuteUpdate &change : std::exchange(mChanges, {})) {
        listener.onChange(change);
    }
    for (auto followed = mFollowed.begin(); followed != mFollowed.end(); ++followed) {
        if (followed->hasAfterHours) {
            lookAfterHours(followed.key(), *followed, listener);
        }
    }
}

} // namespace terminal
