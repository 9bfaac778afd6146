// Double clicks on a graph, and the tip over a trade.

#include "host/records/CDealDetail.h"
#include "host/records/COrderDetail.h"
#include "host/records/CTaskDetail.h"
#include "tests/chartview/GraphInputFixture.h"

#include <QDateTime>

using namespace TC;
using tests::Event;

namespace {

constexpr int kSelected = 4; ///< value of mLinkageFlags
constexpr int kAccount = 2;

class GraphDoubleClick : public tests::GraphInputFixture {
protected:
    /// A main graph in the selected-data view, which may show orders, deals and tasks.
    void showTrades() {
        mHost.mLinkage.mEnabled = true;
        mUi->mLinkageFlags = kSelected;
        mUi->mLinkageShow[0] = mUi->mLinkageShow[1] = mUi->mLinkageShow[2] = true;
        mUi->mLinkageAccounts = {"A"};
        mUi->mLinkageStocks = {"SH600000"};
        showMain();
        fillMain();
        mStrip->setMaxMinMap({{key("REALTIME"), {11.0, 9.0}}});
        drawTrades();
    }
    void drawTrades() {
        mData->redraw();
        takeEvents();
    }
    /// 09:50 is index 20, in column 41; 10.00 lies in row 100 and 10.50 in row 50.
    void addOrder(double price = 10.0) {
        const auto order = boost::make_shared<kvservice::COrderDetail>();
        order->mOrderKey = "order";
        order->mTime = "09:50:00";
        order->mPrice = price;
        mHost.mLinkage.mOrders["SH600000"]["A"]["order"] = order;
        drawTrades();
    }
    void addDeal(double price = 10.0) {
        const auto deal = boost::make_shared<kvservice::CDealDetail>();
        deal->mDealKey = "deal";
        deal->mTime = "09:50:00";
        deal->mPrice = price;
        mHost.mLinkage.mDeals["SH600000"]["A"]["deal"] = deal;
        drawTrades();
    }
    void addTask() {
        const auto task = boost::make_shared<kvservice::CTaskDetail>();
        task->mTaskId = 5;
        task->mStartTime = static_cast<int>(QDateTime(QDate(2024, 3, 15), QTime(9, 50)).toSecsSinceEpoch());
        const auto item = boost::make_shared<kvservice::CTaskItem>();
        item->mMarket = "SH";
        item->mCode = "600000";
        item->mPrice = 10.0;
        item->mQuantity = 100;
        task->mItems = {item};
        mHost.mLinkage.mTasks["SH600000"]["A"]["5"] = task;
        drawTrades();
    }
    /// That a double click on a point is one on a trade, and nothing else.
    void expectMark(const QPoint &at, const QString &kind) {
        for (const bool shown : {false, true}) {
            crossLine(shown);
            doubleClick(at);
            EXPECT_EQ(takeEvents(), (Events{{3164, at.x(), at.y(), kind, mGraph.get()}}));
            EXPECT_EQ(mUi->mCrossShown, shown);
        }
    }
    /// That one is not on any trade.
    void expectNoMark(const QPoint &at) {
        const bool before = mUi->mCrossShown;
        doubleClick(at);
        EXPECT_TRUE(mKeeper->of(3164).empty()) << at.x() << ' ' << at.y();
        EXPECT_EQ(mKeeper->of(3199).size(), 1U);
        EXPECT_NE(mUi->mCrossShown, before);
        takeEvents();
    }
    void askTip(const QPoint &at) {
        move(at);
        QHelpEvent help(QEvent::ToolTip, at, mGraph->mapToGlobal(at));
        help.ignore();
        EXPECT_TRUE(QCoreApplication::sendEvent(mGraph.get(), &help));
    }
    bool tipShown() { return member(tests::Peek_mShowTip()); }
};

// Cross line

TEST_F(GraphDoubleClick, SwitchesTheCrossLineOnAndOff) {
    showMain();
    mUi->mCursorByKey = true;
    doubleClick({100, 60});
    EXPECT_TRUE(mUi->mCrossShown);
    EXPECT_EQ(takeEvents(), (Events{{3031, 101, 50, "", nullptr}, {3199, 0, 0, "SH600000", nullptr}}));
    EXPECT_EQ(mUi->mCrossX, 100);
    EXPECT_FALSE(mUi->mCursorByKey);
    doubleClick({200, 70});
    EXPECT_FALSE(mUi->mCrossShown);
    EXPECT_EQ(takeEvents(), (Events{{3031, 201, -1, "", nullptr}, {3199, 0, 0, "SH600000", nullptr}}));
    EXPECT_EQ(mUi->mCrossX, 200);
}

TEST_F(GraphDoubleClick, MakesTheCrossLineFollowThisGraph) {
    showMain();
    leave();
    doubleClick({100, 60});
    EXPECT_TRUE(member(tests::Peek_mMouseIn()));
    EXPECT_TRUE(mGraph->isCrossActive());
    EXPECT_EQ(mGraph->getMouseY(), 60);
}

TEST_F(GraphDoubleClick, OfTheRightButtonOnlyDeliversTheInstrument) {
    showMain();
    mUi->mCursorByKey = true;
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
        doubleClick({100, 60}, button);
        EXPECT_EQ(takeEvents(), (Events{{3199, 0, 0, "SH600000", nullptr}}));
    }
    EXPECT_FALSE(mUi->mCrossShown);
    EXPECT_TRUE(mUi->mCursorByKey);
}

TEST_F(GraphDoubleClick, OnASubPaneIsToldAndNothingElse) {
    showSub();
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton}) {
        doubleClick({100, 60}, button);
        EXPECT_EQ(takeEvents(), (Events{{206, 0, 0, "", nullptr}}));
    }
    EXPECT_FALSE(mUi->mCrossShown);
}

TEST_F(GraphDoubleClick, InAPlainViewGoesToTheHostAndNothingElse) {
    showMain(EIndexViewType::Plain);
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton}) {
        doubleClick({100, 60}, button);
        EXPECT_EQ(takeEvents(), (Events{{189, 0, 0, "", nullptr}}));
    }
    EXPECT_FALSE(mUi->mCrossShown);
}

TEST_F(GraphDoubleClick, OnASubPaneOfAPlainViewGoesToTheHost) {
    makeGraph(EIndexDisplayType::Sub, {"MACD"}, EIndexViewType::Plain);
    doubleClick({10, 10});
    EXPECT_EQ(takeEvents(), (Events{{189, 0, 0, "", nullptr}}));
}

TEST_F(GraphDoubleClick, InAPairedViewSwitchesTheCrossLine) {
    showMain(EIndexViewType::Paired);
    doubleClick({100, 60});
    EXPECT_TRUE(mUi->mCrossShown);
    EXPECT_EQ(mKeeper->of(3199).size(), 1U);
}

TEST_F(GraphDoubleClick, IsNoFurtherPress) {
    showMain();
    for (const bool shown : {false, true}) {
        crossLine(shown);
        doubleClick({100, 60});
        EXPECT_TRUE(mKeeper->of(3032).empty());
        EXPECT_FALSE(member(tests::Peek_mLeftSelecting()));
        EXPECT_FALSE(member(tests::Peek_mDragging()));
    }
}

TEST_F(GraphDoubleClick, OfAViewWithoutAnInstrumentHasNoKey) {
    showMain();
    mUi->clearStock();
    doubleClick({100, 60}, Qt::RightButton);
    EXPECT_EQ(takeEvents(), (Events{{3199, 0, 0, "", nullptr}}));
}

// Trades

TEST_F(GraphDoubleClick, OnAnOrderIsToldWithinFourPixels) {
    showTrades();
    addOrder();
    expectMark({41, 100}, "linkage_orders");
    expectMark({37, 96}, "linkage_orders");
    expectMark({45, 104}, "linkage_orders");
    expectNoMark({36, 100});
    expectNoMark({46, 100});
    expectNoMark({41, 95});
    expectNoMark({41, 105});
}

TEST_F(GraphDoubleClick, OnADealIsToldWithinFourPixels) {
    showTrades();
    addDeal(10.5);
    expectMark({41, 50}, "linkage_deals");
    expectMark({37, 54}, "linkage_deals");
    expectNoMark({36, 50});
    expectNoMark({41, 55});
}

TEST_F(GraphDoubleClick, OnTheFlagOfATaskIsToldRightOfItsPointAndAbove) {
    showTrades();
    addTask();
    expectMark({41, 100}, "linkage_tasks");
    expectMark({51, 87}, "linkage_tasks");
    expectNoMark({40, 100});
    expectNoMark({52, 100});
    expectNoMark({41, 101});
    expectNoMark({41, 86});
}

TEST_F(GraphDoubleClick, PrefersOrdersToDealsAndDealsToTasks) {
    showTrades();
    addTask();
    addDeal();
    expectMark({42, 99}, "linkage_deals");
    addOrder();
    expectMark({42, 99}, "linkage_orders");
}

TEST_F(GraphDoubleClick, OnATradeThatIsNotShownSwitchesTheCrossLine) {
    showTrades();
    addDeal();
    addTask();
    addOrder();
    mUi->mLinkageShow[0] = false;
    expectMark({42, 99}, "linkage_deals");
    mUi->mLinkageShow[1] = false;
    expectMark({42, 99}, "linkage_tasks");
    mUi->mLinkageShow[2] = false;
    expectNoMark({42, 99});
}

TEST_F(GraphDoubleClick, InTheAccountViewFindsDealsAndTasksAndNoOrders) {
    showTrades();
    addOrder();
    mUi->mLinkageShow = {};
    mUi->mLinkageFlags = kAccount;
    expectNoMark({41, 100});
    mUi->mLinkageFlags = kSelected;
    mUi->mLinkageShow[2] = true;
    addTask();
    mUi->mLinkageShow = {};
    mUi->mLinkageFlags = kAccount;
    expectMark({42, 99}, "linkage_tasks");
    mUi->mLinkageFlags = kSelected;
    mUi->mLinkageShow[1] = true;
    addDeal();
    mUi->mLinkageShow = {};
    mUi->mLinkageFlags = kAccount;
    expectMark({42, 99}, "linkage_deals");
}

TEST_F(GraphDoubleClick, OnATradeInAViewWithoutTradesSwitchesTheCrossLine) {
    showTrades();
    addDeal();
    expectMark({41, 100}, "linkage_deals");
    mUi->mLinkageFlags = 1;
    expectNoMark({41, 100});
}

TEST_F(GraphDoubleClick, InAViewOfSeveralDaysFindsNoTradeWhereOneWasDrawn) {
    showTrades();
    addOrder();
    addDeal(10.5);
    addTask();
    mUi->mDayCount = 2;
    mData->redraw();
    takeEvents();
    for (const QPoint &mark : {QPoint(41, 100), QPoint(41, 50), QPoint(42, 99)}) {
        expectNoMark(mark);
        askTip(mark);
        EXPECT_FALSE(tipShown());
        takeEvents();
    }
    mUi->mDayCount = 1;
    drawTrades();
    expectMark({41, 100}, "linkage_orders");
}

TEST_F(GraphDoubleClick, OfTheRightButtonLooksForNoTrade) {
    showTrades();
    addDeal();
    doubleClick({41, 100}, Qt::RightButton);
    EXPECT_EQ(takeEvents(), (Events{{3199, 0, 0, "SH600000", nullptr}}));
}

// Tip

TEST_F(GraphDoubleClick, TipShowsTheDealsUnderTheMouse) {
    showTrades();
    addDeal();
    addOrder();
    askTip({44, 97});
    EXPECT_TRUE(tipShown());
    EXPECT_EQ(member(tests::Peek_mDealTips()).size(), 1);
    EXPECT_TRUE(member(tests::Peek_mOrderTips()).isEmpty());
}

TEST_F(GraphDoubleClick, TipShowsTheOrdersWhereNoDealIs) {
    showTrades();
    addDeal(10.5);
    addOrder();
    askTip({44, 97});
    EXPECT_TRUE(tipShown());
    EXPECT_TRUE(member(tests::Peek_mDealTips()).isEmpty());
    EXPECT_EQ(member(tests::Peek_mOrderTips()).size(), 1);
}

TEST_F(GraphDoubleClick, TipIsNotShownOverTheEmptyChart) {
    showTrades();
    addDeal();
    EXPECT_EQ(paintsOf([this] { askTip({46, 100}); }), 0);
    EXPECT_FALSE(tipShown());
}

TEST_F(GraphDoubleClick, TipIsForWhereTheMouseLastMoved) {
    showTrades();
    addDeal();
    move({41, 100});
    QHelpEvent help(QEvent::ToolTip, {300, 150}, mGraph->mapToGlobal(QPoint(300, 150)));
    EXPECT_TRUE(QCoreApplication::sendEvent(mGraph.get(), &help));
    EXPECT_TRUE(help.isAccepted());
    EXPECT_TRUE(tipShown());
}

TEST_F(GraphDoubleClick, TipComesWithARepaintAndGoesWithTheNextMove) {
    showTrades();
    addDeal();
    const QImage without = paintedGraph();
    EXPECT_EQ(paintsOf([this] { askTip({41, 100}); }), 1);
    EXPECT_NE(paintedGraph(), without);
    EXPECT_EQ(paintsOf([this] { move({42, 100}); }), 1);
    EXPECT_FALSE(tipShown());
    EXPECT_EQ(paintedGraph(), without);
}

TEST_F(GraphDoubleClick, TipForgetsTheTradesOfTheOneBefore) {
    showTrades();
    addDeal(10.5);
    addOrder();
    askTip({41, 100});
    ASSERT_EQ(member(tests::Peek_mOrderTips()).size(), 1);
    askTip({41, 50});
    EXPECT_EQ(member(tests::Peek_mDealTips()).size(), 1);
    EXPECT_TRUE(member(tests::Peek_mOrderTips()).isEmpty());
    askTip({300, 50});
    EXPECT_FALSE(tipShown());
    EXPECT_TRUE(member(tests::Peek_mDealTips()).isEmpty());
}

TEST_F(GraphDoubleClick, TipFollowsTheSwitchesOfTheTrades) {
    showTrades();
    addOrder();
    addDeal();
    mUi->mLinkageShow = {};
    askTip({41, 100});
    EXPECT_FALSE(tipShown());
    mUi->mLinkageShow[0] = true;
    askTip({41, 100});
    EXPECT_TRUE(tipShown());
    EXPECT_TRUE(member(tests::Peek_mDealTips()).isEmpty());
    mUi->mLinkageShow[1] = true;
    askTip({41, 100});
    EXPECT_EQ(member(tests::Peek_mDealTips()).size(), 1);
    mUi->mLinkageFlags = 1;
    askTip({41, 100});
    EXPECT_FALSE(tipShown());
    mUi->mLinkageShow = {};
    mUi->mLinkageFlags = kAccount;
    askTip({41, 100});
    EXPECT_EQ(member(tests::Peek_mDealTips()).size(), 1);
}

TEST_F(GraphDoubleClick, TipIsNotAskedForTasks) {
    showTrades();
    addTask();
    askTip({42, 99});
    EXPECT_FALSE(tipShown());
}

TEST_F(GraphDoubleClick, TipOfAFormulaPaneIsHandledAndShowsNothing) {
    showSub();
    mUi->mLinkageFlags = kAccount;
    askTip({41, 100});
    EXPECT_FALSE(tipShown());
}

TEST_F(GraphDoubleClick, OtherHelpIsLeftToTheWidget) {
    showMain();
    QHelpEvent asked(QEvent::QueryWhatsThis, {41, 100}, mGraph->mapToGlobal(QPoint(41, 100)));
    QCoreApplication::sendEvent(mGraph.get(), &asked);
    EXPECT_FALSE(asked.isAccepted()) << "there is no help for a graph";
}

TEST_F(GraphDoubleClick, TipGoesWhenTheChartIsRequestedAnew) {
    showTrades();
    addDeal();
    askTip({41, 100});
    ASSERT_TRUE(tipShown());
    EXPECT_EQ(paintsOf([this] { mGraph->request(corvane::ERunMode::Ordinary); }), 1);
    EXPECT_FALSE(tipShown());
    EXPECT_TRUE(member(tests::Peek_mDealTips()).isEmpty());
}

TEST_F(GraphDoubleClick, TipWhoseTradeHasGoneIsTakenOffTheScreen) {
    showTrades();
    addDeal();
    askTip({41, 100});
    ASSERT_TRUE(tipShown());
    mHost.mLinkage.mDeals.clear();
    drawTrades();
    EXPECT_EQ(paintsOf([this] {
                  QHelpEvent help(QEvent::ToolTip, {41, 100}, mGraph->mapToGlobal(QPoint(41, 100)));
                  QCoreApplication::sendEvent(mGraph.get(), &help);
              }),
              1);
    EXPECT_FALSE(tipShown());
    EXPECT_TRUE(member(tests::Peek_mDealTips()).isEmpty());
}

} // namespace
