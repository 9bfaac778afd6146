// Requests held back until a model may run, and results that the host pushes.

#include "tests/containers/PaneFixture.h"

namespace tests {
namespace {

class HeldRequestTest : public PaneFixture {
protected:
    void makeModelPane() {
        makeScriptModel("MACD");
        makeSubPane();
        showPane();
    }
    bool isWaiting() const { return runButton()->isVisible(); }
    void push(const std::vector<double> &values = {1.0, 2.0}) {
        const int count = static_cast<int>(values.size());
        mPane->minitermFormulaDataCallback(makeMeta(1), makeResult(minuteTimes(kDay, 570, count), values),
                                           QStringLiteral("SH600000"), QStringLiteral("MACD"), 1);
    }
    void setStrategy(bool running) { mHost.mStrategies.mStrategies.insert("MACD", {"MACD", running}); }
};

TEST_F(HeldRequestTest, WithoutAModelAHeldRequestRunsAtOnce) {
    makeSubPane();
    mPane->setAutoIndex(false);
    mPane->request(kOrdinary);
    EXPECT_EQ(requests(), 1);
    EXPECT_TRUE(runButton()->isHidden());
    mPane->request(kOrdinary); // nothing is held any more
    EXPECT_EQ(requests(), 2);
}

TEST_F(HeldRequestTest, AModelWaitsForTheUserAfterTheLogin) {
    makeModelPane();
    mPane->setIsLoginInit(true);
    mPane->request(kOrdinary);
    EXPECT_EQ(requests(), 0);
    EXPECT_TRUE(isWaiting());
    EXPECT_EQ(title()->text(), QStringLiteral("MACD"));
}

TEST_F(HeldRequestTest, TheHoldOfTheLoginIsForOneRequest) {
    makeModelPane();
    mPane->setIsLoginInit(true);
    mPane->request(kOrdinary);
    mPane->request(kOrdinary);
    EXPECT_EQ(requests(), 1);
    EXPECT_FALSE(isWaiting());
}

TEST_F(HeldRequestTest, AModelThatDoesNotRunByItselfWaitsEachTime) {
    makeModelPane();
    mPane->setAutoIndex(false);
    mPane->request(kOrdinary);
    mPane->request(kOrdinary);
    EXPECT_EQ(requests(), 0);
    EXPECT_TRUE(isWaiting());
    mPane->setAutoIndex(true);
    EXPECT_TRUE(isWaiting()); // until the next request
    mPane->request(kOrdinary);
    EXPECT_EQ(requests(), 1);
    EXPECT_FALSE(isWaiting());
}

TEST_F(HeldRequestTest, AClickOnTheRunButtonRunsTheModelInTheModeAskedFor) {
    auto runData = boost::make_shared<int>(7);
    makeModelPane();
    mHost.mCatalogue.getFormula("MACD")->mRunData = runData;
    mPane->setAutoIndex(false);
    mPane->request(corvane::ERunMode::HandOver);
    QTest::mouseClick(runButton(), Qt::LeftButton);
    ASSERT_EQ(requests(), 1);
    EXPECT_EQ(mHost.mFormulas.mLastParams.value(0).mRunData, runData);
    EXPECT_FALSE(isWaiting());
    mPane->request(kOrdinary); // the click has made the model automatic
    EXPECT_EQ(requests(), 2);
}

TEST_F(HeldRequestTest, ARunningStrategyNeedsNoClick) {
    makeModelPane();
    setStrategy(true);
    mPane->setIsLoginInit(true);
    mPane->request(kOrdinary);
    EXPECT_EQ(requests(), 1);
    EXPECT_FALSE(isWaiting());
}

TEST_F(HeldRequestTest, AStrategyThatStandsStillNeedsAClick) {
    makeModelPane();
    setStrategy(false);
    mPane->setIsLoginInit(true);
    mPane->request(kOrdinary);
    EXPECT_EQ(requests(), 0);
    EXPECT_TRUE(isWaiting());
}

TEST_F(HeldRequestTest, ARunningStrategyWaitsWhenModelsDoNotRunByThemselves) {
    makeModelPane();
    setStrategy(true);
    mPane->setAutoIndex(false);
    mPane->request(kOrdinary);
    EXPECT_EQ(requests(), 0);
    EXPECT_TRUE(isWaiting());
}

TEST_F(HeldRequestTest, AGroupModelWaitsEvenOfARunningStrategy) {
    makeGroupModel("MACD");
    setStrategy(true);
    makeSubPane();
    showPane();
    mPane->setIsLoginInit(true);
    mPane->request(kOrdinary);
    EXPECT_EQ(requests(), 0);
    EXPECT_TRUE(isWaiting());
}

TEST_F(HeldRequestTest, AMainPaneHoldsNothing) {
    makeScriptModel("REALTIME");
    makeMainPane();
    mPane->setIsLoginInit(true);
    mPane->setAutoIndex(false);
    mPane->request(kOrdinary);
    EXPECT_EQ(requests(), 1);
    mPane->slotDisplayTimeOut();
    EXPECT_EQ(requests(), 1);
}

TEST_F(HeldRequestTest, OverlaysAskedForWhileWaitingDoNotStartTheModel) {
    makeModelPane();
    mPane->setAutoIndex(false);
    mPane->updateOverlay(2, QString());
    EXPECT_EQ(requests(), 0);
    EXPECT_TRUE(isWaiting());
}

// Pushed results

TEST_F(HeldRequestTest, APushedResultIsTakenInAndScaled) {
    makeSubPane();
    showPane();
    push();
    EXPECT_TRUE(mPane->hasData());
    EXPECT_EQ(requests(), 0);
    EXPECT_EQ(strip(TC::CGraphAxisWidget::eLeft)->getMaxMinMap().value(key("MACD")).first, 2.0);
}

TEST_F(HeldRequestTest, APushedResultGivesEachGraphItsDayAsItIs) {
    mUi->mDayCount = 2;
    makeSubPane();
    mUi->mGetTradeDateFunc = [] { return kDay + 1; };
    push();
    EXPECT_EQ(dates(), (QList<int>{kDay + 1, kDay + 1 - kDayLength}));
    EXPECT_TRUE(graph(1)->getData()->hasData());
}

TEST_F(HeldRequestTest, APushedResultOfAModelThatWaitsIsDropped) {
    makeModelPane();
    mPane->setAutoIndex(false);
    push();
    EXPECT_FALSE(mPane->hasData());
    EXPECT_TRUE(isWaiting());
}

TEST_F(HeldRequestTest, APushedResultEndsTheHoldOfTheLoginWithoutAModel) {
    makeSubPane();
    mPane->setAutoIndex(false);
    push();
    EXPECT_TRUE(mPane->hasData());
    mPane->request(kOrdinary);
    EXPECT_EQ(requests(), 1);
}

TEST_F(HeldRequestTest, APushedResultOfARunningStrategyIsTakenIn) {
    makeModelPane();
    setStrategy(true);
    mPane->setIsLoginInit(true);
    push();
    EXPECT_TRUE(mPane->hasData());
    EXPECT_FALSE(isWaiting());
}

TEST_F(HeldRequestTest, APushedResultMakesTheWaitingRequestAnOrdinaryOne) {
    makeModelPane();
    mHost.mCatalogue.getFormula("MACD")->mRunData = boost::make_shared<int>(7);
    mPane->setAutoIndex(false);
    mPane->request(corvane::ERunMode::HandOver);
    push();
    QTest::mouseClick(runButton(), Qt::LeftButton);
    ASSERT_EQ(requests(), 1);
    EXPECT_FALSE(mHost.mFormulas.mLastParams.value(0).mRunData);
}

TEST_F(HeldRequestTest, APushedResultOfAGroupModelOnAStockIsNotTakenIn) {
    makeGroupModel("MACD");
    makeSubPane();
    push();
    EXPECT_FALSE(mPane->hasData());
}

TEST_F(HeldRequestTest, APushedResultOfAGroupModelOnAnIndexGoesToTheNewestDay) {
    makeGroupModel("MACD");
    makeIndexView();
    mUi->mDayCount = 2;
    makeSubPane();
    push();
    EXPECT_TRUE(mPane->hasData());
    EXPECT_FALSE(graph(1)->getData()->hasData());
    EXPECT_EQ(dates(), (QList<int>{kDay, kDay - kDayLength}));
}

TEST_F(HeldRequestTest, APushedResultShowsAWaitingPaneRunningAgain) {
    makeModelPane();
    mPane->setIsLoginInit(true);
    mPane->request(kOrdinary);
    ASSERT_TRUE(isWaiting());
    push();
    EXPECT_FALSE(isWaiting());
    EXPECT_TRUE(mPane->hasData());
}

} // namespace
} // namespace tests
