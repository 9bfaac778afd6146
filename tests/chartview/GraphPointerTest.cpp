#include "chartview/GraphPointer.h"

#include <gtest/gtest.h>

using namespace TC;

namespace {

/// A pointer on a graph of 480 pixels beside a strip of 60.
class GraphPointerTest : public ::testing::Test {
protected:
    void press(Qt::MouseButton button, const QPoint &at, bool crossShown = true) {
        mPointer.press(button, at, crossShown, 480, 60);
    }
    GraphPointer::EGesture grow(const QPoint &to) { return mPointer.grow(to, 480, {482.0, 241}); }

    GraphPointer mPointer;
};

TEST_F(GraphPointerTest, IsIdleAtFirst) {
    EXPECT_FALSE(mPointer.isMouseIn());
    EXPECT_FALSE(mPointer.isCrossActive());
    EXPECT_FALSE(mPointer.isSelecting());
    EXPECT_FALSE(mPointer.isDragging());
    EXPECT_FALSE(mPointer.isRegionArmed());
    EXPECT_EQ(mPointer.ending(), GraphPointer::eNoGesture);
    EXPECT_EQ(grow({10, 10}), GraphPointer::eNoGesture);
}

TEST_F(GraphPointerTest, ButtonAndCrossLineSayWhatAPressBegins) {
    press(Qt::LeftButton, {10, 10}, false);
    EXPECT_TRUE(mPointer.isDragging());
    mPointer.endDrag();
    press(Qt::RightButton, {10, 10}, false);
    press(Qt::MiddleButton, {10, 10}, false);
    press(Qt::MiddleButton, {10, 10});
    EXPECT_FALSE(mPointer.isDragging() || mPointer.isSelecting());
    press(Qt::LeftButton, {10, 10});
    EXPECT_TRUE(mPointer.isLeftSelecting());
    EXPECT_FALSE(mPointer.isRightSelecting());
    press(Qt::RightButton, {10, 10});
    EXPECT_TRUE(mPointer.isRightSelecting());
}

TEST_F(GraphPointerTest, OneGestureGrowsDragBeforeLeftBeforeRight) {
    press(Qt::RightButton, {100, 10});
    EXPECT_EQ(grow({150, 20}), GraphPointer::eRightSelection);
    EXPECT_EQ(mPointer.rightRect(), QRect(100, 10, 50, 10));
    press(Qt::LeftButton, {200, 10});
    EXPECT_EQ(grow({160, 40}), GraphPointer::eLeftSelection);
    EXPECT_EQ(mPointer.leftRect(), QRect(160, 10, 40, 30));
    press(Qt::LeftButton, {5, 5}, false);
    EXPECT_EQ(grow({300, 300}), GraphPointer::eDrag);
    EXPECT_EQ(mPointer.leftRect(), QRect(160, 10, 40, 30));
    EXPECT_EQ(mPointer.rightRect(), QRect(100, 10, 50, 10));
}

TEST_F(GraphPointerTest, SelectionsAreHeldToTheGraphAtTheRight) {
    press(Qt::LeftButton, {470, 10});
    grow({900, -20});
    EXPECT_EQ(mPointer.leftRect(), QRect(420, -20, 60, 30));
}

TEST_F(GraphPointerTest, AReleaseEndsTheDragOrElseTheLeftSelection) {
    press(Qt::LeftButton, {10, 10});
    press(Qt::LeftButton, {10, 10}, false);
    EXPECT_EQ(mPointer.ending(), GraphPointer::eDrag);
    mPointer.endDrag();
    grow({100, 100});
    EXPECT_EQ(mPointer.ending(), GraphPointer::eLeftSelection);
    mPointer.endLeftSelection();
    EXPECT_EQ(mPointer.ending(), GraphPointer::eNoGesture);
    EXPECT_EQ(mPointer.leftRect(), QRect(0, 0, 0, 0));
}

TEST_F(GraphPointerTest, OnlyASelectionWiderThanThirtyPixelsArmsTheRegion) {
    press(Qt::RightButton, {100, 10});
    mPointer.arm();
    EXPECT_FALSE(mPointer.isRegionArmed());
    grow({130, 10});
    mPointer.arm();
    EXPECT_FALSE(mPointer.isRegionArmed());
    grow({131, 10});
    mPointer.arm();
    EXPECT_TRUE(mPointer.isRegionArmed());
    EXPECT_TRUE(mPointer.isRightSelecting());
}

TEST_F(GraphPointerTest, AWideRectangleOfAnEndedSelectionArmsNothing) {
    press(Qt::RightButton, {100, 10});
    grow({200, 10});
    mPointer.leave();
    mPointer.arm();
    EXPECT_FALSE(mPointer.isRegionArmed());
}

TEST_F(GraphPointerTest, TakenRegionIsOverAndTheNextMenuIsTheNormalOne) {
    press(Qt::RightButton, {100, 10});
    grow({200, 30});
    mPointer.arm();
    EXPECT_EQ(mPointer.takeRegion(), QRect(100, 10, 100, 20));
    EXPECT_FALSE(mPointer.isRegionArmed());
    EXPECT_FALSE(mPointer.isRightSelecting());
    EXPECT_EQ(mPointer.takeRegion(), QRect(0, 0, 0, 0));
}

TEST_F(GraphPointerTest, RightSelectionIsRememberedByItsMinutes) {
    press(Qt::RightButton, {100, 10});
    grow({200, 30});
    EXPECT_EQ(mPointer.rightSpan().start(), 50);
    EXPECT_EQ(mPointer.rightSpan().end(), 100);
    mPointer.takeRegion();
    EXPECT_EQ(mPointer.rightSpan().end(), 100);
}

TEST_F(GraphPointerTest, LeavingEndsAllGesturesAndKeepsTheArmedRegion) {
    mPointer.enter();
    mPointer.setPosition({7, 8});
    press(Qt::LeftButton, {5, 5}, false);
    press(Qt::LeftButton, {5, 5});
    press(Qt::RightButton, {100, 10});
    mPointer.endDrag();
    mPointer.endLeftSelection();
    grow({200, 30});
    mPointer.arm();
    mPointer.leave();
    EXPECT_FALSE(mPointer.isMouseIn() || mPointer.isCrossActive() || mPointer.isDragging() ||
                 mPointer.isSelecting());
    EXPECT_TRUE(mPointer.isRegionArmed());
    EXPECT_EQ(mPointer.rightRect(), QRect(100, 10, 100, 20));
    EXPECT_EQ(mPointer.position(), QPoint(7, 8));
}

TEST_F(GraphPointerTest, EnteringMakesItTheOneOfTheCrossLine) {
    mPointer.enter();
    EXPECT_TRUE(mPointer.isMouseIn());
    EXPECT_TRUE(mPointer.isCrossActive());
    mPointer.setMouseIn(false);
    EXPECT_FALSE(mPointer.isMouseIn());
    EXPECT_TRUE(mPointer.isCrossActive());
}

TEST_F(GraphPointerTest, ARowMovesThePositionUpAndDown) {
    mPointer.setPosition({7, 8});
    mPointer.setRow(30);
    EXPECT_EQ(mPointer.position(), QPoint(7, 30));
}

} // namespace
