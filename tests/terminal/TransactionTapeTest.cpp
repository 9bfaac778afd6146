#include "terminal/market/TransactionTape.h"

#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketWriter.h"
#include "terminal/market/SimulatedExchange.h"
#include "terminal/market/SimulatedTicks.h"
#include "tests/terminal/Samples.h"
#include "tests/terminal/StoreFixture.h"

#include <limits>

using namespace terminal;
using tests::clockTime;
using tests::kFriday;
using tests::kShare;

namespace {

const QDate kBefore(2026, 11, 19);

class TransactionTapeTest : public StoreFixture {
protected:
    void SetUp() override { openFilledStore(clockTime(kFriday, 10, 30)); }
    Ticks between(qint64 start, qint64 end, qint64 limit = 1000000, const QString &key = kShare) {
        return mTape.between(key, start, end, limit);
    }
    static double volumeOf(const Ticks &ticks) {
        double sum = 0.0;
        for (const Tick &tick : ticks) {
            sum += tick.volume;
        }
        return sum;
    }

    SimulatedClock mClock{clockTime(kFriday, 10, 30), 1.0, [] { return qint64(0); }};
    SimulatedExchange mExchange{mStore, mClock};
    TransactionTape mTape{mStore, mExchange};
};

TEST_F(TransactionTapeTest, TradesOfASimulatedDayAddUpToItsBars) {
    const MinuteBars bars = mStore.bars(mStore.catalogue()->find(kShare)->id, dayOf(kBefore));
    ASSERT_EQ(bars.size(), 241u);
    const Ticks day = between(clockTime(kBefore, 9, 0), clockTime(kBefore, 16, 0));
    double volume = 0.0;
    double amount = 0.0;
    for (const MinuteBar &bar : bars) {
        volume += bar.volume;
        amount += bar.amount;
    }
    EXPECT_NEAR(volumeOf(day), volume, 1e-6);
    double traded = 0.0;
    for (const Tick &tick : day) {
        traded += tick.amount;
        EXPECT_GT(tick.volume, 0.0);
    }
    EXPECT_NEAR(traded, amount, amount * 1e-9);
    EXPECT_GT(day.size(), 500u); // more than one a minute

    // One minute of them is one bar.
    const MinuteBar &bar = bars[100];
    const Ticks minute = between(bar.time - 59999, bar.time);
    EXPECT_NEAR(volumeOf(minute), bar.volume, 1e-6);
    ASSERT_FALSE(minute.empty());
    EXPECT_EQ(minute.back().price, bar.price);
    for (const Tick &tick : minute) {
        EXPECT_LE(tick.price, bar.high);
        EXPECT_GE(tick.price, bar.low);
    }
}

TEST_F(TransactionTapeTest, RunningDayEndsNow) {
    const Ticks day = between(clockTime(kFriday, 9, 0), clockTime(kFriday, 15, 0));
    ASSERT_FALSE(day.empty());
    EXPECT_EQ(day.front().time, clockTime(kFriday, 9, 25)); // the auction
    EXPECT_LE(day.back().time, clockTime(kFriday, 10, 30));
    EXPECT_GT(day.back().time, clockTime(kFriday, 10, 25));
    double volume = 0.0;
    for (const MinuteBar &bar : mExchange.dayBars(kShare, dayOf(kFriday))) {
        volume += bar.volume;
    }
    EXPECT_NEAR(volumeOf(day), volume, 1e-6);
    mClock.setTime(clockTime(kFriday, 10, 31));
    EXPECT_GT(between(clockTime(kFriday, 9, 0), clockTime(kFriday, 15, 0)).size(), day.size());
    EXPECT_TRUE(between(clockTime(kFriday, 10, 32), clockTime(kFriday, 15, 0)).empty());
}

TEST_F(TransactionTapeTest, StretchHasBothItsEndsAndItsOrder) {
    const Ticks hour = between(clockTime(kBefore, 9, 30), clockTime(kBefore, 10, 30));
    ASSERT_GT(hour.size(), 2u);
    for (size_t i = 1; i < hour.size(); ++i) {
        EXPECT_LE(hour[i - 1].time, hour[i].time);
    }
    const Ticks part = between(hour[1].time, hour[2].time);
    EXPECT_EQ(part.front().time, hour[1].time);
    EXPECT_EQ(part.back().time, hour[2].time);
    EXPECT_EQ(between(clockTime(kBefore, 9, 30), clockTime(kBefore, 10, 30), 2).size(), 2u);
}

TEST_F(TransactionTapeTest, ImportedTicksAreThoseThatWereImported) {
    const qint64 row = mStore.catalogue()->find(kShare)->id;
    MinuteBar bar;
    bar.time = clockTime(kBefore, 9, 31);
    bar.price = 11.0;
    bar.volume = 300.0;
    const Ticks ticks = {{clockTime(kBefore, 9, 30, 5), 10.9, 100, 1090},
                         {clockTime(kBefore, 9, 30, 40), 11.0, 200, 0}};
    {
        MarketWriter writer(mStore);
        ASSERT_TRUE(writer.putDay(row, dayOf(kBefore), BarSource::Imported, {bar}));
        ASSERT_TRUE(writer.putTick(row, dayOf(kBefore), 0, ticks[0]));
        ASSERT_TRUE(writer.putTick(row, dayOf(kBefore), 1, ticks[1]));
        ASSERT_TRUE(writer.commit());
    }
    EXPECT_EQ(between(clockTime(kBefore, 9, 0), clockTime(kBefore, 15, 0)), ticks);
    EXPECT_EQ(between(clockTime(kBefore, 9, 30, 6), clockTime(kBefore, 15, 0)), Ticks{ticks[1]});
}

TEST_F(TransactionTapeTest, DayOfBarsAloneHasNoTransactions) {
    const qint64 row = mStore.catalogue()->find(kShare)->id;
    MinuteBar bar;
    bar.time = clockTime(kBefore, 9, 31);
    bar.price = 11.0;
    bar.volume = 300.0;
    {
        MarketWriter writer(mStore);
        ASSERT_TRUE(writer.putDay(row, dayOf(kBefore), BarSource::Imported, {bar}));
        ASSERT_TRUE(writer.commit());
    }
    EXPECT_TRUE(between(clockTime(kBefore, 9, 0), clockTime(kBefore, 15, 0)).empty());
}

TEST_F(TransactionTapeTest, NightSessionIsThatOfTheEvening) {
    const Instrument *future = nullptr;
    for (const Instrument &candidate : mStore.catalogue()->instruments) {
        if (candidate.kind == InstrumentKind::Future &&
            mStore.catalogue()->nightMarkets.contains(candidate.market)) {
            const MinuteBars bars = mExchange.dayBars(candidate.key(), dayOf(kFriday));
            if (!bars.empty() && dateAt(bars.front().time) == kBefore) {
                future = mStore.catalogue()->find(candidate.key());
                break;
            }
        }
    }
    ASSERT_NE(future, nullptr);
    const Ticks night = between(clockTime(kBefore, 20, 55), clockTime(kBefore, 23, 0), 1000000, future->key());
    ASSERT_FALSE(night.empty());
    EXPECT_EQ(dateAt(night.front().time), kBefore);
}

TEST_F(TransactionTapeTest, NothingIsThereForUnknownKeysAndOddTimes) {
    EXPECT_TRUE(
        between(clockTime(kBefore, 9, 0), clockTime(kBefore, 15, 0), 1000000, QStringLiteral("SH000000"))
            .empty());
    EXPECT_TRUE(between(clockTime(kBefore, 15, 0), clockTime(kBefore, 9, 0)).empty());
    EXPECT_TRUE(between(0, 0).empty());
    constexpr qint64 kLast = std::numeric_limits<qint64>::max();
    EXPECT_TRUE(between(kLast, kLast).empty());
    EXPECT_TRUE(between(-kLast, -1).empty());
}

} // namespace
