#include "tests/feed/LiveFeedFixture.h"

using namespace terminal;
using tests::eventually;

namespace {

/// A line whose messages the test writes; they come on the thread that calls send().
class ScriptedLine : public FeedLine {
public:
    void start(StateListener listener) override { mState = std::move(listener); }
    void stop() override {
        std::lock_guard<std::recursive_mutex> hold(mLock);
        mTakes.clear();
    }
    int listen(const QByteArray &subject, Take take) override {
        std::lock_guard<std::recursive_mutex> hold(mLock);
        mTakes[++mLastId] = {subject, std::move(take)};
        return mLastId;
    }
    void forget(int id) override {
        std::lock_guard<std::recursive_mutex> hold(mLock);
        mTakes.erase(id);
    }
    bool readKept(const QByteArray &subject, const Take &take) override {
        std::vector<QByteArray> kept;
        {
            std::lock_guard<std::recursive_mutex> hold(mLock);
            ++mReadings;
            if (mFailures > 0) {
                --mFailures;
                return false;
            }
            kept = mKept[subject];
        }
        for (const QByteArray &bytes : kept) {
            take(bytes);
        }
        return true;
    }

    void connect() { mState({LineState::Connected, {}}); }
    void lose() { mState({LineState::Connecting, {}}); }
    void send(const QByteArray &subject, const QByteArray &bytes) {
        std::lock_guard<std::recursive_mutex> hold(mLock);
        for (const auto &[id, entry] : std::map<int, std::pair<QByteArray, Take>>(mTakes)) {
            if (entry.first == subject) {
                entry.second(bytes);
            }
        }
    }
    void keep(const QString &key, const WireBar &record) {
        std::lock_guard<std::recursive_mutex> hold(mLock);
        mKept[minuteSubject(key)].push_back(encodeWire(record));
    }
    std::multiset<std::string> subjects() {
        std::lock_guard<std::recursive_mutex> hold(mLock);
        std::multiset<std::string> subjects;
        for (const auto &[id, entry] : mTakes) {
            subjects.insert(entry.first.toStdString());
        }
        return subjects;
    }
    int readings() {
        std::lock_guard<std::recursive_mutex> hold(mLock);
        return mReadings;
    }
    void failReadings(int count) {
        std::lock_guard<std::recursive_mutex> hold(mLock);
        mFailures = count;
    }

private:
    StateListener mState;
    std::recursive_mutex mLock; ///< guards what follows
    std::map<int, std::pair<QByteArray, Take>> mTakes;
    std::map<QByteArray, std::vector<QByteArray>> mKept;
    int mLastId = 0;
    int mReadings = 0;
    int mFailures = 0;
};

class LiveFeedTest : public tests::LiveFeedFixture {
protected:
    ~LiveFeedTest() override { mFeed.reset(); }

    void openConnected(const LiveFeed::Times &times = {}) {
        openFeed(mLine, times);
        mLine.connect();
    }
    /// An instrument is listened to, its first change is heard, and from then on the listeners are behind.
    bool fallBehindAfterOneChange(const LiveFeed::Times &times) {
        openConnected(times);
        listen("SH600000");
        const bool isListening = eventually([&] { return isListenedTo("SH600000"); });
        sendChange("SH600000", changeOf(1, 571, 10.0));
        const bool isHeard = eventually([&] { return heard("SH600000").size() == 1; });
        mIsBehind = true;
        return isListening && isHeard;
    }
    void sendChange(const QString &key, const WireBar &record) {
        mLine.send(changeSubject(key), encodeWire(record));
    }
    bool isListenedTo(const QString &key) {
        return mLine.subjects().count(minuteSubject(key).toStdString()) > 0;
    }

    ScriptedLine mLine;
};

} // namespace

TEST_F(LiveFeedTest, NothingIsListenedToButTheBeatAndWhatIsShown) {
    openConnected();
    EXPECT_EQ(mLine.subjects(), (std::multiset<std::string>{"md.clock"}));
    listen("SH600000");
    listen("SH600000");
    const std::multiset<std::string> wanted{"md.clock", "md.tick.SH600000", "md.min.SH600000"};
    EXPECT_TRUE(eventually([&] { return mLine.subjects() == wanted; }));
    EXPECT_EQ(mFeed->followed(), 1);
}

TEST_F(LiveFeedTest, WhatNobodyWantsAnyMoreIsForgotten) {
    LiveFeed::Times times;
    times.interest = 0;
    openConnected(times);
    const int id = listen("SH600000");
    ASSERT_TRUE(eventually([&] { return isListenedTo("SH600000"); }));
    EXPECT_TRUE(mFeed->dayBars("SZ000001", kDay).empty());
    ASSERT_TRUE(eventually([&] { return isListenedTo("SZ000001"); })) << "a question is an interest";
    ASSERT_TRUE(eventually([&] { return !isListenedTo("SZ000001"); }));
    EXPECT_TRUE(isListenedTo("SH600000")) << "somebody has subscribed to it";
    mFeed->unsubscribe(id);
    EXPECT_TRUE(eventually([&] { return mLine.subjects().size() == 1; }));
    EXPECT_EQ(mFeed->followed(), 0);
}

TEST_F(LiveFeedTest, PastDaysAndUnknownInstrumentsAreTheOtherFeeds) {
    mPast.setBars("SH600000", kDay - 86400, {barOf(571, 9.0)});
    openConnected();
    EXPECT_EQ(mFeed->dayBars("SH600000", kDay - 86400), Bars{barOf(571, 9.0)});
    EXPECT_EQ(mFeed->subscribe("SH600000", kDay - 86400, [](const MinuteUpdate &) {}).id, 0);
    EXPECT_EQ(mFeed->subscribe("XX", kDay, [](const MinuteUpdate &) {}).id, 0);
    EXPECT_TRUE(mFeed->dayBars("XX", 0).empty());
    EXPECT_EQ(mFeed->followed(), 0);
}

TEST_F(LiveFeedTest, TheMorningIsReadAndTheChangesFollow) {
    mLine.keep("SH600000", keptOf(1, 571, 10.1));
    mLine.keep("SH600000", keptOf(2, 572, 10.2));
    openConnected();
    listen("SH600000");
    ASSERT_TRUE(eventually([&] { return isWhole() && heard("SH600000").size() == 2; }));
    sendChange("SH600000", changeOf(3, 573, 10.3));
    const Bars whole{barOf(571, 10.1), barOf(572, 10.2), barOf(573, 10.3)};
    EXPECT_TRUE(eventually([&] { return heard("SH600000") == whole; }));
    EXPECT_EQ(mFeed->dayBars("SH600000", kDay), whole);
    EXPECT_EQ(text(), "");
}

TEST_F(LiveFeedTest, ASubscriberHearsNothingThatItHasAlready) {
    openConnected();
    listen("SH600000");
    ASSERT_TRUE(eventually([&] { return isListenedTo("SH600000"); }));
    sendChange("SH600000", changeOf(1, 571, 10.1));
    ASSERT_TRUE(eventually([&] { return heard("SH600000").size() == 1; }));
    Bars late;
    const MarketFeed::Subscription second =
        mFeed->subscribe("SH600000", kDay, [&](const MinuteUpdate &update) { late.push_back(update.bar); });
    EXPECT_EQ(second.bars, Bars{barOf(571, 10.1)});
    sendChange("SH600000", changeOf(2, 572, 10.2));
    ASSERT_TRUE(eventually([&] { return heard("SH600000").size() == 2; }));
    mFeed->unsubscribe(second.id); // its call is over
    EXPECT_TRUE(late.empty() || late == Bars{barOf(572, 10.2)});
}

TEST_F(LiveFeedTest, AListenerMayEndItsOwnSubscription) {
    openConnected();
    std::atomic<int> calls{0};
    std::atomic<int> id{0};
    id = mFeed
             ->subscribe("SH600000", kDay,
                         [&](const MinuteUpdate &) {
                             ++calls;
                             mFeed->unsubscribe(id);
                         })
             .id;
    ASSERT_TRUE(eventually([&] { return isListenedTo("SH600000"); }));
    sendChange("SH600000", changeOf(1, 571, 10.1));
    ASSERT_TRUE(eventually([&] { return calls == 1; }));
    listen("SH600000");
    sendChange("SH600000", changeOf(2, 572, 10.1));
    ASSERT_TRUE(eventually([&] { return heard("SH600000").size() == 2; }));
    EXPECT_EQ(calls, 1);
}

TEST_F(LiveFeedTest, ABurstIsMergedAndNotQueued) {
    openConnected();
    std::mutex gate;
    gate.lock();
    std::atomic<int> calls{0};
    Bars taken;
    const int id = mFeed
                       ->subscribe("SH600000", kDay,
                                   [&](const MinuteUpdate &update) {
                                       if (++calls == 1) {
                                           gate.lock(); // busy with the first
                                           gate.unlock();
                                       }
                                       taken.push_back(update.bar);
                                   })
                       .id;
    ASSERT_TRUE(eventually([&] { return isListenedTo("SH600000"); }));
    sendChange("SH600000", changeOf(1, 571, 10.0));
    ASSERT_TRUE(eventually([&] { return calls == 1; }));
    for (int i = 2; i <= 10000; ++i) {
        sendChange("SH600000", changeOf(i, 572, 10.0 + i * 0.01, i - 2));
    }
    gate.unlock();
    ASSERT_TRUE(eventually([&] { return calls == 2; }));
    mFeed->unsubscribe(id);
    EXPECT_EQ(taken, (Bars{barOf(571, 10.0), barOf(572, 110.0)}));
}

TEST_F(LiveFeedTest, WhileListenersAreBehindAllElseIsMerged) {
    LiveFeed::Times times;
    times.patience = 1000000;
    ASSERT_TRUE(fallBehindAfterOneChange(times));
    for (int i = 2; i <= 100; ++i) {
        sendChange("SH600000", changeOf(i, 572, 10.0 + i * 0.01, i - 2));
    }
    mLooks = 0;
    ASSERT_TRUE(eventually([&] { return mLooks >= 3; })) << "looked at again and again";
    EXPECT_EQ(heard("SH600000").size(), 1u);
    mIsBehind = false;
    ASSERT_TRUE(eventually([&] { return heard("SH600000").size() == 2; }));
    std::lock_guard<std::mutex> hold(mLock);
    EXPECT_EQ(mEverHeard, (Bars{barOf(571, 10.0), barOf(572, 11.0)}));
}

TEST_F(LiveFeedTest, ListenersThatWereBehindAreToldSoonWhateverThePause) {
    LiveFeed::Times times;
    times.pause = 2000;
    times.patience = 1000000;
    ASSERT_TRUE(fallBehindAfterOneChange(times));
    mLooks = 0;
    sendChange("SH600000", changeOf(2, 572, 10.0));
    ASSERT_TRUE(eventually([&] { return mLooks > 0; }));
    const auto begun = std::chrono::steady_clock::now();
    ASSERT_TRUE(eventually([&] { return mLooks > 10; }));
    mIsBehind = false;
    EXPECT_TRUE(eventually([&] { return heard("SH600000").size() == 2; }));
    EXPECT_LT(std::chrono::steady_clock::now() - begun, std::chrono::seconds(10)) << "10 pauses are 20";
}

TEST_F(LiveFeedTest, ListenersThatAreBehindForLongAreToldAnyway) {
    LiveFeed::Times times;
    times.patience = 30;
    openConnected(times);
    listen("SH600000");
    ASSERT_TRUE(eventually([&] { return isListenedTo("SH600000"); }));
    mIsBehind = true;
    for (int minute = 571; minute < 574; ++minute) {
        sendChange("SH600000", changeOf(minute - 570, minute, 10.0));
        EXPECT_TRUE(eventually([&] { return heard("SH600000").size() == static_cast<size_t>(minute - 570); }));
    }
}

TEST_F(LiveFeedTest, AGapIsToldAndFilledInOrder) {
    openConnected();
    listen("SH600000");
    ASSERT_TRUE(eventually([&] { return isListenedTo("SH600000") && isWhole(); }));
    sendChange("SH600000", changeOf(1, 571, 10.1));
    ASSERT_TRUE(
        eventually([&] { return isWhole() && mLine.readings() == 2; })); // the first of a run wants one more
    sendChange("SH600000", changeOf(4, 573, 10.3)); // 2 of 09:31 and 3 of 09:32 are lost
    ASSERT_TRUE(eventually([&] { return heard("SH600000").size() == 2; }));
    EXPECT_EQ(mFeed->report().behind, 1);
    EXPECT_THAT(text(), ::testing::HasSubstr("1 个证券的分时数据不全（自 "));
    mLine.keep("SH600000", keptOf(2, 571, 10.15));
    mLine.keep("SH600000", keptOf(3, 572, 10.2));
    mLine.send(minuteSubject("SH600000"), encodeWire(keptOf(3, 572, 10.2)));
    const Bars whole{barOf(571, 10.15), barOf(572, 10.2), barOf(573, 10.3)};
    EXPECT_TRUE(eventually([&] { return isWhole() && heard("SH600000") == whole; }));
    EXPECT_EQ(text(), "");
}

TEST_F(LiveFeedTest, AReadingThatFailsIsTriedAgain) {
    LiveFeed::Times times;
    times.retry = 1;
    mLine.keep("SH600000", keptOf(1, 571, 10.1));
    mLine.failReadings(3);
    openConnected(times);
    listen("SH600000");
    EXPECT_TRUE(eventually([&] { return isWhole() && heard("SH600000").size() == 1; }));
    EXPECT_EQ(mLine.readings(), 4);
}

TEST_F(LiveFeedTest, ANewerVersionIsToldAndNotShown) {
    openConnected();
    listen("SH600000");
    ASSERT_TRUE(eventually([&] { return isListenedTo("SH600000"); }));
    QByteArray newer = encodeWire(changeOf(1, 571, 10.1));
    newer[2] = 2;
    mLine.send(changeSubject("SH600000"), newer);
    EXPECT_THAT(text(), ::testing::HasSubstr("行情源的数据版本高于本程序（自 "));
    EXPECT_TRUE(mFeed->dayBars("SH600000", kDay).empty());
}

TEST_F(LiveFeedTest, GarbageIsCountedAndDropped) {
    openConnected();
    listen("SH600000");
    ASSERT_TRUE(eventually([&] { return isListenedTo("SH600000"); }));
    mLine.send(changeSubject("SH600000"), "nonsense");
    mLine.send(changeSubject("SH600000"), encodeWire(changeOf(1, 571, 10.1)).left(50));
    mLine.send(changeSubject("SH600000"), beatAt(1, 571)); // has no place there
    mLine.send(clockSubject(), encodeWire(changeOf(1, 571, 10.1)));
    EXPECT_EQ(mFeed->report().garbage, 4);
    EXPECT_TRUE(mFeed->dayBars("SH600000", kDay).empty());
}

TEST_F(LiveFeedTest, ALostServerIsToldAndItsReturnReadsTheStream) {
    openConnected();
    listen("SH600000");
    ASSERT_TRUE(eventually([&] { return isListenedTo("SH600000") && isWhole(); }));
    sendChange("SH600000", changeOf(1, 571, 10.1));
    mLine.lose();
    EXPECT_THAT(text(), ::testing::HasSubstr("行情服务器连接不上（自 "));
    EXPECT_TRUE(eventually([&] { return mSilences > 0; }));
    EXPECT_EQ(mFeed->dayBars("SH600000", kDay), Bars{barOf(571, 10.1)}); // what there is
    mLine.keep("SH600000", keptOf(1, 571, 10.1));
    mLine.keep("SH600000", keptOf(2, 572, 10.2));
    mLine.connect();
    EXPECT_TRUE(eventually([&] { return isWhole() && heard("SH600000").size() == 2; }));
    EXPECT_EQ(text(), "");
}

TEST_F(LiveFeedTest, ASilentMarketIsTold) {
    LiveFeed::Times times;
    times.silence = 1;
    openConnected(times);
    mLine.send(clockSubject(), beatAt(1, 571));
    EXPECT_EQ(mMarketTime, (kDay + 571 * 60) * 1000LL);
    EXPECT_TRUE(eventually([&] { return mSilences > 0 && mFeed->report().silentSince != 0; }));
    EXPECT_THAT(text(), ::testing::HasSubstr("行情源没有消息（自 "));
    mLine.send(clockSubject(), beatAt(2, 572));
    EXPECT_EQ(mMarketTime, (kDay + 572 * 60) * 1000LL);
}

TEST_F(LiveFeedTest, MinutesAfterTheCloseAreAskedForByThemselves) {
    openConnected();
    listen("SZ300001");
    ASSERT_TRUE(eventually([&] { return isListenedTo("SZ300001"); }));
    sendChange("SZ300001", changeOf(1, 900, 10.1)); // 15:00
    sendChange("SZ300001", changeOf(2, 910, 10.1));
    ASSERT_TRUE(eventually([&] { return heard("SZ300001").size() == 1; }));
    EXPECT_EQ(mFeed->dayBars("SZ300001", kDay), Bars{barOf(900, 10.1)});
    EXPECT_EQ(mFeed->afterHoursBars("SZ300001", kDay), Bars{barOf(910, 10.1)});
}

TEST_F(LiveFeedTest, NoListenerIsCalledAfterTheEnd) {
    openConnected();
    listen("SH600000");
    ASSERT_TRUE(eventually([&] { return isListenedTo("SH600000"); }));
    sendChange("SH600000", changeOf(1, 571, 10.1));
    mFeed->stop();
    const size_t before = heard("SH600000").size();
    EXPECT_TRUE(mFeed->dayBars("SZ000001", kDay).empty()); // harmless
    EXPECT_EQ(heard("SH600000").size(), before);
}
