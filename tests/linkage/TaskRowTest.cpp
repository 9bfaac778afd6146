// What is shown of tasks, and which of them a view follows.

#include "linkage/TaskRow.h"

#include "linkage/TaskScope.h"
#include "tests/chartview/ChartFixture.h"
#include "tests/linkage/TradeRecords.h"

using namespace TC;
using tests::makeItem;
using tests::makeTask;

namespace {

class TaskRowTest : public tests::ChartFixture {
protected:
    TaskRowTest() { mDetail->mName = "浦发银行"; }
    std::vector<TaskRow> rows(const boost::shared_ptr<kvservice::CTaskDetail> &task) const {
        return taskRows({task}, *mDetail);
    }
};

TEST_F(TaskRowTest, ItemIsToldWithItsTaskAndItsCommand) {
    mHost.mLinkage.mFinished[5] = 100;
    const auto found = rows(makeTask(5));
    ASSERT_EQ(found.size(), 1u);
    const TaskRow &row = found[0];
    EXPECT_EQ(row.taskId, 5);
    EXPECT_EQ(row.commandId, 75);
    EXPECT_EQ(row.account, QStringLiteral("80010001"));
    EXPECT_EQ(row.instrument, QStringLiteral("浦发银行"));
    EXPECT_EQ(row.start, QStringLiteral("10:30:00"));
    EXPECT_EQ(row.end, QStringLiteral("11:15:30"));
    EXPECT_EQ(row.total, 300);
    EXPECT_EQ(row.finished, 100);
    EXPECT_EQ(row.priceType, QStringLiteral("price 11"));
    EXPECT_EQ(row.order, QStringLiteral("operation 23300unit SH600000"));
    EXPECT_TRUE(row.buys);
    EXPECT_EQ(row.status, QStringLiteral("status 4"));
    EXPECT_TRUE(row.cancellable);
    EXPECT_TRUE(row.cancelEnabled);
}

TEST_F(TaskRowTest, ItemsOfTheInstrumentAreNumbered) {
    const auto task = makeTask(2);
    task->mItems = {makeItem("600000", 100), makeItem("600001"), nullptr, makeItem("600000", 200)};
    const auto found = rows(task);
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0].item, 0);
    EXPECT_EQ(found[1].item, 1);
    EXPECT_EQ(found[1].total, 200);
}

TEST_F(TaskRowTest, RowsDifferWhenAnythingShownDoes) {
    const TaskRow row = rows(makeTask(1))[0];
    EXPECT_EQ(row, rows(makeTask(1))[0]);
    mHost.mLinkage.mFinished[1] = 7;
    EXPECT_NE(row, rows(makeTask(1))[0]);
    mHost.mLinkage.mFinished.clear();
    const auto disabled = makeTask(1);
    disabled->mCommand->mCancelDisabled = 1;
    EXPECT_NE(row, rows(disabled)[0]);
    EXPECT_NE(row, rows(makeTask(1, kvservice::eTaskWaiting))[0]);
}

TEST_F(TaskRowTest, ViewWithoutAccountsOfItsOwnFollowsNoTask) {
    mHost.mLinkage.mTasks["SH600000"]["A"]["1"] = makeTask(1);
    mUi->mLinkageFlags = 2;
    EXPECT_TRUE(followedTasks(*mUi, mDetail).empty());
    mUi->mStockAccounts = {"A"};
    EXPECT_EQ(followedTasks(*mUi, mDetail).size(), 1u);
    mUi->mLinkageFlags = 4;
    mUi->mLinkageShow[7] = true;
    mUi->mLinkageStrategys = {"grid"};
    EXPECT_TRUE(followedTasks(*mUi, mDetail).empty()) << "of another strategy";
    mUi->mLinkageShow[7] = false;
    EXPECT_TRUE(followedTasks(*mUi, mDetail).empty()) << "no account is chosen";
    mUi->mLinkageAccounts = {"A"};
    EXPECT_EQ(followedTasks(*mUi, mDetail).size(), 1u);
}

} // namespace
