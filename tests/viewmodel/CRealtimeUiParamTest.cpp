#include "viewmodel/CRealtimeUiParam.h"

#include "host/toolkit/CUiResource.h"
#include "tests/fakehost/FakeHost.h"
#include "viewmodel/CRealTimeCustomIndexAxis.h"
#include "viewmodel/CRealTimeNomalAxis.h"
#include "viewmodel/CRealTimePortfolioAxis.h"

#include <gtest/gtest.h>

using namespace TC;

namespace {

class CRealtimeUiParamTest : public ::testing::Test {
protected:
    fakehost::FakeHost mHost;
    CRealtimeUiParam mParam{EIndexViewType::Ordinary};
};

TEST_F(CRealtimeUiParamTest, NewOneIsInvalidAndHasRoomForOverlays) {
    EXPECT_FALSE(mParam.isValid());
    EXPECT_EQ(mParam.getStock(), getDetailQsKey(CInstrumentDetailPtr()));
    EXPECT_TRUE(mParam.canAddStock());
    EXPECT_EQ(mParam.getStockDetail(), nullptr);
}

TEST_F(CRealtimeUiParamTest, NewOneHasTheInitialValues) {
    EXPECT_EQ(CRealtimeUiParam(EIndexViewType::NoTimeScale).mViewType, EIndexViewType::NoTimeScale);
    EXPECT_EQ(mParam.mStockKind, 0);
    EXPECT_EQ(mParam.mMaxAddStock, 3);
    EXPECT_FALSE(mParam.mCrossShown || mParam.mCursorByKey || mParam.mMouseIn);
    EXPECT_EQ(mParam.mCrossX, 0);
    EXPECT_EQ(mParam.mCrossIndex, -1);
    EXPECT_EQ(mParam.mDayWidth, 0.0);
    EXPECT_EQ(mParam.mDayCount, 1);
    EXPECT_EQ(mParam.mPointCount, 0);
    EXPECT_TRUE(mParam.mShowVolume);
    EXPECT_FALSE(mParam.mCanOverlaySector);
    EXPECT_EQ(mParam.mLinkageFlags, 1);
    EXPECT_EQ(mParam.mLinkageShow, (std::array<bool, 8>{}));
    EXPECT_EQ(mParam.mFixedPriceLevel, 1);
    EXPECT_FALSE(mParam.mFixedPriceRequest);
    EXPECT_EQ(mParam.mAddSwBkzsLevel, -1);
    EXPECT_EQ(mParam.mAddStockFlags, 0);
    EXPECT_FALSE(mParam.mShowFixedPriceDeal);
    EXPECT_FALSE(mParam.mGetTradeDateFunc);
    EXPECT_EQ(mParam.mCurrentAxis, mParam.mNormalAxis);
}

TEST_F(CRealtimeUiParamTest, OverlayColoursAreThoseOfTheThemeWithRedInTheLowByte) {
    QList<int> expected;
    for (const char *key :
         {"ic_clr_realtime_superpos_1", "ic_clr_realtime_superpos_2", "ic_clr_realtime_superpos_3"}) {
        const QRgb rgb = GZ::CUiResource::instance().getColor(key).rgb();
        expected << qRed(rgb) + 256 * qGreen(rgb) + 65536 * qBlue(rgb);
    }
    EXPECT_EQ(mParam.mAddStockColors, expected);
}

TEST_F(CRealtimeUiParamTest, CatalogueInstrumentIsOfKindZero) {
    const CInstrumentDetailPtr detail = mHost.mStocks.add("SH", "600000");
    mParam.setStock("SH600000", false);
    EXPECT_TRUE(mParam.isValid());
    EXPECT_EQ(mParam.mStockKind, 0);
    EXPECT_EQ(mParam.getStock(), "SH600000");
    EXPECT_EQ(mParam.getStockDetail(), detail);
    EXPECT_EQ(mParam.mCurrentAxis, mParam.mNormalAxis);
}

TEST_F(CRealtimeUiParamTest, UserDefinedIndexIsOfKindOne) {
    mHost.mStocks.add("SH", "600000");
    mParam.setStock("SH600000", false);
    mHost.mIndexes.add("MYINDEX");
    mParam.setStock("MYINDEX", false);
    EXPECT_TRUE(mParam.isValid());
    EXPECT_EQ(mParam.mStockKind, 1);
    EXPECT_EQ(mParam.getStock(), "MYINDEX");
    EXPECT_EQ(mParam.getStockDetail(), nullptr);
    EXPECT_EQ(mParam.mCurrentAxis, mParam.mIndexAxis);
}

TEST_F(CRealtimeUiParamTest, PortfolioKeyIsStoredWithItsMarket) {
    mHost.mStocks.mPortfolios << "123";
    mParam.setStock("123", false);
    EXPECT_TRUE(mParam.isValid());
    EXPECT_EQ(mParam.mStockKind, 2);
    EXPECT_EQ(mParam.mPortfolioKey, "TZZH123");
    EXPECT_EQ(mParam.getStock(), "TZZH123");
    EXPECT_EQ(mParam.mCurrentAxis, mParam.mPortfolioAxis);
}

TEST_F(CRealtimeUiParamTest, KeyOfAnIndexAndAnInstrumentIsAnIndex) {
    mHost.mIndexes.add("SH600000");
    mHost.mStocks.add("SH", "600000");
    mHost.mStocks.mPortfolios << "SH600000";
    mParam.setStock("SH600000", false);
    EXPECT_EQ(mParam.mStockKind, 1);
}

TEST_F(CRealtimeUiParamTest, KeyOfAnInstrumentAndAPortfolioIsAnInstrument) {
    mHost.mStocks.add("SH", "600000");
    mHost.mStocks.mPortfolios << "SH600000";
    mParam.setStock("SH600000", false);
    EXPECT_EQ(mParam.mStockKind, 0);
}

TEST_F(CRealtimeUiParamTest, UnknownKeyLeavesTheViewInvalidAndTheKindAsItWas) {
    mHost.mIndexes.add("MYINDEX");
    mParam.setStock("MYINDEX", false);
    mParam.setStock("nothing", false);
    EXPECT_FALSE(mParam.isValid());
    EXPECT_EQ(mParam.mStockKind, 1);
    EXPECT_EQ(mParam.getStock(), "MYINDEX");
    EXPECT_EQ(mParam.mCurrentAxis, mParam.mIndexAxis);
}

TEST_F(CRealtimeUiParamTest, UnknownKeyEmptiesTheInstrument) {
    mHost.mStocks.add("SH", "600000");
    mParam.setStock("SH600000", false);
    mParam.setStock("nothing", false);
    EXPECT_FALSE(mParam.isValid());
    EXPECT_EQ(mParam.getStock(), QString());
    EXPECT_EQ(mParam.mPointCount, 241);
}

TEST_F(CRealtimeUiParamTest, ClearStockEmptiesTheInstrumentAlone) {
    mHost.mStocks.add("SH", "600000");
    mHost.mStocks.add("SH", "600001");
    mParam.setStock("SH600000", false);
    mParam.addStock("SH600001", "", true);
    mParam.clearStock();
    EXPECT_EQ(mParam.getStockDetail(), nullptr);
    EXPECT_TRUE(mParam.isValid());
    EXPECT_EQ(mParam.mStockKind, 0);
    EXPECT_EQ(mParam.mAddStocks.size(), 1);
}

TEST_F(CRealtimeUiParamTest, ClearForgetsTheDataCountAlone) {
    mHost.mStocks.add("SH", "600000");
    mParam.setStock("SH600000", false);
    mParam.mDataCount = 100;
    mParam.clear();
    EXPECT_EQ(mParam.mDataCount, 0);
    EXPECT_TRUE(mParam.isValid());
    EXPECT_EQ(mParam.getStock(), "SH600000");
    EXPECT_EQ(mParam.mPointCount, 241);
}

TEST_F(CRealtimeUiParamTest, MainStockIsComparedInAnyLetterCase) {
    mHost.mStocks.add("SH", "600000");
    mParam.setStock("SH600000", false);
    EXPECT_TRUE(mParam.isMainStock("sh600000"));
    EXPECT_FALSE(mParam.isMainStock("600000"));
}

TEST_F(CRealtimeUiParamTest, PanelIdIsZeroWithoutAPanel) {
    EXPECT_EQ(mParam.getMainPanelID(), 0);
    mParam.mPanelInfo.reset(new CPanelInfo);
    mParam.mPanelInfo->mId = 77;
    EXPECT_EQ(mParam.getMainPanelID(), 77);
}

TEST_F(CRealtimeUiParamTest, GroupIndexGraphIsOfIndexesAndUserDefinedIndexes) {
    mHost.mStocks.add("SH", "000001");
    mHost.mStocks.add("SH", "600000");
    mHost.mTypes.mIndexes.insert({"SH", "000001"});
    mHost.mIndexes.add("MYINDEX");
    mParam.setStock("SH600000", false);
    EXPECT_FALSE(mParam.isShowGroupIndexGraph());
    mParam.setStock("SH000001", false);
    EXPECT_TRUE(mParam.isShowGroupIndexGraph());
    mParam.setStock("MYINDEX", false);
    EXPECT_TRUE(mParam.isShowGroupIndexGraph());
}

TEST_F(CRealtimeUiParamTest, FormulaAccountIsKept) {
    mParam.setFormulaAccount("A1");
    EXPECT_EQ(mParam.mFormulaAccount, "A1");
}

TEST_F(CRealtimeUiParamTest, FormulaRolesAreThoseOfTheCurrentKind) {
    EXPECT_TRUE(mParam.isMainFormula("REALTIMEVOL"));
    EXPECT_FALSE(mParam.isMainFormula("realtimevol"));
    EXPECT_TRUE(mParam.isBasicFormula("realtime"));
    EXPECT_TRUE(mParam.isVolFormula("RealTimeVol"));
    EXPECT_EQ(mParam.getMainFormula(), (QList<QString>{"REALTIME", "REALTIMEVOL"}));
    EXPECT_TRUE(mParam.showContextMenu());
    mHost.mStocks.mPortfolios << "7";
    mParam.setStock("7", false);
    EXPECT_EQ(mParam.getBasicFormula(), QStringLiteral("量价分析"));
    EXPECT_EQ(mParam.getVolFormula(), QStringLiteral("量价分析-量"));
    EXPECT_FALSE(mParam.showContextMenu());
    mParam.setPortfolioGraphType(1);
    EXPECT_EQ(mParam.getMainFormula(), QList<QString>{QStringLiteral("偏离度分析")});
}

TEST_F(CRealtimeUiParamTest, PortfolioAnalysisSurvivesASwitchToAnotherKindAndBack) {
    mHost.mStocks.mPortfolios << "7";
    mHost.mStocks.add("SH", "600000");
    mParam.setStock("7", false);
    mParam.setPortfolioGraphType(2);
    mParam.setStock("SH600000", false);
    mParam.setPortfolioGraphType(1);
    EXPECT_EQ(mParam.getMainFormula(), (QList<QString>{"REALTIME", "REALTIMEVOL"}));
    mParam.setStock("7", false);
    EXPECT_EQ(mParam.getMainFormula(), QList<QString>{QStringLiteral("预计下单")});
}

TEST_F(CRealtimeUiParamTest, AppliedMainFormulaNeedsNoStrategy) {
    mParam.mCurrentAxis = nullptr;
    EXPECT_EQ(mParam.getApplyMainFormula(), QStringLiteral("VWAP成交均价"));
}

TEST_F(CRealtimeUiParamTest, WithoutAStrategyAllRolesAreEmpty) {
    mParam.mCurrentAxis = nullptr;
    EXPECT_FALSE(mParam.isMainFormula("REALTIME"));
    EXPECT_FALSE(mParam.isBasicFormula("REALTIME"));
    EXPECT_FALSE(mParam.isVolFormula("REALTIMEVOL"));
    EXPECT_FALSE(mParam.showContextMenu());
    EXPECT_EQ(mParam.getBasicFormula(), QString());
    EXPECT_EQ(mParam.getVolFormula(), QString());
    EXPECT_TRUE(mParam.getMainFormula().isEmpty());
    mParam.setPortfolioGraphType(1);
    CFormulaParam request;
    request.mStockKind = 9;
    EXPECT_FALSE(mParam.fillRequestParam(request, "SH600000", nullptr));
}

TEST_F(CRealtimeUiParamTest, RequestIsFilledByTheStrategyOfItsOwnKind) {
    mHost.mStocks.add("SH", "600000");
    mHost.mIndexes.add("MYINDEX")->mMembers << "SH600000";
    CFormulaParam request;
    EXPECT_TRUE(mParam.fillRequestParam(request, "SH600000", nullptr));
    EXPECT_EQ(request.mMarket, "SH");
    request.mStockKind = 1;
    EXPECT_TRUE(mParam.fillRequestParam(request, "MYINDEX", nullptr));
    EXPECT_EQ(request.mMarket, "CD");
    request.mStockKind = 2;
    EXPECT_TRUE(mParam.fillRequestParam(request, "TZZH5", nullptr));
    EXPECT_EQ(request.mMarket, "TZZH");
    EXPECT_EQ(request.mCode, "5");
}

TEST_F(CRealtimeUiParamTest, RequestOfAnotherKindIsFilledByTheCurrentStrategy) {
    mHost.mStocks.mPortfolios << "7";
    mParam.setStock("7", false);
    CFormulaParam request;
    request.mStockKind = -4;
    EXPECT_TRUE(mParam.fillRequestParam(request, "TZZH5", nullptr));
    EXPECT_EQ(request.mMarket, "TZZH");
}

TEST_F(CRealtimeUiParamTest, RequestOfAnOverlaidIndexTakesTheCodeOfTheOverlayInAnyLetterCase) {
    mHost.mStocks.add("SH", "600000");
    mHost.mIndexes.add("MyIndex")->mMembers << "SH600000";
    mParam.addStock("MyIndex", "", true);
    CFormulaParam request;
    request.mStockKind = 1;
    EXPECT_TRUE(mParam.fillRequestParam(request, "MYINDEX", nullptr));
    EXPECT_EQ(request.mCode, "MyIndex");
}

TEST_F(CRealtimeUiParamTest, LastMatchingOverlayGivesTheCodeOfARequest) {
    mHost.mIndexes.add("600000")->mMembers << "SH600000";
    mHost.mIndexes.add("SH600000")->mMembers << "SH600000";
    mHost.mStocks.add("SH", "600000");
    mParam.addStock("SH600000", "", true); // an instrument: its code is without the market
    CFormulaParam request;
    request.mStockKind = 1;
    EXPECT_TRUE(mParam.fillRequestParam(request, "SH600000", nullptr));
    EXPECT_EQ(request.mCode, "600000");
    mHost.mStocks.mDetails.clear();
    mParam.addStock("SH600000", "", true); // the index of that key
    EXPECT_TRUE(mParam.fillRequestParam(request, "SH600000", nullptr));
    EXPECT_EQ(request.mCode, "SH600000");
}

TEST_F(CRealtimeUiParamTest, RequestReleasesTheFormulaOnEveryPath) {
    const CFormulaDetailPtr formula = mHost.mCatalogue.add("MA");
    const long before = formula.use_count();
    for (const int kind : {0, 1, 2, 3}) {
        CFormulaParam request;
        request.mStockKind = kind;
        mParam.fillRequestParam(request, "unknown", formula);
        EXPECT_EQ(formula.use_count(), before) << kind;
    }
}

TEST_F(CRealtimeUiParamTest, LastCloseOfALiveViewIsThatOfTheRecord) {
    mHost.mStocks.add("SH", "600000", 12.5);
    mHost.mStocks.mCloses[qMakePair(QString("SH600000"), 0)] = 99.0;
    mParam.setStock("SH600000", false);
    EXPECT_EQ(mParam.getLastClose(), 12.5);
}

TEST_F(CRealtimeUiParamTest, LastCloseOfAPastDayIsAskedByKeyAndDate) {
    mHost.mStocks.add("SH", "600000", 12.5);
    mHost.mStocks.mCloses[qMakePair(QString("SH600000"), 1709827200)] = 11.25;
    mParam.setStock("SH600000", false);
    mParam.mGetTradeDateFunc = [] { return 1709827200; };
    EXPECT_EQ(mParam.getLastClose(), 11.25);
    EXPECT_EQ(mParam.getLastClose("SH600000"), 11.25);
}

TEST_F(CRealtimeUiParamTest, LastCloseOfAUserDefinedIndexComesFromThreeSourcesInTurn) {
    mHost.mIndexes.add("MYINDEX");
    mParam.setStock("MYINDEX", false);
    EXPECT_EQ(mParam.getLastClose(), 0.0);
    mHost.mIndexes.mInitial["MYINDEX"] = 1e-9;
    EXPECT_EQ(mParam.getLastClose(), 1e-9);
    mHost.mIndexes.mDispatched["MYINDEX"] = -1e-5;
    EXPECT_EQ(mParam.getLastClose(), 1e-9);
    mHost.mIndexes.mDispatched["MYINDEX"] = -2e-5;
    EXPECT_EQ(mParam.getLastClose(), -2e-5);
    mHost.mIndexes.mStored["MYINDEX"] = 1e-5;
    EXPECT_EQ(mParam.getLastClose(), -2e-5);
    mHost.mIndexes.mStored["MYINDEX"] = 1000.0;
    EXPECT_EQ(mParam.getLastClose(), 1000.0);
}

TEST_F(CRealtimeUiParamTest, LastCloseOfAPortfolioIsZero) {
    mHost.mStocks.mPortfolios << "7";
    mParam.setStock("7", false);
    mParam.mGetTradeDateFunc = [] { return 1709827200; };
    EXPECT_EQ(mParam.getLastClose(), 0.0);
}

TEST_F(CRealtimeUiParamTest, LastCloseByKeyOfAnIndexIsItsBaseValue) {
    mHost.mIndexes.add("MYINDEX")->mBaseValue = 1234.0;
    EXPECT_EQ(mParam.getLastClose("MYINDEX"), 1234.0);
}

TEST_F(CRealtimeUiParamTest, LastCloseByKeyIsZeroInALiveView) {
    mHost.mStocks.add("SH", "600000", 12.5);
    mParam.setStock("SH600000", false);
    EXPECT_EQ(mParam.getLastClose("SH600000"), 0.0);
}

TEST_F(CRealtimeUiParamTest, CopyHasAllMembers) {
    mHost.mStocks.add("SH", "600000");
    mHost.mStocks.add("SH", "600001");
    mHost.mStocks.add("SH", "600002");
    CRealtimeUiParam from(EIndexViewType::Plain);
    from.setStock("SH600000", false);
    from.addStock("SH600001", "", true);
    from.addStock("SH600002", "", false);
    char strips[2];
    from.mStockKind = 4;
    from.mMaxAddStock = 5;
    from.mCrossShown = from.mCursorByKey = from.mMouseIn = true;
    from.mCrossX = 6;
    from.mCrossIndex = 7;
    from.mLeftAxisWidth = 8;
    from.mRightAxisWidth = 9;
    from.mDayWidth = 10.5;
    from.mDataCount = 11;
    from.mDayCount = 2;
    from.mShowVolume = false;
    from.mCanOverlaySector = true;
    from.mSector = "sector";
    from.mAddStockColors = {1, 2};
    from.mRequestId = 12;
    from.mGetTradeDateFunc = [] { return 13; };
    from.mLeftAxis = reinterpret_cast<CGraphAxisWidget *>(&strips[0]);
    from.mRightAxis = reinterpret_cast<CGraphAxisWidget *>(&strips[1]);
    from.mLinkageFlags = 14;
    from.mLinkageShow[3] = true;
    from.mLinkageAccounts = {"a"};
    from.mLinkageStrategys = {"b"};
    from.mLinkageStocks = {"c"};
    from.mLinkageBuys[1] = {2, 3.0};
    from.mLinkageSells[4] = {5, 6.0};
    from.mLinkageAmounts[7] = {8.0, 9.0};
    from.mLinkageProfits[10] = 11.0;
    from.mLinkageBalances[12] = 13.0;
    from.mStockAccounts << "s";
    from.mFutureAccounts << "f";
    from.mFixedPriceLevel = 15;
    from.mFixedPriceRequest = true;
    from.mPanelInfo.reset(new CPanelInfo);
    from.mAddSwBkzsLevel = 16;
    from.mAddBkzsCode = "code";
    from.mFormulaAccount = "account";
    from.mAddStockFlags = 17;
    from.mAddConvertibleCodes << "convertible";
    from.mIndexKey = "index";
    from.mPortfolioKey = "portfolio";
    from.mShowFixedPriceDeal = true;

    const CRealtimeUiParam copy(from);
    EXPECT_EQ(copy.mViewType, EIndexViewType::Plain);
    EXPECT_EQ(copy.mStockKind, 4);
    EXPECT_EQ(copy.mMaxAddStock, 5);
    EXPECT_TRUE(copy.mCrossShown && copy.mCursorByKey && copy.mMouseIn);
    EXPECT_EQ(copy.mCrossX, 6);
    EXPECT_EQ(copy.mCrossIndex, 7);
    EXPECT_EQ(copy.mLeftAxisWidth, 8);
    EXPECT_EQ(copy.mRightAxisWidth, 9);
    EXPECT_EQ(copy.mDayWidth, 10.5);
    EXPECT_EQ(copy.mSessions, (QVector<QPair<int, int>>{{570, 690}, {781, 900}}));
    EXPECT_EQ(copy.mDataCount, 11);
    EXPECT_EQ(copy.mDayCount, 2);
    EXPECT_EQ(copy.mPointCount, 241);
    EXPECT_FALSE(copy.mShowVolume);
    EXPECT_TRUE(copy.mCanOverlaySector);
    EXPECT_EQ(copy.mAddStocks, from.mAddStocks);
    EXPECT_EQ(copy.mAddNoAxisStocks, from.mAddNoAxisStocks);
    EXPECT_EQ(copy.mSector, "sector");
    EXPECT_EQ(copy.mAddStockColors, (QList<int>{1, 2}));
    EXPECT_EQ(copy.mStockColors.keys(), (QList<QString>{"SH600001", "SH600002"}));
    EXPECT_EQ(copy.mRequestId, 12);
    EXPECT_EQ(copy.mGetTradeDateFunc(), 13);
    EXPECT_EQ(copy.mLeftAxis, from.mLeftAxis);
    EXPECT_EQ(copy.mRightAxis, from.mRightAxis);
    EXPECT_EQ(copy.mLinkageFlags, 14);
    EXPECT_TRUE(copy.mLinkageShow[3]);
    EXPECT_EQ(copy.mLinkageAccounts, std::set<std::string>{"a"});
    EXPECT_EQ(copy.mLinkageStrategys, std::set<std::string>{"b"});
    EXPECT_EQ(copy.mLinkageStocks, std::set<std::string>{"c"});
    EXPECT_EQ(copy.mLinkageBuys, from.mLinkageBuys);
    EXPECT_EQ(copy.mLinkageSells, from.mLinkageSells);
    EXPECT_EQ(copy.mLinkageAmounts, from.mLinkageAmounts);
    EXPECT_EQ(copy.mLinkageProfits, from.mLinkageProfits);
    EXPECT_EQ(copy.mLinkageBalances, from.mLinkageBalances);
    EXPECT_EQ(copy.mStockAccounts, QList<QString>{"s"});
    EXPECT_EQ(copy.mFutureAccounts, QList<QString>{"f"});
    EXPECT_EQ(copy.mFixedPriceLevel, 15);
    EXPECT_TRUE(copy.mFixedPriceRequest);
    EXPECT_EQ(copy.mPanelInfo, from.mPanelInfo);
    EXPECT_EQ(copy.mAddSwBkzsLevel, 16);
    EXPECT_EQ(copy.mAddBkzsCode, "code");
    EXPECT_EQ(copy.mFormulaAccount, "account");
    EXPECT_EQ(copy.mAddStockFlags, 17);
    EXPECT_EQ(copy.mAddConvertibleCodes, QSet<QString>{"convertible"});
    EXPECT_TRUE(copy.mValid);
    EXPECT_EQ(copy.mStockDetail, from.mStockDetail);
    EXPECT_EQ(copy.mIndexKey, "index");
    EXPECT_EQ(copy.mPortfolioKey, "portfolio");
    EXPECT_TRUE(copy.mShowFixedPriceDeal);
}

TEST_F(CRealtimeUiParamTest, CopyHasStrategiesOfItsOwnWithTheSameOneCurrent) {
    mHost.mStocks.add("SH", "600000");
    mHost.mIndexes.add("MYINDEX");
    mHost.mStocks.mPortfolios << "7";
    for (const char *key : {"SH600000", "MYINDEX", "7"}) {
        mParam.setStock(key, false);
        const CRealtimeUiParam copy(mParam);
        EXPECT_NE(copy.mNormalAxis, mParam.mNormalAxis);
        EXPECT_NE(copy.mIndexAxis, mParam.mIndexAxis);
        EXPECT_NE(copy.mPortfolioAxis, mParam.mPortfolioAxis);
        EXPECT_EQ(copy.mCurrentAxis == copy.mNormalAxis, mParam.mCurrentAxis == mParam.mNormalAxis) << key;
        EXPECT_EQ(copy.mCurrentAxis == copy.mIndexAxis, mParam.mCurrentAxis == mParam.mIndexAxis) << key;
        EXPECT_EQ(copy.mCurrentAxis == copy.mPortfolioAxis, mParam.mCurrentAxis == mParam.mPortfolioAxis)
            << key;
    }
}

TEST_F(CRealtimeUiParamTest, CopyKeepsThePortfolioAnalysisAndThenGoesItsOwnWay) {
    mHost.mStocks.mPortfolios << "7";
    mParam.setStock("7", false);
    mParam.setPortfolioGraphType(1);
    CRealtimeUiParam copy(mParam);
    EXPECT_EQ(copy.getMainFormula(), QList<QString>{QStringLiteral("偏离度分析")});
    copy.setPortfolioGraphType(2);
    EXPECT_EQ(mParam.getMainFormula(), QList<QString>{QStringLiteral("偏离度分析")});
}

TEST_F(CRealtimeUiParamTest, CopyOwnsItsOverlaidIndexes) {
    mHost.mIndexes.add("MYINDEX")->mBaseValue = 5.0;
    mParam.addStock("MYINDEX", "", true);
    const CRealtimeUiParam copy(mParam);
    ASSERT_EQ(copy.mAddIndexes.size(), 1);
    EXPECT_NE(copy.mAddIndexes[0], mParam.mAddIndexes[0]);
    mParam.delAllStock();
    EXPECT_EQ(copy.mAddIndexes[0]->key(), "MYINDEX");
    EXPECT_EQ(copy.mAddIndexes[0]->mBaseValue, 5.0);
}

} // namespace
