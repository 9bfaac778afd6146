#include "tests/chartdata/LinkageFixture.h"

#include "host/toolkit/CUiResource.h"

using namespace TC;

namespace {

class LinkageAccount : public tests::LinkageFixture {};

TEST_F(LinkageAccount, AccountTasksHaveTheirOwnFont) {
    showAccount();
    addTask(1, true, 10.5, QTime(10, 0), 0, 4);
    EXPECT_TRUE(same(drawn(), expected([](QPainter &painter) {
                         painter.setFont(
                             GZ::CUiResource::instance().getFont(QStringLiteral("fnt_default_normal_fix")));
                         flag(painter, QPoint(61, 50), 0, Qt::red, QColor(255, 0, 0), Qt::white, "B");
                     })));
}

TEST_F(LinkageAccount, AccountViewShowsOrdersDealsAndTasksOfTheMainInstrument) {
    showAccount();
    addOrder("1", kBuy, 10.5, "10:00:00");
    addDeal("2", kSell, 9.5, "10:30:00");
    addTask(3, true, 10.2, QTime(11, 0), 0, 1);
    const QImage image = drawn();
    EXPECT_EQ(image.pixelColor(121, 149), QColor(0, 255, 0, 128)) << "deals are paler here";
    EXPECT_EQ(ordersAt(61, 50), 1);
    EXPECT_FALSE(mData->hitOrder(61, 50)) << "rings are hit in the selected-data view alone";
    EXPECT_TRUE(mData->hitDeal(121, 150));
    EXPECT_TRUE(mData->hitTask(185, 70)) << "at 11:00 in column 181";
}

TEST_F(LinkageAccount, RecordsBelowThePricesAreNotDrawnIntoTheVolume) {
    showAccount();
    mUiParam->mShowVolume = true;
    addOrder("1", kBuy, 8.9, "10:00:00"); // ten rows below the last of the prices, 9.00
    addOrder("2", kBuy, 9.0, "10:30:00");
    addDeal("3", kSell, 8.9, "11:00:00");
    addTask(4, true, 8.9, QTime(11, 10), 0, 1);
    QImage image(482, 300, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        mData->drawLinkageMarks(&painter, kGraph);
    }
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 206; y < 300; ++y) {
            ASSERT_EQ(image.pixelColor(x, y).alpha(), 0) << x << ' ' << y;
        }
    }
    EXPECT_EQ(ordersAt(61, 210), 1) << "they are found where they lie";
    EXPECT_EQ(ordersAt(121, 200), 1);
    EXPECT_TRUE(mData->hitDeal(181, 210));
    EXPECT_EQ(mUiParam->mLinkageSells.size(), 1u) << "a deal counts wherever it is";
}

TEST_F(LinkageAccount, FuturesMarketsTakeTheFuturesAccounts) {
    mUiParam->mLinkageFlags = 2;
    mUiParam->mStockAccounts = {QStringLiteral("S")};
    mUiParam->mFutureAccounts = {QStringLiteral("F")};
    for (const char *market : {"DF", "DCE", "ZF", "CZCE", "SF", "SHFE", "IF", "CFFEX", "INE", "SH", "DFX"}) {
        const auto detail = mHost.mStocks.add(market, "1", 10.0);
        setClose(getDetailQsKey(detail), 10.0);
        mUiParam->mStockDetail = detail;
        mHost.mLog.clear();
        drawn();
        const bool stock = market == std::string("SH") || market == std::string("DFX");
        const QStringList calls = mHost.mLog.of(QStringLiteral("CLinkageManager::getOrderDetails"));
        ASSERT_EQ(calls.size(), 1) << market;
        EXPECT_TRUE(calls[0].endsWith(stock ? QLatin1String(" S") : QLatin1String(" F"))) << market;
    }
}

TEST_F(LinkageAccount, AccountViewWithoutAccountsShowsNothing) {
    mUiParam->mLinkageFlags = 2;
    addOrder("1", kBuy, 10.5, "10:00:00");
    EXPECT_EQ(drawn(), blank());
}

TEST_F(LinkageAccount, AccountOrdersOfAReplayEndWhereItHasCome) {
    showAccount();
    addOrder("1", kBuy, 10.5, "10:00:00");
    addOrder("2", kBuy, 10.5, "10:00:01");
    addOrder("3", kSell, 9.5, "10:30:00");
    replayTo(30);
    drawn();
    EXPECT_EQ(ordersAt(61, 50), 1);
    EXPECT_EQ(ordersAt(63, 50) + ordersAt(121, 150), 1) << "that of 10:00:00, two columns away";
    mData->setReplayMode(false);
    drawn();
    EXPECT_EQ(ordersAt(121, 150), 1);
}

TEST_F(LinkageAccount, AccountDealsHaveNoFilterAndAccountOrdersHave) {
    showAccount();
    show({7});
    addOrder("1", kBuy, 10.5, "10:00:00");
    addDeal("2", kBuy, 9.5, "10:30:00");
    drawn();
    EXPECT_EQ(ordersAt(61, 50), 0);
    EXPECT_EQ(dealsAt(121, 150), 1);
}

TEST_F(LinkageAccount, AccountTasksWithoutAStartOrOnAPastDayAreNotShown) {
    showAccount();
    addTask(1, true, 10.2, QTime(10, 0), 0, 1)->mStartTime = kUnsetTime;
    EXPECT_EQ(drawn(), blank());
    addTask(1, true, 10.2, QTime(10, 0), 0, 1);
    EXPECT_NE(drawn(), blank());
    mData->setTradeDate(tests::kDay - 86400);
    EXPECT_EQ(drawn(), blank());
}

TEST_F(LinkageAccount, CostStepsOfALiveDayEndAtTheCurrentTime) {
    showAccount();
    mHost.mClock.mNow.setTime(QTime(11, 0));
    addDeal("1", kBuy, 10.0, "10:00:00");
    addDeal("2", kBuy, 10.4, "10:30:00"); // 10.2 on average, row 80
    const QImage image = drawn();
    const QColor line(255, 0, 0, 192);
    EXPECT_EQ(image.pixelColor(90, 100), line);
    EXPECT_EQ(image.pixelColor(121, 90), line);
    EXPECT_EQ(image.pixelColor(150, 80), line);
    EXPECT_EQ(image.pixelColor(181, 80), line);
    EXPECT_EQ(image.pixelColor(182, 80).alpha(), 0);
    EXPECT_EQ(mUiParam->mLinkageBuys,
              (std::map<int, std::pair<int, double>>{{30, {100, 1000.0}}, {60, {100, 1040.0}}}));
}

TEST_F(LinkageAccount, CostStepsOfAPastDayRunToTheRightEdge) {
    showAccount();
    mData->setTradeDate(tests::kDay - 86400);
    addDeal("1", kBuy, 10.0, "10:00:00");
    EXPECT_EQ(drawn().pixelColor(481, 100), QColor(255, 0, 0, 192));
}

TEST_F(LinkageAccount, CostStepsInReplayEndAtTheReplayTime) {
    showAccount();
    mHost.mClock.mNow.setTime(QTime(14, 0));
    addDeal("1", kBuy, 10.0, "10:00:00");
    addDeal("2", kBuy, 10.4, "10:45:00");
    replayTo(60); // 10:30, in column 121
    const QImage image = drawn();
    EXPECT_EQ(image.pixelColor(121, 100), QColor(255, 0, 0, 192));
    EXPECT_EQ(image.pixelColor(122, 100).alpha(), 0);
    EXPECT_FALSE(mData->hitDeal(151, 60)) << "ahead of the replay";
}

TEST_F(LinkageAccount, SellStepsStartWhereTheBuyStepsEnded) {
    showAccount();
    mHost.mClock.mNow.setTime(QTime(11, 0));
    addDeal("1", kBuy, 10.0, "10:00:00");
    addDeal("2", kSell, 9.5, "10:30:00");
    const QImage image = drawn();
    const QColor green(0, 255, 0, 192);
    EXPECT_EQ(image.pixelColor(121, 120), green) << "down from the row of the buys";
    EXPECT_EQ(image.pixelColor(170, 150), green);
    EXPECT_EQ(image.pixelColor(170, 100), QColor(255, 0, 0, 192));
    EXPECT_GT(image.pixelColor(90, 100).green(), 0) << "over the line of the buys";
}

TEST_F(LinkageAccount, LastSellIsExtendedBackwardsToo) {
    showAccount();
    mHost.mClock.mNow.setTime(QTime(10, 0));
    addDeal("1", kBuy, 9.2, "10:30:00");
    addDeal("2", kSell, 9.5, "10:30:00");
    const QImage image = drawn();
    EXPECT_EQ(image.pixelColor(90, 150), QColor(0, 255, 0, 192));
    EXPECT_EQ(image.pixelColor(90, 180).alpha(), 0) << "the buys are not";
}

TEST_F(LinkageAccount, AccountTasksAheadOfTheReplayAreNotShown) {
    showAccount();
    addTask(1, true, 10.5, QTime(10, 0), 0, 1);
    mData->setReplayMode(true); // no point yet: the replay has not begun
    drawn();
    EXPECT_FALSE(mData->hitTask(61, 50));
    mData->setReplayMode(false);
    drawn();
    EXPECT_TRUE(mData->hitTask(61, 50));
}

TEST_F(LinkageAccount, OrdersAreAsEverAndDealsPaler) {
    showAccount();
    mHost.mClock.mNow.setTime(QTime(10, 30));
    addOrder("1", kBuy, 10.5, "10:00:00");
    addDeal("2", kSell, 9.5, "10:30:00");
    EXPECT_TRUE(same(drawn(), expected([](QPainter &painter) {
                         dot(painter, QRect(58, 47, 6, 6), QColor(255, 0, 0, 192), false);
                         dot(painter, QRect(118, 147, 6, 6), QColor(0, 255, 0, 128), true);
                         painter.setPen(QColor(0, 255, 0, 192));
                         painter.drawLine(121, 150, 121, 150);
                     })));
}

TEST_F(LinkageAccount, DealsOfALiveDayGoByTheRecord) {
    showAccount();
    setClose(kStock, 8.0); // the chart goes by 8, the instrument's record says 10
    addDeal("1", kBuy, 12.5, "10:00:00"); // a quarter above 10, like 10 above 8
    drawn();
    EXPECT_TRUE(mData->hitDeal(61, 100));
}

TEST_F(LinkageAccount, DealsInReplayGoByTheDaysCloseAndTasksByTheRecord) {
    showAccount();
    setClose(kStock, 8.0);
    replayTo(60);
    addDeal("1", kBuy, 10.0, "10:00:00");
    addTask(1, true, 12.5, QTime(10, 10), 0, 1);
    drawn();
    EXPECT_TRUE(mData->hitDeal(61, 100));
    EXPECT_TRUE(mData->hitTask(81, 100));
}

TEST_F(LinkageAccount, OrdersAndDealsOfAPastDayGoByThatDaysClose) {
    showAccount();
    showPastDay();
    mHost.mStocks.mCloses[qMakePair(kStock, tests::kDay - 86400)] = 8.0;
    addOrder("1", kBuy, 10.0, "10:00:00");
    addDeal("1", kBuy, 10.0, "10:30:00");
    drawn();
    EXPECT_EQ(ordersAt(61, 100), 1);
    EXPECT_EQ(dealsAt(121, 100), 1);
}

TEST_F(LinkageAccount, WhatHappenedAtTheReplayTimeItselfIsShown) {
    showAccount();
    replayTo(60);
    addDeal("1", kBuy, 10.0, "10:30:00");
    addDeal("2", kBuy, 10.5, "10:30:01");
    addTask(1, true, 9.5, QTime(10, 30), 0, 1);
    addTask(2, true, 10.8, QTime(10, 30, 1), 0, 1);
    drawn();
    EXPECT_TRUE(mData->hitDeal(121, 100));
    EXPECT_FALSE(mData->hitDeal(123, 50));
    EXPECT_TRUE(mData->hitTask(121, 150));
    EXPECT_FALSE(mData->hitTask(123, 20));
}

TEST_F(LinkageAccount, CostStepsOfAPastDayInReplayEndAtTheReplayTime) {
    showAccount();
    showPastDay();
    replayTo(60);
    addDeal("1", kBuy, 10.0, "10:00:00");
    const QImage image = drawn();
    EXPECT_EQ(image.pixelColor(121, 100), QColor(255, 0, 0, 192));
    EXPECT_EQ(image.pixelColor(122, 100).alpha(), 0);
}

TEST_F(LinkageAccount, SellsWithoutBuysBeginAtTheFirstSell) {
    showAccount();
    mHost.mClock.mNow.setTime(QTime(11, 0));
    addDeal("1", kSell, 10.5, "10:00:00");
    addDeal("2", kSell, 9.5, "10:30:00"); // 10 on average
    EXPECT_TRUE(same(drawn(), expected([](QPainter &painter) {
                         dot(painter, QRect(58, 47, 6, 6), QColor(0, 255, 0, 128), true);
                         dot(painter, QRect(118, 147, 6, 6), QColor(0, 255, 0, 128), true);
                         painter.setPen(QColor(0, 255, 0, 192));
                         painter.drawLine(61, 50, 121, 50);
                         painter.drawLine(121, 50, 121, 100);
                         painter.drawLine(121, 100, 181, 100);
                     })));
}

TEST_F(LinkageAccount, SellsOfNothingDrawTheRowOfTheBuysOn) {
    showAccount();
    mHost.mClock.mNow.setTime(QTime(11, 0));
    addDeal("1", kBuy, 10.0, "10:00:00");
    addDeal("2", kSell, 9.5, "10:30:00", 0);
    const QImage image = drawn();
    EXPECT_GT(image.pixelColor(150, 100).green(), 150) << "over the red line";
    EXPECT_EQ(image.pixelColor(150, 150).alpha(), 0);
}

TEST_F(LinkageAccount, SellsOfNothingAloneHaveNoSteps) {
    showAccount();
    mHost.mClock.mNow.setTime(QTime(11, 0));
    addDeal("1", kSell, 9.5, "10:30:00", 0);
    EXPECT_TRUE(same(drawn(), expected([](QPainter &painter) {
                         dot(painter, QRect(118, 147, 6, 6), QColor(0, 255, 0, 128), true);
                     })));
}

TEST_F(LinkageAccount, DealsOfOneMinuteAddUpBySide) {
    showAccount();
    addDeal("1", kBuy, 10.0, "09:59:30", 100);
    addDeal("2", kBuy, 10.5, "10:00:00", 200);
    addDeal("3", kSell, 9.5, "10:00:00", 300);
    drawn();
    using Traded = std::map<int, std::pair<int, double>>;
    EXPECT_EQ(mUiParam->mLinkageBuys, (Traded{{30, {300, 3100.0}}}));
    EXPECT_EQ(mUiParam->mLinkageSells, (Traded{{30, {300, 2850.0}}}));
}

TEST_F(LinkageAccount, BuysAndSellsOfTheDrawingBeforeAreForgotten) {
    showAccount();
    mUiParam->mLinkageBuys = mUiParam->mLinkageSells = {{30, {100, 1000.0}}};
    EXPECT_EQ(drawn(), blank());
    EXPECT_TRUE(mUiParam->mLinkageBuys.empty() && mUiParam->mLinkageSells.empty());
}

TEST_F(LinkageAccount, OrdersOfAChosenStrategyAndAllTasksAreShownWhileTheFilterIsOn) {
    showAccount();
    show({7});
    mUiParam->mLinkageStrategys = {"grid"};
    setStrategy(addOrder("1", kBuy, 10.5, "10:00:00")->mCommand, "grid");
    addTask(1, true, 9.5, QTime(10, 0), 0, 1);
    drawn();
    EXPECT_EQ(ordersAt(61, 50), 1);
    EXPECT_EQ(tasksAt(61, 150), 1);
}

TEST_F(LinkageAccount, AsksForTheDayOfTheChartAndTheAccountsOfTheHost) {
    showAccount();
    mUiParam->mLinkageAccounts = {"X"};
    mUiParam->mLinkageStocks = {"SZ000001"};
    mHost.mLog.clear();
    drawn();
    EXPECT_EQ(mHost.mLog.of(QStringLiteral("CLinkageManager::get")),
              (QStringList{QStringLiteral("CLinkageManager::getOrderDetails 1710432000 SH600000 A"),
                           QStringLiteral("CLinkageManager::getDealDetails 1710432000 SH600000 A"),
                           QStringLiteral("CLinkageManager::getTaskDetails SH600000 A")}));
}

TEST_F(LinkageAccount, BothViewsMayBeShownAtOnce) {
    showAccount();
    mUiParam->mLinkageFlags = 6;
    show({1});
    mUiParam->mLinkageStocks = {"SZ000001"};
    addDeal("1", kBuy, 10.5, "10:00:00");
    addDeal("2", kBuy, 21.0, "10:30:00", 100, "SZ000001");
    drawn();
    EXPECT_EQ(dealsAt(61, 50), 1);
    EXPECT_EQ(dealsAt(121, 50), 1);
}

} // namespace
