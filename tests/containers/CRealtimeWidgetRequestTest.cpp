// Requests of a pane: dates, order, what is withdrawn and emptied.

#include "tests/containers/PaneFixture.h"

namespace tests {
namespace {

class PaneRequestTest : public PaneFixture {};

TEST_F(PaneRequestTest, EachGraphAsksForItsOwnDayTheNewestFirst) {
    makeMainPane();
    mPane->scaleView(false);
    mPane->scaleView(false);
    mHost.mFormulas.mLive.clear();
    mPane->request(kOrdinary);
    EXPECT_EQ(dates(), (QList<int>{kDay, kDay - kDayLength, kDay - 2 * kDayLength}));
    QList<int> asked;
    for (const fakehost::LiveRequest &live : mHost.mFormulas.mLive.all()) {
        if (live.param.mFormulaName == mHost.mCatalogue.getFormula("REALTIME")->mFileName) {
            asked.append(static_cast<int>(live.param.mStart.first / 1000));
        }
    }
    EXPECT_EQ(asked, (QList<int>{kDay, kDay - kDayLength, kDay - 2 * kDayLength}));
}

TEST_F(PaneRequestTest, TradingDaysAreCountedAndNotCalendarDays) {
    mHost.mStocks.mTradingDays = {kDay - 7 * kDayLength, kDay - kDayLength, kDay};
    makeMainPane();
    mPane->scaleView(false);
    mPane->scaleView(false);
    mPane->request(kOrdinary);
    EXPECT_EQ(dates(), (QList<int>{kDay, kDay - kDayLength, kDay - 7 * kDayLength}));
}

TEST_F(PaneRequestTest, AMidnightOfThePastDayPassesUnchanged) {
    makeMainPane();
    mUi->mGetTradeDateFunc = [] { return kDay; };
    mPane->request(kOrdinary);
    EXPECT_EQ(dates(), QList<int>{kDay});
}

TEST_F(PaneRequestTest, AnyOtherTimeFallsBackToAMidnight) {
    makeMainPane();
    mUi->mGetTradeDateFunc = [] { return kDay + 1; }; // 16:00:01 at UTC
    mPane->request(kOrdinary);
    EXPECT_EQ(dates(), QList<int>{kDay - kDayLength});
    mUi->mGetTradeDateFunc = [] { return kDay + 36000; }; // 02:00 at UTC
    mPane->request(kOrdinary);
    EXPECT_EQ(dates(), QList<int>{kDay});
}

TEST_F(PaneRequestTest, ARequestBringsTheDaysOntoOneScale) {
    mHost.mCache.addFormulaHistoryData(QStringLiteral("SH600000"), QStringLiteral("REALTIME"), makeMeta(1),
                                       makeResult(minuteTimes(kDay, 570, 2), {10.0, 10.4}));
    makeMainPane();
    showPane();
    mPane->request(kOrdinary); // what another view has fetched is there at once
    EXPECT_NEAR(strip(TC::CGraphAxisWidget::eLeft)->getMaxMinMap().value(key("REALTIME")).first, 10.4, 1e-9);
}

TEST_F(PaneRequestTest, TheRunModeReachesTheRequest) {
    auto runData = boost::make_shared<int>(7);
    mHost.mCatalogue.getFormula("REALTIME")->mRunData = runData;
    makePane(TC::EIndexDisplayType::Main, {"REALTIME"});
    mPane->request(corvane::ERunMode::HandOver);
    EXPECT_EQ(mHost.mFormulas.mLive.find("REALTIME.lua", "600000").param.mRunData, runData);
}

TEST_F(PaneRequestTest, ASynchronousRequestNeedsAPastDay) {
    makeMainPane();
    mPane->syncRequest(kOrdinary);
    EXPECT_TRUE(mHost.mLog.of(QStringLiteral("CFormulaManager::requestFormulas")).isEmpty());
}

TEST_F(PaneRequestTest, ASynchronousRequestTakesTheDateAsItIs) {
    makeMainPane();
    mUi->mGetTradeDateFunc = [] { return kDay + 1; };
    mPane->scaleView(false);
    mHost.mLog.clear();
    mPane->syncRequest(kOrdinary);
    EXPECT_EQ(dates(), (QList<int>{kDay + 1, kDay + 1 - kDayLength}));
    EXPECT_EQ(mHost.mLog.of(QStringLiteral("CFormulaManager::requestFormulasSync")).size(), 2);
    EXPECT_EQ(requests(), 0);
}

TEST_F(PaneRequestTest, ASynchronousRequestIsNotHeld) {
    makeScriptModel("MACD");
    makeSubPane();
    mUi->mGetTradeDateFunc = [] { return kDay; };
    mPane->setAutoIndex(false);
    mPane->syncRequest(kOrdinary);
    EXPECT_EQ(mHost.mLog.of(QStringLiteral("CFormulaManager::requestFormulasSync")).size(), 1);
    EXPECT_TRUE(runButton()->isHidden());
}

TEST_F(PaneRequestTest, WithdrawingReachesAllDays) {
    makeMainPane();
    mPane->scaleView(false);
    mPane->request(kOrdinary);
    EXPECT_FALSE(newest()->getData()->reqIds().isEmpty());
    mPane->unrequest();
    for (const TC::CRealtimeGraphWidget *one : mPane->getGraphWidgets()) {
        EXPECT_TRUE(one->getData()->reqIds().isEmpty());
    }
}

TEST_F(PaneRequestTest, ClearingEmptiesTheDataAndKeepsTheGraphs) {
    makeMainPane();
    mPane->scaleView(false);
    mPane->request(kOrdinary);
    answerDay("REALTIME", kDay, {10.0});
    answerDay("REALTIME", kDay - kDayLength, {10.0});
    EXPECT_TRUE(mPane->hasData());
    mPane->clear();
    EXPECT_FALSE(mPane->hasData());
    EXPECT_FALSE(graph(1)->getData()->hasData());
    EXPECT_EQ(mPane->getGrapWidgetCount(), 2);
    EXPECT_EQ(mPane->getIndexes(), (QList<QString>{"REALTIME", "REALTIMEVOL"}));
}

TEST_F(PaneRequestTest, WhatThePaneHasIsThatOfTheNewestDay) {
    makeMainPane();
    mPane->scaleView(false);
    mPane->request(kOrdinary);
    answerDay("REALTIME", kDay - kDayLength, {10.0});
    EXPECT_FALSE(mPane->hasData());
    EXPECT_FALSE(mPane->hasPythonIndex());
    EXPECT_FALSE(mPane->hasGroupModelIndex());
    makeGroupModel("REALTIME");
    makeScriptModel("REALTIME");
    EXPECT_TRUE(mPane->hasPythonIndex());
    EXPECT_TRUE(mPane->hasGroupModelIndex());
}

TEST_F(PaneRequestTest, InReplayTheNewestDayIsAskedOfTheReplay) {
    makeMainPane();
    mPane->scaleView(false);
    mPane->beReplay(true);
    mHost.mLog.clear();
    mPane->request(kOrdinary);
    EXPECT_EQ(mHost.mLog.of(QStringLiteral("CReplayManager::requestFormulas")).size(), 1);
    EXPECT_EQ(requests(), 1);
}

TEST_F(PaneRequestTest, RegionFiguresAreThoseOfTheNewestDay) {
    makeMainPane();
    mPane->request(kOrdinary);
    answerDay("REALTIME", kDay, {10.0, 11.0});
    answerDay("REALTIMEVOL", kDay, {100.0, 300.0}, 2);
    int start = 0;
    int end = 50;
    const QStringList figures = mPane->statisticRange(start, end);
    EXPECT_EQ(end, 1);
    EXPECT_EQ(figures.value(1), QStringLiteral("11.00"));
    EXPECT_EQ(figures.value(4), QStringLiteral("400.00"));
}

// Group models

class GroupModelTest : public PaneFixture {
protected:
    GroupModelTest() { makeGroupModel("MACD"); }
};

TEST_F(GroupModelTest, OnAStockNothingIsAskedFor) {
    makeSubPane();
    mPane->request(kOrdinary);
    EXPECT_EQ(requests(), 0);
}

TEST_F(GroupModelTest, OnAnIndexTheNewestDayAloneIsAskedForOnce) {
    makeIndexView();
    mUi->mDayCount = 2;
    makeSubPane();
    mPane->request(kOrdinary);
    EXPECT_EQ(requests(), 1);
    EXPECT_EQ(mHost.mFormulas.mLastParams.value(0).mStart.first, kDay * 1000LL);
    answerDay("MACD", kDay, {1.0, 2.0});
    mPane->request(kOrdinary); // it has data
    EXPECT_EQ(requests(), 1);
}

TEST_F(GroupModelTest, AScriptModelIsAskedForWhateverTheInstrument) {
    makeScriptModel("MACD");
    mUi->mDayCount = 2;
    makeSubPane();
    mPane->request(kOrdinary);
    EXPECT_EQ(requests(), 1);
    answerDay("MACD", kDay, {1.0, 2.0});
    mPane->request(kOrdinary);
    EXPECT_EQ(requests(), 2);
}

TEST_F(GroupModelTest, TheScaleIsLeftAlone) {
    makeIndexView();
    makeSubPane();
    showPane();
    mPane->request(kOrdinary);
    mPane->unrequest();
    EXPECT_TRUE(strip(TC::CGraphAxisWidget::eLeft)->getMaxMinMap().isEmpty());
}

} // namespace
} // namespace tests
