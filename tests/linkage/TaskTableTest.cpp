// A refill of the table of tasks: what goes on keeps its widgets, its selection and its place.

#include "linkage/TaskTable.h"

#include "tests/chartview/ChartFixture.h"

#include <QItemSelectionModel>
#include <QPointer>
#include <QScrollBar>
#include <QtTest>

using TC::TaskRow;
using TC::TaskTable;

namespace {

class TaskTableTest : public tests::ChartFixture {
protected:
    static TaskRow row(int taskId, int finished = 0) {
        TaskRow made;
        made.taskId = taskId;
        made.commandId = taskId + 70;
        made.account = QString::number(taskId);
        made.total = 300;
        made.finished = finished;
        made.status = QStringLiteral("running");
        made.cancellable = true;
        made.cancelEnabled = true;
        return made;
    }
    static std::vector<TaskRow> rows(int first, int last) {
        std::vector<TaskRow> made;
        for (int id = first; id <= last; ++id) {
            made.push_back(row(id));
        }
        return made;
    }
    void show() {
        mTable.resize(828, 200);
        mTable.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&mTable));
    }
    QStringList column(int number) const {
        QStringList texts;
        for (int row = 0; row < mTable.rowCount(); ++row) {
            texts.append(mTable.textAt(row, number));
        }
        return texts;
    }
    TC::CTaskTableCancelButton *button(int row) const {
        const QWidget *cell = mTable.widgetAt(row, TaskTable::eStatus);
        return cell ? cell->findChild<TC::CTaskTableCancelButton *>() : nullptr;
    }
    QStringList selected() const {
        QStringList texts;
        for (const QModelIndex &index : mTable.selectionModel()->selectedRows()) {
            texts.append(mTable.textAt(index.row(), 0));
        }
        return texts;
    }
    TaskTable mTable;
};

TEST_F(TaskTableTest, RowsThatGoOnKeepTheirWidgets) {
    mTable.fill(rows(1, 3));
    const QPointer<QWidget> progress = mTable.widgetAt(1, TaskTable::eProgress);
    const QPointer<QWidget> details = mTable.widgetAt(1, TaskTable::eDetails);
    const QPointer<TC::CTaskTableCancelButton> cancel = button(1);
    mTable.fill({row(5), row(2, 100), row(4)});
    EXPECT_EQ(column(TaskTable::eAccount), (QStringList{"5", "2", "4"}));
    EXPECT_EQ(column(TaskTable::eProgress), (QStringList{"0/300", "100/300", "0/300"}));
    EXPECT_EQ(mTable.widgetAt(1, TaskTable::eProgress), progress);
    EXPECT_EQ(mTable.widgetAt(1, TaskTable::eDetails), details);
    EXPECT_EQ(button(1), cancel);
    mTable.fill({row(4), row(5), row(6), row(2)});
    EXPECT_EQ(column(TaskTable::eAccount), (QStringList{"4", "5", "6", "2"}));
    EXPECT_EQ(button(3), cancel);
    for (int row = 0; row < 4; ++row) {
        EXPECT_EQ(button(row)->id(), row);
    }
}

TEST_F(TaskTableTest, WidgetsOfTasksThatHaveGoneEnd) {
    mTable.fill(rows(1, 3));
    const QPointer<TC::CTaskTableCancelButton> cancel = button(1);
    mTable.fill({row(1), row(3)});
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(cancel.isNull());
    mTable.fill({});
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(mTable.rowCount(), 0);
    EXPECT_TRUE(mTable.findChildren<TC::CTaskTableCancelButton *>().isEmpty());
}

TEST_F(TaskTableTest, SelectionGoesWithItsTasks) {
    mTable.fill(rows(1, 6));
    mTable.selectRow(2);
    mTable.fill({row(7), row(1), row(8), row(3), row(2), row(5)});
    EXPECT_EQ(selected(), QStringList("3"));
    mTable.fill({row(7)});
    EXPECT_TRUE(selected().isEmpty());
}

TEST_F(TaskTableTest, RowAtTheTopStaysThereWhenOthersComeAboveIt) {
    mTable.fill(rows(10, 60));
    ASSERT_NO_FATAL_FAILURE(show());
    mTable.verticalScrollBar()->setValue(20);
    const auto top = [this] { return mTable.textAt(mTable.rowAt(0), 0); };
    ASSERT_EQ(top(), QStringLiteral("30"));
    mTable.fill(rows(1, 60));
    EXPECT_EQ(top(), QStringLiteral("30"));
    mTable.fill(rows(25, 60));
    EXPECT_EQ(top(), QStringLiteral("30"));
    mTable.verticalScrollBar()->setValue(0);
    mTable.fill(rows(1, 60));
    EXPECT_EQ(top(), QStringLiteral("1")) << "who looks at the first rows sees those that come";
}

TEST_F(TaskTableTest, ButtonUnderTheMouseStaysUnderItAndIsPressedThrough) {
    mTable.fill(rows(1, 3));
    ASSERT_NO_FATAL_FAILURE(show());
    QTest::mousePress(button(0), Qt::LeftButton);
    mTable.fill({row(1, 50), row(2), row(3)});
    EXPECT_TRUE(button(0)->isDown());
    QTest::mouseRelease(button(0), Qt::LeftButton, Qt::NoModifier, QPoint(-50, 0));
}

TEST_F(TaskTableTest, StatusGainsAndLosesItsButton) {
    mTable.fill({row(1)});
    TaskRow done = row(1, 300);
    done.cancellable = false;
    done.status = QStringLiteral("done");
    mTable.fill({done});
    EXPECT_EQ(button(0), nullptr);
    EXPECT_EQ(mTable.textAt(0, TaskTable::eStatus), QStringLiteral("done"));
    TaskRow disabled = row(1);
    disabled.cancelEnabled = false;
    mTable.fill({disabled});
    ASSERT_NE(button(0), nullptr);
    EXPECT_FALSE(button(0)->isEnabled());
    EXPECT_EQ(mTable.textAt(0, TaskTable::eStatus), QStringLiteral("running"));
}

TEST_F(TaskTableTest, EqualRowsAreTwo) {
    mTable.fill({row(1), row(1)});
    TC::CTaskTableCancelButton *second = button(1);
    mTable.fill({row(1), row(1), row(1)});
    EXPECT_EQ(mTable.rowCount(), 3);
    EXPECT_EQ(button(1), second);
}

/// Counts what the application delivers.
class EventCounter : public QObject {
public:
    EventCounter() { qApp->installEventFilter(this); }
    bool eventFilter(QObject *, QEvent *) override {
        ++mCount;
        return false;
    }
    int mCount = 0;
};

TEST_F(TaskTableTest, NewRowsCostNoMoreWidgetsOrEventsThanAreSeen) {
    QList<int> widgets;
    QList<int> events;
    for (const int count : {500, 1000, 2000}) {
        TaskTable table;
        table.resize(828, 200);
        table.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&table));
        EventCounter counter;
        table.fill(rows(1, count));
        QCoreApplication::processEvents();
        EXPECT_EQ(table.rowCount(), count);
        widgets.append(table.findChildren<QWidget *>().size());
        events.append(counter.mCount);
    }
    EXPECT_EQ(widgets[1], widgets[0]);
    EXPECT_EQ(widgets[2], widgets[0]);
    EXPECT_LE(events[2], events[0] + 200) << "four times the rows";
}

TEST_F(TaskTableTest, RefillOfWhatIsThereMakesNothing) {
    mTable.fill(rows(1, 1000));
    ASSERT_NO_FATAL_FAILURE(show());
    QCoreApplication::processEvents();
    const auto before = mTable.findChildren<QWidget *>();
    EventCounter counter;
    mTable.fill(rows(1, 1000));
    QCoreApplication::processEvents();
    EXPECT_EQ(mTable.findChildren<QWidget *>(), before);
    EXPECT_LT(counter.mCount, 20);
}

TEST_F(TaskTableTest, EveryRowInViewHasItsWidgetsHoweverFarItIsScrolled) {
    mTable.fill(rows(1, 1000));
    ASSERT_NO_FATAL_FAILURE(show());
    for (const int at : {0, 500, 10, 990, 300}) {
        mTable.verticalScrollBar()->setValue(at);
        const int last = mTable.rowAt(mTable.viewport()->height() - 1);
        for (int row = mTable.rowAt(0); row <= (last < 0 ? 999 : last); ++row) {
            ASSERT_NE(mTable.madeWidgetAt(row, TaskTable::eStatus), nullptr) << row;
            EXPECT_EQ(button(row)->id(), row);
            EXPECT_EQ(mTable.textAt(row, TaskTable::eProgress), QStringLiteral("0/300"));
        }
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_LT(mTable.findChildren<TC::CTaskTableCancelButton *>().size(), 300);
    EXPECT_NE(button(700), nullptr) << "one that is asked for is made";
}

} // namespace
