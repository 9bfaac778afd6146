#include "host/toolkit/Text.h"
#include "tests/fakehost/FakeHost.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <gtest/gtest.h>

#include <limits>

using namespace TC;

namespace {

using Sessions = QVector<QPair<int, int>>;

const Sessions kStockDay{{570, 690}, {781, 900}};

class CRealtimeUiParamAxis : public ::testing::Test {
protected:
    CInstrumentDetailPtr show(const std::string &market, const std::string &code) {
        const CInstrumentDetailPtr detail = mHost.mStocks.add(market, code);
        mParam.setStock(getDetailQsKey(detail), false);
        return detail;
    }
    void expectDay(int pointCount, const Sessions &sessions) {
        EXPECT_EQ(mParam.mPointCount, pointCount);
        EXPECT_EQ(mParam.mSessions, sessions);
    }
    void expectStockDay() { expectDay(241, kStockDay); }

    fakehost::FakeHost mHost;
    CRealtimeUiParam mParam{EIndexViewType::Ordinary};
};

TEST_F(CRealtimeUiParamAxis, IsEmptyBeforeTheFirstInstrument) {
    expectDay(0, {});
    EXPECT_EQ(mParam.getIndexByTime(600), 0);
    EXPECT_EQ(mParam.getDateTimeByIndex(10).time(), QTime(0, 0));
    mParam.resize(QRect(0, 0, 300, 100));
    EXPECT_EQ(mParam.getXAxisByIndex(0), 1);
    EXPECT_EQ(mParam.getIndexByXAxis(5), -1);
}

TEST_F(CRealtimeUiParamAxis, TableOfTheHostIsTaken) {
    mHost.mTimes.mTables["SH600000"] = {{{600, 609}, {700, 709}}, 20};
    show("SH", "600000");
    expectDay(20, {{600, 609}, {700, 709}});
}

TEST_F(CRealtimeUiParamAxis, NightSessionComesBeforeTheMarket) {
    const Sessions night{{1260, 1440}, {1, 150}, {541, 615}, {631, 690}, {811, 900}};
    mHost.mTimes.mNight << "SHFEau2406"
                        << "SHau2406";
    show("SHFE", "au2406");
    expectDay(556, night);
    show("SH", "au2406");
    expectDay(556, night);
}

TEST_F(CRealtimeUiParamAxis, CommodityFutureWithoutNightSessionHasTheDayOfItsMarket) {
    show("SHFE", "wr2406");
    expectDay(226, {{540, 615}, {631, 690}, {811, 900}});
}

TEST_F(CRealtimeUiParamAxis, TreasuryFutureIsToldByItsProduct) {
    for (const char *product : {"TS", "TF", "T"}) {
        show("CFFEX", "T2406")->mProductId = product;
        mParam.resetAxis("CFFEX", "T2406");
        expectDay(271, {{555, 690}, {781, 915}});
        mParam.resetAxis("IF", "T2406");
        expectDay(271, {{555, 690}, {781, 915}});
    }
}

TEST_F(CRealtimeUiParamAxis, StockIndexFutureHasAStockDay) {
    show("CFFEX", "IF2406")->mProductId = "IF";
    mParam.resetAxis("CFFEX", "IF2406");
    expectStockDay();
}

TEST_F(CRealtimeUiParamAxis, FuturesOfAPortfolioHaveNoProduct) {
    mHost.mStocks.mPortfolios << "7";
    mParam.setStock("7", false);
    mParam.resetAxis("CFFEX", "T2406");
    expectStockDay();
    mParam.resetAxis("SHFE", "wr2406");
    expectDay(226, {{540, 615}, {631, 690}, {811, 900}});
}

TEST_F(CRealtimeUiParamAxis, HongKongAndConnectMarketsShareADay) {
    for (const char *market : {"HGT", "SSEHKEX", "SGT", "SZSEHKEX", "HK"}) {
        mParam.resetAxis(market, "00700");
        expectDay(341, {{570, 720}, {781, 970}});
    }
}

TEST_F(CRealtimeUiParamAxis, OverseasMarketHasAStockDayForTheChinaIndexAlone) {
    mParam.resetAxis("YSWP", "CL");
    expectDay(976, {{540, 955}, {1001, 1440}, {1, 120}});
    mParam.resetAxis("YSWP", "CNINDEX");
    expectStockDay();
}

TEST_F(CRealtimeUiParamAxis, AllOtherMarketWordsHaveAStockDay) {
    mHost.mTypes.mTypes = {{126, "SSE", "600000"}, {100017, "SZSE", "600000"}};
    for (const char *market : {"SSE", "SZSE", "BKZS", "", "sh"}) {
        mParam.resetAxis("YSWP", "CL");
        mParam.resetAxis(market, "600000");
        expectStockDay();
    }
}

TEST_F(CRealtimeUiParamAxis, LongAfternoonStocksAreOfEitherType) {
    mHost.mTypes.mTypes = {{126, "SH", "688001"}, {100017, "SZ", "300001"}};
    show("SH", "688001");
    expectDay(271, {{570, 690}, {781, 930}});
    show("SZ", "300001");
    expectDay(271, {{570, 690}, {781, 930}});
    show("SZ", "000001");
    expectStockDay();
}

TEST_F(CRealtimeUiParamAxis, BoardStockShowsTheAfterHoursSessionWhenItIsOn) {
    const Sessions afterHours{{570, 690}, {781, 900}, {905, 930}};
    mHost.mTypes.mTypes = {{10006, "SZ", "300001"}, {126, "SZ", "300001"}};
    show("SZ", "300001");
    expectDay(271, {{570, 690}, {781, 930}});
    mParam.mShowFixedPriceDeal = true;
    mParam.resetAxis("SZ", "300001");
    expectDay(266, afterHours);
}

TEST_F(CRealtimeUiParamAxis, SecondBoardTypeIsAskedOfTheShenzhenMarketWhateverTheInstruments) {
    mHost.mTypes.mTypes = {{10006, "SZ", "300001"}};
    show("SH", "300001");
    mParam.mShowFixedPriceDeal = true;
    mParam.resetAxis("SH", "300001");
    EXPECT_EQ(mParam.mPointCount, 266);
}

TEST_F(CRealtimeUiParamAxis, NewBoardRulesAddTheFirstBoardType) {
    mHost.mTypes.mTypes = {{277, "SH", "688001"}};
    show("SH", "688001");
    mParam.mShowFixedPriceDeal = true;
    mParam.resetAxis("SH", "688001");
    expectStockDay();
    mHost.mConfig.mUserConfig.mBoardNewRules = true;
    mParam.resetAxis("SH", "688001");
    EXPECT_EQ(mParam.mPointCount, 266);
    mHost.mConfig.mHasUserConfig = false;
    mParam.resetAxis("SH", "688001");
    expectStockDay();
}

TEST_F(CRealtimeUiParamAxis, BoardIsThatOfTheInstrumentShownAndNotOfTheArguments) {
    mHost.mTypes.mTypes = {{10006, "SZ", "300001"}};
    show("SZ", "300001");
    mParam.mShowFixedPriceDeal = true;
    mParam.resetAxis("SZ", "000001");
    EXPECT_EQ(mParam.mPointCount, 266);
    show("SZ", "000001");
    mParam.resetAxis("SZ", "300001");
    expectStockDay();
}

TEST_F(CRealtimeUiParamAxis, NoInstrumentIsNoBoardStock) {
    mHost.mTypes.mTypes = {{10006, "SZ", ""}, {277, "", ""}};
    mHost.mConfig.mUserConfig.mBoardNewRules = true;
    mParam.mShowFixedPriceDeal = true;
    mParam.resetAxis("SZ", "300001");
    expectStockDay();
}

TEST_F(CRealtimeUiParamAxis, DirectSwitchOfTheAfterHoursSessionDiffersFromALaterReset) {
    mHost.mTypes.mTypes = {{10006, "SZ", "300001"}};
    show("SZ", "300001");
    mParam.showFixedPriceDeal(true);
    EXPECT_TRUE(mParam.mShowFixedPriceDeal);
    expectDay(271, {{570, 690}, {781, 900}, {901, 930}});
    mParam.resetAxis("SZ", "300001");
    expectDay(266, {{570, 690}, {781, 900}, {905, 930}});
}

TEST_F(CRealtimeUiParamAxis, SwitchingTheAfterHoursSessionOffLeavesAStockDayOfAnyMarket) {
    show("HK", "00700");
    EXPECT_EQ(mParam.mPointCount, 341);
    mParam.showFixedPriceDeal(false);
    EXPECT_FALSE(mParam.mShowFixedPriceDeal);
    expectStockDay();
}

TEST_F(CRealtimeUiParamAxis, UnderlyingGivesTheAxisWhenItIsAskedFor) {
    mHost.mTypes.mTypes = {{126, "SH", "688001"}};
    const CInstrumentDetailPtr bond = mHost.mStocks.add("SZ", "118001");
    bond->mUnderlying = std::make_shared<CUnderlyingInfo>();
    bond->mUnderlying->mMarket = "SH";
    bond->mUnderlying->mCode = "688001";
    mParam.setStock("SZ118001", false);
    expectStockDay();
    mParam.setStock("SZ118001", true);
    EXPECT_EQ(mParam.mPointCount, 271);
    bond->mMarket = "SSE";
    mParam.setStock("SZ118001", true);
    EXPECT_EQ(mParam.mPointCount, 271);
    bond->mMarket = "SZSE";
    mParam.setStock("SZ118001", true);
    EXPECT_EQ(mParam.mPointCount, 271);
    bond->mMarket = "SH";
    mParam.setStock("SZ118001", true);
    EXPECT_EQ(mParam.mPointCount, 271);
    bond->mMarket = "BJ";
    mParam.setStock("SZ118001", true);
    expectStockDay();
}

TEST_F(CRealtimeUiParamAxis, UnderlyingWithAnEmptyFieldCountsAsAbsent) {
    mHost.mTypes.mTypes = {{126, "SH", "688001"}, {126, "SH", ""}, {126, "", "688001"}};
    const CInstrumentDetailPtr bond = mHost.mStocks.add("SH", "118001");
    mParam.setStock("SH118001", true);
    expectStockDay();
    bond->mUnderlying = std::make_shared<CUnderlyingInfo>();
    bond->mUnderlying->mMarket = "SH";
    mParam.setStock("SH118001", true);
    expectStockDay();
    bond->mUnderlying->mMarket.clear();
    bond->mUnderlying->mCode = "688001";
    mParam.setStock("SH118001", true);
    expectStockDay();
}

TEST_F(CRealtimeUiParamAxis, TableOfTheHostComesBeforeTheUnderlying) {
    mHost.mTypes.mTypes = {{126, "SH", "688001"}};
    mHost.mTimes.mTables["SH118001"] = {{{600, 609}}, 10};
    const CInstrumentDetailPtr bond = mHost.mStocks.add("SH", "118001");
    bond->mUnderlying = std::make_shared<CUnderlyingInfo>();
    bond->mUnderlying->mMarket = "SH";
    bond->mUnderlying->mCode = "688001";
    mParam.setStock("SH118001", true);
    expectDay(10, {{600, 609}});
}

TEST_F(CRealtimeUiParamAxis, UserDefinedIndexAndPortfolioHaveAStockDayWhateverWasShownBefore) {
    mHost.mIndexes.add("MYINDEX");
    mHost.mStocks.mPortfolios << "7";
    show("HK", "00700");
    mParam.setStock("MYINDEX", false);
    expectStockDay();
    show("HK", "00700");
    mParam.setStock("7", false);
    expectStockDay();
}

TEST_F(CRealtimeUiParamAxis, SecondsRoundUpToTheMinuteThatEndsAtThem) {
    show("SH", "600000");
    EXPECT_EQ(mParam.getIndexByTime(QTime(9, 29)), 0);
    EXPECT_EQ(mParam.getIndexByTime(QTime(9, 30, 0)), 0);
    EXPECT_EQ(mParam.getIndexByTime(QTime(9, 30, 0, 999)), 0);
    EXPECT_EQ(mParam.getIndexByTime(QTime(9, 30, 1)), 1);
    EXPECT_EQ(mParam.getIndexByTime(QTime(9, 31, 0)), 1);
    EXPECT_EQ(mParam.getIndexByTime(QTime(11, 30, 0)), 120);
    EXPECT_EQ(mParam.getIndexByTime(QTime(13, 0, 0)), 120);
    EXPECT_EQ(mParam.getIndexByTime(QTime(13, 0, 1)), 121);
    EXPECT_EQ(mParam.getIndexByTime(QTime(15, 0, 0)), 240);
    EXPECT_EQ(mParam.getIndexByTime(QTime(16, 0, 0)), 240);
    EXPECT_EQ(mParam.getIndexByTime(QTime()), 0);
}

TEST_F(CRealtimeUiParamAxis, NightIsAskedOfTheInstrumentShown) {
    mHost.mTimes.mNight << "SHFEau2406";
    show("SHFE", "au2406");
    EXPECT_EQ(mParam.getIndexByTime(QTime(21, 0)), 0);
    EXPECT_EQ(mParam.getIndexByTime(1), 180);
    EXPECT_EQ(mParam.getIndexByTime(QTime(16, 40)), -259);
    EXPECT_EQ(mParam.getIndexByTime(QTime(3, 20)), -10);
    EXPECT_EQ(mParam.getIndexByTime(QTime(2, 30)), -60);
    // The same sessions without the instrument are walked as an ordinary axis, whose first session stops the walk.
    mParam.clearStock();
    EXPECT_EQ(mParam.getIndexByTime(QTime(3, 20)), 0);
}

TEST_F(CRealtimeUiParamAxis, TimeOfAnIndexLiesOnTheCurrentDate) {
    show("SH", "600000");
    mHost.mClock.mNow = QDateTime(QDate(2024, 3, 15), QTime(10, 20, 30, 400));
    EXPECT_EQ(mParam.getDateTimeByIndex(0), QDateTime(QDate(2024, 3, 15), QTime(9, 30)));
    EXPECT_EQ(mParam.getDateTimeByIndex(120), QDateTime(QDate(2024, 3, 15), QTime(11, 30)));
    EXPECT_EQ(mParam.getDateTimeByIndex(121), QDateTime(QDate(2024, 3, 15), QTime(13, 1)));
    EXPECT_EQ(mParam.getDateTimeByIndex(240), QDateTime(QDate(2024, 3, 15), QTime(15, 0)));
}

TEST_F(CRealtimeUiParamAxis, TimeOfAnIndexLiesOnThePastDayOfTheView) {
    show("SH", "600000");
    const QDateTime midnight(QDate(2024, 3, 8), QTime(0, 0));
    mParam.mGetTradeDateFunc = [midnight] { return int(midnight.toSecsSinceEpoch()); };
    EXPECT_EQ(mParam.getDateTimeByIndex(120), QDateTime(QDate(2024, 3, 8), QTime(11, 30)));
    EXPECT_EQ(mParam.getDateTimeByIndex(121), QDateTime(QDate(2024, 3, 8), QTime(13, 1)));
}

TEST_F(CRealtimeUiParamAxis, APastDayIsTheExchangesWhateverTheZoneOfTheMachine) {
    show("SH", "600000");
    mParam.mGetTradeDateFunc = [] { return 1709827200; }; // midnight of the eighth of March at UTC+8
    EXPECT_EQ(mParam.getDateTimeByIndex(0), QDateTime(QDate(2024, 3, 8), QTime(9, 30)));
    EXPECT_EQ(mParam.getDateTimeByIndex(240), QDateTime(QDate(2024, 3, 8), QTime(15, 0)));
    EXPECT_EQ(mParam.getDateTimeByIndex(240).date(), GZ::exchangeDate(mParam.mGetTradeDateFunc()));
}

TEST_F(CRealtimeUiParamAxis, NegativeIndexIsTodaysMidnightAlsoInAViewOfAPastDay) {
    show("SH", "600000");
    const QDateTime today(QDate(2024, 3, 15), QTime(0, 0));
    EXPECT_EQ(mParam.getDateTimeByIndex(-1), today);
    mParam.mGetTradeDateFunc = [] { return 1709827200; };
    EXPECT_EQ(mParam.getDateTimeByIndex(-1), today);
    EXPECT_EQ(mParam.getDateTimeByIndex(std::numeric_limits<int>::min()), today);
}

TEST_F(CRealtimeUiParamAxis, IndexBeyondTheLastHasTheTimeOfTheLast) {
    show("SH", "600000");
    EXPECT_EQ(mParam.getDateTimeByIndex(100000), mParam.getDateTimeByIndex(mParam.mPointCount - 1));
    EXPECT_EQ(mParam.getDateTimeByIndex(100000).time(), QTime(15, 0));
}

TEST_F(CRealtimeUiParamAxis, LastMinuteOfTheAfterHoursSessionIsNeverShown) {
    mHost.mTypes.mTypes = {{10006, "SZ", "300001"}};
    show("SZ", "300001");
    mParam.mShowFixedPriceDeal = true;
    mParam.resetAxis("SZ", "300001");
    EXPECT_EQ(mParam.getDateTimeByIndex(241).time(), QTime(15, 5));
    EXPECT_EQ(mParam.getDateTimeByIndex(265).time(), QTime(15, 29));
    EXPECT_EQ(mParam.getDateTimeByIndex(266).time(), QTime(15, 29));
}

TEST_F(CRealtimeUiParamAxis, DateDoesNotRollOverAtMidnight) {
    mHost.mTimes.mNight << "SHFEau2406";
    show("SHFE", "au2406");
    EXPECT_EQ(mParam.getDateTimeByIndex(179), QDateTime(QDate(2024, 3, 15), QTime(23, 59)));
    EXPECT_EQ(mParam.getDateTimeByIndex(181), QDateTime(QDate(2024, 3, 15), QTime(0, 1)));
    EXPECT_EQ(mParam.getDateTimeByIndex(555), QDateTime(QDate(2024, 3, 15), QTime(15, 0)));
}

TEST_F(CRealtimeUiParamAxis, HourTwentyFourIsNoValidTime) {
    mHost.mTimes.mNight << "SHFEau2406";
    show("SHFE", "au2406");
    EXPECT_FALSE(mParam.getDateTimeByIndex(180).time().isValid());
    EXPECT_EQ(mParam.getDateTimeByIndex(180).toString("hh:mm"), QString());
}

TEST_F(CRealtimeUiParamAxis, TimeTextOfTheHourTwentyFourIsThatOfTheClockOnTheWall) {
    mHost.mTimes.mNight << "SHFEau2406";
    show("SHFE", "au2406");
    EXPECT_EQ(mParam.getTimeTextByIndex(179), "23:59");
    EXPECT_EQ(mParam.getTimeTextByIndex(180), "24:00");
    EXPECT_EQ(mParam.getTimeTextByIndex(181), "00:01");
    EXPECT_EQ(mParam.getTimeTextByIndex(100000), "15:00");
    EXPECT_EQ(mParam.getTimeTextByIndex(-1), "00:00");
}

TEST_F(CRealtimeUiParamAxis, PositionThatNoSessionHasIsMidnight) {
    mParam.mSessions = {{570, 579}};
    mParam.mPointCount = 20;
    EXPECT_EQ(mParam.getDateTimeByIndex(9).time(), QTime(9, 39));
    EXPECT_EQ(mParam.getDateTimeByIndex(10), QDateTime(QDate(2024, 3, 15), QTime(0, 0)));
}

TEST_F(CRealtimeUiParamAxis, WidthOfADayIsWhatTheStripsLeaveOverTheDays) {
    mParam.mLeftAxisWidth = 50;
    mParam.mRightAxisWidth = 50;
    mParam.resize(QRect(10, 10, 800, 300));
    EXPECT_DOUBLE_EQ(mParam.mDayWidth, 700.0);
    mParam.mDayCount = 6;
    mParam.resize(QRect(0, 0, 800, 300));
    EXPECT_DOUBLE_EQ(mParam.mDayWidth, 700.0 / 6.0);
    mParam.resize(QRect(0, 0, 40, 300));
    EXPECT_DOUBLE_EQ(mParam.mDayWidth, -10.0);
    EXPECT_EQ(mParam.getIndexByXAxis(5), -1);
}

TEST_F(CRealtimeUiParamAxis, WidthOfADayIsANumberForAnyRectangleAndDayCount) {
    constexpr int kMax = std::numeric_limits<int>::max();
    mParam.mLeftAxisWidth = 50;
    mParam.mRightAxisWidth = 50;
    mParam.mDayCount = 0;
    mParam.resize(QRect(0, 0, 800, 300));
    EXPECT_DOUBLE_EQ(mParam.mDayWidth, 700.0);
    mParam.mDayCount = 1;
    mParam.resize(QRect(QPoint(-kMax, 0), QPoint(kMax, 10)));
    EXPECT_DOUBLE_EQ(mParam.mDayWidth, 2.0 * kMax + 1.0 - 100.0);
    mParam.resize(QRect());
    EXPECT_DOUBLE_EQ(mParam.mDayWidth, -100.0);
}

TEST_F(CRealtimeUiParamAxis, PixelsAndPositionsFollowTheWidthOfADay) {
    show("SH", "600000");
    mParam.mDayWidth = 242.0;
    EXPECT_EQ(mParam.getXAxisByIndex(0), 1);
    EXPECT_EQ(mParam.getXAxisByIndex(240), 241);
    EXPECT_EQ(mParam.getXAxisByIndex(-1), 1);
    EXPECT_EQ(mParam.getIndexByXAxis(0), 0);
    EXPECT_EQ(mParam.getIndexByXAxis(1), 1);
    mParam.mDayWidth = 0.0;
    EXPECT_EQ(mParam.getIndexByXAxis(5), -1);
    mParam.mDayWidth = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(mParam.getIndexByXAxis(5), -1);
    EXPECT_EQ(mParam.getXAxisByIndex(5), 1);
}

} // namespace
