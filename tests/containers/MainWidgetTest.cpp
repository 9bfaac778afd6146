#include "tests/containers/MainWidgetFixture.h"

#include "host/windows/CIndexModelWidget.h"
#include "tests/support/LogCapture.h"

using namespace TC;

namespace {

class MainWidget : public tests::MainWidgetFixture {};

// Construction

TEST_F(MainWidget, StartsWithAMainPaneOfTheOrdinaryFormulasAndNoInstrument) {
    makeView();
    EXPECT_EQ(mMain->objectName(), "realtime_main_widget");
    EXPECT_EQ(mMain->minimumWidth(), 150);
    EXPECT_EQ(mMain->focusPolicy(), Qt::StrongFocus);
    EXPECT_EQ(pane()->getId(), 0);
    EXPECT_EQ(formulasOf(pane()), (Names{"REALTIME", "REALTIMEVOL"}));
    EXPECT_TRUE(ids().isEmpty());
    EXPECT_EQ(mMain->getStock(), "");
    EXPECT_EQ(mMain->getMarket(), "");
    EXPECT_EQ(mMain->getStretchFactorList(), (std::vector<int>{2}));
    EXPECT_FALSE(frame()->isVisibleTo(mMain.get()));
    EXPECT_FALSE(mMain->isShowCrossline());
}

TEST_F(MainWidget, TimeScaleIsTwentyPixelsBeneathThePanes) {
    showView();
    ASSERT_TRUE(timeScale());
    EXPECT_EQ(rectOf(timeScale()), QRect(0, 580, 1102, 20));
    EXPECT_EQ(rectOf(pane()), QRect(0, 0, 1102, 580));
}

TEST_F(MainWidget, ViewTypeEightHasNoTimeScaleAndAllGoesOnWithoutIt) {
    showView(2, EIndexViewType::NoTimeScale);
    EXPECT_FALSE(timeScale());
    fill();
    mMain->updateWidgetsView();
    mMain->scaleView(false);
    mMain->scaleView(true);
    mMain->moveCursor(true);
    mMain->moveToHome();
    mMain->moveToEnd();
    moveTo(graph(pane()), {300, 100});
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(mMain.get(), &leave);
    mMain->setStock("SH600000", false);
    mMain->resize(900, 500);
    settle();
    EXPECT_EQ(mUi->mCrossIndex, -1);
}

TEST_F(MainWidget, TemplateBarIsOnlyInTheConciseStyleOfATemplateView) {
    makeView(EIndexViewType::Template);
    EXPECT_FALSE(mMain->findChild<CIndexModelWidget *>());
    mHost.mConfig.mConfig.mConcise = true;
    makeView(EIndexViewType::Ordinary);
    EXPECT_FALSE(mMain->findChild<CIndexModelWidget *>());
    EXPECT_TRUE(mMain->getSelectIndex().isEmpty());
    EXPECT_TRUE(mMain->getSelectTempalte().isEmpty());
}

TEST_F(MainWidget, GoesDownWithItsPanesInAnyState) {
    showView(3);
    fill();
    moveTo(graph(sub(1)), {200, 20});
    mMain.reset();
    settle();
    EXPECT_TRUE(mHost.mFormulas.mLive.all().isEmpty());
}

// Instrument

TEST_F(MainWidget, InstrumentIsSetWithoutARequest) {
    makeView();
    mMain->setStock("SH600000", false);
    EXPECT_EQ(mMain->getStock(), "SH600000");
    EXPECT_EQ(mMain->getMarket(), "SH");
    EXPECT_TRUE(mHost.mFormulas.mLive.all().isEmpty());
    mMain->clearStock();
    EXPECT_EQ(mMain->getStock(), "");
}

TEST_F(MainWidget, SwitchingBetweenStocksTouchesNoFormula) {
    makeView();
    mHost.mStocks.add("SZ", "000001");
    mMain->setStock("SH600000", false);
    pane()->delIndex("REALTIMEVOL");
    mMain->setStock("SZ000001", false);
    EXPECT_EQ(formulasOf(pane()), (Names{"REALTIME"}));
}

TEST_F(MainWidget, PortfolioHasItsOwnMainFormulasAndAStockBringsTheOrdinaryOnesBack) {
    makeView();
    mHost.mStocks.mPortfolios.insert("P1");
    mMain->setStock("P1", false);
    const Names ofPortfolio = Names(mUi->getMainFormula());
    ASSERT_FALSE(ofPortfolio.contains("REALTIME"));
    EXPECT_EQ(formulasOf(pane()), ofPortfolio);
    EXPECT_EQ(mMain->getStock(), "") << "the key of an empty record";
    mMain->setStock("SH600000", false);
    EXPECT_EQ(formulasOf(pane()), (Names{"REALTIME", "REALTIMEVOL"}));
}

TEST_F(MainWidget, AnotherAnalysisOfAPortfolioChangesItsFormulasWithoutARequest) {
    makeView();
    mHost.mStocks.mPortfolios.insert("P1");
    mMain->setStock("P1", false);
    const Names before = formulasOf(pane());
    mMain->setPortfolioType(EPortfolioAnalyzeGraphType::Deviation);
    EXPECT_EQ(formulasOf(pane()), Names(mUi->getMainFormula()));
    EXPECT_NE(formulasOf(pane()), before);
    EXPECT_TRUE(mHost.mFormulas.mLive.all().isEmpty());
}

TEST_F(MainWidget, FundWithNetValueGetsItsFormulaAndTheNextStockLosesIt) {
    makeView();
    mHost.mStocks.add("SH", "510300");
    mHost.mTypes.mTypes.insert({100013, "SH", "510300"});
    mMain->setStock("SH510300", false);
    EXPECT_TRUE(pane()->findIndex("IOPV"));
    mMain->setStock("SH510300", false);
    EXPECT_EQ(formulasOf(pane()).count("IOPV"), 1);
    mMain->setStock("SH600000", false);
    EXPECT_FALSE(pane()->findIndex("IOPV"));
}

TEST_F(MainWidget, TradeDataFormulaFollowsTheConfigurationWithEveryInstrument) {
    makeView();
    const QString formula = mUi->getApplyMainFormula();
    mHost.mConfig.mRecord.mShowVwap = true;
    mMain->setStock("SH600000", false);
    EXPECT_FALSE(pane()->findIndex(formula)) << "without an account";
    mMain->setFormulaAccount("A1");
    mMain->setStock("SH600000", false);
    EXPECT_TRUE(pane()->findIndex(formula));
    mHost.mConfig.mRecord.mShowVwap = false;
    mMain->setStock("SH600000", false);
    EXPECT_FALSE(pane()->findIndex(formula));
}

TEST_F(MainWidget, LastFuturesPositionSetsTheAxisOfAPortfolio) {
    makeView();
    mHost.mStocks.mPortfolios.insert("P1");
    mMain->setStock("P1", false);
    ASSERT_EQ(mUi->mPointCount, 241);
    mMain->subPortfolioCallBack({});
    mMain->subPortfolioCallBack({{"SH", "SZ"}, {"600000", "000001"}});
    EXPECT_EQ(mUi->mPointCount, 241) << "stocks alone keep it";
    mMain->subPortfolioCallBack({{"SH", "DCE", "SZ"}, {"600000", "m2409", "000001"}});
    EXPECT_EQ(mUi->mPointCount, 226);
    mMain->subPortfolioCallBack({{"CZCE", "CFFEX"}, {"SM409", "IF2409"}});
    EXPECT_EQ(mUi->mPointCount, 241);
    mMain->subPortfolioCallBack({{"SHFE", "SHFE"}, {"cu2409"}});
    EXPECT_EQ(mUi->mPointCount, 226) << "a market without a code is left out";
}

TEST_F(MainWidget, OverlaysAreListedAndTakenAway) {
    showView();
    mMain->addSuperposedStock(mHost.mStocks.add("SZ", "000001"));
    mMain->addSuperposedStock(mHost.mStocks.add("SZ", "000002"));
    EXPECT_EQ(mMain->getAddStockList(), (QList<QString>{"SZ000001", "SZ000002"}));
    mMain->delAllAddStock();
    EXPECT_TRUE(mMain->getAddStockList().isEmpty());
}

TEST_F(MainWidget, ResettingTheParametersTakesTheCrossLineAway) {
    showView();
    mUi->mCrossShown = mUi->mMouseIn = true;
    mUi->mCrossIndex = 5;
    mMain->resetUiParam();
    EXPECT_FALSE(mUi->mCrossShown);
    EXPECT_FALSE(mUi->mMouseIn);
    EXPECT_EQ(mUi->mCrossIndex, -1);
}

// Requests

TEST_F(MainWidget, RequestsTheMainPaneFirstUnderAFreshId) {
    makeView();
    mMain->setStock("SH600000", false);
    mMain->addIndexWidget();
    sub(0)->addIndex("KDJ");
    mMain->addIndexWidget();
    sub(1)->addIndex("MACD");
    mMain->request(false);
    const int id = mUi->mRequestId;
    Names main = requested().mid(0, 2);
    main.sort();
    EXPECT_EQ(main, (Names{"REALTIME.lua", "REALTIMEVOL.lua"}));
    EXPECT_EQ(requested().mid(2), (Names{"KDJ.lua", "MACD.lua"}));
    mMain->request(false);
    EXPECT_EQ(mUi->mRequestId, id + 1);
}

TEST_F(MainWidget, BlockingRequestKeepsTheId) {
    makeView();
    mMain->setStock("SH600000", false);
    mMain->setGetTradeDateFunc([] { return tests::kDay; });
    mMain->request(false);
    const int id = mUi->mRequestId;
    mHost.mLog.clear();
    mMain->request(true);
    EXPECT_EQ(mUi->mRequestId, id);
    EXPECT_EQ(mHost.mLog.of("CFormulaManager::requestFormulasSync").size(), 1);
}

TEST_F(MainWidget, WithdrawsAllPanes) {
    showView(2);
    mMain->request(false);
    ASSERT_EQ(requested().size(), 4);
    mMain->unrequest();
    EXPECT_TRUE(requested().isEmpty());
}

TEST_F(MainWidget, ClearingIsLogged) {
    makeView();
    mMain->setStock("SH600000", false);
    mUi->mDataCount = 7;
    const tests::LogCapture log;
    mMain->clear(true);
    EXPECT_EQ(mUi->mDataCount, 0);
    const QStringList lines = log.with("TC::CRealtimeMainWidget::clear");
    ASSERT_EQ(lines.size(), 1);
    EXPECT_TRUE(lines[0].contains("clear, mainID:0, stock: SH600000,")) << lines[0].toStdString();
    EXPECT_EQ(log.lastSource(), "CRealtimeMainWidget");
    EXPECT_EQ(log.lastLevel(), 20000);
}

// Panes

TEST_F(MainWidget, NewPaneIsSelectedAndHasHalfTheStretchOfTheMainPane) {
    showView();
    mMain->addIndexWidget();
    mMain->addIndexWidget();
    settle();
    EXPECT_EQ(ids(), (QList<int>{1, 2}));
    EXPECT_EQ(mMain->getStretchFactorList(), (std::vector<int>{2, 1, 1}));
    EXPECT_EQ(mMain->getNewIndexStretchFactor(), 1);
    EXPECT_TRUE(frame()->isVisible());
    EXPECT_EQ(frame()->geometry(), rectOf(sub(1)));
    EXPECT_TRUE(takeEvents().empty()) << "the host does not hear of it";
}

TEST_F(MainWidget, TradingClientHearsOfANewPane) {
    showView();
    mHost.mConfig.mClientType = EClientType::Trading;
    mMain->addIndexWidget();
    EXPECT_EQ(takeEvents(), (Events{{3023, 0, 0, QString(), nullptr}}));
}

TEST_F(MainWidget, RemovingThePaneInTheMiddleSelectsTheOneInItsPlace) {
    showView(3);
    mMain->delIndexWidget(2);
    settle();
    EXPECT_EQ(ids(), (QList<int>{1, 3}));
    EXPECT_EQ(frame()->geometry(), rectOf(sub(1)));
    mMain->delIndexWidget(3);
    settle();
    EXPECT_EQ(frame()->geometry(), rectOf(sub(0))) << "of the last one: the new last one";
    mMain->addIndexWidget();
    EXPECT_EQ(ids(), (QList<int>{1, 4})) << "ids are never reused";
}

TEST_F(MainWidget, UnknownIdRemovesNothingAndSelectsTheLastPane) {
    showView(2);
    mMain->highlightWidget(1);
    mMain->delIndexWidget(77);
    settle();
    EXPECT_EQ(ids(), (QList<int>{1, 2}));
    EXPECT_EQ(frame()->geometry(), rectOf(sub(1)));
}

TEST_F(MainWidget, LastPaneGoneHidesTheFrame) {
    showView(1);
    EXPECT_TRUE(frame()->isVisible());
    mMain->delIndexWidget(1);
    EXPECT_FALSE(frame()->isVisible());
    mMain->highlightWidget(0);
    EXPECT_FALSE(frame()->isVisible()) << "for the main pane as well";
}

TEST_F(MainWidget, AllPanesCanBeRemoved) {
    showView(3);
    mMain->delAllIndexWidgets();
    settle();
    EXPECT_TRUE(ids().isEmpty());
    EXPECT_EQ(list()->count(), 1);
    EXPECT_FALSE(frame()->isVisible());
    mMain->addIndexWidget();
    mMain->addIndexWidget();
    mMain->clearSubIndexes();
    EXPECT_TRUE(ids().isEmpty());
}

TEST_F(MainWidget, NumberOfPanesCountsTheMainPane) {
    showView();
    fill();
    mHost.mLog.clear();
    const int round = mUi->mRequestId;
    mMain->adjustIndexWidgetSize(3);
    ASSERT_EQ(ids().size(), 2);
    EXPECT_EQ(formulasOf(sub(0)), (Names{"KDJ"}));
    EXPECT_EQ(formulasOf(sub(1)), (Names{"MACD"}));
    EXPECT_EQ(mUi->mRequestId, round + 2) << "one request after each";
    mMain->adjustIndexWidgetSize(3);
    EXPECT_EQ(mUi->mRequestId, round + 2);
    mMain->adjustIndexWidgetSize(1);
    EXPECT_TRUE(ids().isEmpty());
}

TEST_F(MainWidget, TenPanesAreTheMost) {
    showView();
    mMain->adjustIndexWidgetSize(1000);
    ASSERT_EQ(ids().size(), 9);
    EXPECT_EQ(formulasOf(sub(8)), (Names{"CR"}));
    mMain->adjustIndexWidgetSize(-5);
    EXPECT_TRUE(ids().isEmpty());
}

TEST_F(MainWidget, PlainViewNeverMovesTheFrame) {
    showView(2, EIndexViewType::Plain);
    mMain->highlightWidget(1);
    mMain->highlightWidget(0);
    EXPECT_FALSE(frame()->isVisible());
    mMain->resize(900, 500);
    EXPECT_FALSE(frame()->isVisible());
}

TEST_F(MainWidget, FrameFollowsTheSelectedPaneThroughAResize) {
    showView(2);
    mMain->highlightWidget(0);
    EXPECT_EQ(frame()->geometry(), rectOf(pane()));
    mMain->resize(900, 500);
    settle();
    EXPECT_EQ(frame()->geometry(), rectOf(pane()));
    mMain->highlightWidget(1);
    mMain->resize(1000, 640);
    settle();
    EXPECT_EQ(frame()->geometry(), rectOf(sub(0)));
}

TEST_F(MainWidget, UnknownPaneLeavesTheFrameWhereItIs) {
    showView(2);
    mMain->highlightWidget(1);
    mMain->highlightWidget(99);
    EXPECT_EQ(frame()->geometry(), rectOf(sub(0)));
}

TEST_F(MainWidget, HostHearsNothingOfViewsThatOnlyChangeTheirLook) {
    showView(1);
    mMain->updateView();
    mMain->themeChanged();
    mMain->setSelected(true);
    mMain->setBtnToolVisible(false);
    mMain->setHolographicButtonShow(true);
    mMain->setTitleData(0);
    mMain->setAutoIndex(true);
    mMain->setIsLoginInit(true);
    mMain->setCreateNewWorkShow(false);
    mMain->beHistory(true);
    mMain->beReplay(true);
    EXPECT_TRUE(takeEvents().empty());
}

TEST_F(MainWidget, NewMinuteOfTheMainPaneShowsTheNewestPointOfAFormulaPaneThatIsAhead) {
    showView(1);
    mMain->request(false);
    answer("REALTIME", {10.0});
    answer("KDJ", {kUnsetValue, 9.0}); // a lone dot, at the second minute
    settle();
    stream("REALTIME", 571, 10.0);
    settle();
    const QImage walked = tests::onScreen(*mKeeper);
    for (QWidget *widget : mKeeper->findChildren<QWidget *>()) {
        widget->update();
    }
    settle();
    EXPECT_EQ(walked, tests::onScreen(*mKeeper));
}

TEST_F(MainWidget, DrawingsAreThoseOfTheMainPane) {
    showView(1);
    mMain->setGraphType(EVmGraphType::HorizontalLine);
    send(graph(pane()), QEvent::MouseButtonPress, {300, 100}, Qt::LeftButton, Qt::LeftButton);
    send(graph(pane()), QEvent::MouseButtonRelease, {300, 100}, Qt::LeftButton);
    const bson::BSONObj document = mMain->getParam();
    EXPECT_EQ(document.getObject("graphs").nFields(), 1);
    mMain->setParam(bson::BSONObj::fromJson(R"({"version":1,"graphs":[]})"));
    EXPECT_EQ(mMain->getParam().getObject("graphs").nFields(), 0);
    EXPECT_FALSE(mMain->deleteCurrGraph());
}

} // namespace
