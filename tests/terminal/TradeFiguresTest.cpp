#include "terminal/trade/TradeFigures.h"

#include "terminal/trade/OrderMatching.h"
#include "tests/terminal/Samples.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace terminal;
using tests::kMinute;

namespace {

constexpr qint64 kFirstMinute = 1000 * kMinute; ///< some full minute

MinuteBar steadyBar(int minute, double price) {
    MinuteBar made;
    made.time = kFirstMinute + minute * kMinute;
    made.open = made.high = made.low = made.price = price;
    made.volume = 1000.0;
    return made;
}

TradedInstrument::Deal deal(double minutes, bool buy, double price, double volume, double commission = 0.0) {
    return {kFirstMinute + static_cast<qint64>(minutes * kMinute), buy, price, volume, commission};
}

MinuteBar range(double open, double high, double low) {
    MinuteBar made = steadyBar(1, open);
    made.high = high;
    made.low = low;
    return made;
}

} // namespace

TEST(TradeFigures, BoughtAndSoldAddUpOverTheDay) {
    TradedInstrument share;
    share.bars = {steadyBar(0, 10.0), steadyBar(1, 10.0), steadyBar(2, 11.0), steadyBar(3, 12.0)};
    share.deals = {deal(0.5, true, 10.0, 100), deal(2.0, false, 11.0, 40), deal(2.1, true, 12.0, 10)};
    const std::vector<TradeFigures> figures = figuresByMinute({share});
    ASSERT_EQ(figures.size(), 4U);
    EXPECT_EQ(figures[0].time, kFirstMinute);
    EXPECT_DOUBLE_EQ(figures[0].bought, 0.0);
    EXPECT_DOUBLE_EQ(figures[1].bought, 1000.0); // half a minute belongs to the minute that ends after it
    EXPECT_DOUBLE_EQ(figures[1].sold, 0.0);
    EXPECT_DOUBLE_EQ(figures[2].sold, 440.0); // exactly at its end belongs to it
    EXPECT_DOUBLE_EQ(figures[2].bought, 1000.0);
    EXPECT_DOUBLE_EQ(figures[3].bought, 1120.0);
    EXPECT_DOUBLE_EQ(figures[3].sold, 440.0);
}

TEST(TradeFigures, ProfitIsRealisedAndFloatingLessCommissions) {
    TradedInstrument share;
    share.bars = {steadyBar(1, 10.0), steadyBar(2, 11.0), steadyBar(3, 9.0)};
    share.deals = {deal(1, true, 10.0, 100, 5.0), deal(2, false, 11.0, 60, 3.0)};
    const std::vector<TradeFigures> figures = figuresByMinute({share});
    ASSERT_EQ(figures.size(), 3U);
    EXPECT_DOUBLE_EQ(figures[0].profit, -5.0); // bought at the price of the minute
    EXPECT_DOUBLE_EQ(figures[0].balance, 1000.0);
    // 660 received, 1000 paid, 40 left at 11 are 440, commissions 8
    EXPECT_DOUBLE_EQ(figures[1].profit, 660.0 - 1000.0 + 440.0 - 8.0);
    EXPECT_DOUBLE_EQ(figures[1].balance, 440.0);
    // the 40 left are worth 360
    EXPECT_DOUBLE_EQ(figures[2].profit, 12.0);
    EXPECT_DOUBLE_EQ(figures[2].balance, 360.0);
}

TEST(TradeFigures, SaleBeyondWhatWasBoughtHasANegativeBalance) {
    TradedInstrument share;
    share.bars = {steadyBar(1, 10.0), steadyBar(2, 12.0)};
    share.deals = {deal(1, false, 10.0, 50)};
    const std::vector<TradeFigures> figures = figuresByMinute({share});
    EXPECT_DOUBLE_EQ(figures[1].balance, -600.0);
    EXPECT_DOUBLE_EQ(figures[1].profit, -100.0);
}

TEST(TradeFigures, ContractCountsWithItsMultiplier) {
    TradedInstrument future;
    future.multiplier = 300.0;
    future.bars = {steadyBar(1, 4000.0), steadyBar(2, 4010.0)};
    future.deals = {deal(1, true, 4000.0, 2)};
    const std::vector<TradeFigures> figures = figuresByMinute({future});
    EXPECT_DOUBLE_EQ(figures[1].bought, 2400000.0);
    EXPECT_DOUBLE_EQ(figures[1].balance, 2406000.0);
    EXPECT_DOUBLE_EQ(figures[1].profit, 6000.0);
}

TEST(TradeFigures, InstrumentsAddUpAndKeepTheirLastPriceWhereTheyHaveNoMinute) {
    TradedInstrument a;
    a.bars = {steadyBar(1, 10.0), steadyBar(3, 12.0)};
    a.deals = {deal(1, true, 10.0, 100)};
    TradedInstrument b;
    b.bars = {steadyBar(2, 5.0), steadyBar(3, 4.0)};
    b.deals = {deal(2, true, 5.0, 200)};
    const std::vector<TradeFigures> figures = figuresByMinute({a, b});
    ASSERT_EQ(figures.size(), 3U);
    EXPECT_DOUBLE_EQ(figures[1].balance, 1000.0 + 1000.0);
    EXPECT_DOUBLE_EQ(figures[2].profit, 200.0 - 200.0);
    EXPECT_DOUBLE_EQ(figures[2].bought, 2000.0);
}

TEST(TradeFigures, DealOutsideTheBarsMakesAMinuteAtItsOwnPrice) {
    TradedInstrument share;
    share.deals = {deal(0.25, true, 8.0, 10), deal(5, false, 9.0, 10)};
    const std::vector<TradeFigures> figures = figuresByMinute({share});
    ASSERT_EQ(figures.size(), 2U);
    EXPECT_EQ(figures[0].time, kFirstMinute + kMinute);
    EXPECT_DOUBLE_EQ(figures[0].profit, 0.0);
    EXPECT_DOUBLE_EQ(figures[1].profit, 10.0);
    EXPECT_DOUBLE_EQ(figures[1].balance, 0.0);
}

TEST(TradeFigures, DealInAMinuteWithoutABarCountsAtThePriceOfTheBarBefore) {
    TradedInstrument share;
    share.bars = {steadyBar(1, 10.0), steadyBar(4, 11.0)};
    share.deals = {deal(2, true, 12.0, 100)};
    const std::vector<TradeFigures> figures = figuresByMinute({share});
    ASSERT_EQ(figures.size(), 3U);
    EXPECT_DOUBLE_EQ(figures[1].bought, 1200.0);
    EXPECT_DOUBLE_EQ(figures[1].balance, 1000.0);
    EXPECT_DOUBLE_EQ(figures[1].profit, -200.0);
    EXPECT_DOUBLE_EQ(figures[2].balance, 1100.0);
}

TEST(TradeFigures, WhatIsNoNumberIsLeftOut) {
    TradedInstrument share;
    share.bars = {steadyBar(1, 10.0), steadyBar(2, std::nan("")), steadyBar(3, 0.0)};
    share.deals = {deal(1, true, 10.0, 100, std::numeric_limits<double>::infinity()),
                   deal(1, true, std::numeric_limits<double>::infinity(), 100), deal(1, true, -3.0, 100),
                   deal(1, true, 10.0, std::nan(""))};
    for (const TradeFigures &at : figuresByMinute({share})) {
        EXPECT_DOUBLE_EQ(at.bought, 1000.0);
        EXPECT_DOUBLE_EQ(at.profit, 0.0); // the last price that is one stays
    }
    EXPECT_TRUE(figuresByMinute({}).empty());
}

TEST(TradeFigures, AmplitudeIsTheLargestRelativeDistance) {
    EXPECT_DOUBLE_EQ(amplitude(9.5, 10.2, 10.0), 0.05);
    EXPECT_NEAR(amplitude(9.9, 10.4, 10.0), 0.04, 1e-12);
    EXPECT_NEAR(amplitude(10.3, 10.4, 10.0), 0.04, 1e-12);
    EXPECT_DOUBLE_EQ(amplitude(0.0, 10.4, 10.0), 0.0);
    EXPECT_DOUBLE_EQ(amplitude(9.0, 10.4, 0.0), 0.0);
    EXPECT_DOUBLE_EQ(amplitude(9.0, std::numeric_limits<double>::infinity(), 10.0), 0.0);
    EXPECT_DOUBLE_EQ(amplitude(9.0, 10.0, std::numeric_limits<double>::max()), 0.0); // the unset value
}

TEST(TradeFigures, CommissionHasAMinimumAndASaleATax) {
    const FeeSchedule fees{0.00025, 5.0, 0.0005};
    EXPECT_DOUBLE_EQ(commissionOf(fees, true, 100000.0), 25.0);
    EXPECT_DOUBLE_EQ(commissionOf(fees, true, 1000.0), 5.0);
    EXPECT_DOUBLE_EQ(commissionOf(fees, false, 100000.0), 75.0);
}

TEST(OrderMatching, PurchaseIsReachedAtOrUnderItsLimit) {
    EXPECT_TRUE(reaches(range(10.0, 10.2, 9.9), true, 9.9));
    EXPECT_FALSE(reaches(range(10.0, 10.2, 9.9), true, 9.89));
    EXPECT_TRUE(reaches(range(10.0, 10.2, 9.9), true, 12.0));
}

TEST(OrderMatching, SaleIsReachedAtOrOverItsLimit) {
    EXPECT_TRUE(reaches(range(10.0, 10.2, 9.9), false, 10.2));
    EXPECT_FALSE(reaches(range(10.0, 10.2, 9.9), false, 10.21));
    EXPECT_TRUE(reaches(range(10.0, 10.2, 9.9), false, 8.0));
}

TEST(OrderMatching, MinuteWithoutTradeReachesNothing) {
    MinuteBar quiet = range(10.0, 10.0, 10.0);
    quiet.volume = 0.0;
    EXPECT_FALSE(reaches(quiet, true, 11.0));
    EXPECT_FALSE(reaches(MinuteBar(), true, 11.0));
}

TEST(OrderMatching, FillIsAtTheLimitOrAtABetterFirstPrice) {
    EXPECT_DOUBLE_EQ(fillPrice(range(10.0, 10.2, 9.9), true, 9.95), 9.95);
    EXPECT_DOUBLE_EQ(fillPrice(range(10.0, 10.2, 9.9), true, 10.5), 10.0);
    EXPECT_DOUBLE_EQ(fillPrice(range(10.0, 10.2, 9.9), false, 10.1), 10.1);
    EXPECT_DOUBLE_EQ(fillPrice(range(10.0, 10.2, 9.9), false, 9.0), 10.0);
    EXPECT_DOUBLE_EQ(fillPrice(range(0.0, 10.2, 9.9), true, 9.95), 9.95); // the first price is unknown
}

TEST(OrderMatching, FillIsWholeLotsAndNeverMoreThanIsLeft) {
    EXPECT_EQ(fillVolume(1000, 100, 0.57), 500);
    EXPECT_EQ(fillVolume(1000, 100, 0.01), 100);
    EXPECT_EQ(fillVolume(1000, 100, 1.0), 1000);
    EXPECT_EQ(fillVolume(1000, 100, 7.0), 1000);
    EXPECT_EQ(fillVolume(60, 100, 0.5), 60); // an odd lot
    EXPECT_EQ(fillVolume(3, 1, 0.5), 1);
}

TEST(OrderMatching, LimitIsWorseByTheEdgeAndOnTheTick) {
    EXPECT_DOUBLE_EQ(limitPrice(10.0, true, 0.001, 0.01), 10.01);
    EXPECT_DOUBLE_EQ(limitPrice(10.0, false, 0.001, 0.01), 9.99);
    EXPECT_DOUBLE_EQ(limitPrice(10.0, true, -0.0026, 0.01), 9.97);
    EXPECT_DOUBLE_EQ(limitPrice(0.004, true, -0.9, 0.01), 0.01); // at least one tick
}

TEST(OrderMatching, TaskIsDueEvenlyInWholeLots) {
    EXPECT_EQ(dueQuantity(1000, 100, 10, 20, 9), 0);
    EXPECT_EQ(dueQuantity(1000, 100, 10, 20, 10), 0);
    EXPECT_EQ(dueQuantity(1000, 100, 10, 20, 15), 500);
    EXPECT_EQ(dueQuantity(1000, 100, 10, 40, 20), 300);
    EXPECT_EQ(dueQuantity(1050, 100, 10, 20, 20), 1050); // the odd lot with the last one
    EXPECT_EQ(dueQuantity(1050, 100, 10, 10, 10), 1050);
}
