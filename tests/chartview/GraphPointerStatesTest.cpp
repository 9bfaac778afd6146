// The pointer in states that overlap or outlive a gesture, what is told before what, and hosts that act at once.

#include "tests/chartview/GraphInputFixture.h"

#include <atomic>
#include <chrono>
#include <future>
#include <thread>

using namespace TC;
using tests::Event;

namespace {

class GraphPointerStates : public tests::GraphInputFixture {
protected:
    bool leftSelecting() { return member(tests::Peek_mLeftSelecting()); }
    bool rightSelecting() { return member(tests::Peek_mRightSelecting()); }
    bool dragging() { return member(tests::Peek_mDragging()); }
    bool normalMenu() { return member(tests::Peek_mNormalContextMenu()); }
    QRect leftRect() { return member(tests::Peek_mLeftRect()); }
    QRect rightRect() { return member(tests::Peek_mRightRect()); }
    bool tipShown() { return member(tests::Peek_mShowTip()); }
    /// Runs a check while the host hears of an event.
    void at(int number, const std::function<void()> &check) {
        mKeeper->mOnEvent = [this, number, check](int heard) {
            if (heard == number) {
                ++mChecks;
                check();
            }
        };
    }
    int mChecks = 0;
};

// More than one gesture at a time

TEST_F(GraphPointerStates, LeftSelectionGrowsBeforeTheRightOne) {
    showMain();
    crossLine(true);
    press({100, 50});
    press({200, 80}, Qt::RightButton);
    move({160, 90}, Qt::LeftButton | Qt::RightButton);
    EXPECT_EQ(leftRect(), QRect(100, 50, 60, 40));
    EXPECT_TRUE(rightRect().isNull());
    EXPECT_EQ(regionRight(), 0);
}

TEST_F(GraphPointerStates, AnyButtonThatIsLetGoEndsTheLeftSelection) {
    showMain();
    crossLine(true);
    press({100, 50});
    press({200, 80}, Qt::RightButton);
    move({160, 90}, Qt::LeftButton | Qt::RightButton);
    release({160, 90}, Qt::RightButton);
    EXPECT_EQ(mKeeper->of(190), (Events{{190, 50, 80, "", nullptr}}));
    EXPECT_FALSE(leftSelecting());
    EXPECT_TRUE(rightSelecting());
    EXPECT_TRUE(normalMenu()) << "the right rectangle has not grown yet";
    move({240, 120}, Qt::LeftButton);
    EXPECT_EQ(rightRect(), QRect(200, 80, 40, 40));
    release({240, 120});
    EXPECT_FALSE(normalMenu()) << "any button arms the region menu";
}

TEST_F(GraphPointerStates, DragComesBeforeTheSelections) {
    showMain();
    press({100, 50});
    crossLine(true);
    press({200, 80}, Qt::RightButton);
    move({260, 90}, Qt::LeftButton | Qt::RightButton);
    EXPECT_EQ(mGraph->cursor().shape(), Qt::ClosedHandCursor);
    EXPECT_TRUE(rightRect().isNull());
    release({260, 90});
    EXPECT_FALSE(dragging());
    EXPECT_TRUE(rightSelecting());
    move({260, 90}, Qt::RightButton);
    EXPECT_EQ(rightRect(), QRect(200, 80, 60, 10));
}

TEST_F(GraphPointerStates, DragThatEndsLeavesALeftSelectionToTheNextRelease) {
    showMain();
    press({100, 50});
    crossLine(true);
    press({200, 80});
    release({200, 80});
    EXPECT_FALSE(dragging());
    EXPECT_TRUE(leftSelecting());
    move({260, 90});
    release({260, 90});
    EXPECT_EQ(mKeeper->of(190), (Events{{190, 100, 130, "", nullptr}}));
}

TEST_F(GraphPointerStates, SelectionGoesOnWhenTheCrossLineIsSwitchedOff) {
    showMain();
    crossLine(true);
    press({100, 50});
    crossLine(false);
    move({200, 80}, Qt::LeftButton);
    release({200, 80});
    EXPECT_EQ(mKeeper->of(190), (Events{{190, 50, 100, "", nullptr}}));
}

// What outlives a gesture

TEST_F(GraphPointerStates, LeftRectangleThatWasLeftBehindCountsAtTheNextRelease) {
    showMain();
    crossLine(true);
    press({100, 50});
    move({200, 60}, Qt::LeftButton);
    leave();
    takeEvents();
    press({300, 50});
    release({300, 50});
    EXPECT_EQ(mKeeper->of(190), (Events{{190, 50, 100, "", nullptr}}));
    EXPECT_EQ(leftRect(), QRect(0, 0, 0, 0));
}

TEST_F(GraphPointerStates, NarrowRightDragLeavesTheRegionMenuArmed) {
    showMain();
    crossLine(true);
    drag({100, 50}, {200, 60}, Qt::RightButton);
    drag({300, 50}, {310, 60}, Qt::RightButton);
    EXPECT_FALSE(normalMenu());
    EXPECT_EQ(rightRect(), QRect(300, 50, 10, 10));
}

TEST_F(GraphPointerStates, NarrowRightDragStopsGrowingWhenThePointerLeaves) {
    showMain();
    crossLine(true);
    drag({100, 50}, {130, 60}, Qt::RightButton);
    leave();
    EXPECT_FALSE(rightSelecting());
    EXPECT_TRUE(normalMenu());
    move({300, 90});
    EXPECT_EQ(rightRect(), QRect(100, 50, 30, 10));
    EXPECT_EQ(regionRight(), 130);
}

TEST_F(GraphPointerStates, SelectionBeginsAtTheBoundOfItsPressAndIsDraggedBack) {
    showMain();
    crossLine(true);
    mUi->mLeftAxisWidth = 60;
    press({470, 50});
    move({400, 70}, Qt::LeftButton);
    EXPECT_EQ(leftRect(), QRect(400, 50, 22, 20));
    move({470, 70}, Qt::LeftButton);
    EXPECT_EQ(leftRect(), QRect(422, 50, 48, 20));
}

TEST_F(GraphPointerStates, MoveTakenByADrawingToolLeavesTheTip) {
    showMain();
    fillMain();
    mGraph->setGraphType(EVmGraphType::Segment);
    press({100, 50});
    member(tests::Peek_mShowTip()) = true;
    move({200, 90}, Qt::LeftButton);
    EXPECT_TRUE(tipShown());
    release({200, 90});
    move({200, 90});
    EXPECT_FALSE(tipShown());
}

TEST_F(GraphPointerStates, DoubleClickTakesTheRowOfTheTipAndNotItsColumn) {
    showMain();
    move({100, 60});
    doubleClick({300, 90});
    EXPECT_EQ(member(tests::Peek_mMouseX()), 100);
    EXPECT_EQ(member(tests::Peek_mMouseY()), 90);
}

// What is told before what

TEST_F(GraphPointerStates, SelectionIsUnderWayWhenAPressIsTold) {
    showMain();
    crossLine(true);
    at(3032, [this] { EXPECT_TRUE(leftSelecting()); });
    press({100, 50});
    crossLine(false);
    at(3032, [this] { EXPECT_TRUE(dragging()); });
    press({100, 50});
    EXPECT_EQ(mChecks, 2);
}

TEST_F(GraphPointerStates, MoveIsToldWithTheCrossLinePlacedAndBeforeItFollowsTheGraph) {
    showMain();
    crossLine(true);
    press({100, 50});
    mUi->mCursorByKey = true;
    ASSERT_FALSE(mGraph->isCrossActive());
    at(3031, [this] {
        EXPECT_EQ(mUi->mCrossX, 160);
        EXPECT_FALSE(mUi->mCursorByKey);
        EXPECT_EQ(member(tests::Peek_mMouseY()), 90);
        EXPECT_EQ(leftRect(), QRect(100, 50, 60, 40));
        EXPECT_FALSE(mGraph->isCrossActive());
        EXPECT_FALSE(member(tests::Peek_mMouseIn()));
    });
    move({160, 90}, Qt::LeftButton);
    EXPECT_EQ(mChecks, 1);
    EXPECT_TRUE(mGraph->isCrossActive());
}

TEST_F(GraphPointerStates, MoveIsToldBeforeTheTipGoes) {
    showMain();
    member(tests::Peek_mShowTip()) = true;
    at(3031, [this] { EXPECT_TRUE(tipShown()); });
    move({160, 90});
    EXPECT_EQ(mChecks, 1);
    EXPECT_FALSE(tipShown());
}

TEST_F(GraphPointerStates, LeftSelectionIsToldWhileItStands) {
    showMain();
    crossLine(true);
    at(190, [this] {
        EXPECT_TRUE(leftSelecting());
        EXPECT_EQ(leftRect(), QRect(100, 50, 60, 40));
    });
    drag({100, 50}, {160, 90});
    EXPECT_EQ(mChecks, 1);
}

TEST_F(GraphPointerStates, DoubleClickIsToldWithTheCrossLineSwitched) {
    showMain();
    at(3031, [this] {
        EXPECT_TRUE(mUi->mCrossShown);
        EXPECT_EQ(mUi->mCrossX, 160);
        EXPECT_EQ(member(tests::Peek_mMouseY()), 90);
        EXPECT_FALSE(mGraph->isCrossActive());
    });
    doubleClick({160, 90});
    leave();
    at(3199, [this] { EXPECT_TRUE(mGraph->isCrossActive()); });
    doubleClick({160, 90});
    EXPECT_EQ(mChecks, 2);
}

TEST_F(GraphPointerStates, LinesOfTheRegionAreShownWhenTheStatisticIsAskedFor) {
    showMain();
    at(191, [this] { EXPECT_TRUE(regionLines().isVisible()); });
    mGraph->slotStatistic(false, 12, "66,1710466200,1710473400");
    EXPECT_EQ(mChecks, 1);
}

// Kinds of views and graphs

TEST_F(GraphPointerStates, GesturesAreTheSameInEveryView) {
    for (const EIndexViewType type :
         {EIndexViewType::Ordinary, EIndexViewType::Template, EIndexViewType::Paired, EIndexViewType::Plain,
          EIndexViewType::NoTimeScale}) {
        showMain(type);
        crossLine(true);
        drag({100, 50}, {131, 60});
        EXPECT_EQ(
            takeEvents(),
            (Events{{3032, 0, 0, "", nullptr}, {3031, 133, 66, "", nullptr}, {190, 50, 66, "", nullptr}}));
        crossLine(false);
    }
}

TEST_F(GraphPointerStates, GesturesAreTheSameInAFormulaPane) {
    showSub();
    crossLine(true);
    drag({100, 50}, {131, 60});
    EXPECT_EQ(takeEvents(),
              (Events{{3032, 0, 0, "", nullptr}, {3031, 133, 66, "", nullptr}, {190, 50, 66, "", nullptr}}));
    drag({100, 50}, {131, 60}, Qt::RightButton);
    EXPECT_FALSE(normalMenu());
}

TEST_F(GraphPointerStates, GesturesAreTheSameInReplay) {
    showMain();
    mGraph->beReplay(true);
    takeEvents();
    crossLine(true);
    drag({100, 50}, {131, 60});
    EXPECT_EQ(takeEvents(),
              (Events{{3032, 0, 0, "", nullptr}, {3031, 133, 66, "", nullptr}, {190, 50, 66, "", nullptr}}));
    drag({100, 50}, {120, 60}, Qt::RightButton);
    EXPECT_TRUE(normalMenu()) << "thirty pixels in replay too";
}

TEST_F(GraphPointerStates, GraphWithoutWidthHasNoIndex) {
    showMain();
    mUi->mDayWidth = 0.0;
    move({100, 60});
    EXPECT_EQ(takeEvents(), (Events{{3031, -1, -1, "", nullptr}}));
    doubleClick({100, 60});
    EXPECT_EQ(takeEvents(), (Events{{3031, -1, -1, "", nullptr}, {3199, 0, 0, "SH600000", nullptr}}));
}

TEST_F(GraphPointerStates, ViewThatNeverHadAnInstrumentTakesTheMouse) {
    mUi = boost::make_shared<CRealtimeUiParam>(EIndexViewType::Ordinary);
    makeMainGraph();
    showGraph(300, 200);
    for (const bool shown : {false, true}) {
        crossLine(shown);
        drag({100, 50}, {200, 60});
        drag({100, 50}, {200, 60}, Qt::RightButton);
    }
    doubleClick({100, 60}, Qt::RightButton);
    EXPECT_EQ(mKeeper->of(3199), (Events{{3199, 0, 0, "", nullptr}}));
    leave();
}

// Hosts that act at once

/// A graph that goes at once when the host hears of an event.
class GraphThatGoes : public GraphPointerStates {
protected:
    void goAt(int number) {
        at(number, [this] { mGraph.reset(); });
    }
    void sendLast(QEvent &event) {
        QCoreApplication::sendEvent(mGraph.get(), &event);
        EXPECT_EQ(mGraph, nullptr);
        EXPECT_EQ(mChecks, 1);
    }
    void beginDrawing() {
        showMain();
        fillMain();
        mGraph->setGraphType(EVmGraphType::Segment);
        press({100, 50});
        move({200, 90}, Qt::LeftButton);
    }
};

TEST_F(GraphThatGoes, WhenADrawingIsFinished) {
    beginDrawing();
    goAt(3183);
    QMouseEvent release(QEvent::MouseButtonRelease, QPointF(200, 90), QPointF(200, 90), Qt::LeftButton,
                        Qt::NoButton, {});
    sendLast(release);
}

TEST_F(GraphThatGoes, WhenLeavingFinishesADrawing) {
    beginDrawing();
    goAt(3183);
    QEvent leave(QEvent::Leave);
    sendLast(leave);
}

TEST_F(GraphThatGoes, WhenTheCrossLineMoves) {
    showMain();
    member(tests::Peek_mShowTip()) = true;
    goAt(3031);
    QMouseEvent move(QEvent::MouseMove, QPointF(100, 60), QPointF(100, 60), Qt::NoButton, Qt::NoButton, {});
    sendLast(move);
}

TEST_F(GraphThatGoes, WhenADoubleClickMovesTheCrossLine) {
    showMain();
    goAt(3031);
    QMouseEvent doubleClick(QEvent::MouseButtonDblClick, QPointF(100, 60), QPointF(100, 60), Qt::LeftButton,
                            Qt::LeftButton, {});
    sendLast(doubleClick);
    EXPECT_TRUE(mKeeper->of(3199).empty());
}

TEST_F(GraphThatGoes, WhenItIsPressed) {
    showMain();
    goAt(3032);
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(100, 60), QPointF(100, 60), Qt::LeftButton,
                      Qt::LeftButton, {});
    sendLast(press);
}

TEST_F(GraphPointerStates, MouseDoesNotWaitForTheData) {
    showMain();
    fillMain();
    crossLine(true);
    std::promise<void> held;
    std::promise<void> moved;
    std::atomic<bool> inTime{false};
    std::thread writer([&] {
        mData->readData([&](const CRealtimeData::SeriesMap &) { // keeps the data's lock
            held.set_value();
            inTime = moved.get_future().wait_for(std::chrono::seconds(5)) == std::future_status::ready;
        });
    });
    held.get_future().wait();
    press({100, 50});
    move({200, 60}, Qt::LeftButton);
    moved.set_value();
    writer.join();
    EXPECT_TRUE(inTime);
    EXPECT_EQ(leftRect(), QRect(100, 50, 100, 10));
}

} // namespace
