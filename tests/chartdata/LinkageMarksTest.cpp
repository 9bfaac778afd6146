#include "tests/chartdata/LinkageFixture.h"

#include "host/toolkit/CUiResource.h"

using namespace TC;

namespace {

class LinkageMarks : public tests::LinkageFixture {};

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
    EXPECT_EQ(drawn().pixelColor(62, 38), QColor(255, 0, 0, 128)); // above the letter
}

TEST_F(LinkageMarks, LettersHaveABlackEdgeInTheLightThemeAlone) {
    show({2});
    for (const bool light : {false, true}) {
        ASSERT_TRUE(
            GZ::CUiResource::instance().setTheme(light ? QStringLiteral("light") : QStringLiteral("dark")));
        for (const bool finished : {false, true}) {
            addTask(1, true, 10.5, QTime(10, 0), 0, 4)->mStatus = finished ? 8 : 4;
            const QImage image = drawn();
            int black = 0;
            for (int x = 63; x < 69; ++x) {
                for (int y = 38; y < 50; ++y) {
                    const QColor color = image.pixelColor(x, y);
                    black += color.alpha() > 200 && qMax(color.red(), color.green()) < 60;
                }
            }
            EXPECT_EQ(black > 0, light) << light << ' ' << finished;
        }
    }
    GZ::CUiResource::instance().setTheme(QStringLiteral("dark"));
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

TEST_F(LinkageMarks, SecondsRoundUpToTheNextMinute) {
    show({0});
    addOrder("1", kBuy, 10.5, "09:59:01");
    drawn();
    EXPECT_TRUE(mData->hitOrder(65, 50));
    EXPECT_FALSE(mData->hitOrder(66, 50));
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

TEST_F(LinkageMarks, OfAUserDefinedIndexAllRecordsAreThoseOfOtherInstruments) {
    show({0});
    mUiParam->mLinkageFlags = 6;
    mUiParam->mStockAccounts = {QStringLiteral("A")};
    mUiParam->mStockKind = 1;
    mUiParam->mIndexKey = QStringLiteral("IDX");
    mHost.mIndexes.mStored["IDX"] = 8.0;
    addOrder("1", kBuy, 12.5, "10:00:00"); // a quarter above 10, like 10 above 8
    mHost.mLog.clear();
    EXPECT_TRUE(same(drawn(), expected([](QPainter &painter) {
                         dot(painter, QRect(59, 98, 4, 4), QColor(255, 0, 0, 128), false);
                     })));
    EXPECT_EQ(mHost.mLog.of(QStringLiteral("CLinkageManager::get")).size(), 1)
        << "nothing for the account view";
}

TEST_F(LinkageMarks, OrdersOnAPastDayOfAUserDefinedIndexGoByTheRecords) {
    show({0});
    showPastDay();
    mUiParam->mStockKind = 1;
    mUiParam->mIndexKey = QStringLiteral("IDX");
    mUiParam->mLinkageStocks = {"SZ000001"};
    mHost.mIndexes.mStored["IDX"] = 10.0;
    mHost.mStocks.mCloses[qMakePair(QStringLiteral("SZ000001"), tests::kDay - 86400)] = 16.0;
    addOrder("1", kBuy, 20.0, "10:00:00", "SZ000001");
    drawn();
    EXPECT_TRUE(mData->hitOrder(61, 100)) << "20 of 20 is the close";
}

TEST_F(LinkageMarks, OnAPastDayDealsAndTasksOfTheMainInstrumentGoByItsRecordToo) {
    show({0, 1, 2});
    showPastDay();
    mHost.mStocks.mCloses[qMakePair(kStock, tests::kDay - 86400)] = 8.0;
    addOrder("1", kBuy, 10.0, "10:00:00");
    addDeal("1", kBuy, 12.5, "10:30:00"); // a quarter above the 10 of the record
    addTask(1, true, 12.5, QTime(11, 0), 0, 1);
    drawn();
    EXPECT_TRUE(mData->hitOrder(61, 100));
    EXPECT_TRUE(mData->hitDeal(121, 100));
    EXPECT_TRUE(mData->hitTask(181, 100));
}

TEST_F(LinkageMarks, ReferencePriceIsThatOfTheDayShown) {
    show({0});
    mUiParam->mLinkageStocks = {"SZ000001"};
    mHost.mStocks.mCloses[qMakePair(kStock, tests::kDay - 86400)] = 8.0;
    addOrder("1", kBuy, 25.0, "10:00:00", "SZ000001"); // a quarter above 20
    drawn();
    EXPECT_TRUE(mData->hitOrder(61, -150)) << "12.5 on a chart around 10";
    mUiParam->mGetTradeDateFunc = [] { return tests::kDay - 86400; };
    drawn();
    EXPECT_TRUE(mData->hitOrder(61, 100)) << "10 on a chart around 8";
}

TEST_F(LinkageMarks, WhatIsSelectedIsAskedForKindByKind) {
    show({0, 1, 2, 3, 5, 6, 7});
    mUiParam->mLinkageAccounts = {"A", "B"};
    mUiParam->mLinkageStocks = {"SH600000", "SZ000001"};
    mUiParam->mLinkageStrategys = {"grid", "twap"};
    mHost.mLog.clear();
    drawn();
    const auto day = [](const char *kind, const char *stock) {
        return QStringLiteral("CLinkageManager::get%1Details 1710432000 %2 A,B")
            .arg(QLatin1String(kind), QLatin1String(stock));
    };
    const QString chosen = QStringLiteral(" SH600000,SZ000001 A,B grid,twap 1");
    EXPECT_EQ(
        mHost.mLog.of(QStringLiteral("CLinkageManager::get")),
        (QStringList{day("Order", "SH600000"), day("Order", "SZ000001"), day("Deal", "SH600000"),
                     day("Deal", "SZ000001"), QStringLiteral("CLinkageManager::getTaskDetails SH600000 A,B"),
                     QStringLiteral("CLinkageManager::getTaskDetails SZ000001 A,B"),
                     QStringLiteral("CLinkageManager::getTotalBuySellAmounts") + chosen,
                     QStringLiteral("CLinkageManager::getTotalProfits") + chosen,
                     QStringLiteral("CLinkageManager::getTotalBalances") + chosen}));
}

TEST_F(LinkageMarks, LaterKindsLieOverEarlierOnes) {
    show({0, 1, 2, 5});
    addOrder("1", kBuy, 10.5, "10:00:00");
    addDeal("1", kSell, 10.5, "10:00:00");
    addTask(1, true, 10.5, QTime(10, 0), 1, 1)->mStatus = 8;
    mHost.mLinkage.mProfits = {{570, 50.0}, {630, 50.0}, {660, -100.0}}; // 50 is in row 50
    EXPECT_TRUE(same(drawn(), expected([](QPainter &painter) {
                         dot(painter, QRect(58, 47, 6, 6), QColor(255, 0, 0, 192), false);
                         dot(painter, QRect(58, 47, 6, 6), QColor(0, 255, 0, 192), true);
                         flag(painter, QPoint(61, 50), 12, QColor(255, 255, 255, 96), Qt::white,
                              QColor(255, 0, 0), "B");
                         painter.setPen(QColor(255, 255, 128, 192));
                         painter.drawPolyline(QPolygon({QPoint(1, 50), QPoint(121, 50), QPoint(181, 200)}));
                     })));
}

TEST_F(LinkageMarks, TaskWithoutAStartIsShownWhereItsTimeFalls) {
    show({2});
    addTask(1, true, 10.5, QTime(10, 0), 0, 1)->mStartTime = kUnsetTime;
    drawn();
    const QTime end = QDateTime::fromSecsSinceEpoch(kUnsetTime).time();
    EXPECT_TRUE(mData->hitTask(mUiParam->getXAxisByIndex(mUiParam->getIndexByTime(end)), 50));
}

TEST_F(LinkageMarks, RecordsOfAChosenStrategyAreShownWhileTheFilterIsOn) {
    show({2, 7});
    mUiParam->mLinkageStrategys = {"grid", "twap"};
    setStrategy(addTask(1, true, 10.5, QTime(10, 0), 0, 1)->mCommand, "twap");
    drawn();
    EXPECT_TRUE(mData->hitTask(61, 50));
}

TEST_F(LinkageMarks, EmptyStrategyIsNotShownEvenWhereItIsChosen) {
    show({0, 7});
    mUiParam->mLinkageStrategys = {""};
    setStrategy(addOrder("1", kBuy, 10.5, "10:00:00")->mCommand, "");
    EXPECT_EQ(drawn(), blank());
}

TEST_F(LinkageMarks, EveryItemOfTheInstrumentHasAFlag) {
    show({2});
    const auto task = addTask(1, true, 10.5, QTime(10, 0), 0, 1);
    task->mItems.push_back(boost::make_shared<kvservice::CTaskItem>(*task->mItems.front()));
    task->mItems.back()->mPrice = 9.5;
    task->mItems.back()->mOperation = kvservice::EOperationType::Sell;
    EXPECT_TRUE(same(drawn(), expected([](QPainter &painter) {
                         flag(painter, QPoint(61, 50), 0, Qt::red, QColor(255, 0, 0), Qt::white, "B");
                         flag(painter, QPoint(61, 150), 0, Qt::red, QColor(0, 255, 0), Qt::white, "S");
                     })));
    EXPECT_EQ(tasksAt(61, 50), 1);
    EXPECT_EQ(tasksAt(61, 150), 1);
}

TEST_F(LinkageMarks, RecordsOfTwoAccountsUnderOneKeyAreMarkedOnceAtAPlace) {
    show({0});
    mUiParam->mLinkageAccounts = {"A", "B"};
    const auto first = addOrder("1", kBuy, 10.5, "10:00:00");
    const auto second = boost::make_shared<kvservice::COrderDetail>(*first);
    mHost.mLinkage.mOrders["SH600000"]["B"]["other"] = second;
    drawn();
    QList<boost::shared_ptr<kvservice::COrderDetail>> orders;
    ASSERT_TRUE(mData->getOrdersAt(61, 50, orders));
    EXPECT_EQ(orders, (QList<boost::shared_ptr<kvservice::COrderDetail>>{second})) << "the last one stays";
}

} // namespace
