#include "tests/chartdata/LinkageFixture.h"

#include "host/toolkit/CUiResource.h"

#include <climits>
#include <cmath>
#include <limits>

using namespace TC;

namespace {

/// Opens a picture of the chart to a test: which one was painted on tells nothing but its key.
template <class Tag, QPixmap CRealtimeData::*Member> struct PixmapPeek {
    friend QPixmap CRealtimeData::*peek(Tag) { return Member; }
};
struct ChartPixmap {
    friend QPixmap CRealtimeData::*peek(ChartPixmap);
};
struct LinkagePixmap {
    friend QPixmap CRealtimeData::*peek(LinkagePixmap);
};
template struct PixmapPeek<ChartPixmap, &CRealtimeData::mChartPixmap>;
template struct PixmapPeek<LinkagePixmap, &CRealtimeData::mLinkagePixmap>;

class LinkageMarks : public tests::LinkageFixture {
protected:
    static void dot(QPainter &painter, const QRect &circle, const QColor &color, bool filled) {
        painter.setPen(color);
        painter.setBrush(filled ? QBrush(color) : QBrush(Qt::NoBrush));
        painter.drawEllipse(circle);
    }
    static void flag(QPainter &painter, const QPoint &at, int height, const QColor &fill, const QColor &frame,
                     const QColor &letter, const char *text) {
        painter.fillRect(QRect(at.x(), at.y() - height, 8, height), fill);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(frame);
        painter.drawRect(QRect(at.x(), at.y() - 13, 8, 13));
        painter.setPen(letter);
        painter.drawText(QRect(at.x() + 1, at.y() - 13, 8, 13), Qt::AlignCenter, QLatin1String(text));
    }
    void showAccount() {
        mUiParam->mLinkageFlags = 2;
        mUiParam->mStockAccounts = {QStringLiteral("A")};
    }
    int dealsAt(int x, int y) {
        QList<boost::shared_ptr<kvservice::CDealDetail>> deals;
        mData->getDealsAt(x, y, deals);
        return deals.size();
    }
    int ordersAt(int x, int y) {
        QList<boost::shared_ptr<kvservice::COrderDetail>> orders;
        mData->getOrdersAt(x, y, orders);
        return orders.size();
    }
    int tasksAt(int x, int y) {
        QList<boost::shared_ptr<kvservice::CTaskDetail>> tasks;
        mData->getTasksAt(x, y, tasks);
        return tasks.size();
    }
};

TEST_F(LinkageMarks, OrdersAreOpenRings) {
    show({0});
    addOrder("1", kBuy, 10.5, "10:00:00");
    addOrder("2", kSell, 9.5, "103000");
    EXPECT_TRUE(same(drawn(), expected([](QPainter &painter) {
                         dot(painter, QRect(58, 47, 6, 6), QColor(255, 0, 0, 192), false);
                         dot(painter, QRect(118, 147, 6, 6), QColor(0, 255, 0, 192), false);
                     })));
}

TEST_F(LinkageMarks, DealsAreFilledDots) {
    show({1});
    addDeal("1", kBuy, 10.5, "10:00:00");
    addDeal("2", kSell, 9.5, "103000");
    EXPECT_TRUE(same(drawn(), expected([](QPainter &painter) {
                         dot(painter, QRect(58, 47, 6, 6), QColor(255, 0, 0, 192), true);
                         dot(painter, QRect(118, 147, 6, 6), QColor(0, 255, 0, 192), true);
                     })));
}

TEST_F(LinkageMarks, MarksOfAnotherInstrumentAreSmallerPalerAndAtTheirRelativeDistance) {
    show({0, 1});
    mUiParam->mLinkageStocks = {"SZ000001"};
    addOrder("1", kBuy, 21.0, "10:00:00", "SZ000001"); // 5 % above 20, like 10.5 here
    addDeal("2", kSell, 19.0, "10:30:00", 100, "SZ000001");
    EXPECT_TRUE(same(drawn(), expected([](QPainter &painter) {
                         dot(painter, QRect(59, 48, 4, 4), QColor(255, 0, 0, 128), false);
                         dot(painter, QRect(119, 148, 4, 4), QColor(0, 255, 0, 128), true);
                     })));
}

TEST_F(LinkageMarks, OrdersOfAPastDayGoByThatDaysCloseAndDealsByTheRecords) {
    show({0, 1});
    mData->setTradeDate(tests::kDay - 86400);
    mUiParam->mGetTradeDateFunc = [] { return tests::kDay - 86400; };
    mHost.mStocks.mCloses[qMakePair(QStringLiteral("SZ000001"), tests::kDay - 86400)] = 16.0;
    mUiParam->mLinkageStocks = {"SZ000001"};
    addOrder("1", kBuy, 16.0, "10:00:00", "SZ000001");
    addDeal("2", kBuy, 20.0, "10:30:00", 100, "SZ000001");
    drawn();
    EXPECT_TRUE(mData->hitOrder(61, 100)) << "16 of 16 is the close";
    EXPECT_TRUE(mData->hitDeal(121, 100)) << "20 of 20 is the close";
}

TEST_F(LinkageMarks, TaskFlagsHaveFillFrameAndLetter) {
    show({2});
    addTask(1, true, 10.5, QTime(10, 0), 1, 4);
    addTask(2, false, 9.5, QTime(10, 30), 4, 4);
    EXPECT_TRUE(
        same(drawn(), expected([](QPainter &painter) {
                 flag(painter, QPoint(61, 50), 3, QColor(255, 0, 0, 128), QColor(255, 0, 0), Qt::white, "B");
                 flag(painter, QPoint(121, 150), 12, QColor(0, 255, 0, 128), QColor(0, 255, 0), Qt::white, "S");
             })));
}

TEST_F(LinkageMarks, FinishedTaskHasAWhiteFlagWithAColouredLetter) {
    show({2});
    for (const int status : {8, 10}) {
        addTask(1, true, 10.5, QTime(10, 0), 2, 4)->mStatus = status;
        addTask(2, false, 9.5, QTime(10, 30), 4, 4)->mStatus = status;
        EXPECT_TRUE(same(drawn(), expected([](QPainter &painter) {
                             flag(painter, QPoint(61, 50), 6, QColor(255, 255, 255, 96), Qt::white,
                                  QColor(255, 0, 0), "B");
                             flag(painter, QPoint(121, 150), 12, QColor(255, 255, 255, 96), Qt::white,
                                  QColor(0, 255, 0), "S");
                         })));
    }
}

TEST_F(LinkageMarks, TaskWithItsFirstFlagSetIsNotFinished) {
    show({2});
    const auto task = addTask(1, true, 10.5, QTime(10, 0), 2, 4);
    task->mStatus = 8;
    task->mFlag = 1;
    EXPECT_TRUE(same(drawn(), expected([](QPainter &painter) {
                         flag(painter, QPoint(61, 50), 6, QColor(255, 0, 0, 128), QColor(255, 0, 0), Qt::white,
                              "B");
                     })));
}

TEST_F(LinkageMarks, TaskWithTotalZeroShowsAFullFlag) {
    show({2});
    addTask(1, true, 10.5, QTime(10, 0), 0, 0);
    EXPECT_EQ(drawn().pixelColor(62, 39), QColor(255, 0, 0, 128));
}

TEST_F(LinkageMarks, AccountTasksHaveTheirOwnFont) {
    showAccount();
    addTask(1, true, 10.5, QTime(10, 0), 0, 4);
    EXPECT_TRUE(same(drawn(), expected([](QPainter &painter) {
                         painter.setFont(
                             GZ::CUiResource::instance().getFont(QStringLiteral("fnt_default_normal_fix")));
                         flag(painter, QPoint(61, 50), 0, Qt::red, QColor(255, 0, 0), Qt::white, "B");
                     })));
}

TEST_F(LinkageMarks, ViewOfSeveralDaysShowsNoMarks) {
    show({0, 1, 2});
    addOrder("1", kBuy, 10.5, "10:00:00");
    mUiParam->mDayCount = 2;
    EXPECT_EQ(drawn(), blank());
}

TEST_F(LinkageMarks, NothingIsShownWithoutAReferencePrice) {
    show({0});
    addOrder("1", kBuy, 10.5, "10:00:00");
    setClose(kStock, kUnsetValue);
    EXPECT_EQ(drawn(), blank());
    setClose(kStock, 10.0);
    mUiParam->mStockKind = 2;
    EXPECT_EQ(drawn(), blank());
    mUiParam->mStockKind = 0;
    mUiParam->mStockDetail.reset();
    EXPECT_EQ(drawn(), blank());
}

TEST_F(LinkageMarks, OnlyWhatIsTickedIsShown) {
    addOrder("1", kBuy, 10.5, "10:00:00");
    addDeal("2", kBuy, 10.5, "10:00:00");
    addTask(3, true, 10.5, QTime(10, 0), 0, 1);
    EXPECT_EQ(drawn(), blank());
    show({0, 1, 2});
    mUiParam->mLinkageFlags = 1;
    EXPECT_EQ(drawn(), blank());
}

TEST_F(LinkageMarks, RecordWithoutStrategyIsNotShownWhileTheFilterIsOn) {
    show({0, 1, 2, 7});
    mUiParam->mLinkageStrategys = {"grid"};
    setStrategy(addOrder("1", kBuy, 10.5, "10:00:00")->mCommand, "grid");
    addOrder("2", kBuy, 10.5, "10:30:00");
    setStrategy(addDeal("1", kBuy, 10.2, "10:00:00")->mCommand, "");
    setStrategy(addDeal("2", kBuy, 10.2, "10:30:00")->mCommand, "grid");
    setStrategy(addTask(1, true, 9.5, QTime(10, 0), 0, 1)->mCommand, "other");
    drawn();
    EXPECT_TRUE(mData->hitOrder(61, 50));
    EXPECT_FALSE(mData->hitOrder(121, 50));
    EXPECT_FALSE(mData->hitDeal(61, 80));
    EXPECT_TRUE(mData->hitDeal(121, 80));
    EXPECT_FALSE(mData->hitTask(61, 150));
}

TEST_F(LinkageMarks, OrderWithAnUnreadableTimeLandsWhereTheNullTimeDoes) {
    show({0});
    addOrder("1", kBuy, 10.5, "");
    addOrder("2", kBuy, 10.2, "noon");
    drawn();
    EXPECT_TRUE(mData->hitOrder(1, 50)) << "before the first minute: column 1";
    EXPECT_TRUE(mData->hitOrder(1, 80));
}

TEST_F(LinkageMarks, SecondsRoundUpToTheNextMinute) {
    show({0});
    addOrder("1", kBuy, 10.5, "09:59:01");
    drawn();
    EXPECT_TRUE(mData->hitOrder(65, 50));
    EXPECT_FALSE(mData->hitOrder(66, 50));
}

// Account view

TEST_F(LinkageMarks, AccountViewShowsOrdersDealsAndTasksOfTheMainInstrument) {
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

TEST_F(LinkageMarks, FuturesMarketsTakeTheFuturesAccounts) {
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

TEST_F(LinkageMarks, AccountViewWithoutAccountsShowsNothing) {
    mUiParam->mLinkageFlags = 2;
    addOrder("1", kBuy, 10.5, "10:00:00");
    EXPECT_EQ(drawn(), blank());
}

TEST_F(LinkageMarks, AccountDealsHaveNoFilterAndAccountOrdersHave) {
    showAccount();
    show({7});
    addOrder("1", kBuy, 10.5, "10:00:00");
    addDeal("2", kBuy, 9.5, "10:30:00");
    drawn();
    EXPECT_EQ(ordersAt(61, 50), 0);
    EXPECT_EQ(dealsAt(121, 150), 1);
}

TEST_F(LinkageMarks, AccountTasksWithoutAStartOrOnAPastDayAreNotShown) {
    showAccount();
    addTask(1, true, 10.2, QTime(10, 0), 0, 1)->mStartTime = kUnsetTime;
    EXPECT_EQ(drawn(), blank());
    addTask(1, true, 10.2, QTime(10, 0), 0, 1);
    EXPECT_NE(drawn(), blank());
    mData->setTradeDate(tests::kDay - 86400);
    EXPECT_EQ(drawn(), blank());
}

// Average cost

TEST_F(LinkageMarks, CostStepsOfALiveDayEndAtTheCurrentTime) {
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

TEST_F(LinkageMarks, CostStepsOfAPastDayRunToTheRightEdge) {
    showAccount();
    mData->setTradeDate(tests::kDay - 86400);
    addDeal("1", kBuy, 10.0, "10:00:00");
    EXPECT_EQ(drawn().pixelColor(481, 100), QColor(255, 0, 0, 192));
}

TEST_F(LinkageMarks, CostStepsInReplayEndAtTheReplayTime) {
    showAccount();
    mHost.mClock.mNow.setTime(QTime(14, 0));
    addDeal("1", kBuy, 10.0, "10:00:00");
    addDeal("2", kBuy, 10.4, "10:45:00");
    // The newest point of the chart is the replay time: 10:30, in column 121.
    mData->mData.clear();
    std::vector<se::TimePosition> times;
    for (int i = 0; i < 61; ++i) {
        times.emplace_back(QDateTime(QDate(2024, 3, 15), QTime(9, 30).addSecs(i * 60)).toMSecsSinceEpoch(), 0);
    }
    put(*mData, kStock, QStringLiteral("REALTIME"), tests::makeMeta(1),
        tests::makeResult(times, std::vector<double>(61, 10.0)));
    mUiParam->mDataCount = 61;
    mData->setReplayMode(true);
    mData->setChartRect(QRect(QPoint(0, 0), kSize));
    mData->adoptMaxMin({{{kStock, QStringLiteral("REALTIME")}, {11.0, 9.0}}}, true);
    mData->setDrawEnabled(true);
    mData->drawChart(QRect(QPoint(0, 0), kSize));
    const QImage image = drawn();
    EXPECT_EQ(image.pixelColor(121, 100), QColor(255, 0, 0, 192));
    EXPECT_EQ(image.pixelColor(122, 100).alpha(), 0);
    EXPECT_FALSE(mData->hitDeal(151, 60)) << "ahead of the replay";
}

TEST_F(LinkageMarks, SellStepsStartWhereTheBuyStepsEnded) {
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

TEST_F(LinkageMarks, LastSellIsExtendedBackwardsToo) {
    showAccount();
    mHost.mClock.mNow.setTime(QTime(10, 0));
    addDeal("1", kBuy, 9.2, "10:30:00");
    addDeal("2", kSell, 9.5, "10:30:00");
    const QImage image = drawn();
    EXPECT_EQ(image.pixelColor(90, 150), QColor(0, 255, 0, 192));
    EXPECT_EQ(image.pixelColor(90, 180).alpha(), 0) << "the buys are not";
}

// Lists and hit boxes

TEST_F(LinkageMarks, CirclesAreHitWithinFourPixels) {
    show({0, 1});
    addOrder("1", kBuy, 10.5, "10:00:00");
    addDeal("1", kBuy, 9.5, "10:00:00");
    drawn();
    for (const QPoint &near : {QPoint(57, 46), QPoint(65, 54), QPoint(61, 50)}) {
        EXPECT_TRUE(mData->hitOrder(near.x(), near.y()));
        EXPECT_TRUE(mData->hitDeal(near.x(), near.y() + 100));
        EXPECT_EQ(ordersAt(near.x(), near.y()), 1);
        EXPECT_EQ(dealsAt(near.x(), near.y() + 100), 1);
    }
    for (const QPoint &far : {QPoint(56, 50), QPoint(66, 50), QPoint(61, 45), QPoint(61, 55)}) {
        EXPECT_FALSE(mData->hitOrder(far.x(), far.y()));
        EXPECT_FALSE(mData->hitDeal(far.x(), far.y() + 100));
    }
}

TEST_F(LinkageMarks, FlagsAreHitRightOfAndAboveTheirAnchor) {
    show({2});
    addTask(1, true, 10.5, QTime(10, 0), 0, 1);
    drawn();
    for (const QPoint &near : {QPoint(61, 50), QPoint(71, 37), QPoint(71, 50), QPoint(61, 37)}) {
        EXPECT_TRUE(mData->hitTask(near.x(), near.y()));
        EXPECT_EQ(tasksAt(near.x(), near.y()), 1);
    }
    for (const QPoint &far : {QPoint(60, 50), QPoint(72, 50), QPoint(61, 51), QPoint(61, 36)}) {
        EXPECT_FALSE(mData->hitTask(far.x(), far.y()));
    }
}

TEST_F(LinkageMarks, ListsGatherEveryRecordInTheBoxAndForgetWhatTheyHeld) {
    show({1});
    addDeal("1", kBuy, 10.5, "10:00:00");
    addDeal("2", kBuy, 10.5, "10:00:00");
    addDeal("3", kBuy, 10.52, "10:01:00");
    drawn();
    QList<boost::shared_ptr<kvservice::CDealDetail>> deals{nullptr, nullptr};
    EXPECT_TRUE(mData->getDealsAt(61, 50, deals));
    EXPECT_EQ(deals.size(), 3);
    EXPECT_FALSE(mData->getDealsAt(300, 50, deals));
    EXPECT_TRUE(deals.isEmpty());
}

TEST_F(LinkageMarks, MarksOfTheDrawingBeforeAreForgotten) {
    show({0});
    addOrder("1", kBuy, 10.5, "10:00:00");
    drawn();
    mHost.mLinkage.mOrders.clear();
    drawn();
    EXPECT_FALSE(mData->hitOrder(61, 50));
}

TEST_F(LinkageMarks, TasksOfTheListBeforeAreForgotten) {
    show({2});
    addTask(1, true, 10.5, QTime(10, 0), 0, 1);
    drawn();
    QList<boost::shared_ptr<kvservice::CTaskDetail>> tasks{nullptr, nullptr};
    EXPECT_TRUE(mData->getTasksAt(61, 50, tasks));
    ASSERT_EQ(tasks.size(), 1);
    EXPECT_EQ(tasks[0]->mTaskId, 1);
    EXPECT_FALSE(mData->getTasksAt(300, 50, tasks));
    EXPECT_TRUE(tasks.isEmpty());
    QList<boost::shared_ptr<kvservice::COrderDetail>> orders{nullptr};
    EXPECT_FALSE(mData->getOrdersAt(61, 50, orders));
    EXPECT_TRUE(orders.isEmpty());
}

TEST_F(LinkageMarks, DealsAndTasksOfTheDrawingBeforeAreForgottenToo) {
    show({1, 2});
    addDeal("1", kBuy, 10.5, "10:00:00");
    addTask(1, true, 9.5, QTime(10, 0), 0, 1);
    drawn();
    EXPECT_TRUE(mData->hitDeal(61, 50) && mData->hitTask(61, 150));
    mHost.mLinkage.mDeals.clear();
    mHost.mLinkage.mTasks.clear();
    drawn();
    EXPECT_FALSE(mData->hitDeal(61, 50) || mData->hitTask(61, 150));
}

TEST_F(LinkageMarks, AccountTasksAheadOfTheReplayAreNotShown) {
    showAccount();
    addTask(1, true, 10.5, QTime(10, 0), 0, 1);
    mData->setReplayMode(true); // no point yet: the replay has not begun
    drawn();
    EXPECT_FALSE(mData->hitTask(61, 50));
    mData->setReplayMode(false);
    drawn();
    EXPECT_TRUE(mData->hitTask(61, 50));
}

TEST_F(LinkageMarks, NewTradesLeaveThePictureOfTheChart) {
    show({1});
    mData->setTradeDate(tests::kDay);
    mData->adoptMaxMin({{{kStock, QStringLiteral("REALTIME")}, {11.0, 9.0}}}, true);
    mData->setChartRect(QRect(QPoint(0, 0), kSize));
    mData->setDrawEnabled(true);
    const qint64 chart = ((*mData).*peek(ChartPixmap())).cacheKey();
    const qint64 marks = ((*mData).*peek(LinkagePixmap())).cacheKey();
    addDeal("1", kBuy, 10.5, "10:00:00");
    mHost.mLinkage.sigLinkageChanged({"SH600000"});
    EXPECT_TRUE(mData->hitDeal(61, 50));
    EXPECT_EQ(((*mData).*peek(ChartPixmap())).cacheKey(), chart) << "not painted on";
    EXPECT_NE(((*mData).*peek(LinkagePixmap())).cacheKey(), marks);
}

TEST_F(LinkageMarks, HitsNeedTheKindToBeShown) {
    show({0, 1, 2});
    addOrder("1", kBuy, 10.5, "10:00:00");
    addDeal("1", kBuy, 10.5, "10:00:00");
    addTask(1, true, 10.5, QTime(10, 0), 0, 1);
    drawn();
    mUiParam->mLinkageShow = {};
    EXPECT_FALSE(mData->hitOrder(61, 50) || mData->hitDeal(61, 50) || mData->hitTask(61, 50));
    EXPECT_EQ(ordersAt(61, 50) + dealsAt(61, 50) + tasksAt(61, 50), 0);
    mUiParam->mLinkageFlags = 2;
    EXPECT_TRUE(mData->hitDeal(61, 50) && mData->hitTask(61, 50));
    EXPECT_EQ(ordersAt(61, 50), 1);
    EXPECT_FALSE(mData->hitOrder(61, 50));
}

// Bad input

TEST_F(LinkageMarks, HostilePricesAndRecordsDoNoHarm) {
    show({0, 1, 2});
    mUiParam->mLinkageFlags = 6;
    mUiParam->mStockAccounts = {QStringLiteral("A")};
    mUiParam->mLinkageStocks = {"SH600000", "SZ000001", "XX1", ""};
    const double kInfinity = std::numeric_limits<double>::infinity();
    int id = 0;
    for (const double price : {0.0, -10.0, kInfinity, -kInfinity, std::nan(""), kUnsetValue, -1e300, 1e300}) {
        for (const char *stock : {"SH600000", "SZ000001", "XX1"}) {
            const std::string key = std::to_string(++id);
            addOrder(key, kBuy, price, "25:61:61", stock);
            addDeal(key, kSell, price, "10:00:00", INT_MAX, stock);
            addDeal("x" + key, 7, price, "", INT_MIN, stock);
        }
        addTask(++id, true, price, QTime(10, 0), LLONG_MIN, LLONG_MAX);
        addTask(++id, true, price, QTime(10, 0), -5, -3)->mItems.push_back(nullptr);
    }
    mHost.mLinkage.mOrders["SH600000"]["A"]["null"] = nullptr;
    mHost.mLinkage.mDeals["SH600000"]["A"]["null"] = nullptr;
    mHost.mLinkage.mTasks["SH600000"]["A"]["null"] = nullptr;
    addTask(++id, true, 10.0, QTime(10, 0), 0, 1)->mItems.clear();
    addTask(++id, true, 10.0, QTime(10, 0), 0, 1)->mItems = {nullptr};
    mOther->mLastClose = 0.0;
    drawn();
    EXPECT_TRUE(mData->hitDeal(61, 1100)) << "a price of 0 lies in row 1100";
    for (const int far : {INT_MIN, INT_MAX}) {
        EXPECT_FALSE(mData->hitOrder(far, far) || mData->hitDeal(far, far) || mData->hitTask(far, far));
    }
    mStrip->resize(1, 1);
    mUiParam->resize(QRect());
    drawn();
}

TEST_F(LinkageMarks, InstrumentWithoutARecordIsSkipped) {
    show({0, 1, 2});
    mUiParam->mLinkageStocks = {"XX1"};
    addOrder("1", kBuy, 10.5, "10:00:00", "XX1");
    addDeal("1", kBuy, 10.5, "10:00:00", 100, "XX1");
    addTask(1, true, 10.5, QTime(10, 0), 0, 1, "XX", "1");
    EXPECT_EQ(drawn(), blank());
}

TEST_F(LinkageMarks, ItemsOfOtherInstrumentsAreNotFlagged) {
    show({2});
    auto item = boost::make_shared<kvservice::CTaskItem>();
    item->mMarket = "SZ";
    item->mCode = "000001";
    item->mPrice = 9.5;
    addTask(1, true, 10.5, QTime(10, 0), 0, 1)->mItems.push_back(item);
    drawn();
    EXPECT_TRUE(mData->hitTask(61, 50));
    EXPECT_FALSE(mData->hitTask(61, 150));
}

TEST_F(LinkageMarks, MarksComeToTheScreenWithTheChart) {
    show({1});
    addDeal("1", kBuy, 10.5, "10:00:00");
    mData->setTradeDate(tests::kDay);
    mData->adoptMaxMin({{{kStock, QStringLiteral("REALTIME")}, {11.0, 9.0}}}, true);
    mData->setChartRect(QRect(QPoint(0, 0), kSize));
    mData->setDrawEnabled(true);
    const QImage image = tests::rendered(kSize, 1.0, Qt::black, [this](QPainter &painter) {
        mData->paintTo(&painter, QRect(QPoint(0, 0), kSize));
    });
    EXPECT_GT(image.pixelColor(61, 50).red(), 180);
}

} // namespace
