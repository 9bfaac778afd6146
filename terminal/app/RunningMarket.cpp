#include "terminal/app/RunningMarket.h"

#include "terminal/market/MarketDate.h"
#include "terminal/market/SimulatedDay.h"

#include <chrono>
#include <utility>

namespace terminal {
namespace {

constexpr auto kFirstBeat = std::chrono::milliseconds(1500); ///< that the start waits for

} // namespace

LiveFeed::Market RunningMarket::marketOfFeed() {
    LiveFeed::Market market;
    market.runningDay = [this](const QString &key) { return mExchange.runningDay(key); };
    market.isAfterHours = [this](const QString &key, int day, qint64 time) {
        const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
        const Instrument *instrument = catalogue->find(key);
        return instrument && instrument->hasAfterHours() && time > timeOf(dateOf(day), kStockClose);
    };
    market.onBeat = [this](const WireClock &beat) {
        mFollowed.onBeat(beat);
        {
            std::lock_guard<std::mutex> hold(mLock);
            mHasBeat = true;
        }
        mBeat.notify_all();
    };
    market.onSilence = [this] { mFollowed.onSilence(); };
    market.isBehind = [this] {
        std::lock_guard<std::mutex> hold(mLock);
        return mIsBehind && mIsBehind();
    };
    return market;
}

QString RunningMarket::follow(const QString &url) {
    FeedAddress address;
    const QString wrong = readAddress(url, address);
    if (!wrong.isEmpty()) {
        return wrong;
    }
    mLine = makeNatsLine(address);
    if (!mLine) {
        return QStringLiteral("this program was built without NATS: install libnats-dev and build it again");
    }
    mExchange.close();
    mLive = std::make_unique<LiveFeed>(*mLine, mExchange, marketOfFeed());
    mLive->start();
    std::unique_lock<std::mutex> hold(mLock);
    mBeat.wait_for(hold, kFirstBeat, [this] { return mHasBeat; });
    return {};
}

void RunningMarket::setBehindCheck(std::function<bool()> isBehind) {
    std::lock_guard<std::mutex> hold(mLock);
    mIsBehind = std::move(isBehind);
}

void RunningMarket::start() {
    mIsStarted = true;
    if (!mLive) {
        mClock.resume();
        mExchange.start();
    }
}

void RunningMarket::stop() {
    if (mLive) {
        mLive->stop();
    }
    mExchange.stop();
}

MarketFeed &RunningMarket::feed() {
    if (mLive) {
        return *mLive;
    }
    return mExchange;
}

QString RunningMarket::trouble() const {
    return mLive ? feedText(mLive->report()) : QString();
}

bool RunningMarket::setPaused(bool paused) {
    if (!hasOwnMarket()) {
        return false;
    }
    if (paused) {
        mClock.pause();
    } else {
        mClock.resume();
    }
    return paused;
}

} // namespace terminal
