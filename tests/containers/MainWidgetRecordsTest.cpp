// The dialogs of the records behind a mark, opened from the chart.

#include "host/toolkit/CHpfDataTable.h"
#include "host/toolkit/COddEvenRowTable.h"
#include "linkage/CRealtimeDealDialog.h"
#include "linkage/CRealtimeOrderDialog.h"
#include "linkage/CRealtimeTaskTableDialog.h"
#include "tests/containers/MainWidgetFixture.h"
#include "tests/linkage/TradeRecords.h"

#include <QPointer>

using namespace TC;
using tests::makeDeal;
using tests::makeOrder;
using tests::makeTask;

namespace {

class MainWidgetRecords : public tests::MainWidgetFixture {
protected:
    /// A view of account A's trades: an order at 09:50, two deals at 10:10 and a task at 10:30 lie apart.
    void showTrades() {
        mHost.mLinkage.mEnabled = true;
        mHost.mLinkage.mOrders["SH600000"]["A"]["o1"] = makeOrder("o1", 10.05);
        mHost.mLinkage.mDeals["SH600000"]["A"]["d1"] = makeDeal("d1", 10.1);
        mHost.mLinkage.mDeals["SH600000"]["A"]["d2"] = makeDeal("d2", 10.1);
        mHost.mLinkage.mTasks["SH600000"]["A"]["1"] = makeTask(1);
        ASSERT_NO_FATAL_FAILURE(showView());
        fill(200);
        mUi->mLinkageFlags = 4;
        mUi->mLinkageShow[0] = mUi->mLinkageShow[1] = mUi->mLinkageShow[2] = true;
        mUi->mLinkageAccounts = {"A"};
        mUi->mLinkageStocks = {"SH600000"};
        mMain->updateLinkageDatas();
        settle();
        mHost.mLog.clear();
    }
    TC::CRealtimeGraphWidget *mainGraph() const { return graph(pane()); }
    /// A point of the chart that a test answers true for.
    QPoint find(const std::function<bool(const CRealtimeData &, int, int)> &isThere) const {
        const boost::shared_ptr<CRealtimeData> data = mainGraph()->getData();
        for (int x = 0; x < mainGraph()->width(); ++x) {
            for (int y = 0; y < mainGraph()->height(); ++y) {
                if (isThere(*data, x, y)) {
                    return {x, y};
                }
            }
        }
        return {-1, -1};
    }
    QPoint orderMark() const {
        return find([](const CRealtimeData &data, int x, int y) { return data.hitOrder(x, y); });
    }
    QPoint dealMark() const {
        return find([](const CRealtimeData &data, int x, int y) { return data.hitDeal(x, y); });
    }
    QPoint taskMark() const {
        return find([](const CRealtimeData &data, int x, int y) { return data.hitTask(x, y); });
    }
    void open(const QString &kind, const QPoint &at) {
        mMain->showLinkageDatas(mainGraph(), kind, at.x(), at.y());
    }

    CRealtimeOrderDialog *orders() const { return mMain->findChild<CRealtimeOrderDialog *>(); }
    CRealtimeDealDialog *deals() const { return mMain->findChild<CRealtimeDealDialog *>(); }
    CRealtimeTaskTableDialog *tasks() const { return mMain->findChild<CRealtimeTaskTableDialog *>(); }
    static int rowsOf(const QWidget *dialog) { return dialog->findChild<GZ::CStandardTable *>()->rowCount(); }
    /// "order", "deal", "task": the dialogs that are open.
    QStringList opened() const {
        QStringList names;
        for (const auto &[name, dialog] :
             {std::pair<const char *, QWidget *>{"order", orders()}, {"deal", deals()}, {"task", tasks()}}) {
            if (dialog && dialog->isVisible()) {
                names.append(QString::fromLatin1(name));
            }
        }
        return names;
    }
    QStringList cancelled() const { return mHost.mLog.of(QStringLiteral("CLinkageManager::cancelTask")); }
};

TEST_F(MainWidgetRecords, DoubleClickOnAMarkOpensItsDialogAndHidesTheOthers) {
    ASSERT_NO_FATAL_FAILURE(showTrades());
    EXPECT_EQ(orders(), nullptr); // until it is needed
    doubleClick(mainGraph(), orderMark());
    EXPECT_EQ(opened(), QStringList("order"));
    EXPECT_EQ(rowsOf(orders()), 1);
    doubleClick(mainGraph(), dealMark());
    EXPECT_EQ(opened(), QStringList("deal"));
    EXPECT_EQ(rowsOf(deals()), 2);
    doubleClick(mainGraph(), taskMark());
    EXPECT_EQ(opened(), QStringList("task"));
    EXPECT_EQ(rowsOf(tasks()), 1);
    doubleClick(mainGraph(), orderMark());
    EXPECT_EQ(opened(), QStringList("order"));
    EXPECT_EQ(mMain->findChildren<CRealtimeOrderDialog *>().size(), 1); // one of a kind
    EXPECT_TRUE(mKeeper->of(3164).empty()); // the host does not hear of it
    EXPECT_TRUE(cancelled().isEmpty());
}

TEST_F(MainWidgetRecords, DialogsAreNotModal) {
    ASSERT_NO_FATAL_FAILURE(showTrades());
    doubleClick(mainGraph(), orderMark());
    EXPECT_FALSE(orders()->isModal());
    EXPECT_EQ(orders()->parentWidget(), mMain.get());
    EXPECT_TRUE(orders()->isWindow());
}

TEST_F(MainWidgetRecords, WithoutAGraphOrARecordNothingOpensOrCloses) {
    ASSERT_NO_FATAL_FAILURE(showTrades());
    open("linkage_deals", dealMark());
    EXPECT_TRUE(event(3164, dealMark().x(), dealMark().y(), "linkage_orders", nullptr));
    open("linkage_orders", {0, 0});
    open("linkage_tasks", {0, 0});
    open("linkage_something", orderMark());
    EXPECT_EQ(opened(), QStringList("deal"));
    EXPECT_EQ(orders(), nullptr);
    EXPECT_EQ(tasks(), nullptr);
}

TEST_F(MainWidgetRecords, EventIsAnsweredAndOpens) {
    ASSERT_NO_FATAL_FAILURE(showTrades());
    EXPECT_TRUE(event(3164, orderMark().x(), orderMark().y(), "linkage_orders", mainGraph()));
    EXPECT_EQ(opened(), QStringList("order"));
}

TEST_F(MainWidgetRecords, TaskDialogFollowsTheView) {
    ASSERT_NO_FATAL_FAILURE(showTrades());
    doubleClick(mainGraph(), taskMark());
    mHost.mLinkage.mTasks["SH600000"]["A"]["2"] = makeTask(2);
    mHost.mLinkage.sigTaskChanged({"SH600000"});
    EXPECT_EQ(rowsOf(tasks()), 2);
}

TEST_F(MainWidgetRecords, TaskIsAskedForByTheDialogAloneWithoutQuickCancel) {
    ASSERT_NO_FATAL_FAILURE(showTrades());
    mHost.mConfig.mUserConfig.mQuickCancel = false;
    open("linkage_tasks", taskMark());
    EXPECT_EQ(opened(), QStringList("task"));
    EXPECT_TRUE(cancelled().isEmpty());
}

TEST_F(MainWidgetRecords, QuickCancelCancelsEveryTaskOfTheMarkAtOnceWithoutTheDialog) {
    mHost.mLinkage.mTasks["SH600000"]["A"]["2"] = makeTask(2, kvservice::eTaskFinished);
    const auto unbidden = mHost.mLinkage.mTasks["SH600000"]["A"]["3"] = makeTask(3);
    ASSERT_NO_FATAL_FAILURE(showTrades());
    unbidden->mCommand.reset();
    mHost.mConfig.mUserConfig.mQuickCancel = true;
    open("linkage_deals", dealMark());
    doubleClick(mainGraph(), taskMark());
    EXPECT_EQ(opened(), QStringList()); // the deals are hidden as well
    EXPECT_EQ(cancelled(),
              (QStringList{"CLinkageManager::cancelTask 1 71-1", "CLinkageManager::cancelTask 2 72-2"}));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(MainWidgetRecords, WithoutAUserTasksAreCancelledAtOnce) {
    ASSERT_NO_FATAL_FAILURE(showTrades());
    mHost.mConfig.mHasUserConfig = false;
    open("linkage_orders", orderMark());
    doubleClick(mainGraph(), taskMark());
    EXPECT_EQ(opened(), QStringList());
    EXPECT_EQ(cancelled(), QStringList("CLinkageManager::cancelTask 1 71-1"));
}

TEST_F(MainWidgetRecords, DialogsEndWithTheViewAndKeepTheirLayout) {
    ASSERT_NO_FATAL_FAILURE(showTrades());
    for (const QPoint &at : {orderMark(), dealMark(), taskMark()}) {
        doubleClick(mainGraph(), at);
    }
    const QPointer<QWidget> dialogs[] = {orders(), deals(), tasks()};
    orders()->findChild<GZ::CStandardTable *>()->hideColumn(1);
    mMain.reset();
    for (const QPointer<QWidget> &dialog : dialogs) {
        EXPECT_TRUE(dialog.isNull());
    }
    EXPECT_TRUE(mHost.mConfig.mUserConfig.mTables.value(542).contains(QStringLiteral("资金账号")));
    EXPECT_EQ(mHost.mLinkage.sigTaskChanged.num_slots(), 0u);
}

TEST_F(MainWidgetRecords, ChangesAfterTheViewHasGoneAreDropped) {
    ASSERT_NO_FATAL_FAILURE(showTrades());
    doubleClick(mainGraph(), taskMark());
    std::thread([this] { mHost.mLinkage.sigTaskChanged({"SH600000"}); }).join();
    mMain.reset();
    QCoreApplication::processEvents();
    EXPECT_TRUE(mHost.mLog.of(QStringLiteral("CLinkageManager::getTaskDetails")).size() <= 1);
}

TEST_F(MainWidgetRecords, DialogsOfTheInstrumentOfBeforeGoWithClear) {
    showTrades();
    const auto visible = [this] {
        int count = 0;
        count += mMain->findChild<CRealtimeOrderDialog *>() &&
                 mMain->findChild<CRealtimeOrderDialog *>()->isVisible();
        count +=
            mMain->findChild<CRealtimeDealDialog *>() && mMain->findChild<CRealtimeDealDialog *>()->isVisible();
        count += mMain->findChild<CRealtimeTaskTableDialog *>() &&
                 mMain->findChild<CRealtimeTaskTableDialog *>()->isVisible();
        return count;
    };
    mMain->clear(false); // none has been made
    EXPECT_EQ(visible(), 0);
    fill(200);
    mMain->updateLinkageDatas();
    settle();
    const QList<QPair<QString, QPoint>> marks = {
        {"linkage_orders", orderMark()}, {"linkage_deals", dealMark()}, {"linkage_tasks", taskMark()}};
    for (const QPair<QString, QPoint> &mark : marks) {
        mHost.mConfig.mUserConfig.mQuickCancel = false;
        mMain->showLinkageDatas(mainGraph(), mark.first, mark.second.x(), mark.second.y());
        EXPECT_EQ(visible(), 1) << mark.first.toStdString();
        mMain->clear(true);
        EXPECT_EQ(visible(), 0) << mark.first.toStdString();
        fill(200);
        mMain->updateLinkageDatas();
        settle();
    }
}

} // namespace
