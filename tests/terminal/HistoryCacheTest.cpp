#include "terminal/formula/HistoryCache.h"

#include "tests/terminal/Samples.h"

#include <gtest/gtest.h>

using terminal::HistoryCache;
using tests::kToday;

namespace {

constexpr qint64 kDayLength = 86400000;
constexpr qint64 kNoon = kToday * 1000LL + kDayLength / 2; // 12:00

std::shared_ptr<se::RPCFormulaResult> seriesUntil(qint64 time) {
    auto result = std::make_shared<se::RPCFormulaResult>();
    result->mTimes = {{time - 60000, 0}, {time, 0}};
    return result;
}

class HistoryCacheTest : public ::testing::Test {
protected:
    void add(HistoryCache &cache, const QString &stock, qint64 time = kNoon) {
        cache.addFormulaHistoryData(stock, "REALTIME", mMeta, seriesUntil(time));
    }
    bool has(HistoryCache &cache, const QString &stock) {
        std::shared_ptr<se::RPCFormulaMetaResult> meta;
        std::shared_ptr<se::RPCFormulaResult> result;
        return cache.getFormulaHistoryData(stock, "REALTIME", meta, result);
    }
    const std::shared_ptr<se::RPCFormulaMetaResult> mMeta = std::make_shared<se::RPCFormulaMetaResult>();
};

} // namespace

TEST_F(HistoryCacheTest, AnswersWhatWasStored) {
    HistoryCache cache;
    const auto series = seriesUntil(kNoon);
    cache.addFormulaHistoryData("SH600000", "REALTIME", mMeta, series);
    std::shared_ptr<se::RPCFormulaMetaResult> meta;
    std::shared_ptr<se::RPCFormulaResult> result;
    ASSERT_TRUE(cache.getFormulaHistoryData("SH600000", "REALTIME", meta, result));
    EXPECT_EQ(meta, mMeta);
    EXPECT_EQ(result, series);
}

TEST_F(HistoryCacheTest, AMissLeavesTheArgumentsAlone) {
    HistoryCache cache;
    add(cache, "SH600000");
    auto meta = mMeta;
    auto result = seriesUntil(kNoon);
    const auto before = result;
    EXPECT_FALSE(cache.getFormulaHistoryData("SH600000", "OTHER", meta, result));
    EXPECT_FALSE(cache.getFormulaHistoryData("SZ000001", "REALTIME", meta, result));
    EXPECT_EQ(meta, mMeta);
    EXPECT_EQ(result, before);
}

TEST_F(HistoryCacheTest, TheSeriesUsedLeastRecentlyGoesWhenItIsFull) {
    HistoryCache cache(2);
    add(cache, "A");
    add(cache, "B");
    EXPECT_TRUE(has(cache, "A")); // B is now the older use
    add(cache, "C");
    EXPECT_EQ(cache.size(), 2);
    EXPECT_TRUE(has(cache, "A"));
    EXPECT_FALSE(has(cache, "B"));
    EXPECT_TRUE(has(cache, "C"));
}

TEST_F(HistoryCacheTest, ANewDayDropsTheOneBefore) {
    HistoryCache cache;
    add(cache, "A");
    add(cache, "B");
    add(cache, "C", kNoon + kDayLength);
    EXPECT_EQ(cache.size(), 1);
    EXPECT_TRUE(has(cache, "C"));
}

TEST_F(HistoryCacheTest, ASeriesOfAnEarlierDayIsNotKept) {
    HistoryCache cache;
    add(cache, "A");
    add(cache, "B", kNoon - kDayLength);
    EXPECT_FALSE(has(cache, "B"));
    EXPECT_TRUE(has(cache, "A"));
}

TEST_F(HistoryCacheTest, TheDayTurnsAtMidnightOfTheExchange) {
    HistoryCache cache;
    const qint64 midnight = kNoon + kDayLength / 2;
    add(cache, "A", midnight - 1);
    add(cache, "B", midnight - 2);
    EXPECT_EQ(cache.size(), 2);
    add(cache, "C", midnight);
    EXPECT_EQ(cache.size(), 1);
}

TEST_F(HistoryCacheTest, NothingWithoutPointsIsKept) {
    HistoryCache cache;
    cache.addFormulaHistoryData("A", "REALTIME", mMeta, std::make_shared<se::RPCFormulaResult>());
    cache.addFormulaHistoryData("A", "REALTIME", mMeta, nullptr);
    cache.addFormulaHistoryData("A", "REALTIME", nullptr, seriesUntil(kNoon));
    EXPECT_EQ(cache.size(), 0);
}

TEST_F(HistoryCacheTest, StoringAgainReplaces) {
    HistoryCache cache(2);
    add(cache, "A");
    add(cache, "A");
    add(cache, "B");
    EXPECT_EQ(cache.size(), 2);
    EXPECT_TRUE(has(cache, "A"));
}

TEST_F(HistoryCacheTest, AViewOfAnotherDayGetsNothing) {
    HistoryCache cache;
    add(cache, "A");
    cache.expect("A", kToday - 86400);
    EXPECT_FALSE(has(cache, "A"));
    cache.expect("A", HistoryCache::kNoDay);
    EXPECT_FALSE(has(cache, "A"));
    cache.expect("A", kToday);
    EXPECT_TRUE(has(cache, "A"));
}

TEST_F(HistoryCacheTest, TheDayOfADeliveryIsThatOfWhatIsStoredMeanwhile) {
    constexpr int kMonday = kToday + 3 * 86400;
    HistoryCache cache;
    {
        const HistoryCache::Delivery delivery(&cache, kMonday);
        add(cache, "A", kNoon + kDayLength / 2 + 1); // in the night before a Monday, on a Saturday
    }
    cache.expect("A", kMonday);
    EXPECT_TRUE(has(cache, "A"));
    add(cache, "B"); // of Friday, by its own time
    EXPECT_FALSE(has(cache, "B"));
}

TEST_F(HistoryCacheTest, WhatIsOfNoDayIsNotKept) {
    HistoryCache cache;
    const HistoryCache::Delivery outer(&cache, 1763654400);
    {
        const HistoryCache::Delivery replay(&cache, HistoryCache::kNoDay);
        add(cache, "A");
        EXPECT_EQ(cache.size(), 0);
    }
    add(cache, "B");
    EXPECT_EQ(cache.size(), 1) << "the delivery around it goes on";
}

TEST_F(HistoryCacheTest, OnceClearedAnyDayIsKeptAgain) {
    HistoryCache cache;
    add(cache, "A", kNoon + kDayLength);
    cache.clear();
    add(cache, "B");
    EXPECT_TRUE(has(cache, "B"));
}
