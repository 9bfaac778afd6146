#include "chartview/SelectionGeometry.h"

#include <gtest/gtest.h>

using namespace TC;

namespace {

TEST(SelectionGeometry, ThirtyPixelsAreAClickAndOneMoreASelection) {
    EXPECT_FALSE(isSelection(QRect()));
    EXPECT_FALSE(isSelection(QRect(10, 10, 30, 500)));
    EXPECT_TRUE(isSelection(QRect(10, 10, 31, 0)));
}

TEST(SelectionGeometry, StartLeavesTheWidthOfTheLeftAxisFreeOnTheRight) {
    EXPECT_EQ(selectionStart({100, 20}, 480, 60), QPoint(100, 20));
    EXPECT_EQ(selectionStart({420, 20}, 480, 60), QPoint(420, 20));
    EXPECT_EQ(selectionStart({421, 20}, 480, 60), QPoint(420, 20));
    EXPECT_EQ(selectionStart({479, 20}, 480, 0), QPoint(479, 20));
}

TEST(SelectionGeometry, StartInAGraphNarrowerThanTheLeftAxisLiesLeftOfIt) {
    EXPECT_EQ(selectionStart({10, 5}, 40, 60), QPoint(-20, 5));
}

TEST(SelectionGeometry, StartKeepsAPressLeftOfTheGraphAndItsRow) {
    EXPECT_EQ(selectionStart({-7, -9}, 480, 60), QPoint(-7, -9));
}

TEST(SelectionGeometry, RectangleIsSpannedInAllFourDirections) {
    const QPoint start(100, 80);
    EXPECT_EQ(selectionRect(start, {150, 120}, 480), QRect(100, 80, 50, 40));
    EXPECT_EQ(selectionRect(start, {60, 120}, 480), QRect(60, 80, 40, 40));
    EXPECT_EQ(selectionRect(start, {150, 30}, 480), QRect(100, 30, 50, 50));
    EXPECT_EQ(selectionRect(start, {60, 30}, 480), QRect(60, 30, 40, 50));
    EXPECT_EQ(selectionRect(start, start, 480), QRect(100, 80, 0, 0));
}

TEST(SelectionGeometry, OnlyTheRightSideOfTheRectangleIsLimited) {
    const QPoint start(100, 80);
    EXPECT_EQ(selectionRect(start, {480, 90}, 480), QRect(100, 80, 380, 10));
    EXPECT_EQ(selectionRect(start, {700, 90}, 480), QRect(100, 80, 380, 10));
    EXPECT_EQ(selectionRect(start, {-50, 90}, 480), QRect(-50, 80, 150, 10));
    EXPECT_EQ(selectionRect(start, {110, 900}, 480), QRect(100, 80, 10, 820));
    EXPECT_EQ(selectionRect(start, {110, -30}, 480), QRect(100, -30, 10, 110));
}

TEST(SelectionGeometry, GraphThatBecameNarrowerThanTheStartEndsTheRectangleAtItsEdge) {
    EXPECT_EQ(selectionRect({100, 80}, {120, 90}, 70), QRect(70, 80, 30, 10));
}

} // namespace
