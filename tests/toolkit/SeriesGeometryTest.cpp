#include "toolkit/drawing/SeriesGeometry.h"

#include <QVector>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using namespace TC;

const double kInfinity = std::numeric_limits<double>::infinity();
const double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(SeriesGeometryTest, ColumnIsTheShareOfTheWidthRoundedTowardZero) {
    const QRect rect(1, 3, 240, 100); // 10 pixels an index
    EXPECT_EQ(columnOfIndex(rect, 24, 0), 1);
    EXPECT_EQ(columnOfIndex(rect, 24, 1), 11);
    EXPECT_EQ(columnOfIndex(rect, 24, 23), 231);
    const QRect narrow(5, 0, 10, 10); // 10 / 3 pixels an index
    EXPECT_EQ(columnOfIndex(narrow, 3, 1), 8);
    EXPECT_EQ(columnOfIndex(narrow, 3, 2), 11);
}

TEST(SeriesGeometryTest, LastColumnIsHeldToTheRightEdge) {
    EXPECT_EQ(columnOfIndex(QRect(1, 3, 240, 100), 24, 24), 240);
    EXPECT_EQ(columnOfIndex(QRect(1, 3, 240, 100), 24, 1000000), 240);
    EXPECT_EQ(columnOfIndex(QRect(0, 0, 1, 1), 240, 240), 0);
}

TEST(SeriesGeometryTest, SeveralIndicesShareAColumnOfANarrowRectangle) {
    const QRect rect(0, 0, 60, 10); // a quarter of a pixel an index
    EXPECT_EQ(columnOfIndex(rect, 240, 4), 1);
    EXPECT_EQ(columnOfIndex(rect, 240, 7), 1);
    EXPECT_EQ(columnOfIndex(rect, 240, 8), 2);
}

TEST(SeriesGeometryTest, AnAxisOfOneIndexHasItsColumnAtTheLeft) {
    EXPECT_EQ(columnOfIndex(QRect(4, 0, 50, 10), 0, 0), 4);
    EXPECT_DOUBLE_EQ(stepOfAxis(QRect(4, 0, 50, 10), 0), 50.0);
}

TEST(SeriesGeometryTest, SpanIsHeldToSeriesAndAxis) {
    const auto expectSpan = [](const IndexSpan &span, int first, int last) {
        EXPECT_EQ(span.first, first);
        EXPECT_EQ(span.last, last);
    };
    expectSpan(heldSpan(2, 5, 10, 240), 2, 5);
    expectSpan(heldSpan(-7, 500, 10, 240), 0, 9);
    expectSpan(heldSpan(0, 500, 1000, 240), 0, 240);
    EXPECT_TRUE(heldSpan(5, 4, 10, 240).isEmpty());
    EXPECT_TRUE(heldSpan(10, 20, 10, 240).isEmpty());
    EXPECT_TRUE(heldSpan(0, 9, 10, -1).isEmpty());
    EXPECT_TRUE(heldSpan(0, 9, 0, 240).isEmpty());
}

TEST(SeriesGeometryTest, StickWidthIsTheNextSmallerOddNumber) {
    EXPECT_EQ(stickWidth(10.0, 0.6), 5); // 6
    EXPECT_EQ(stickWidth(5.0, 0.6), 3);
    EXPECT_EQ(stickWidth(5.0, 1.0), 5);
    EXPECT_EQ(stickWidth(3.3, 0.6), 1);
    EXPECT_EQ(stickWidth(0.25, 0.6), 1);
    EXPECT_EQ(stickWidth(10.0, 0.0), 1);
}

TEST(SeriesGeometryTest, MaximumLiesOnTheFirstRowAndMinimumOnTheLast) {
    const ValueScale scale(QRect(1, 3, 10, 101), {12.0, 10.0}); // 50 rows a unit
    EXPECT_TRUE(scale.isUsable());
    EXPECT_DOUBLE_EQ(scale.rowOf(12.0), 3.0);
    EXPECT_DOUBLE_EQ(scale.rowOf(10.0), 103.0);
    EXPECT_DOUBLE_EQ(scale.rowOf(11.5), 28.0);
    EXPECT_DOUBLE_EQ(scale.rowOf(13.0), -47.0);
}

TEST(SeriesGeometryTest, ARangeOfNoHeightPutsEveryValueInTheMiddle) {
    const QRect rect(0, 10, 10, 21);
    EXPECT_DOUBLE_EQ(ValueScale(rect, {5.0, 5.0}).rowOf(5.0), 20.0);
    EXPECT_DOUBLE_EQ(ValueScale(rect, {5.0, 5.0}).rowOf(1e300), 20.0);
    EXPECT_DOUBLE_EQ(ValueScale(rect, {4.0, 5.0}).rowOf(4.0), 20.0);
    EXPECT_DOUBLE_EQ(ValueScale(rect, {5e-324, 0.0}).rowOf(3.0), 20.0);
}

TEST(SeriesGeometryTest, AnUnsetOrInfiniteRangeIsNotUsable) {
    const QRect rect(0, 0, 10, 10);
    EXPECT_FALSE(ValueScale(rect, {kUnsetValue, kUnsetValue}).isUsable());
    EXPECT_FALSE(ValueScale(rect, {kNaN, 0.0}).isUsable());
    EXPECT_FALSE(ValueScale(rect, {1.0, -kInfinity}).isUsable());
    EXPECT_FALSE(ValueScale(rect, {1.7e308, -1.7e308}).isUsable());
}

TEST(SeriesGeometryTest, RowsFarOutsideAreHeldToEightHeights) {
    const ValueScale scale(QRect(0, 0, 10, 11), {1.0, 0.0});
    EXPECT_DOUBLE_EQ(scale.rowOf(1e300), -88.0);
    EXPECT_DOUBLE_EQ(scale.rowOf(-1e300), 88.0);
}

TEST(SeriesGeometryTest, CoordinatesSnapToWholeDevicePixels) {
    const DeviceGrid grid{2.0, 2.0, 4.0, 6.0};
    EXPECT_EQ(grid.deviceX(10.0), 24);
    EXPECT_EQ(grid.deviceY(10.3), 27); // 26.6
    EXPECT_DOUBLE_EQ(grid.coordinateY(27), 10.5);
    EXPECT_EQ(grid.strokeWidth(1.0), 2);
    EXPECT_EQ(grid.strokeWidth(0.0), 1);
    EXPECT_EQ(DeviceGrid().strokeWidth(1.0), 1);
}

TEST(SeriesGeometryTest, OnlyFiniteSetNumbersCanBePlaced) {
    EXPECT_TRUE(isPlaceable(0.0));
    EXPECT_TRUE(isPlaceable(-1e300));
    EXPECT_FALSE(isPlaceable(kUnsetValue));
    EXPECT_FALSE(isPlaceable(kInfinity));
    EXPECT_FALSE(isPlaceable(kNaN));
}

TEST(SeriesGeometryTest, DashPatternsCountInUnits) {
    EXPECT_TRUE(dashPattern(Qt::SolidLine, 2).isEmpty());
    const DashPattern dots = dashPattern(Qt::DotLine, 2);
    ASSERT_EQ(dots.size(), 2);
    EXPECT_EQ(dots[0], 2);
    EXPECT_EQ(dots[1], 4);
    EXPECT_EQ(dashPattern(Qt::DashDotLine, 1).size(), 4);
    EXPECT_EQ(dashPattern(Qt::DashDotDotLine, 1).size(), 6);
}

TEST(SeriesGeometryTest, ADashedStrokeIsCutIntoInkedPieces) {
    Strokes dashes;
    appendDashes({10, 5}, {20, 5}, dashPattern(Qt::DashLine, 1), 0.0, 1, dashes); // 4 inked, 2 not
    ASSERT_EQ(dashes.size(), 2);
    EXPECT_EQ(dashes[0], QLineF(10, 5, 13, 5));
    EXPECT_EQ(dashes[1], QLineF(16, 5, 19, 5));
}

TEST(SeriesGeometryTest, ADashedStrokeGoesOnWhereTheLastOneEnded) {
    Strokes dashes;
    appendDashes({0, 0}, {0, 7}, dashPattern(Qt::DashLine, 1), 3.0, 1, dashes);
    ASSERT_EQ(dashes.size(), 2);
    EXPECT_EQ(dashes[0], QLineF(0, 0, 0, 0)); // the last inked pixel of the piece before
    EXPECT_EQ(dashes[1], QLineF(0, 3, 0, 6));
}

TEST(SeriesGeometryTest, DashesLeaveRoomForAThickBrush) {
    Strokes dashes;
    appendDashes({0, 0}, {12, 0}, dashPattern(Qt::DashLine, 2), 0.0, 2, dashes); // 8 inked, 4 not
    ASSERT_EQ(dashes.size(), 2);
    EXPECT_EQ(dashes[0], QLineF(0, 0, 6, 0)); // and two pixels of brush
    EXPECT_EQ(dashes[1], QLineF(12, 0, 12, 0));
}

TEST(SeriesGeometryTest, AStrokeOfNoLengthAndASolidOneGiveNoDashes) {
    Strokes dashes;
    appendDashes({3, 3}, {3, 3}, dashPattern(Qt::DotLine, 1), 0.0, 1, dashes);
    appendDashes({0, 0}, {9, 0}, dashPattern(Qt::SolidLine, 1), 0.0, 1, dashes);
    EXPECT_TRUE(dashes.isEmpty());
}

TEST(SeriesGeometryTest, DiscsAreRoundAndSymmetrical) {
    // of three: full but for the corners; of five: corners off
    const QVector<QVector<int>> expected{{1, 0, 1}, {1, 0, 0, 0, 1}};
    for (const QVector<int> &firsts : expected) {
        const int diameter = firsts.size();
        const auto rows = discRows(diameter);
        ASSERT_EQ(rows.size(), diameter);
        for (int row = 0; row < diameter; ++row) {
            EXPECT_EQ(rows[row].first, firsts[row]) << diameter << " " << row;
            EXPECT_EQ(rows[row].end, diameter - firsts[row]) << diameter << " " << row;
        }
    }
    EXPECT_TRUE(discRows(0).isEmpty());
}

TEST(SeriesGeometryTest, RowsOfAPolylineAreThoseOfItsSegments) {
    const QPoint points[] = {{10, 20}, {14, 28}, {16, 22}};
    int rows[7] = {};
    rowsOfPolyline(points, 3, 10, 16, rows);
    const int expected[7] = {20, 22, 24, 26, 28, 25, 22};
    for (int i = 0; i < 7; ++i) {
        EXPECT_EQ(rows[i], expected[i]) << i;
    }
}

TEST(SeriesGeometryTest, OfSeveralRowsInAColumnTheFirstCounts) {
    const QPoint points[] = {{3, 7}, {3, 50}, {4, 9}};
    int rows[2] = {};
    rowsOfPolyline(points, 3, 3, 4, rows);
    EXPECT_EQ(rows[0], 7);
    EXPECT_EQ(rows[1], 9);
}

TEST(SeriesGeometryTest, RowsMayBeginBehindTheFirstPoint) {
    const QPoint points[] = {{10, 20}, {14, 28}};
    int rows[4] = {};
    rowsOfPolyline(points, 2, 11, 14, rows);
    const int expected[4] = {22, 24, 26, 28};
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(rows[i], expected[i]) << i;
    }
}

} // namespace
