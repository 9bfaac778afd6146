#include "terminal/market/SimulatedExchange.h"
#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketFill.h"
#include "terminal/market/SimulatedDay.h"
#include "terminal/market/SimulatedTicks.h"
#include "tests/terminal/Samples.h"
#include "tests/terminal/StoreFixture.h"

#include <atomic>
#include <cmath>
#include <condition_variable>
#include <map>

using namespace terminal;
using tests::clockTime;
using tests::kFriday;
using tests::kShare;

namespace {

/// A real time that moves when it is told to.
struct HandClock {
    std::shared_ptr<std::atomic<qint64>> real = std::make_shared<std::atomic<qint64>>(1000);
    SimulatedClock::RealTime source() const {
        return [now = real] { return now->load(); };
    }
};

class SimulatedExchangeTest : public StoreFixture {
protected:
    void SetUp() override { openFilledStore(clockTime(kFriday, 9, 25)); }
    MinuteBars whole(const QString &key) {
        return mStore.bars(mStore.catalogue()->find(key)->id, dayOf(kFriday));
    }

    HandClock mHand;
    SimulatedClock mClock{clockTime(kFriday, 9, 25), 1.0, mHand.source()};
    SimulatedExchange mExchange{mStore, mClock};
};

/// The bars that somebody has who follows the updates.
class Follower {
public:
    explicit Follower(const MinuteBars &bars) {
        for (const MinuteBar &bar : bars) {
            mBars[bar.time] = bar;
        }
    }
    void take(const MinuteUpdate &update) {
        ++mUpdates;
        mRevised += !mBars.empty() && update.bar.time < mBars.rbegin()->first ? 1 : 0;
        mBars[update.bar.time] = update.bar;
    }
    MinuteBars bars() const {
        MinuteBars all;
        for (const auto &entry : mBars) {
            all.push_back(entry.second);
        }
        return all;
    }
    std::map<qint64, MinuteBar> mBars;
    int mUpdates = 0;
    int mRevised = 0;
};

} // namespace

TEST(SimulatedClock, RunsAtItsPaceUntilItIsPaused) {
    HandClock hand;
    SimulatedClock clock(clockTime(kFriday, 9, 30), 60.0, hand.source());
    EXPECT_EQ(clock.now(), clockTime(kFriday, 9, 30));
    *hand.real += 1000;
    EXPECT_EQ(clock.now(), clockTime(kFriday, 9, 31));
    clock.pause();
    *hand.real += 5000;
    EXPECT_EQ(clock.now(), clockTime(kFriday, 9, 31));
    EXPECT_TRUE(clock.isPaused());
    clock.resume();
    *hand.real += 500;
    EXPECT_EQ(clock.now(), clockTime(kFriday, 9, 31, 30));
    clock.setPace(1.0);
    *hand.real += 30000;
    EXPECT_EQ(clock.now(), clockTime(kFriday, 9, 32));
    clock.setTime(clockTime(kFriday, 13, 0));
    *hand.real += 1000;
    EXPECT_EQ(clock.now(), clockTime(kFriday, 13, 0, 1));
}

TEST(SimulatedClock, ItsPaceIsHeldWithinOneAndSixHundred) {
    SimulatedClock clock(0);
    for (double pace : {0.0, -5.0, std::nan("")}) {
        clock.setPace(pace);
        EXPECT_EQ(clock.pace(), 1.0);
    }
    clock.setPace(1e9);
    EXPECT_EQ(clock.pace(), 600.0);
}

TEST(SimulatedClock, TellsTheClockOfTheExchange) {
    HandClock hand;
    const SimulatedClock clock(clockTime(kFriday, 9, 30), 1.0, hand.source());
    EXPECT_EQ(clock.currentDateTime().time(), QTime(9, 30));
    EXPECT_EQ(clock.currentDateTime().date(), kFriday);
    EXPECT_EQ(clock.currentDateTime().toMSecsSinceEpoch(), clockTime(kFriday, 9, 30));
}

TEST(SimulatedTicks, ABarGrowsUntilItIsWhole) {
    const MinuteBars day{{clockTime(kFriday, 9, 30), 10, 10, 10, 10, 10, 100, 1000},
                         {clockTime(kFriday, 9, 31), 10, 12, 9, 11, 10.4, 5000, 52500}};
    const std::vector<SimulatedTick> ticks = ticksOfBar(day, 1, 3);
    ASSERT_GE(ticks.size(), 4u);
    for (size_t i = 0; i < ticks.size(); ++i) {
        EXPECT_GT(ticks[i].at, clockTime(kFriday, 9, 30));
        EXPECT_LE(ticks[i].at, clockTime(kFriday, 9, 31) + kLongestLag);
        EXPECT_EQ(ticks[i].bar.time, clockTime(kFriday, 9, 31));
        EXPECT_EQ(ticks[i].bar.open, 10.0);
        EXPECT_LE(ticks[i].bar.high, 12.0);
        EXPECT_GE(ticks[i].bar.low, 9.0);
        EXPECT_TRUE(i == 0 ||
                    (ticks[i].at >= ticks[i - 1].at && ticks[i].bar.volume >= ticks[i - 1].bar.volume));
    }
    EXPECT_EQ(ticks.back().bar, day[1]);
}

TEST(SimulatedTicks, TheAuctionComesAtOnceBeforeTradingStarts) {
    const MinuteBars day{{clockTime(kFriday, 9, 30), 10, 10, 10, 10, 10, 100, 1000}};
    const std::vector<SimulatedTick> ticks = ticksOfBar(day, 0, 3);
    ASSERT_EQ(ticks.size(), 1u);
    EXPECT_EQ(ticks[0].at, clockTime(kFriday, 9, 25));
    EXPECT_TRUE(barsAt(day, clockTime(kFriday, 9, 25) - 1, 3).empty());
    EXPECT_EQ(barsAt(day, clockTime(kFriday, 9, 25), 3), day);
}

TEST_F(SimulatedExchangeTest, ADayComesPieceByPieceAndEndsAsTheStoredOne) {
    const MinuteBars expected = whole(kShare);
    const auto start = mExchange.subscribe(kShare, dayOf(kFriday), [](const MinuteUpdate &) {});
    EXPECT_EQ(start.bars.size(), 1u); // the auction
    Follower follower(start.bars);
    mExchange.unsubscribe(start.id);
    const auto stream = mExchange.subscribe(kShare, dayOf(kFriday), [&](const MinuteUpdate &update) {
        EXPECT_EQ(update.key, kShare);
        EXPECT_EQ(update.day, dayOf(kFriday));
        follower.take(update);
    });
    ASSERT_GT(stream.id, 0);
    for (int second = 0; second < 6 * 3600; second += 7) {
        *mHand.real += 7000;
        mExchange.advance();
        if (second % 3600 < 7) {
            EXPECT_EQ(follower.bars(), mExchange.dayBars(kShare, dayOf(kFriday)));
        }
    }
    EXPECT_EQ(follower.bars(), expected);
    EXPECT_GT(follower.mUpdates, 1000);
    EXPECT_GT(follower.mRevised, 0);
}

TEST_F(SimulatedExchangeTest, AnyStepsGiveTheSameUpdates) {
    std::vector<MinuteBar> fine;
    std::vector<MinuteBar> coarse;
    const int first =
        mExchange.subscribe(kShare, dayOf(kFriday), [&](const MinuteUpdate &u) { fine.push_back(u.bar); }).id;
    for (int i = 0; i < 600; ++i) {
        *mHand.real += 3000;
        mExchange.advance();
    }
    mExchange.unsubscribe(first);
    mClock.setTime(clockTime(kFriday, 9, 25));
    mExchange.subscribe(kShare, dayOf(kFriday), [&](const MinuteUpdate &u) { coarse.push_back(u.bar); });
    *mHand.real += 1800000;
    mExchange.advance();
    EXPECT_FALSE(fine.empty());
    EXPECT_EQ(fine, coarse);
}

TEST_F(SimulatedExchangeTest, NothingComesWhileTheClockIsPaused) {
    int updates = 0;
    mExchange.subscribe(kShare, dayOf(kFriday), [&](const MinuteUpdate &) { ++updates; });
    mClock.setTime(clockTime(kFriday, 9, 45));
    mExchange.advance();
    const int before = updates;
    EXPECT_GT(before, 0);
    mClock.pause();
    *mHand.real += 600000;
    mExchange.advance();
    EXPECT_EQ(updates, before);
}

TEST_F(SimulatedExchangeTest, APastDayIsWholeAndDoesNotRun) {
    const int yesterday = dayOf(QDate(2026, 11, 19));
    const auto subscription = mExchange.subscribe(kShare, yesterday, [](const MinuteUpdate &) {});
    EXPECT_EQ(subscription.id, 0);
    EXPECT_EQ(subscription.bars, mStore.bars(mStore.catalogue()->find(kShare)->id, yesterday));
    EXPECT_FALSE(subscription.bars.empty());
}

TEST_F(SimulatedExchangeTest, OtherDaysAndUnknownInstrumentsAreEmpty) {
    EXPECT_TRUE(mExchange.dayBars(kShare, dayOf(QDate(2026, 11, 21))).empty());
    EXPECT_TRUE(mExchange.dayBars(kShare, dayOf(QDate(2026, 11, 23))).empty());
    EXPECT_TRUE(mExchange.dayBars(kShare, dayOf(QDate(2020, 1, 2))).empty());
    EXPECT_TRUE(mExchange.dayBars(QStringLiteral("SH999999"), dayOf(kFriday)).empty());
    EXPECT_EQ(mExchange.subscribe(QStringLiteral("SH999999"), dayOf(kFriday), [](const MinuteUpdate &) {}).id,
              0);
    EXPECT_EQ(mExchange.subscribe(kShare, dayOf(kFriday), nullptr).id, 0);
}

TEST_F(SimulatedExchangeTest, AfterHoursMinutesStandApart) {
    const QString growth = QStringLiteral("SZ300750");
    mClock.setTime(clockTime(kFriday, 15, 40));
    const MinuteBars day = mExchange.dayBars(growth, dayOf(kFriday));
    const MinuteBars after = mExchange.afterHoursBars(growth, dayOf(kFriday));
    EXPECT_EQ(minuteAt(day.back().time), 900);
    ASSERT_EQ(after.size(), 25u);
    EXPECT_EQ(minuteAt(after.front().time), 906);
    EXPECT_EQ(day.size() + after.size(), whole(growth).size());
    EXPECT_TRUE(mExchange.afterHoursBars(kShare, dayOf(kFriday)).empty());
}

TEST_F(SimulatedExchangeTest, AListenerMayEndItsOwnSubscription) {
    int updates = 0;
    int id = 0;
    id = mExchange
             .subscribe(kShare, dayOf(kFriday),
                        [&](const MinuteUpdate &) {
                            ++updates;
                            mExchange.unsubscribe(id);
                        })
             .id;
    mClock.setTime(clockTime(kFriday, 10, 0));
    mExchange.advance();
    mExchange.advance();
    EXPECT_EQ(updates, 1);
}

TEST_F(SimulatedExchangeTest, AnEndedSubscriptionHasLetGoOfItsListener) {
    auto held = std::make_shared<int>(1);
    const int id = mExchange.subscribe(kShare, dayOf(kFriday), [held](const MinuteUpdate &) {}).id;
    EXPECT_EQ(held.use_count(), 2);
    mExchange.unsubscribe(id);
    EXPECT_EQ(held.use_count(), 1);
    mExchange.unsubscribe(id);
    mExchange.unsubscribe(12345);
}

TEST_F(SimulatedExchangeTest, TheNightOfTheNextDayRunsInTheEvening) {
    const QString gold = QStringLiteral("SHFEAU2612");
    const int monday = dayOf(QDate(2026, 11, 23));
    EXPECT_EQ(mExchange.runningDay(gold), dayOf(kFriday));
    mClock.setTime(clockTime(kFriday, 21, 30));
    mExchange.advance();
    EXPECT_EQ(mExchange.runningDay(gold), monday);
    EXPECT_EQ(mExchange.runningDay(kShare), dayOf(kFriday));
    const auto stream = mExchange.subscribe(gold, monday, [](const MinuteUpdate &) {});
    EXPECT_GT(stream.id, 0);
    ASSERT_FALSE(stream.bars.empty());
    EXPECT_EQ(stream.bars.front().time, clockTime(kFriday, 21, 0));
    EXPECT_LE(stream.bars.back().time, clockTime(kFriday, 21, 31));
}

TEST_F(SimulatedExchangeTest, WhenANewDayBeginsTheOneBeforeIsInTheStore) {
    mExchange.advance();
    const qint64 monday = timeOf(QDate(2026, 11, 23), 600);
    mClock.setTime(monday);
    mExchange.advance();
    const qint64 row = mStore.catalogue()->find(kShare)->id;
    EXPECT_EQ(mStore.days(row).last(), dayOf(QDate(2026, 11, 23)));
    const MinuteBars running = mExchange.dayBars(kShare, dayOf(QDate(2026, 11, 23)));
    EXPECT_GT(running.size(), 20u);
    EXPECT_LT(running.size(), 40u);
}

TEST_F(SimulatedExchangeTest, ItsThreadDeliversAndEnds) {
    std::mutex lock;
    std::condition_variable some;
    int updates = 0;
    mExchange.subscribe(kShare, dayOf(kFriday), [&](const MinuteUpdate &) {
        std::lock_guard<std::mutex> hold(lock);
        ++updates;
        some.notify_all();
    });
    mExchange.start();
    mExchange.start();
    mClock.setTime(clockTime(kFriday, 10, 0));
    {
        std::unique_lock<std::mutex> hold(lock);
        EXPECT_TRUE(some.wait_for(hold, std::chrono::seconds(20), [&] { return updates > 50; }));
    }
    mExchange.stop();
    const int ended = updates;
    mClock.setTime(clockTime(kFriday, 11, 0));
    mExchange.stop();
    EXPECT_EQ(updates, ended);
}

TEST_F(SimulatedExchangeTest, StartsWithTheAuctionOfTheLastTradingDay) {
    EXPECT_EQ(simulationStart(*mStore.catalogue(), timeOf(QDate(2026, 11, 21), 700)),
              clockTime(kFriday, 9, 25));
    EXPECT_EQ(simulationStart(*mStore.catalogue(), clockTime(kFriday, 8, 0)), clockTime(kFriday, 9, 25));
}

TEST_F(SimulatedExchangeTest, EveryInstrumentRunsFromItsAuctionToItsCloseAtAnyPace) {
    constexpr qint64 kStep = 600000; // of the market's time
    const qint64 evening = timeOf(kFriday.addDays(-1), 20 * 60 + 56); // the auction of the night sessions
    for (const double pace : {1.0, 60.0, 600.0}) {
        HandClock hand;
        SimulatedClock clock(evening, pace, hand.source());
        SimulatedExchange exchange(mStore, clock);
        std::map<QString, Follower> followers;
        const auto follow = [&](bool night) {
            for (const SimulatedInstrument &simulated : simulatedInstruments()) {
                const QString key = simulated.instrument.key();
                if (simulated.instrument.sessions.hasNight() == night) {
                    const auto take = [&followers, key](const MinuteUpdate &update) {
                        followers.at(key).take(update);
                    };
                    followers.emplace(key, Follower(exchange.subscribe(key, dayOf(kFriday), take).bars));
                }
            }
        };
        follow(true);
        const auto advanceTo = [&](qint64 end) {
            while (clock.now() < end) {
                *hand.real += static_cast<qint64>(kStep / pace);
                exchange.advance();
            }
        };
        advanceTo(clockTime(kFriday, 9, 20));
        follow(false);
        advanceTo(clockTime(kFriday, 9, 20) + 18 * 3600 * 1000);
        EXPECT_EQ(static_cast<int>(followers.size()), simulatedInstruments().size());
        for (const SimulatedInstrument &simulated : simulatedInstruments()) {
            const QString key = simulated.instrument.key();
            const Follower &follower = followers.at(key);
            EXPECT_GT(follower.mUpdates, 200) << key.toStdString() << " at " << pace;
            MinuteBars expected = whole(key);
            while (simulated.instrument.hasAfterHours() && expected.back().time > clockTime(kFriday, 15, 0)) {
                expected.pop_back(); // they have a stream of their own
            }
            EXPECT_TRUE(follower.bars() == expected) << key.toStdString() << " at " << pace;
        }
    }
}

TEST_F(SimulatedExchangeTest, NowAndThenPointsComeInBurstsLateAndRevised) {
    int bursts = 0;
    int late = 0;
    int revised = 0;
    int minutes = 0;
    for (const SimulatedInstrument &simulated : simulatedInstruments()) {
        const MinuteBars day = whole(simulated.instrument.key());
        for (size_t i = 1; i < day.size(); ++i, ++minutes) {
            const std::vector<SimulatedTick> ticks = ticksOfBar(day, i, 7);
            ASSERT_EQ(ticks.back().bar, day[i]) << "it ends as it is stored";
            ASSERT_LE(ticks.back().at, day[i].time + kLongestLag);
            const bool isRevised = ticks.size() > 1 && ticks[ticks.size() - 2].at >= day[i].time;
            revised += isRevised ? 1 : 0;
            late += !isRevised && ticks.back().at > day[i].time ? 1 : 0;
            bursts += std::adjacent_find(ticks.begin(), ticks.end(),
                                         [](const SimulatedTick &a, const SimulatedTick &b) {
                                             return a.at == b.at;
                                         }) != ticks.end()
                          ? 1
                          : 0;
        }
    }
    ASSERT_GT(minutes, 5000);
    EXPECT_GT(bursts, minutes / 100);
    EXPECT_GT(late, minutes / 200);
    EXPECT_LT(late, minutes / 10) << "not as a rule";
    EXPECT_GT(revised, minutes / 200);
    EXPECT_LT(revised, minutes / 10);
}
