// What the task dialog shows of a task.

#include "tests/linkage/QuestionAnswer.h"
#include "tests/linkage/TaskDialogFixture.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QVBoxLayout>

using namespace TC;
using tests::makeItem;
using tests::makeTask;
using tests::secondsAt;

namespace {

using TaskDialogRows = tests::TaskDialogFixture;

QStringList parts(const QWidget *cell) {
    QStringList texts;
    for (const auto *part : cell->findChildren<GZ::CSimpleTextWidget *>()) {
        texts.append(part->text());
    }
    return texts;
}

TEST_F(TaskDialogRows, DialogHasItsTitleWidthAndTable) {
    EXPECT_EQ(mDialog->windowTitle(), QStringLiteral("任务详情"));
    EXPECT_EQ(mDialog->minimumWidth(), 828);
    EXPECT_FALSE(mDialog->isModal());
    EXPECT_EQ(mDialog->innerWidget()->objectName(), QStringLiteral("containner_RealTimeTaskTableDialog"));
    EXPECT_NE(qobject_cast<QVBoxLayout *>(mDialog->innerWidget()->layout()), nullptr);
    EXPECT_EQ(table()->getID(), 10000);
    EXPECT_EQ(table()->getFlags() & 0x800008, 0x800000);
    QStringList headings;
    QList<int> widths;
    for (int column = 0; column < table()->columnCount(); ++column) {
        headings.append(table()->horizontalHeaderItem(column)->text());
        widths.append(table()->columnWidth(column));
    }
    EXPECT_EQ(headings, (QStringList{"资金账号", "证券名称", "开始时间", "结束时间", "进度", "详情", "状态"}));
    widths.removeLast(); // takes what is left
    EXPECT_EQ(widths, (QList<int>{70, 80, 61, 61, 120, 249}));
}

TEST_F(TaskDialogRows, TaskIsToldCellByCell) {
    mHost.mLinkage.mFinished[5] = 100;
    mDialog->setTaskData({makeTask(5)}, mDetail);
    ASSERT_EQ(rows(), 1);
    EXPECT_EQ(text(0, 0), QStringLiteral("80010001"));
    EXPECT_EQ(text(0, 1), QStringLiteral("浦发银行"));
    EXPECT_EQ(text(0, 2), QStringLiteral("10:30:00"));
    EXPECT_EQ(text(0, 3), QStringLiteral("11:15:30"));
    EXPECT_EQ(text(0, 4), QStringLiteral("100/300"));
    EXPECT_NE(qobject_cast<CRealtimeProgressWidget *>(table()->widgetAt(0, 4)), nullptr);
    const QWidget *details = table()->widgetAt(0, 5);
    EXPECT_EQ(details->objectName(), QStringLiteral("table_transaction_details"));
    EXPECT_NE(qobject_cast<QHBoxLayout *>(details->layout()), nullptr);
    EXPECT_EQ(parts(details), (QStringList{"以", "price 11", "operation 23300unit SH600000"}));
    const QWidget *status = table()->widgetAt(0, 6);
    EXPECT_EQ(status->objectName(), QStringLiteral("realtime_task__details"));
    EXPECT_EQ(parts(status), QStringList("status 4"));
    EXPECT_TRUE(button(0)->isEnabled());
}

TEST_F(TaskDialogRows, ItemsOfOtherInstrumentsHaveNoRow) {
    const auto elsewhere = makeTask(1);
    elsewhere->mItems = {makeItem("600001"), makeItem("600002")};
    const auto twice = makeTask(2);
    twice->mItems = {makeItem("600000", 100), makeItem("600001"), makeItem("600000", 200)};
    mDialog->setTaskData({elsewhere, twice}, mDetail);
    EXPECT_EQ(column(4), (QStringList{"0/100", "0/200"}));
}

TEST_F(TaskDialogRows, TasksWithoutACommandOrAnItemAreLeftOut) {
    const auto unbidden = makeTask(1);
    unbidden->mCommand.reset();
    const auto empty = makeTask(2);
    empty->mItems.clear();
    const auto broken = makeTask(3);
    broken->mItems = {nullptr};
    const auto nobodys = makeTask(4);
    nobodys->mItems[0]->mAccount.reset();
    mDialog->setTaskData({nullptr, unbidden, empty, broken, nobodys}, mDetail);
    EXPECT_EQ(column(0), QStringList(""));
}

TEST_F(TaskDialogRows, TimesThatAreNotSetStayEmptyAndACancelTimeIsTheEnd) {
    const auto unset = makeTask(1);
    unset->mStartTime = unset->mEndTime = 2147483647;
    const auto cancelled = makeTask(2);
    cancelled->mEndTime = 2147483647;
    cancelled->mCancelTime = secondsAt(10, 41, 7);
    const auto both = makeTask(3);
    both->mCancelTime = secondsAt(10, 41, 7);
    mDialog->setTaskData({unset, cancelled, both}, mDetail);
    EXPECT_EQ(column(2), (QStringList{"", "10:30:00", "10:30:00"}));
    EXPECT_EQ(column(3), (QStringList{"", "10:41:07", "11:15:30"}));
}

TEST_F(TaskDialogRows, AmountsAreInYuanAndEverythingElseInTheUnitOfTheInstrument) {
    const auto task = makeTask(1);
    for (const auto operation : {kvservice::EOperationType::BuyByAmount, kvservice::EOperationType::Sell,
                                 kvservice::EOperationType(26)}) {
        task->mItems.push_back(makeItem());
        task->mItems.back()->mOperation = operation;
    }
    task->mItems.erase(task->mItems.begin());
    mDialog->setTaskData({task}, mDetail);
    const QStringList wanted{"operation 25300元", "operation 24300unit SH600000",
                             "operation 26300unit SH600000"};
    const QStringList colors{"ic_clr_index_default_rise", "ic_clr_index_default_fall",
                             "ic_clr_index_default_fall"};
    for (int row = 0; row < 3; ++row) {
        const auto cells = table()->widgetAt(row, 5)->findChildren<GZ::CSimpleTextWidget *>();
        ASSERT_EQ(cells.size(), 3);
        EXPECT_EQ(cells[1]->colorKey(), QStringLiteral("clr_task_progress_background"));
        EXPECT_EQ(cells[2]->text(), wanted[row]);
        EXPECT_EQ(cells[2]->colorKey(), colors[row]);
    }
}

TEST_F(TaskDialogRows, ProgressTakesTheLow32BitsOfTheQuantity) {
    const auto task = makeTask(1);
    task->mItems = {makeItem("600000", (1LL << 32) + 300)};
    mDialog->setTaskData({task}, mDetail);
    EXPECT_EQ(text(0, 4), QStringLiteral("0/300"));
    EXPECT_EQ(parts(table()->widgetAt(0, 5))[2], QStringLiteral("operation 234294967596unit SH600000"));
}

TEST_F(TaskDialogRows, OnlyStatusesThreeAndFourOfferTheButton) {
    QList<boost::shared_ptr<kvservice::CTaskDetail>> tasks;
    for (int status = 0; status < 12; ++status) {
        tasks.append(makeTask(status, status));
    }
    mDialog->setTaskData(tasks, mDetail);
    for (int row = 0; row < 12; ++row) {
        EXPECT_EQ(button(row) != nullptr, row == 3 || row == 4) << row;
        EXPECT_EQ(text(row, 6), QStringLiteral("status %1").arg(row));
        if (!button(row)) {
            EXPECT_EQ(table()->item(row, 6)->textAlignment(), 132);
        }
    }
}

TEST_F(TaskDialogRows, ButtonIsDisabledWhenTheCommandSaysSo) {
    const auto waiting = makeTask(1, 3);
    waiting->mCommand->mCancelDisabled = 1;
    const auto other = makeTask(2, 3);
    other->mCommand->mCancelDisabled = 2;
    mDialog->setTaskData({waiting, other}, mDetail);
    EXPECT_FALSE(button(0)->isEnabled());
    EXPECT_TRUE(button(1)->isEnabled());
}

TEST_F(TaskDialogRows, WithoutAnInstrumentTheTableIsEmptied) {
    mDialog->setTaskData({makeTask(1)}, mDetail);
    EXPECT_EQ(rows(), 1);
    mDialog->setTaskData({makeTask(1)}, nullptr);
    EXPECT_EQ(rows(), 0);
}

TEST_F(TaskDialogRows, CancelButtonOfARowCancelsItsTask) {
    mDialog->setTaskData({makeTask(1), makeTask(2)}, mDetail);
    ASSERT_NO_FATAL_FAILURE(show());
    mHost.mLog.clear();
    const auto yes = tests::answerWith(QMessageBox::Yes);
    QTest::mouseClick(button(1), Qt::LeftButton);
    EXPECT_TRUE(*yes);
    EXPECT_EQ(mHost.mLog.all(), QStringList("CLinkageManager::cancelTask 2 72-2"));
    EXPECT_EQ(rows(), 2); // until the service tells the change
}

TEST_F(TaskDialogRows, ButtonInRow101DoesNotCloseTheDialog) {
    QList<boost::shared_ptr<kvservice::CTaskDetail>> tasks;
    for (int id = 0; id <= 101; ++id) {
        tasks.append(makeTask(id));
    }
    mDialog->setTaskData(tasks, mDetail);
    ASSERT_NO_FATAL_FAILURE(show());
    EXPECT_EQ(button(101)->id(), 101);
    const auto no = tests::answerWith(QMessageBox::No);
    button(101)->click();
    EXPECT_TRUE(*no);
    EXPECT_TRUE(mDialog->isVisible());
}

TEST_F(TaskDialogRows, EnterAsksNothing) {
    mDialog->setTaskData({makeTask(1)}, mDetail);
    ASSERT_NO_FATAL_FAILURE(show());
    QTest::keyClick(mDialog.get(), Qt::Key_Return);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_TRUE(mDialog->isVisible());
}

TEST_F(TaskDialogRows, CellsLieInTheMiddleAndTheProgressFillsItsCell) {
    mDialog->setTaskData({makeTask(1)}, mDetail);
    ASSERT_NO_FATAL_FAILURE(show());
    QCoreApplication::processEvents();
    const auto cell = [this](int column) { return table()->visualRect(table()->model()->index(0, column)); };
    const auto place = [this](const QWidget *widget) {
        return QRect(widget->mapTo(table()->viewport(), QPoint(0, 0)), widget->size());
    };
    EXPECT_EQ(place(table()->widgetAt(0, 4)), cell(4));
    EXPECT_GE(cell(4).height(), 30); // the text of a usual height and the bar beneath it
    const QPoint apart = place(table()->widgetAt(0, 5)).center() - cell(5).center();
    EXPECT_LE(apart.manhattanLength(), 2);
    EXPECT_EQ(table()->item(0, 0)->textAlignment(), 132);
}

} // namespace
