// The statistics of a stretch, from the chart to the dialog and back.

#include "tests/containers/MainWidgetFixture.h"

#include "host/toolkit/CCheckBox.h"
#include "statistics/CRealtimeStatisticDialog.h"

#include <QTimeEdit>

namespace tests {

struct PeekCycleCount {
    using type = int TC::CRealtimeStatisticDialog::*;
    friend type peek(PeekCycleCount);
};
template struct PeekMember<PeekCycleCount, &TC::CRealtimeStatisticDialog::mCycleCount>;
struct PeekValues {
    using type = QStringList TC::CRealtimeStatisticDialog::*;
    friend type peek(PeekValues);
};
template struct PeekMember<PeekValues, &TC::CRealtimeStatisticDialog::mValues>;

} // namespace tests

using namespace TC;

namespace {

class MainWidgetRegion : public tests::MainWidgetFixture {
protected:
    static qint64 at(int hour, int minute) {
        return QDateTime(QDate(2024, 3, 15), QTime(hour, minute)).toSecsSinceEpoch();
    }
    /// Text of a stretch that ends at an index.
    static QString textOf(int end, qint64 from = at(9, 40), qint64 to = at(9, 50)) {
        return QStringLiteral("%1,%2,%3").arg(end).arg(from).arg(to);
    }
    void select(int start, int end) { mMain->statisticSelectRegion(start, textOf(end)); }
    CRealtimeStatisticDialog *dialog() const { return mMain->findChild<CRealtimeStatisticDialog *>(); }
    bool isOpen() const { return dialog() && dialog()->isVisible(); }
    int cycles() const { return dialog()->*peek(tests::PeekCycleCount()); }
    QStringList values() const { return dialog()->*peek(tests::PeekValues()); }
    QTime shownTime(int edit) const { return dialog()->findChildren<QTimeEdit *>().value(edit)->time(); }
    const RegionLines &lines() const { return graph(pane())->*peek(tests::Peek_mRegionLines()); }
    bool hasLines(const CRealtimeWidget *of, int daysBack = 0) const {
        return (graph(of, daysBack)->*peek(tests::Peek_mRegionLines())).isVisible();
    }
    bool hasAnyLines() const {
        for (const CRealtimeWidget *of : QVector<CRealtimeWidget *>{pane()} + mMain->getSubIndexWidgets()) {
            for (int day = 0; day < of->getGrapWidgetCount(); ++day) {
                if (hasLines(of, day)) {
                    return true;
                }
            }
        }
        return false;
    }
    /// A stretch marked in the graphs of two panes, with its statistics open.
    void mark() {
        graph(sub(0))->slotStatistic(true, 10, textOf(20));
        graph(pane())->slotStatistic(true, 10, textOf(20));
        ASSERT_TRUE(isOpen());
        ASSERT_TRUE(hasLines(pane()));
        ASSERT_TRUE(hasLines(sub(0)));
        takeEvents();
    }
    void expectOver(const char *after) {
        EXPECT_FALSE(isOpen()) << after;
        EXPECT_FALSE(hasAnyLines()) << after;
    }
};

TEST_F(MainWidgetRegion, StretchOpensTheDialogWithItsFigures) {
    showView();
    fill();
    EXPECT_EQ(dialog(), nullptr) << "it is made when it is needed";
    select(10, 20);
    ASSERT_TRUE(isOpen());
    EXPECT_EQ(cycles(), 11);
    ASSERT_EQ(values().size(), 11);
    EXPECT_EQ(values()[0], "10.10") << "10.0 and a cent a minute";
    EXPECT_EQ(values()[3], "10.20");
    EXPECT_EQ(shownTime(0), QTime(9, 40));
    EXPECT_EQ(shownTime(1), QTime(9, 50));
    const QString name = QString::fromStdString(mUi->getStockDetail()->mName);
    EXPECT_EQ(dialog()->windowTitle(), name + QString::fromUtf8(" 时段统计"));
    const CRealtimeStatisticDialog *first = dialog();
    select(0, 3);
    EXPECT_EQ(dialog(), first);
    EXPECT_EQ(mMain->findChildren<CRealtimeStatisticDialog *>().size(), 1);
    EXPECT_EQ(cycles(), 4);
}

TEST_F(MainWidgetRegion, EndBeyondTheDataIsCutAndANegativeStartIsTheFirstPoint) {
    showView();
    fill(16);
    select(10, 20);
    EXPECT_EQ(cycles(), 6);
    select(-3, 5);
    EXPECT_EQ(cycles(), 6);
    EXPECT_EQ(values()[0], "10.00");
}

TEST_F(MainWidgetRegion, EmptyStretchLeavesAnOpenDialogAsItWas) {
    showView(1);
    fill();
    mark();
    select(21, 20);
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(cycles(), 11);
    EXPECT_FALSE(hasAnyLines());
    select(0, -1);
    EXPECT_EQ(cycles(), 11);
    mMain->statisticSelectRegion(1, "nonsense");
    EXPECT_EQ(cycles(), 11);
}

TEST_F(MainWidgetRegion, MomentIsAStretchOfOnePoint) {
    showView();
    fill();
    QDateTime moment(QDate(2024, 3, 15), QTime(9, 45));
    mMain->statisticSelectRegion(&moment);
    ASSERT_TRUE(isOpen());
    EXPECT_EQ(cycles(), 1);
    EXPECT_EQ(values()[0], "10.15");
    EXPECT_EQ(shownTime(0), QTime(9, 45));
}

TEST_F(MainWidgetRegion, OpenStatisticsFollowNewDataAndHiddenOnesDoNot) {
    showView();
    fill(16);
    EXPECT_TRUE(event(3151)) << "there are none yet";
    EXPECT_EQ(dialog(), nullptr);
    select(10, 20);
    ASSERT_EQ(cycles(), 6);
    fill(121);
    EXPECT_TRUE(event(3151));
    EXPECT_EQ(cycles(), 11);
    EXPECT_EQ(values()[3], "10.20");
    mMain->hideStatisticDialog();
    fill(12);
    EXPECT_TRUE(event(3151));
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(cycles(), 11);
}

TEST_F(MainWidgetRegion, EditsOfTheDialogMoveTheLines) {
    showView(1);
    fill();
    mark();
    dialog()->findChildren<QTimeEdit *>().value(0)->setTime(QTime(9, 45));
    EXPECT_EQ(cycles(), 6) << "09:45 to 09:50";
    EXPECT_EQ(lines().span().left(DayAxis::of(*mUi)), mUi->getXAxisByIndex(15));
    dialog()->findChildren<QTimeEdit *>().value(1)->setTime(QTime(10, 0));
    EXPECT_EQ(cycles(), 16);
    EXPECT_EQ(lines().span().right(DayAxis::of(*mUi)), mUi->getXAxisByIndex(30));
}

// What ends a stretch

TEST_F(MainWidgetRegion, ClosingTheDialogTakesTheLinesOffAllGraphs) {
    showView(1);
    fill();
    mark();
    dialog()->close();
    settle();
    expectOver("closed");
    mark();
    QTest::keyClick(dialog(), Qt::Key_Escape);
    expectOver("Escape in the dialog");
    mark();
    mMain->hideStatisticDialog();
    expectOver("hidden by the host");
    mark();
    expectScreenComplete("marked");
    dialog()->close();
    expectScreenComplete("closed");
}

TEST_F(MainWidgetRegion, EscapeOnTheChartEndsIt) {
    showView(1);
    fill();
    key(Qt::Key_Escape); // nothing to end
    mark();
    key(Qt::Key_Escape);
    expectOver("Escape on the chart");
    mark();
    select(5, 4); // the dialog stays, and the lines have gone
    graph(sub(0))->slotStatistic(true, 5, textOf(4));
    key(Qt::Key_Escape);
    expectOver("an empty stretch");
}

TEST_F(MainWidgetRegion, AnotherInstrumentOrOtherDaysEndIt) {
    mHost.mStocks.add("SH", "600001", 20.0);
    showView(1);
    fill();
    mark();
    mMain->setStock("SH600000", false);
    EXPECT_TRUE(isOpen()) << "the same instrument";
    EXPECT_TRUE(hasLines(pane()));
    mMain->setStock("SH600001", false);
    expectOver("another instrument");
    mark();
    mMain->scaleView(true);
    EXPECT_TRUE(isOpen()) << "one day is the least";
    mMain->scaleView(false);
    expectOver("two days");
    mark();
    EXPECT_TRUE(event(3228, 0, 2));
    expectOver("one day");
}

TEST_F(MainWidgetRegion, DialogGoesWithTheView) {
    showView(1);
    fill();
    mark();
    const QPointer<CRealtimeStatisticDialog> open = dialog();
    mMain.reset();
    EXPECT_FALSE(open);
    EXPECT_TRUE(takeEvents().empty()) << "nothing is told on the way out";
}

TEST_F(MainWidgetRegion, WithoutADialogThereIsNothingToHide) {
    showView();
    mMain->hideStatisticDialog();
    mMain->setRegionLineHide();
    EXPECT_EQ(dialog(), nullptr);
}

// Replay

TEST_F(MainWidgetRegion, DialogKeepsTheFormThatItWasMadeWith) {
    showView();
    fill();
    select(10, 20);
    EXPECT_EQ(dialog()->findChild<GZ::CCheckBox *>(), nullptr);
    mMain->beReplay(true);
    select(10, 21);
    EXPECT_EQ(dialog()->findChild<GZ::CCheckBox *>(), nullptr);
}

TEST_F(MainWidgetRegion, EndFollowsTheReplayWhenTheUserWantsItTo) {
    showView();
    mMain->beReplay(true);
    QTime time(10, 0);
    EXPECT_TRUE(event(3239, 2, 0, "", &time)) << "no dialog yet";
    mMain->beReplay(false);
    fill();
    mMain->beReplay(true);
    select(10, 20);
    auto *live = dialog()->findChild<GZ::CCheckBox *>();
    ASSERT_TRUE(live);
    EXPECT_TRUE(event(3239, 2, 0, "", &time));
    EXPECT_EQ(cycles(), 11) << "not checked";
    live->setChecked(true);
    EXPECT_TRUE(event(3239, 2, 0, "", nullptr));
    EXPECT_EQ(cycles(), 11);
    EXPECT_TRUE(event(3239, 2, 0, "", &time));
    EXPECT_EQ(cycles(), 21) << "09:40 to 10:00";
    EXPECT_EQ(shownTime(1), QTime(10, 0));
}

TEST_F(MainWidgetRegion, ReplayOpensNoDialogThatTheUserHasClosed) {
    showView();
    fill();
    mMain->beReplay(true);
    select(10, 20);
    dialog()->findChild<GZ::CCheckBox *>()->setChecked(true);
    QTest::keyClick(dialog(), Qt::Key_Escape);
    QTime time(10, 0);
    EXPECT_TRUE(event(3239, 2, 0, "", &time));
    expectOver("a tick of the replay");
    EXPECT_EQ(cycles(), 11);
}

TEST_F(MainWidgetRegion, ReplayTimeThatTheDataTellsWhileItDrawsIsHeardOfInTheNextTurn) {
    showView();
    fill(31); // to 10:00
    mMain->beReplay(true);
    select(10, 20);
    dialog()->findChild<GZ::CCheckBox *>()->setChecked(true);
    pane()->updateView();
    EXPECT_EQ(cycles(), 11) << "nothing is asked of the data while it draws";
    settle();
    EXPECT_EQ(cycles(), 21) << "09:40 to 10:00";
    EXPECT_TRUE(takeEvents().empty());
}

TEST_F(MainWidgetRegion, OfSeveralReplayTimesTheLastIsHeardOfOnce) {
    showView();
    fill(31);
    mMain->beReplay(true);
    select(10, 20);
    dialog()->findChild<GZ::CCheckBox *>()->setChecked(true);
    for (QTime time : {QTime(9, 55), QTime(9, 57), QTime(9, 53)}) {
        EXPECT_TRUE(pane()->handleEvent(3239, 2, 0, QString(), &time));
        time = QTime(23, 0);
    }
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    EXPECT_EQ(cycles(), 14) << "09:40 to 09:53, the one that came last";
}

} // namespace
