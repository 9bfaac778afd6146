#include "terminal/trade/DemoTrader.h"

#include "terminal/market/MarketDate.h"
#include "tests/terminal/Samples.h"
#include "tests/terminal/StoreFixture.h"

#include <map>
#include <set>

using namespace terminal;
using tests::kBond;
using tests::kShare;
using tests::kSteelFuture;

namespace {

/// A trader of its own account over bars that the test makes.
class DemoTraderTest : public StoreFixture {
protected:
    void SetUp() override {
        openFilledStore(timeOf(mDate, 9 * 60 + 25));
        mPlan.account = {"A", "A", 2, TradeSource::Own};
        mPlan.cash = 1e9;
    }
    DemoTrader trader() const { return DemoTrader(mPlan, *mStore.catalogue(), dayOf(mDate)); }

    /// Steps through the whole day; `priceOf` answers the price of the n-th minute, the whole of its bar.
    template <class Price> void run(DemoTrader &trader, Price priceOf) {
        for (int n = 0; trader.nextMinute() != 0; ++n) {
            const qint64 time = trader.nextMinute();
            MinuteBar bar;
            bar.time = time;
            bar.open = bar.high = bar.low = bar.price = priceOf(n);
            bar.volume = 100.0;
            keep(n, trader.step([&](const QString &, qint64) { return &bar; }));
        }
    }
    void keep(int step, const TradeChanges &changes) {
        for (const TradeOrder &order : changes.orders) {
            mFirstSeen.emplace(order.key, step);
            if (!order.isOpen() && mEnded.count(order.key) == 0) {
                mEnded[order.key] = step;
            }
            mOrders[order.key] = order;
        }
        for (const TradeDeal &deal : changes.deals) {
            mDeals.push_back(deal);
        }
        for (const TradeTask &task : changes.tasks) {
            mTasks.push_back(task);
            mTaskSteps.push_back(step);
        }
    }

    const QDate mDate{2026, 11, 20};
    DemoAccount mPlan;
    std::map<std::string, int> mFirstSeen; ///< steps, by the keys of orders
    std::map<std::string, int> mEnded;
    std::map<std::string, TradeOrder> mOrders;
    std::vector<TradeDeal> mDeals;
    std::vector<TradeTask> mTasks;
    std::vector<int> mTaskSteps;
};

/// Prices that leave every order behind: a purchase waits for a fall that never comes.
double rising(int step) {
    return 10.0 + 0.05 * step;
}

} // namespace

TEST_F(DemoTraderTest, AnOrderThatIsNotFilledRestsForThreeToTwentySevenMinutesMore) {
    mPlan.desks = {{kShare, "", 230, 100, 5}};
    mPlan.holdings = {};
    DemoTrader demo = trader();
    run(demo, rising);
    std::set<int> lives;
    for (const auto &order : mOrders) {
        if (order.second.status == kvservice::eOrderCancelled) {
            EXPECT_EQ(order.second.direction, kBuy); // nothing is held that could be sold
            lives.insert(mEnded.at(order.first) - mFirstSeen.at(order.first));
        }
    }
    EXPECT_TRUE(mDeals.empty());
    ASSERT_FALSE(lives.empty());
    EXPECT_EQ(*lives.begin(), 3);
    EXPECT_EQ(*lives.rbegin(), 27);
}

TEST_F(DemoTraderTest, ASliceOfATaskRestsForTwoMinutesMoreAndThenTheNextComes) {
    mPlan.tasks = {{"S", {{kShare, kvservice::EOperationType::Buy, 10000, 100}}, 0.25, 0.5}};
    DemoTrader demo = trader();
    run(demo, rising);
    EXPECT_TRUE(mDeals.empty());
    ASSERT_GT(mOrders.size(), 15U);
    int before = -1;
    for (const auto &order : mOrders) {
        const int made = mFirstSeen.at(order.first);
        EXPECT_EQ(order.second.status, kvservice::eOrderCancelled);
        EXPECT_EQ(mEnded.at(order.first) - made, 2) << order.first;
        EXPECT_TRUE(before < 0 || made - before == 3) << order.first;
        before = made;
    }
}

TEST_F(DemoTraderTest, ATaskRunsFromItsPartOfTheDayToItsPartOfTheDay) {
    mPlan.tasks = {{"S", {{kShare, kvservice::EOperationType::Buy, 10000, 100}}, 0.25, 0.5}};
    DemoTrader demo = trader();
    run(demo, rising);
    // The day has 241 minutes: the task goes from minute 60 to minute 120, is told ten before, and has two more after
    // its last order.
    std::map<int, int> first;
    for (size_t i = 0; i < mTasks.size(); ++i) {
        first.emplace(mTasks[i].status, mTaskSteps[i]);
    }
    EXPECT_EQ(first, (std::map<int, int>{{kvservice::eTaskWaiting, 50},
                                         {kvservice::eTaskRunning, 60},
                                         {kvservice::eTaskExpired, 122}}));
    EXPECT_EQ(mTasks.back().start, timeOf(mDate, 10 * 60 + 29));
    EXPECT_EQ(mTasks.back().end, timeOf(mDate, 11 * 60 + 30));
    EXPECT_EQ(mTasks.back().items.front().finished, 0);
}

TEST_F(DemoTraderTest, AQuietDayFillsATaskEvenly) {
    mPlan.tasks = {{"S", {{kShare, kvservice::EOperationType::Buy, 12000, 100}}, 0.25, 0.5}};
    DemoTrader demo = trader();
    run(demo, [](int) { return 10.0; });
    EXPECT_EQ(mTasks.back().status, kvservice::eTaskFinished);
    EXPECT_EQ(mTasks.back().items.front().finished, 12000);
    int dealt = 0;
    for (const TradeDeal &deal : mDeals) {
        dealt += deal.volume;
        const double share = static_cast<double>(minuteAt(deal.time) - 630) / 60.0; // from 10:30 to 11:30
        EXPECT_LE(dealt, 12000 * std::min(1.0, share + 0.02)) << deal.key;
    }
    EXPECT_EQ(dealt, 12000);
}

TEST_F(DemoTraderTest, SharesOfTheDayAreNotSoldAndBondsAre) {
    mPlan.desks = {{kShare, "", 60, 100, 5}, {kBond, "", 60, 10, 5}};
    DemoTrader demo = trader();
    run(demo, [](int n) { return n % 2 ? 10.2 : 10.0; });
    std::map<std::string, int> sold;
    for (const TradeDeal &deal : mDeals) {
        sold[deal.instrument] += deal.direction == kSell ? deal.volume : 0;
    }
    EXPECT_EQ(sold[kShare.toStdString()], 0);
    EXPECT_GT(sold[kBond.toStdString()], 0);
}

TEST_F(DemoTraderTest, WhatIsHeldInTheMorningIsSoldOnceOnly) {
    mPlan.desks = {{kShare, "", 60, 100, 5}};
    mPlan.holdings = {{kShare, 700}};
    DemoTrader demo = trader();
    run(demo, [](int n) { return n % 2 ? 10.2 : 10.0; });
    int sold = 0;
    for (const TradeDeal &deal : mDeals) {
        sold += deal.direction == kSell ? deal.volume : 0;
    }
    EXPECT_EQ(sold, 700);
}

TEST_F(DemoTraderTest, MoneyThatIsSpentIsNotSpentAgain) {
    mPlan.desks = {{kShare, "", 100, 100, 5}};
    mPlan.fees = {0.00025, 5.0, 0.0005};
    mPlan.cash = 7000.0;
    DemoTrader demo = trader();
    run(demo, [](int) { return 10.0; });
    double cash = 7000.0;
    for (const TradeDeal &deal : mDeals) {
        ASSERT_EQ(deal.direction, kBuy);
        cash -= deal.price * deal.volume + std::max(0.00025 * deal.price * deal.volume, 5.0);
        EXPECT_GE(cash, 0.0);
    }
    EXPECT_LT(cash, 1005.0); // not enough for a lot any more
}

TEST_F(DemoTraderTest, FuturesAreOpenedBothWaysAndClosedInTheLastMinutes) {
    mPlan.account.type = 1;
    mPlan.marginRate = 0.1;
    int longs = 0, shorts = 0, closedLate = 0;
    for (const int orders : {7, 8, 9, 10, 31}) {
        mPlan.desks = {{kSteelFuture, "T", orders, 1, 50}};
        DemoTrader demo = trader();
        mDeals.clear();
        run(demo, [](int n) { return 3300.0 + 10.0 * (n % 5); });
        int position = 0;
        for (const TradeDeal &deal : mDeals) {
            const int before = position;
            position += deal.direction == kBuy ? deal.volume : -deal.volume;
            EXPECT_EQ(deal.offset == kOpening, std::abs(position) > std::abs(before)) << deal.key;
            EXPECT_TRUE(deal.offset == kOpening || deal.offset == kClosing);
            const int minute = minuteAt(deal.time);
            const bool late = minute >= 14 * 60 + 48 && minute < 15 * 60; // the last twelve minutes
            EXPECT_FALSE(late && deal.offset == kOpening) << deal.key;
            closedLate += late;
            longs += position > 0;
            shorts += position < 0;
        }
        EXPECT_EQ(position, 0) << orders;
    }
    EXPECT_GT(longs, 0);
    EXPECT_GT(shorts, 0);
    EXPECT_GT(closedLate, 0);
    EXPECT_EQ(mDeals.back().strategy, "T");
}

TEST_F(DemoTraderTest, NoOrderIsMadeAtTheEndsOfTheDayOrInTheNight) {
    mPlan.desks = {{kShare, "", 230, 100, 5}};
    mPlan.holdings = {{kShare, 1000000}};
    DemoTrader demo = trader();
    run(demo, [](int) { return 10.0; });
    int first = 24 * 60, last = 0;
    for (const auto &order : mOrders) {
        const int minute = minuteAt(order.second.time + 59999);
        first = std::min(first, minute);
        last = std::max(last, minute);
        EXPECT_FALSE(minute > 11 * 60 + 30 && minute <= 13 * 60) << minute;
    }
    EXPECT_GE(first, 9 * 60 + 33); // 09:30 is the first of three
    EXPECT_LE(first, 9 * 60 + 36);
    EXPECT_LE(last, 14 * 60 + 57);
    EXPECT_GE(last, 14 * 60 + 53);
}

TEST_F(DemoTraderTest, OrdersBuyAndSellInTurnAndAFewAreRejected) {
    mPlan.desks = {{kShare, "", 200, 100, 5}};
    mPlan.holdings = {{kShare, 1000000}};
    DemoTrader demo = trader();
    run(demo, [](int) { return 10.0; });
    EXPECT_EQ(mOrders.size(), 200U);
    int buys = 0, rejected = 0;
    int before = 0;
    for (const auto &order : mOrders) {
        EXPECT_NE(order.second.direction, before) << order.first;
        before = order.second.direction;
        buys += order.second.direction == kBuy;
        rejected += order.second.status == kvservice::eOrderRejected;
        EXPECT_TRUE(order.second.volume >= 100 && order.second.volume <= 500);
    }
    EXPECT_EQ(buys, 100);
    EXPECT_GT(rejected, 1);
    EXPECT_LT(rejected, 25);
}

TEST_F(DemoTraderTest, ACancelledTaskTakesItsOrdersBackAndMakesNoMore) {
    mPlan.tasks = {{"S", {{kShare, kvservice::EOperationType::Buy, 10000, 100}}, 0.25, 0.5}};
    DemoTrader demo = trader();
    MinuteBar bar;
    bar.volume = 100.0;
    TradeChanges cancelled;
    for (int n = 0; demo.nextMinute() != 0; ++n) {
        bar.time = demo.nextMinute();
        bar.open = bar.high = bar.low = bar.price = rising(n);
        keep(n, demo.step([&](const QString &, qint64) { return &bar; }));
        if (n == 66) { // an order rests
            cancelled = demo.cancelTask(mTasks.back().id, bar.time);
            EXPECT_TRUE(demo.cancelTask(mTasks.back().id, bar.time).isEmpty());
            EXPECT_TRUE(demo.cancelTask(4711, bar.time).isEmpty());
        }
    }
    ASSERT_EQ(cancelled.orders.size(), 1U);
    EXPECT_EQ(cancelled.orders.front().status, kvservice::eOrderCancelled);
    ASSERT_EQ(cancelled.tasks.size(), 1U);
    EXPECT_EQ(cancelled.tasks.front().status, kvservice::eTaskCancelled);
    EXPECT_EQ(mOrders.size(), 2U); // those of the minutes 63 and 66
    EXPECT_EQ(mTasks.back().status, kvservice::eTaskRunning) << "nothing more is told of it";
}

TEST_F(DemoTraderTest, ADayOnWhichNothingTradesHasNoRecords) {
    mPlan.desks = {{kShare, "", 60, 100, 5}, {QStringLiteral("XX1"), "", 60, 100, 5}};
    mPlan.tasks = {{"S", {{kShare, kvservice::EOperationType::Buy, 10000, 100}}, 0.25, 0.5}};
    DemoTrader saturday(mPlan, *mStore.catalogue(), dayOf(QDate(2026, 11, 21)));
    EXPECT_EQ(saturday.nextMinute(), 0);
    EXPECT_TRUE(saturday.step([](const QString &, qint64) { return nullptr; }).isEmpty());
}
