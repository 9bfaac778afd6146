#include "chartview/CrossLinePlan.h"

#include "host/records/Enumerations.h"
#include "host/toolkit/Text.h"

#include <gtest/gtest.h>

#include <limits>

namespace TC {
namespace {

bool isNothing(const CrossLinePlan &plan) {
    return !plan.hasHorizontal && !plan.hasVertical && plan.leftBox.isNull() && plan.rightBox.isNull() &&
           plan.leftText.isEmpty() && plan.rightText.isEmpty();
}

CrossLineInput mouseInput() {
    CrossLineInput input;
    input.size = QSize(600, 300);
    input.shown = true;
    input.index = 20;
    input.x = 100;
    input.y = input.row = 80;
    input.top = 17;
    input.value = 10.5;
    input.withPercent = true;
    input.base = 10.0;
    input.invalid = QStringLiteral("bad");
    return input;
}

TEST(CrossLinePlan, LinesLeaveTheAxisStripsFree) {
    const CrossLinePlan plan = planCrossLine(mouseInput());
    EXPECT_TRUE(plan.hasHorizontal && plan.hasVertical);
    EXPECT_EQ(plan.horizontal, QLine(50, 80, 550, 80));
    EXPECT_EQ(plan.vertical, QLine(150, 17, 150, 300));
}

TEST(CrossLinePlan, LabelsStandAboveTheLineOverBothStrips) {
    const CrossLinePlan plan = planCrossLine(mouseInput());
    EXPECT_EQ(plan.leftBox, QRect(0, 60, 50, 20));
    EXPECT_EQ(plan.leftText, "10.50");
    EXPECT_EQ(plan.rightBox, QRect(550, 60, 50, 20));
    EXPECT_EQ(plan.rightText, "5.00%");
}

TEST(CrossLinePlan, LabelOfARowNearTheTopStandsAtZero) {
    CrossLineInput input = mouseInput();
    input.y = input.row = 10;
    EXPECT_EQ(planCrossLine(input).leftBox, QRect(0, 0, 50, 20));
    EXPECT_EQ(planCrossLine(input).rightBox, QRect(550, 0, 50, 20));
    input.y = input.row = 0;
    EXPECT_TRUE(planCrossLine(input).hasHorizontal);
}

TEST(CrossLinePlan, WithoutARowThereIsOnlyTheVerticalLine) {
    CrossLineInput input = mouseInput();
    input.y = input.row = -1;
    const CrossLinePlan plan = planCrossLine(input);
    EXPECT_TRUE(plan.hasVertical);
    EXPECT_FALSE(plan.hasHorizontal);
    EXPECT_TRUE(plan.leftBox.isNull() && plan.rightBox.isNull());
}

TEST(CrossLinePlan, NothingWithoutAnIndexOrWhenNotShown) {
    CrossLineInput input = mouseInput();
    input.index = -1;
    EXPECT_TRUE(isNothing(planCrossLine(input)));
    input.index = 0;
    input.shown = false;
    EXPECT_TRUE(isNothing(planCrossLine(input)));
    EXPECT_TRUE(planCrossLine(input).region().isEmpty());
}

TEST(CrossLinePlan, RowWithoutAPercentageGetsOnlyTheLeftBox) {
    CrossLineInput input = mouseInput();
    input.withPercent = false;
    EXPECT_FALSE(planCrossLine(input).leftBox.isNull());
    EXPECT_TRUE(planCrossLine(input).rightBox.isNull());
}

TEST(CrossLinePlan, InvalidValuesAndAZeroBaseShowTheTextOfNoNumber) {
    CrossLineInput input = mouseInput();
    input.base = 0.0;
    EXPECT_EQ(planCrossLine(input).leftText, "10.50");
    EXPECT_EQ(planCrossLine(input).rightText, "bad");
    input.base = kUnsetValue;
    EXPECT_EQ(planCrossLine(input).rightText, "bad");
    for (const double value :
         {kUnsetValue, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        input = mouseInput();
        input.value = value;
        EXPECT_EQ(planCrossLine(input).leftText, "bad");
        EXPECT_EQ(planCrossLine(input).rightText, "bad");
    }
}

TEST(CrossLinePlan, LargeValuesKeepTwoDecimalsInTheirUnit) {
    CrossLineInput input = mouseInput();
    input.decimals = 0;
    input.value = 9999.0;
    EXPECT_EQ(planCrossLine(input).leftText, "9999");
    input.value = 12346.0;
    EXPECT_EQ(planCrossLine(input).leftText, QStringLiteral("1.23万"));
    input.decimals = 3;
    EXPECT_EQ(planCrossLine(input).leftText, QStringLiteral("1.235万"));
}

TEST(CrossLinePlan, RegionHoldsLinesAndBoxesAndLittleElse) {
    const QRegion region = planCrossLine(mouseInput()).region();
    for (const QPoint &inside : {QPoint(50, 80), QPoint(550, 80), QPoint(150, 17), QPoint(150, 300),
                                 QPoint(0, 60), QPoint(49, 79), QPoint(599, 60), QPoint(300, 80)}) {
        EXPECT_TRUE(region.contains(inside)) << inside.x() << ' ' << inside.y();
    }
    for (const QPoint &outside : {QPoint(300, 81), QPoint(300, 79), QPoint(149, 200), QPoint(151, 200)}) {
        EXPECT_FALSE(region.contains(outside)) << outside.x() << ' ' << outside.y();
    }
}

TEST(CrossLinePlan, LinesAreOnePixelAroundTheirMiddle) {
    const QLine row(50, 80, 550, 80);
    EXPECT_EQ(QRectF(50, 80, 501, 1), CrossLinePlan::inkOf(row, 1.0));
    EXPECT_EQ(QRectF(49.5, 79.5, 501, 1), CrossLinePlan::inkOf(row, 2.0));
    const QRectF thirds =
        CrossLinePlan::inkOf(row, 3.0); // of three device pixels, the middle one is on the line
    EXPECT_DOUBLE_EQ(80.0 - 1.0 / 3.0, thirds.y());
    EXPECT_EQ(QRectF(149.5, 16.5, 1, 285), CrossLinePlan::inkOf(QLine(150, 17, 150, 301), 2.0));
    EXPECT_EQ(QRectF(150, 17, 1, 285), CrossLinePlan::inkOf(QLine(150, 301, 150, 17), 1.0));
}

TEST(CrossLinePlan, RoomIsThatOfTheLineAlone) {
    EXPECT_EQ(QRect(50, 80, 501, 1), CrossLinePlan::roomOf(QLine(50, 80, 550, 80), 1.0));
    EXPECT_EQ(QRect(49, 79, 502, 2), CrossLinePlan::roomOf(QLine(50, 80, 550, 80), 2.0));
}

TEST(CrossLinePlan, AnotherRatioMovesBothLines) {
    CrossLineInput input = mouseInput();
    const CrossLinePlan before = planCrossLine(input);
    input.ratio = 2.0;
    const QRegion change = planCrossLine(input).changeFrom(before);
    EXPECT_TRUE(change.contains(QPoint(300, 79)));
    EXPECT_TRUE(change.contains(QPoint(300, 80)));
    EXPECT_TRUE(change.contains(QPoint(149, 200)));
}

TEST(CrossLinePlan, ChangeAlongTheRowIsThatOfTheColumnsAlone) {
    CrossLineInput input = mouseInput();
    const CrossLinePlan before = planCrossLine(input);
    input.x += 40;
    const QRegion change = planCrossLine(input).changeFrom(before);
    EXPECT_TRUE(change.contains(QPoint(150, 200)));
    EXPECT_TRUE(change.contains(QPoint(190, 200)));
    for (const QPoint &kept : {QPoint(300, 80), QPoint(0, 60), QPoint(599, 60), QPoint(170, 200)}) {
        EXPECT_FALSE(change.contains(kept)) << kept.x() << ' ' << kept.y();
    }
}

TEST(CrossLinePlan, ChangeOfAValueIsThatOfItsBox) {
    CrossLineInput input = mouseInput();
    const CrossLinePlan before = planCrossLine(input);
    EXPECT_TRUE(before.changeFrom(before).isEmpty());
    input.base *= 2.0;
    EXPECT_EQ(planCrossLine(input).changeFrom(before), QRegion(before.rightBox));
    input = mouseInput();
    input.y = -1;
    EXPECT_EQ(planCrossLine(input).changeFrom(before),
              QRegion(CrossLinePlan::roomOf(before.horizontal, 1.0)) | before.leftBox | before.rightBox);
}

TEST(GraphShowTick, LargeValuesKeepAtLeastTwoDecimals) {
    EXPECT_EQ(GZ::getGraphShowTick(9999.99, 0), 0);
    EXPECT_EQ(GZ::getGraphShowTick(9999.99, 3), 3);
    for (const double large : {10000.0, -10000.0, 9999.999995, 3e8, -4e13}) {
        EXPECT_EQ(GZ::getGraphShowTick(large, 0), 2) << large;
        EXPECT_EQ(GZ::getGraphShowTick(large, 1), 2) << large;
        EXPECT_EQ(GZ::getGraphShowTick(large, 4), 4) << large;
    }
    EXPECT_EQ(GZ::getGraphShowTick(std::numeric_limits<double>::quiet_NaN(), 1), 1);
}

} // namespace
} // namespace TC
