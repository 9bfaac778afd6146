// Presses, moves and releases on a graph, and the states of the pointer between them.

#include "tests/chartview/GraphInputFixture.h"

using namespace TC;
using tests::Event;

namespace {

class GraphInput : public tests::GraphInputFixture {
protected:
    bool leftSelecting() { return member(tests::Peek_mLeftSelecting()); }
    bool rightSelecting() { return member(tests::Peek_mRightSelecting()); }
    bool dragging() { return member(tests::Peek_mDragging()); }
    bool normalMenu() { return member(tests::Peek_mNormalContextMenu()); }
    QRect leftRect() { return member(tests::Peek_mLeftRect()); }
    QRect rightRect() { return member(tests::Peek_mRightRect()); }
    /// A tool of the drawing layer waits for a press.
    void chooseTool() { mGraph->setGraphType(EVmGraphType::Segment); }
};

// Press

TEST_F(GraphInput, AnyPressIsTold) {
    showMain();
    for (const bool shown : {false, true}) {
        crossLine(shown);
        for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
            press({100, 50}, button);
            EXPECT_EQ(takeEvents(), (Events{{3032, 0, 0, "", nullptr}})) << shown << button;
        }
    }
}

TEST_F(GraphInput, PressTakenByADrawingToolDoesNothingElse) {
    showMain();
    fillMain();
    crossLine(true);
    takeEvents();
    chooseTool();
    EXPECT_EQ(paintsOf([this] { press({100, 50}); }), 1);
    EXPECT_TRUE(takeEvents().empty());
    EXPECT_FALSE(leftSelecting());
}

TEST_F(GraphInput, LeftPressWithTheCrossLineBeginsASelection) {
    showMain();
    crossLine(true);
    press({100, 50});
    EXPECT_TRUE(leftSelecting());
    EXPECT_FALSE(dragging());
    EXPECT_FALSE(rightSelecting());
    EXPECT_EQ(member(tests::Peek_mLeftStart()), QPoint(100, 50));
}

TEST_F(GraphInput, LeftPressWithoutTheCrossLineBeginsADrag) {
    showMain();
    press({100, 50});
    EXPECT_TRUE(dragging());
    EXPECT_FALSE(leftSelecting());
}

TEST_F(GraphInput, RightPressWithTheCrossLineBeginsASelection) {
    showMain();
    crossLine(true);
    press({100, 50}, Qt::RightButton);
    EXPECT_TRUE(rightSelecting());
    EXPECT_FALSE(leftSelecting());
    EXPECT_EQ(member(tests::Peek_mRightStart()), QPoint(100, 50));
}

TEST_F(GraphInput, RightPressWithoutTheCrossLineBeginsNothing) {
    showMain();
    press({100, 50}, Qt::RightButton);
    EXPECT_FALSE(rightSelecting());
    EXPECT_FALSE(dragging());
}

TEST_F(GraphInput, MiddlePressBeginsNothing) {
    showMain();
    for (const bool shown : {false, true}) {
        crossLine(shown);
        press({100, 50}, Qt::MiddleButton);
        EXPECT_FALSE(leftSelecting() || rightSelecting() || dragging());
    }
}

TEST_F(GraphInput, SelectionsBeginNoFurtherRightThanTheWidthLessTheLeftAxis) {
    showMain();
    crossLine(true);
    mUi->mLeftAxisWidth = 60;
    press({423, 50});
    EXPECT_EQ(member(tests::Peek_mLeftStart()), QPoint(422, 50));
    press({470, 51}, Qt::RightButton);
    EXPECT_EQ(member(tests::Peek_mRightStart()), QPoint(422, 51));
    mUi->mRightAxisWidth = 200;
    press({422, 50});
    EXPECT_EQ(member(tests::Peek_mLeftStart()), QPoint(422, 50));
}

// Move

TEST_F(GraphInput, MoveTakesTheCrossLineToTheNearestIndex) {
    showMain();
    const struct {
        int x, index, snapped;
    } moves[] = {{0, 0, 1},       {1, 1, 3},       {2, 1, 3},   {100, 50, 101}, {101, 51, 103},
                 {480, 240, 481}, {600, 240, 481}, {-20, 0, 1}, {241, 121, 243}};
    for (const auto &each : moves) {
        move({each.x, 60});
        EXPECT_EQ(takeEvents(), (Events{{3031, each.snapped, each.index, "", nullptr}}));
        EXPECT_EQ(mUi->mCrossX, each.x);
    }
}

TEST_F(GraphInput, MoveTellsTheIndexWhetherOrNotTheCrossLineIsShown) {
    showMain();
    for (const bool shown : {false, true}) {
        crossLine(shown);
        move({100, 60});
        EXPECT_EQ(takeEvents(), (Events{{3031, 101, 50, "", nullptr}}));
        EXPECT_EQ(mUi->mCrossShown, shown);
    }
}

TEST_F(GraphInput, MoveTakesTheCrossLineFromTheKeyboard) {
    showMain();
    mUi->mCursorByKey = true;
    move({100, 60});
    EXPECT_FALSE(mUi->mCursorByKey);
}

TEST_F(GraphInput, MoveMakesTheCrossLineFollowThisGraph) {
    showMain();
    leave();
    ASSERT_EQ(mGraph->getMouseY(), -1);
    move({100, 60});
    EXPECT_TRUE(mGraph->isCrossActive());
    EXPECT_EQ(mGraph->getMouseY(), 60);
    EXPECT_TRUE(member(tests::Peek_mMouseIn()));
}

TEST_F(GraphInput, MoveRepaintsNothingAndAsksNoService) {
    showMain();
    fillMain();
    mHost.mLog.clear();
    EXPECT_EQ(paintsOf([this] {
                  for (int x = 0; x < 480; x += 7) {
                      move({x, 60});
                  }
              }),
              0);
    EXPECT_TRUE(mHost.mLog.all().isEmpty());
    EXPECT_EQ(mKeeper->of(3031).size(), 69U);
}

TEST_F(GraphInput, DraggedMovesRepaintNothing) {
    showMain();
    EXPECT_EQ(paintsOf([this] {
                  press({100, 50});
                  move({200, 60}, Qt::LeftButton);
              }),
              0);
    release({200, 60});
    crossLine(true);
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton}) {
        EXPECT_EQ(paintsOf([&] {
                      press({100, 50}, button);
                      move({200, 60}, button);
                  }),
                  0);
        release({200, 60}, button);
    }
}

TEST_F(GraphInput, MoveTakesTheTipAwayWithOneRepaint) {
    showMain();
    member(tests::Peek_mShowTip()) = true;
    EXPECT_EQ(paintsOf([this] {
                  move({100, 60});
                  move({101, 60});
              }),
              1);
    EXPECT_FALSE(member(tests::Peek_mShowTip()));
}

TEST_F(GraphInput, MoveTakenByADrawingToolRepaintsAndLeavesTheCrossLine) {
    showMain();
    fillMain();
    crossLine(true);
    mUi->mCursorByKey = true;
    chooseTool();
    press({100, 50});
    takeEvents();
    EXPECT_EQ(paintsOf([this] { move({200, 90}, Qt::LeftButton); }), 1);
    EXPECT_TRUE(takeEvents().empty());
    EXPECT_TRUE(mUi->mCursorByKey);
    EXPECT_TRUE(leftRect().isNull());
}

TEST_F(GraphInput, DragWithoutTheCrossLineHasAClosedHand) {
    showMain();
    press({100, 50});
    move({150, 50}, Qt::LeftButton);
    EXPECT_EQ(mGraph->cursor().shape(), Qt::ClosedHandCursor);
    EXPECT_EQ(mKeeper->of(3031).size(), 1U);
    release({150, 50});
    EXPECT_EQ(mGraph->cursor().shape(), Qt::ArrowCursor);
    EXPECT_FALSE(dragging());
}

TEST_F(GraphInput, MoveWithoutADragKeepsTheCursor) {
    showMain();
    move({100, 50});
    EXPECT_EQ(mGraph->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(GraphInput, LeftSelectionFollowsTheMouse) {
    showMain();
    crossLine(true);
    press({100, 50});
    move({160, 90}, Qt::LeftButton);
    EXPECT_EQ(leftRect(), QRect(100, 50, 60, 40));
    move({70, 20}, Qt::LeftButton);
    EXPECT_EQ(leftRect(), QRect(70, 20, 30, 30));
    EXPECT_EQ(mKeeper->of(3031).size(), 2U);
    EXPECT_FALSE(regionLines().isVisible());
    EXPECT_EQ(regionLeft(), 0);
}

TEST_F(GraphInput, SelectionsEndAtTheRightEdgeAndGoAsFarAsTheMouseElsewhere) {
    showMain();
    crossLine(true);
    press({100, 50});
    move({900, 700}, Qt::LeftButton);
    EXPECT_EQ(leftRect(), QRect(100, 50, 382, 650));
    move({-40, -10}, Qt::LeftButton);
    EXPECT_EQ(leftRect(), QRect(-40, -10, 140, 60));
    release({-40, -10});
    press({100, 50}, Qt::RightButton);
    move({900, 700}, Qt::RightButton);
    EXPECT_EQ(rightRect(), QRect(100, 50, 382, 650));
}

TEST_F(GraphInput, RegionLinesFollowTheSidesOfTheRightSelection) {
    showMain();
    crossLine(true);
    press({100, 50}, Qt::RightButton);
    move({160, 90}, Qt::RightButton);
    EXPECT_EQ(rightRect(), QRect(100, 50, 60, 40));
    EXPECT_EQ(regionLeft(), 100);
    EXPECT_EQ(regionRight(), 160);
    move({30, 90}, Qt::RightButton);
    EXPECT_EQ(regionLeft(), 30);
    EXPECT_EQ(regionRight(), 100);
}

TEST_F(GraphInput, SelectionIsOnTheScreenAfterTheNextRepaint) {
    showMain();
    fillMain();
    crossLine(true);
    press({100, 50});
    move({160, 90}, Qt::LeftButton);
    QImage expected = chart();
    QPainter painter(&expected);
    painter.setPen(QPen(color("ic_clr_kline_graph_scale_border"), 0));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRect(100, 50, 60, 40));
    painter.end();
    EXPECT_EQ(paintedGraph(), expected);
    release({160, 90});
    EXPECT_EQ(paintedGraph(), chart());
}

// Release

TEST_F(GraphInput, LeftDragOfThirtyPixelsDeliversNothing) {
    showMain();
    crossLine(true);
    drag({100, 50}, {130, 60});
    EXPECT_TRUE(mKeeper->of(190).empty());
}

TEST_F(GraphInput, LeftDragOfThirtyOnePixelsDeliversItsIndices) {
    showMain();
    crossLine(true);
    drag({100, 50}, {131, 60});
    EXPECT_EQ(takeEvents(),
              (Events{{3032, 0, 0, "", nullptr}, {3031, 133, 66, "", nullptr}, {190, 50, 66, "", nullptr}}));
}

TEST_F(GraphInput, LeftDragBackwardsDeliversTheSmallerIndexFirst) {
    showMain();
    crossLine(true);
    drag({300, 50}, {200, 60});
    EXPECT_EQ(mKeeper->of(190), (Events{{190, 100, 150, "", nullptr}}));
}

TEST_F(GraphInput, LeftDragToTheLeftOfTheGraphBeginsAtIndexZero) {
    showMain();
    crossLine(true);
    drag({100, 50}, {-60, 60});
    EXPECT_EQ(mKeeper->of(190), (Events{{190, 0, 50, "", nullptr}}));
}

TEST_F(GraphInput, OnlyTheStartIndexIsRaisedToZero) {
    showMain();
    crossLine(true);
    mUi->mDayWidth = 0.0; // no column has an index
    drag({100, 50}, {200, 60});
    EXPECT_EQ(mKeeper->of(190), (Events{{190, 0, -1, "", nullptr}}));
}

TEST_F(GraphInput, LeftDragBeyondTheRightEdgeEndsAtTheLastIndex) {
    showMain();
    crossLine(true);
    drag({100, 50}, {5000, 60});
    EXPECT_EQ(mKeeper->of(190), (Events{{190, 50, 240, "", nullptr}}));
}

TEST_F(GraphInput, ReleaseEndsTheLeftSelectionInEveryCase) {
    showMain();
    crossLine(true);
    for (const int right : {110, 300}) {
        drag({100, 50}, {right, 60});
        EXPECT_FALSE(leftSelecting());
        EXPECT_EQ(leftRect(), QRect(0, 0, 0, 0));
    }
    move({400, 100});
    EXPECT_EQ(leftRect(), QRect(0, 0, 0, 0));
}

TEST_F(GraphInput, DragWithoutTheCrossLineSelectsNothing) {
    showMain();
    drag({100, 50}, {300, 60});
    drag({100, 50}, {300, 60}, Qt::RightButton);
    EXPECT_TRUE(mKeeper->of(190).empty());
    EXPECT_TRUE(normalMenu());
    EXPECT_TRUE(leftRect().isNull());
    EXPECT_TRUE(rightRect().isNull());
}

TEST_F(GraphInput, RightDragOfThirtyOnePixelsArmsTheRegionMenu) {
    showMain();
    crossLine(true);
    drag({100, 50}, {131, 60}, Qt::RightButton);
    EXPECT_FALSE(normalMenu());
    EXPECT_TRUE(rightSelecting());
    EXPECT_EQ(rightRect(), QRect(100, 50, 31, 10));
    EXPECT_TRUE(mKeeper->of(190).empty());
}

TEST_F(GraphInput, RightDragOfThirtyPixelsOpensTheNormalMenuAndGoesOnGrowing) {
    showMain();
    crossLine(true);
    drag({100, 50}, {130, 60}, Qt::RightButton);
    EXPECT_TRUE(normalMenu());
    EXPECT_TRUE(rightSelecting());
    move({180, 90});
    EXPECT_EQ(rightRect(), QRect(100, 50, 80, 40));
    EXPECT_EQ(regionRight(), 180);
    release({180, 90}, Qt::RightButton);
    EXPECT_FALSE(normalMenu());
    leave();
    move({300, 90});
    EXPECT_EQ(rightRect(), QRect(100, 50, 80, 40));
}

TEST_F(GraphInput, EveryReleaseRepaintsOnce) {
    showMain();
    for (const bool shown : {false, true}) {
        crossLine(shown);
        for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
            press({100, 50}, button);
            EXPECT_EQ(paintsOf([&] { release({100, 50}, button); }), 1);
        }
    }
}

TEST_F(GraphInput, ReleaseEndsTheDrawingUnderWay) {
    showMain();
    fillMain();
    chooseTool();
    takeEvents();
    drag({100, 50}, {200, 90});
    const Events events = takeEvents();
    ASSERT_EQ(events.size(), 1U);
    EXPECT_EQ(events[0].number, 3183);
    move({300, 90});
    EXPECT_EQ(takeEvents().size(), 1U); // the cross line again
}

TEST_F(GraphInput, GraphMayGoWhileTheHostHearsOfASelection) {
    showMain();
    crossLine(true);
    press({100, 50});
    move({200, 50}, Qt::LeftButton);
    mKeeper->mOnEvent = [this](int number) {
        if (number == 190) {
            mGraph.reset();
        }
    };
    QMouseEvent event(QEvent::MouseButtonRelease, QPointF(200, 50), QPointF(200, 50), Qt::LeftButton,
                      Qt::NoButton, {});
    QCoreApplication::sendEvent(mGraph.get(), &event);
    EXPECT_EQ(mGraph, nullptr);
    EXPECT_EQ(mKeeper->of(190).size(), 1U);
}

// Enter and leave

TEST_F(GraphInput, EnteringMakesTheCrossLineFollowAndRepaints) {
    showMain();
    leave();
    EXPECT_EQ(paintsOf([this] { enter(); }), 1);
    EXPECT_TRUE(mGraph->isCrossActive());
    EXPECT_TRUE(member(tests::Peek_mMouseIn()));
    EXPECT_TRUE(takeEvents().empty());
}

TEST_F(GraphInput, LeavingEndsEverythingAndRepaints) {
    showMain();
    press({100, 50});
    move({150, 60}, Qt::LeftButton);
    crossLine(true);
    press({100, 50});
    press({100, 50}, Qt::RightButton);
    member(tests::Peek_mShowTip()) = true;
    takeEvents();
    EXPECT_EQ(paintsOf([this] { leave(); }), 1);
    EXPECT_FALSE(dragging() || leftSelecting() || rightSelecting());
    EXPECT_FALSE(mGraph->isCrossActive());
    EXPECT_FALSE(member(tests::Peek_mMouseIn()));
    EXPECT_FALSE(member(tests::Peek_mShowTip()));
    EXPECT_EQ(mGraph->cursor().shape(), Qt::ArrowCursor);
    EXPECT_TRUE(takeEvents().empty());
    EXPECT_TRUE(mUi->mCrossShown);
}

TEST_F(GraphInput, LeavingKeepsTheRectanglesAndPaintsThemNoMore) {
    showMain();
    fillMain();
    crossLine(true);
    press({100, 50});
    move({150, 60}, Qt::LeftButton);
    leave();
    EXPECT_EQ(leftRect(), QRect(100, 50, 50, 10));
    EXPECT_EQ(paintedGraph(), chart());
}

TEST_F(GraphInput, ArmedRegionMenuOutlivesLeaving) {
    showMain();
    crossLine(true);
    drag({100, 50}, {200, 60}, Qt::RightButton);
    leave();
    EXPECT_FALSE(normalMenu());
    EXPECT_FALSE(rightSelecting());
    EXPECT_EQ(rightRect(), QRect(100, 50, 100, 10));
    // The click that opens the menu does not change the region.
    press({300, 80}, Qt::RightButton);
    release({300, 80}, Qt::RightButton);
    EXPECT_FALSE(normalMenu());
    EXPECT_EQ(rightRect(), QRect(100, 50, 100, 10));
}

TEST_F(GraphInput, LeavingEndsTheDrawingUnderWay) {
    showMain();
    fillMain();
    chooseTool();
    takeEvents();
    press({100, 50});
    move({200, 90}, Qt::LeftButton);
    leave();
    EXPECT_EQ(mKeeper->of(3183).size(), 1U);
    takeEvents();
    move({300, 90}, Qt::LeftButton);
    EXPECT_EQ(takeEvents().size(), 1U); // the cross line again
}

// Elsewhere

TEST_F(GraphInput, WhatTheGraphTakesGoesNoFurther) {
    showMain();
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseMove, QEvent::MouseButtonRelease,
                                    QEvent::MouseButtonDblClick}) {
        QMouseEvent event(type, QPointF(100, 50), QPointF(100, 50), Qt::LeftButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(mGraph.get(), &event);
        EXPECT_TRUE(event.isAccepted()) << type;
    }
}

TEST_F(GraphInput, ClicksThroughTheWindowReachTheGraph) {
    showMain();
    crossLine(true);
    QTest::mouseClick(mGraph.get(), Qt::LeftButton, {}, {100, 50});
    EXPECT_EQ(mKeeper->of(3032).size(), 1U);
    EXPECT_FALSE(leftSelecting());
}

TEST_F(GraphInput, AnyGeometryIsTaken) {
    makeMainGraph();
    crossLine(true);
    for (const QSize &size : {QSize(0, 0), QSize(1, 1), QSize(16000, 2)}) {
        mGraph->resize(size);
        mUi->resize(mGraph->rect());
        for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton}) {
            drag({-30000, 30000}, {30000, -30000}, button);
            doubleClick({-30000, 30000}, button);
        }
        leave();
    }
    for (const Event &event : mKeeper->of(190)) {
        EXPECT_GE(event.first, 0);
        EXPECT_LE(event.second, 240);
    }
}

} // namespace
