#include "tests/chartdata/LinkageFixture.h"

#include "host/toolkit/Events.h"

#include <thread>

using namespace TC;

namespace {

class LinkageHit : public tests::LinkageFixture {};

TEST_F(LinkageHit, CirclesAreHitWithinFourPixels) {
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

TEST_F(LinkageHit, FlagsAreHitRightOfAndAboveTheirAnchor) {
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

TEST_F(LinkageHit, ListsGatherEveryRecordInTheBoxAndForgetWhatTheyHeld) {
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

TEST_F(LinkageHit, MarksOfTheDrawingBeforeAreForgotten) {
    show({0});
    addOrder("1", kBuy, 10.5, "10:00:00");
    drawn();
    mHost.mLinkage.mOrders.clear();
    drawn();
    EXPECT_FALSE(mData->hitOrder(61, 50));
}

TEST_F(LinkageHit, TasksOfTheListBeforeAreForgotten) {
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

TEST_F(LinkageHit, DealsAndTasksOfTheDrawingBeforeAreForgottenToo) {
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

TEST_F(LinkageHit, HitsNeedTheKindToBeShown) {
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

TEST_F(LinkageHit, NewTradesLeaveThePictureOfTheChart) {
    show({1});
    mData->setTradeDate(tests::kDay);
    mData->adoptMaxMin({{{kStock, QStringLiteral("REALTIME")}, {11.0, 9.0}}}, true);
    mData->setChartRect(QRect(QPoint(0, 0), kSize));
    mData->setDrawEnabled(true);
    mData->setReplayMode(true); // every drawing of the chart tells its time
    mEvents.mEvents.clear();
    addDeal("1", kBuy, 10.5, "10:00:00");
    mHost.mLinkage.sigLinkageChanged({"SH600000"});
    EXPECT_TRUE(mData->hitDeal(61, 50));
    EXPECT_EQ(mEvents.count(eRegionBoundMoved), 0) << "not drawn";
    EXPECT_EQ(mData->takeDirtyRect(), QRect(QPoint(0, 0), kSize));
}

TEST_F(LinkageHit, TradesOfAnotherThreadAreDrawnWithTheNextPainting) {
    show({1});
    mData->setTradeDate(tests::kDay);
    mData->adoptMaxMin({{{kStock, QStringLiteral("REALTIME")}, {11.0, 9.0}}}, true);
    mData->setChartRect(QRect(QPoint(0, 0), kSize));
    mData->setDrawEnabled(true);
    addDeal("1", kBuy, 10.5, "10:00:00");
    const auto tell = [this](const std::string &instrument) {
        std::thread([&] { mHost.mLinkage.sigLinkageChanged({instrument}); }).join();
    };
    const auto paint = [this] {
        return tests::rendered(kSize, 1.0, Qt::black, [this](QPainter &painter) {
            mData->paintTo(&painter, QRect(QPoint(0, 0), kSize));
        });
    };
    tell("SZ000001"); // another one: nothing to be drawn
    paint();
    EXPECT_FALSE(mData->hitDeal(61, 50));
    tell("SH600000");
    tell("SZ000001");
    EXPECT_FALSE(mData->hitDeal(61, 50)) << "not drawn yet";
    EXPECT_GT(paint().pixelColor(61, 50).red(), 180);
    EXPECT_TRUE(mData->hitDeal(61, 50));
    mHost.mLog.clear();
    paint();
    EXPECT_TRUE(mHost.mLog.of(QStringLiteral("CLinkageManager::getDealDetails")).isEmpty()) << "drawn once";
}

TEST_F(LinkageHit, MarksComeToTheScreenWithTheChart) {
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

TEST_F(LinkageHit, ViewOfSeveralDaysHasNothingToHit) {
    show({0, 1, 2});
    mData->setTradeDate(tests::kDay);
    mData->setChartRect(QRect(QPoint(0, 0), kSize));
    addOrder("1", kBuy, 10.5, "10:00:00");
    addDeal("1", kBuy, 10.5, "10:00:00");
    addTask(1, true, 10.5, QTime(10, 0), 0, 1);
    mData->drawLinkage(QRect(QPoint(0, 0), kSize));
    EXPECT_TRUE(mData->hitOrder(61, 50) && mData->hitDeal(61, 50) && mData->hitTask(61, 50));
    mUiParam->mDayCount = 2;
    mData->drawLinkage(QRect(QPoint(0, 0), kSize));
    EXPECT_FALSE(mData->hitOrder(61, 50) || mData->hitDeal(61, 50) || mData->hitTask(61, 50));
}

TEST_F(LinkageHit, EmptyFlagsHitNothing) {
    show({0, 1, 2});
    addOrder("1", kBuy, 10.5, "10:00:00");
    addDeal("1", kBuy, 10.5, "10:00:00");
    addTask(1, true, 10.5, QTime(10, 0), 0, 1);
    drawn();
    mUiParam->mLinkageFlags = 1;
    EXPECT_FALSE(mData->hitOrder(61, 50) || mData->hitDeal(61, 50) || mData->hitTask(61, 50));
    EXPECT_EQ(ordersAt(61, 50) + dealsAt(61, 50) + tasksAt(61, 50), 0);
}

TEST_F(LinkageHit, NothingIsDrawnForAHiddenGraph) {
    show({1});
    mData->setTradeDate(tests::kDay);
    mData->addFormula(QStringLiteral("REALTIME"));
    mUiParam->mDataCount = 241;
    mData->adoptMaxMin({{{kStock, QStringLiteral("REALTIME")}, {11.0, 9.0}}}, true);
    mData->setChartRect(QRect(QPoint(0, 0), kSize));
    mData->setReplayMode(true); // every drawing of the chart tells its time
    mData->setDrawEnabled(true);
    ASSERT_GT(mEvents.count(eRegionBoundMoved), 0);
    mData->setDrawEnabled(false);
    putVolume(std::vector<double>(241, 100.0));
    addDeal("1", kBuy, 10.5, "10:00:00");
    mHost.mLog.clear();
    mEvents.mEvents.clear();
    mHost.mLinkage.sigLinkageChanged({"SH600000"});
    mData->removeFormula(QStringLiteral("REALTIMEVOL"), true);
    mData->removeOverlayData();
    mData->removeAllFormulas();
    EXPECT_EQ(mEvents.count(eRegionBoundMoved), 0);
    EXPECT_TRUE(mHost.mLog.of(QStringLiteral("CLinkageManager::getDealDetails")).isEmpty());
    EXPECT_FALSE(mData->hitDeal(61, 50));
    putPrice(std::vector<double>(241, 10.0)); // a price to place it by
    mData->adoptMaxMin({{{kStock, QStringLiteral("REALTIME")}, {11.0, 9.0}}}, true);
    EXPECT_FALSE(mData->hitDeal(61, 50));
    mData->setDrawEnabled(true);
    EXPECT_TRUE(mData->hitDeal(61, 50)) << "once it is shown";
}

} // namespace
