#include "tests/chartdata/ChartDataFixture.h"

namespace tests {
namespace {

/// Four minutes of prices and volumes.
class RegionTest : public ChartData {
protected:
    RegionTest() {
        mHost.mStocks.mDetails[QStringLiteral("SH600000")]->mFloatShares = 1e7;
        mData = requested({QStringLiteral("REALTIME"), QStringLiteral("REALTIMEVOL")});
    }
    void fill(std::vector<double> prices = {10.0, 10.5, 9.5, 10.2},
              std::vector<double> volumes = {100.0, 200.0, 300.0, 400.0}) {
        fillOne("REALTIME", std::move(prices));
        fillOne("REALTIMEVOL", std::move(volumes));
    }
    void fillOne(const char *formula, std::vector<double> values) {
        history(*mData, key("SH600000", formula),
                makeResult(minuteTimes(kDay, 570, static_cast<int>(values.size())), values));
    }
    QStringList figures(int start, int end) { return mData->statisticRange(start, end); }

    boost::shared_ptr<TC::CRealtimeData> mData;
};

TEST_F(RegionTest, TellsElevenFigures) {
    fill();
    auto quote = [](double price) {
        auto record = std::make_shared<quoter::QuoterBase>();
        record->mPrice = price;
        return record;
    };
    mHost.mFormulas.mCached = {quote(20.0), quote(50.0), quote(21.0)};
    const QStringList expected{"10.00", "10.50",  "9.50",  "10.20",  "1000.00", "2.00%",
                               "10.05", "10.00%", "1.00%", "1.00万", "5.00%"};
    EXPECT_EQ(figures(0, 3), expected);
}

TEST_F(RegionTest, AmountsOfLotsAreAHundredfold) {
    mHost.mTypes.mTypes.insert({100003, "SH", "600000"});
    fill();
    EXPECT_EQ(figures(0, 3).value(9), QStringLiteral("100.30万"));
}

TEST_F(RegionTest, AnEndBeyondTheSeriesIsBroughtBackForTheCaller) {
    fill();
    int start = 1;
    int end = 200;
    EXPECT_EQ(mData->statisticRange(start, end).size(), 11);
    EXPECT_EQ(start, 1);
    EXPECT_EQ(end, 3);
}

TEST_F(RegionTest, AStartOutsideTheSeriesHasNoFigures) {
    fill();
    EXPECT_TRUE(figures(4, 4).isEmpty());
    EXPECT_TRUE(figures(-1, 3).isEmpty());
    EXPECT_TRUE(figures(0, -1).isEmpty());
}

TEST_F(RegionTest, BothSeriesAreNeeded) {
    EXPECT_TRUE(figures(0, 3).isEmpty());
    fillOne("REALTIME", {10.0, 10.1});
    EXPECT_TRUE(figures(0, 1).isEmpty());
    fillOne("REALTIMEVOL", {});
    EXPECT_EQ(figures(0, 1).value(4), QStringLiteral("0.00"));
}

TEST_F(RegionTest, WhatCannotBeDividedIsTold) {
    mHost.mStocks.mDetails[QStringLiteral("SH600000")]->mFloatShares = 0.0;
    fill({0.0, 1.0}, {5.0, 5.0});
    const QStringList told = figures(0, 1);
    EXPECT_EQ(told.value(5), QStringLiteral("非法值"));
    EXPECT_EQ(told.value(7), QStringLiteral("非法值"));
    EXPECT_EQ(told.value(8), QStringLiteral("非法值"));
}

TEST_F(RegionTest, AsksForTheCachedQuotesOfTheStretch) {
    fill();
    figures(1, 2);
    const se::RPCFetchCacheDataParam &asked = mHost.mFormulas.mLastFetch;
    EXPECT_EQ(asked.mMarket, "SH");
    EXPECT_EQ(asked.mCodes, std::vector<std::string>{"600000"});
    EXPECT_EQ(asked.mStart, (kDay + 571 * 60) * 1000LL);
    EXPECT_EQ(asked.mEnd, (kDay + 572 * 60) * 1000LL);
    EXPECT_EQ(asked.mPeriod, 86400000);
    EXPECT_EQ(asked.mKind, 3000);
    EXPECT_EQ(asked.mCount, 2);
}

TEST_F(RegionTest, WithoutACachedFirstPriceThereIsNoCachedChange) {
    fill();
    EXPECT_EQ(figures(0, 3).value(10), QStringLiteral("0.00%"));
    mHost.mFormulas.mCached = {std::make_shared<quoter::QuoterBase>(), std::make_shared<quoter::QuoterBase>()};
    mHost.mFormulas.mCached.back()->mPrice = 5.0;
    EXPECT_EQ(figures(0, 3).value(10), QStringLiteral("0.00%"));
}

TEST_F(RegionTest, TheLastInstrumentInKeyOrderIsTold) {
    mUi->addStock(QStringLiteral("SH600001"), QString(), true);
    mData->request(corvane::ERunMode::Ordinary);
    fill();
    history(*mData, key("SH600001"), makeResult(minuteTimes(kDay, 570, 4), std::vector<double>(4, 30.0)));
    EXPECT_EQ(figures(0, 3).value(0), QStringLiteral("30.00"));
}

TEST_F(RegionTest, TheChartOfTheInstrumentIsAskedOfTheHost) {
    mEvents.clear();
    mData->showInstrumentChart();
    ASSERT_EQ(mEvents.all().size(), 1u);
    EXPECT_EQ(mEvents.all()[0].number, 3265);
    EXPECT_EQ(mEvents.all()[0].text, QStringLiteral("600000.SH"));
}

} // namespace
} // namespace tests
