#pragma once

#include "terminal/feed/LiveFeed.h"
#include "terminal/feed/WireSubject.h"
#include "tests/feed/Eventually.h"
#include "tests/terminal/ScriptedFeed.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>

namespace tests {

/// A live feed of one day over any line, with a listener that keeps what it hears.
class LiveFeedFixture : public ::testing::Test {
protected:
    static constexpr int kDay = 1763654400; // 2025-11-21
    static constexpr quint64 kRun = 1000;

    using Bars = terminal::MinuteBars;

    static terminal::MinuteBar barOf(int minute, double price) {
        return {(kDay + minute * 60) * 1000LL, price, price, price, price, price, 100.0, 100.0 * price};
    }
    static terminal::WireBar changeOf(quint64 sequence, int minute, double price, qint32 span = 0) {
        terminal::WireBar record;
        record.run = kRun;
        record.sequence = sequence;
        record.span = span;
        record.day = kDay;
        record.published = 1;
        record.bar = barOf(minute, price);
        return record;
    }
    static terminal::WireBar keptOf(quint64 sequence, int minute, double price, qint32 span = 0) {
        terminal::WireBar record = changeOf(sequence, minute, price, span);
        record.kind = terminal::WireKind::Minute;
        return record;
    }
    static QByteArray beatAt(quint64 beat, int minute) {
        return terminal::encodeWire(terminal::WireClock{kRun, beat, 1, (kDay + minute * 60) * 1000LL, 1.0});
    }

    void openFeed(terminal::FeedLine &line, const terminal::LiveFeed::Times &times = {}) {
        terminal::LiveFeed::Market market;
        market.runningDay = [](const QString &key) { return key == QLatin1String("XX") ? 0 : kDay; };
        market.isAfterHours = [](const QString &, int day, qint64 time) {
            return time > (day + 900 * 60) * 1000LL;
        };
        market.onBeat = [this](const terminal::WireClock &beat) { mMarketTime = beat.market; };
        market.onSilence = [this] { ++mSilences; };
        market.isBehind = [this] {
            ++mLooks;
            return mIsBehind.load();
        };
        mFeed = std::make_unique<terminal::LiveFeed>(line, mPast, market, times);
        mFeed->start();
    }
    int listen(const QString &key) {
        const terminal::MarketFeed::Subscription subscription =
            mFeed->subscribe(key, kDay, [this](const terminal::MinuteUpdate &update) {
                std::lock_guard<std::mutex> hold(mLock);
                mHeard[update.key][update.bar.time] = update.bar;
                mEverHeard.push_back(update.bar);
            });
        std::lock_guard<std::mutex> hold(mLock);
        for (const terminal::MinuteBar &bar : subscription.bars) {
            mHeard[key][bar.time] = bar;
        }
        return subscription.id;
    }
    /// What the listener of an instrument has by now.
    Bars heard(const QString &key) {
        std::lock_guard<std::mutex> hold(mLock);
        Bars bars;
        for (const auto &[time, bar] : mHeard[key]) {
            bars.push_back(bar);
        }
        return bars;
    }
    bool isWhole() {
        return mFeed->report().line == terminal::LineState::Connected && mFeed->report().behind == 0;
    }
    std::string text() { return terminal::feedText(mFeed->report()).toStdString(); }

    ScriptedFeed mPast;
    std::atomic<qint64> mMarketTime{0};
    std::atomic<int> mSilences{0};
    std::atomic<bool> mIsBehind{false}; ///< what listeners were told is still under way
    std::atomic<int> mLooks{0}; ///< at that
    std::mutex mLock; ///< guards what follows
    std::map<QString, std::map<qint64, terminal::MinuteBar>> mHeard;
    Bars mEverHeard;
    std::unique_ptr<terminal::LiveFeed> mFeed; ///< last: its threads use the rest
};

} // namespace tests
