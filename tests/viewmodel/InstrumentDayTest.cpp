#include "viewmodel/InstrumentDay.h"

#include "host/services/ServiceContext.h"
#include "tests/fakehost/FakeHost.h"

#include <gtest/gtest.h>

using namespace TC;

namespace {

class InstrumentDayTest : public ::testing::Test {
protected:
    fakehost::FakeHost mHost;
};

TEST_F(InstrumentDayTest, TheNightSessionComesBeforeTheDayOfTheMarket) {
    mHost.mTimes.mNight << "SHFEau2406"
                        << "SH600000";
    EXPECT_EQ(tradingDayOf("SHFE", "au2406", nullptr, false, ServiceContext::processWide()),
              ETradingDay::Night);
    EXPECT_EQ(tradingDayOf("SHFE", "wr2406", nullptr, false, ServiceContext::processWide()),
              ETradingDay::CommodityFutures);
    EXPECT_EQ(tradingDayOf("SH", "600000", nullptr, false, ServiceContext::processWide()), ETradingDay::Night);
}

TEST_F(InstrumentDayTest, ABoardStockHasTheAfterHoursSessionOnlyWhereItIsShown) {
    mHost.mTypes.mTypes = {{10006, "SZ", "300001"}};
    const CInstrumentDetailPtr board = mHost.mStocks.add("SZ", "300001");
    EXPECT_EQ(tradingDayOf("SZ", "300001", board, true, ServiceContext::processWide()),
              ETradingDay::AfterHours);
    EXPECT_EQ(tradingDayOf("SZ", "300001", board, false, ServiceContext::processWide()), ETradingDay::Stock);
    EXPECT_EQ(tradingDayOf("SZ", "300001", nullptr, true, ServiceContext::processWide()), ETradingDay::Stock)
        << "no instrument is shown";
    EXPECT_EQ(tradingDayOf("SZSE", "300001", board, true, ServiceContext::processWide()), ETradingDay::Stock)
        << "another word";
}

TEST_F(InstrumentDayTest, TheProductIsThatOfTheInstrumentShown) {
    const CInstrumentDetailPtr shown = mHost.mStocks.add("CFFEX", "T2406");
    shown->mProductId = "T";
    EXPECT_EQ(tradingDayOf("CFFEX", "T2406", shown, false, ServiceContext::processWide()),
              ETradingDay::TreasuryFutures);
    EXPECT_EQ(tradingDayOf("CFFEX", "T2406", nullptr, false, ServiceContext::processWide()),
              ETradingDay::Stock);
}

TEST_F(InstrumentDayTest, OnlyAStockWithANamedUnderlyingHasItsDay) {
    const CInstrumentDetailPtr stock = mHost.mStocks.add("SH", "113001");
    EXPECT_FALSE(hasUnderlyingDay(nullptr));
    EXPECT_FALSE(hasUnderlyingDay(stock));
    stock->mUnderlying = std::make_shared<CUnderlyingInfo>();
    EXPECT_FALSE(hasUnderlyingDay(stock)) << "neither market nor code";
    stock->mUnderlying->mCode = "600000";
    EXPECT_FALSE(hasUnderlyingDay(stock)) << "no market";
    stock->mUnderlying->mMarket = "SH";
    EXPECT_TRUE(hasUnderlyingDay(stock));
    stock->mMarket = "HK";
    EXPECT_FALSE(hasUnderlyingDay(stock));
}

} // namespace
