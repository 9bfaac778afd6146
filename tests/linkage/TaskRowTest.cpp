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
    std::vector<TaskRow> rows(const boost::shared_ptr<kvservice::CTaskDetail> &task) {
        return taskRows({task}, *mDetail, mHost.mLinkage);
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

TEST_F(TaskRowTest, DescriptionTellsTheTaskFromEveryOther) {
    mHost.mLinkage.mFinished[5] = 100;
    EXPECT_EQ(rows(makeTask(5))[0].description(),
              QStringLiteral("任务 5  80010001  浦发银行  10:30:00 开始\n"
                             "以price 11operation 23300unit SH600000  status 4  已完成 100/300"));
    const auto unstarted = makeTask(6);
    unstarted->mStartTime = kUnsetTime;
    unstarted->mItems[0]->mQuantity = 0;
    EXPECT_EQ(rows(unstarted)[0].description(),
              QStringLiteral("任务 6  80010001  浦发银行\n"
                             "以price 11operation 230unit SH600000  status 4"));
}

TEST_F(TaskRowTest, RowsOfAShownTaskStayAndOthersComeAfterThem) {
    const auto row = [](int taskId, int item = 0) {
        TaskRow made;
        made.taskId = taskId;
        made.item = item;
        return made;
    };
    const auto ordered = inPlaceOf({row(7), row(3), row(3, 1), row(5)},
                                   {row(1), row(3), row(3, 1), row(3, 2), row(5), row(7), row(2)});
    std::vector<std::pair<int, int>> found;
    for (const TaskRow &each : ordered) {
        found.emplace_back(each.taskId, each.item);
    }
    EXPECT_EQ(found,
              (std::vector<std::pair<int, int>>{{7, 0}, {3, 0}, {3, 1}, {3, 2}, {5, 0}, {1, 0}, {2, 0}}));
}

TEST_F(TaskRowTest, NewestOfTheFollowedTasksIsTheLast) {
    auto &tasks = mHost.mLinkage.mTasks["SH600000"];
    for (const int id : {9, 10, 11, 12}) { // the service's order is that of texts
        tasks[id == 12 ? "A" : "B"][std::to_string(id)] = makeTask(id);
    }
    tasks["B"]["11"]->mStartTime -= 60;
    mUi->mLinkageFlags = 4;
    mUi->mLinkageAccounts = {"A", "B"};
    std::vector<int> ids;
    for (const auto &task : followedTasks(*mUi, mDetail)) {
        ids.push_back(boost::dynamic_pointer_cast<kvservice::CTaskDetail>(task)->mTaskId);
    }
    EXPECT_EQ(ids, (std::vector<int>{11, 9, 10, 12}));
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
