// How the task dialog follows the trade service.

#include "tests/linkage/QuestionAnswer.h"
#include "tests/linkage/TaskDialogFixture.h"

#include <QScrollBar>
#include <QSignalSpy>

#include <thread>

using namespace TC;
using tests::makeTask;

namespace {

class TaskDialogUpdates : public tests::TaskDialogFixture {
protected:
    /// Shows the dialog in the selected-data view of account A, with task 1.
    void follow() {
        mUi->mLinkageFlags = 4;
        mUi->mLinkageAccounts = {"A"};
        serve("A", makeTask(1));
        mDialog->setUiParam(mUi);
        mDialog->setTaskData({makeTask(1)}, mDetail);
        ASSERT_NO_FATAL_FAILURE(show());
        mHost.mLog.clear();
    }
    QStringList asked() const { return mHost.mLog.of(QStringLiteral("CLinkageManager::getTaskDetails")); }
};

TEST_F(TaskDialogUpdates, ProgressFollowsTheService) {
    ASSERT_NO_FATAL_FAILURE(follow());
    EXPECT_EQ(text(0, 4), QStringLiteral("0/300"));
    mHost.mLinkage.mFinished[1] = 120;
    tell();
    EXPECT_EQ(text(0, 4), QStringLiteral("120/300"));
    serve("A", makeTask(1, kvservice::eTaskCancelled));
    tell({"SZ000001", "SH600000"});
    EXPECT_EQ(text(0, 6), QStringLiteral("status 5"));
    EXPECT_EQ(button(0), nullptr);
}

TEST_F(TaskDialogUpdates, ServiceIsAskedForTheInstrumentAndTheSelectedAccounts) {
    ASSERT_NO_FATAL_FAILURE(follow());
    mUi->mLinkageAccounts = {"A", "B"};
    mUi->mStockAccounts = {"C"};
    mUi->mLinkageFlags = 6; // the selected data come first
    tell();
    EXPECT_EQ(asked(), QStringList("CLinkageManager::getTaskDetails SH600000 A,B"));
}

TEST_F(TaskDialogUpdates, ChangesOfOtherInstrumentsLeaveTheTableAlone) {
    ASSERT_NO_FATAL_FAILURE(follow());
    serve("A", makeTask(2));
    tell({"SH600001", "SZ600000"});
    tell({});
    EXPECT_EQ(rows(), 1);
    EXPECT_TRUE(asked().isEmpty());
}

TEST_F(TaskDialogUpdates, ChangeInWhichEveryTaskHasGoneLeavesTheOldRows) {
    ASSERT_NO_FATAL_FAILURE(follow());
    mHost.mLinkage.mTasks.clear();
    tell();
    EXPECT_EQ(asked().size(), 1);
    EXPECT_EQ(rows(), 1);
}

TEST_F(TaskDialogUpdates, HiddenDialogKeepsItsRows) {
    ASSERT_NO_FATAL_FAILURE(follow());
    serve("A", makeTask(2));
    mDialog->hide();
    tell();
    EXPECT_EQ(rows(), 1);
    mDialog->show();
    tell();
    EXPECT_EQ(rows(), 2);
}

TEST_F(TaskDialogUpdates, WithoutAViewOrAnInstrumentNothingIsAsked) {
    ASSERT_NO_FATAL_FAILURE(follow());
    mDialog->setUiParam(nullptr);
    tell();
    mDialog->setUiParam(boost::make_shared<CRealtimeUiParam>(EIndexViewType::Ordinary));
    tell({"SH600000", ""});
    EXPECT_TRUE(asked().isEmpty());
    EXPECT_EQ(rows(), 1);
}

TEST_F(TaskDialogUpdates, StrategiesFilterTasksOfTheSelectedData) {
    ASSERT_NO_FATAL_FAILURE(follow());
    for (const auto &[id, strategy] : {std::pair<int, const char *>{1, "a"}, {2, "b"}, {3, ""}}) {
        const auto task = makeTask(id);
        task->mCommand->mStrategyName = strategy;
        task->mItems[0]->mAccount->mAccountId = std::to_string(id);
        serve("A", task);
    }
    mUi->mLinkageStrategys = {"b", ""};
    tell();
    EXPECT_EQ(column(0), (QStringList{"1", "2", "3"}));
    mUi->mLinkageShow[7] = true;
    tell();
    EXPECT_EQ(column(0), QStringList("2")); // one without a strategy is of none that could be chosen
}

TEST_F(TaskDialogUpdates, AccountViewFollowsTheAccountsOfTheMarketsKindWithoutAStrategyFilter) {
    ASSERT_NO_FATAL_FAILURE(follow());
    mUi->mLinkageFlags = 2;
    mUi->mLinkageShow[7] = true;
    mUi->mStockAccounts = {"A", "S"};
    mUi->mFutureAccounts = {"F"};
    serve("S", makeTask(2));
    tell();
    EXPECT_EQ(asked(), QStringList("CLinkageManager::getTaskDetails SH600000 A,S"));
    EXPECT_EQ(rows(), 2);
    mUi->mStockAccounts.clear();
    serve("A", makeTask(3));
    tell();
    EXPECT_EQ(asked().size(), 1); // there are no accounts
    EXPECT_EQ(rows(), 2);
}

TEST_F(TaskDialogUpdates, FuturesAreOfTheFuturesAccounts) {
    const auto future = mHost.mStocks.add("SF", "AU2406");
    ASSERT_NO_FATAL_FAILURE(follow());
    mUi->setStock(QStringLiteral("SFAU2406"), false);
    mUi->mLinkageFlags = 2;
    mUi->mStockAccounts = {"S"};
    mUi->mFutureAccounts = {"F"};
    mHost.mLog.clear();
    tell({getDetailKey(future)});
    EXPECT_EQ(asked(), QStringList("CLinkageManager::getTaskDetails SFAU2406 F"));
}

TEST_F(TaskDialogUpdates, WithoutAnyViewOfTradesNoAccountsAreAskedFor) {
    ASSERT_NO_FATAL_FAILURE(follow());
    mUi->mLinkageFlags = 1;
    tell();
    EXPECT_EQ(asked(), QStringList("CLinkageManager::getTaskDetails SH600000 "));
}

TEST_F(TaskDialogUpdates, TasksWithoutACommandAnItemOrAnAccountAreNotKept) {
    ASSERT_NO_FATAL_FAILURE(follow());
    mHost.mLinkage.mTasks.clear();
    auto &tasks = mHost.mLinkage.mTasks["SH600000"]["A"];
    tasks["1"] = nullptr;
    (tasks["2"] = makeTask(2))->mCommand.reset();
    (tasks["3"] = makeTask(3))->mItems.clear();
    (tasks["4"] = makeTask(4))->mItems[0]->mAccount.reset();
    QSignalSpy spy(mDialog.get(), &CRealtimeTaskTableDialog::sigUpdateTask);
    tell();
    EXPECT_EQ(spy.size(), 0);
    tasks["5"] = makeTask(5);
    tell();
    EXPECT_EQ(spy.size(), 1);
    EXPECT_EQ(rows(), 1);
}

TEST_F(TaskDialogUpdates, UpdatedTasksNeedAStartTime) {
    ASSERT_NO_FATAL_FAILURE(follow());
    const auto unstarted = makeTask(2);
    unstarted->mStartTime = 2147483647;
    mDialog->slotUpdateTask({unstarted, nullptr, tests::makeOrder("an order")});
    EXPECT_EQ(rows(), 0);
    mDialog->slotUpdateTask({unstarted, makeTask(3)});
    EXPECT_EQ(rows(), 1);
    mDialog->setTaskData({unstarted}, mDetail); // from a mark they need none
    EXPECT_EQ(rows(), 1);
}

TEST_F(TaskDialogUpdates, UpdateTakesTheInstrumentOfTheView) {
    ASSERT_NO_FATAL_FAILURE(follow());
    mUi->setStock(QStringLiteral("SH600001"), false);
    mDialog->slotUpdateTask({makeTask(1)});
    EXPECT_EQ(rows(), 0);
    mDialog->setUiParam(nullptr);
    mDialog->slotUpdateTask({makeTask(1)});
    EXPECT_EQ(rows(), 0);
}

TEST_F(TaskDialogUpdates, ChangesOnAnotherThreadReachTheTableOnThisOne) {
    ASSERT_NO_FATAL_FAILURE(follow());
    serve("A", makeTask(2));
    std::thread([this] {
        tell();
        tell({"SZ000001"});
        tell();
    }).join();
    EXPECT_EQ(rows(), 1);
    EXPECT_TRUE(QTest::qWaitFor([this] { return rows() == 2; }));
    EXPECT_EQ(asked().size(), 1); // what piled up is one change
}

TEST_F(TaskDialogUpdates, HandlerItselfMayRunOnAnotherThread) {
    ASSERT_NO_FATAL_FAILURE(follow());
    serve("A", makeTask(2));
    std::thread([this] { mDialog->onUpdateTask({"SH600000"}); }).join();
    EXPECT_EQ(asked().size(), 1);
    EXPECT_EQ(rows(), 1);
    QCoreApplication::processEvents();
    EXPECT_EQ(rows(), 2);
}

TEST_F(TaskDialogUpdates, DialogThatHasGoneHearsNothing) {
    ASSERT_NO_FATAL_FAILURE(follow());
    std::thread([this] { tell(); }).join();
    mDialog.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(mHost.mLinkage.sigTaskChanged.num_slots(), 0u);
    EXPECT_TRUE(asked().isEmpty());
}

TEST_F(TaskDialogUpdates, PlaceThatTheUserScrolledToStays) {
    ASSERT_NO_FATAL_FAILURE(follow());
    for (int id = 2; id < 60; ++id) {
        serve("A", makeTask(id));
    }
    tell();
    table()->verticalScrollBar()->setValue(20);
    ASSERT_EQ(table()->verticalScrollBar()->value(), 20);
    tell();
    EXPECT_EQ(table()->verticalScrollBar()->value(), 20);
}

TEST_F(TaskDialogUpdates, RowsStayInTheirPlacesAndNewOnesComeLast) {
    ASSERT_NO_FATAL_FAILURE(follow());
    mDialog->setTaskData({makeTask(3), makeTask(2)}, mDetail); // a mark may give them in any order
    const QPointer<CTaskTableCancelButton> second = button(1);
    for (const int id : {10, 2, 3, 1}) {
        const auto task = makeTask(id, id == 3 ? kvservice::eTaskCancelled : kvservice::eTaskRunning);
        task->mStartTime = tests::secondsAt(9, 40) - id;
        task->mItems[0]->mAccount->mAccountId = std::to_string(id);
        serve("A", task);
    }
    tell(); // one was cancelled, and the others that the service knows come along
    EXPECT_EQ(column(0), (QStringList{"3", "2", "10", "1"}));
    EXPECT_EQ(button(0), nullptr);
    EXPECT_EQ(button(1), second.data());
}

TEST_F(TaskDialogUpdates, QuestionNamesItsTask) {
    ASSERT_NO_FATAL_FAILURE(follow());
    mHost.mLinkage.mFinished[1] = 120;
    tell();
    const auto no = tests::whenAsked([](QMessageBox &box) {
        EXPECT_EQ(box.text(), QStringLiteral("您确定要撤销任务?"));
        EXPECT_EQ(box.informativeText(),
                  QStringLiteral("任务 1  80010001  浦发银行  10:30:00 开始\n"
                                 "以price 11operation 23300unit SH600000  status 4  已完成 120/300"));
        QTest::mouseClick(box.button(QMessageBox::No), Qt::LeftButton);
    });
    QTest::mouseClick(button(0), Qt::LeftButton);
    EXPECT_TRUE(*no);
}

TEST_F(TaskDialogUpdates, QuestionStaysOpenOverAChangeAndTheRowsFollowAfterwards) {
    ASSERT_NO_FATAL_FAILURE(follow());
    const auto yes = tests::whenAsked([this](QMessageBox &box) {
        serve("A", makeTask(2));
        tell();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(rows(), 1);
        QTest::mouseClick(box.button(QMessageBox::Yes), Qt::LeftButton);
    });
    QTest::mouseClick(button(0), Qt::LeftButton);
    EXPECT_TRUE(*yes);
    EXPECT_EQ(mHost.mLog.of(QStringLiteral("CLinkageManager::cancelTask")).size(), 1);
    EXPECT_EQ(rows(), 2);
    tell(); // and later ones at once again
    serve("A", makeTask(3));
    tell();
    EXPECT_EQ(rows(), 3);
}

TEST_F(TaskDialogUpdates, DialogThatGoesWhileItAsksCancelsNothing) {
    ASSERT_NO_FATAL_FAILURE(follow());
    const auto asked = tests::whenAsked([this](QMessageBox &) {
        serve("A", makeTask(2));
        tell();
        mDialog.reset();
    });
    button(0)->click();
    EXPECT_TRUE(*asked);
    EXPECT_TRUE(mHost.mLog.of(QStringLiteral("CLinkageManager::cancelTask")).isEmpty());
}

} // namespace
