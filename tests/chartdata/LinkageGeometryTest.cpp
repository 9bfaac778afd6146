#include "chartdata/LinkageGeometry.h"

#include "host/records/Enumerations.h"
#include "tests/support/Numbers.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>

namespace TC {
namespace {

using tests::kInfinity;

TEST(LinkageGeometry, NightIsTradedBeforeTheDayThatItBelongsTo) {
    const int times[] = {1260, 1320, 1440, 1, 150, 541, 900}; // 21:00 to 15:00
    for (std::size_t i = 1; i < std::size(times); ++i) {
        EXPECT_LT(tradingMinute(times[i - 1], true), tradingMinute(times[i], true)) << times[i];
    }
    for (const int minute : times) {
        EXPECT_EQ(tradingMinute(minute, false), minute);
    }
}

TEST(LinkageGeometry, PriceOfAnotherInstrumentKeepsItsRelativeDistance) {
    // 22 is 10 % above 20; on a chart around 50 that is 55.
    EXPECT_NEAR(relativeValue(22.0, 20.0, 50.0), 55.0, 1e-9);
    EXPECT_NEAR(relativeValue(18.0, 20.0, 50.0), 45.0, 1e-9);
    EXPECT_FALSE(std::isfinite(relativeValue(22.0, 0.0, 50.0)));
}

TEST(LinkageGeometry, CircleOfAnotherInstrumentIsSmaller) {
    EXPECT_EQ(markCircle(100, 50, false), QRect(97, 47, 6, 6));
    EXPECT_EQ(markCircle(100, 50, true), QRect(98, 48, 4, 4));
}

TEST(LinkageGeometry, FlagStandsRightOfAndAboveItsPoint) {
    const TaskFlag flag = taskFlag(100, 50, 1, 4);
    EXPECT_EQ(flag.fill, QRect(100, 47, 8, 3));
    EXPECT_EQ(flag.frame, QRect(100, 37, 8, 13));
    EXPECT_EQ(flag.letter, QRect(101, 37, 8, 13));
}

TEST(LinkageGeometry, TaskWithTotalZeroShowsAFullFlag) {
    EXPECT_EQ(taskFlag(100, 50, 0, 0).fill.height(), 12);
    EXPECT_EQ(taskFlag(100, 50, 9, 4).fill.height(), 12);
}

TEST(LinkageGeometry, FillStaysInsideTheFlagWhateverTheNumbers) {
    EXPECT_EQ(taskFlag(0, 0, -5, 10).fill.height(), 0);
    EXPECT_EQ(taskFlag(0, 0, -10, -5).fill.height(), 12);
    EXPECT_EQ(taskFlag(0, 0, LLONG_MIN, LLONG_MAX).fill.height(), 0);
}

TEST(LinkageGeometry, FillHeightRoundsToTheNearestPixel) {
    EXPECT_EQ(taskFlag(0, 0, 0, 100).fill.height(), 0);
    EXPECT_EQ(taskFlag(0, 0, 4, 100).fill.height(), 0); // 0.48
    EXPECT_EQ(taskFlag(0, 0, 5, 100).fill.height(), 1); // 0.60
    EXPECT_EQ(taskFlag(0, 0, 99, 100).fill.height(), 12); // 11.88
}

TEST(LinkageGeometry, HitBoxes) {
    const HitBox circle = circleHitBox(100, 50);
    EXPECT_EQ(circle.left, 96);
    EXPECT_EQ(circle.right, 104);
    EXPECT_EQ(circle.top, 46);
    EXPECT_EQ(circle.bottom, 54);
    const HitBox flag = flagHitBox(100, 50);
    EXPECT_EQ(flag.left, 90);
    EXPECT_EQ(flag.right, 100);
    EXPECT_EQ(flag.top, 50);
    EXPECT_EQ(flag.bottom, 63);
}

TEST(LinkageGeometry, HitBoxesOfAnyPointAreBoxes) {
    for (const int far : {INT_MIN, INT_MAX}) {
        EXPECT_LT(circleHitBox(far, far).left, circleHitBox(far, far).right);
        EXPECT_LT(flagHitBox(far, far).top, flagHitBox(far, far).bottom);
    }
}

TEST(LinkageGeometry, CurveRowRunsFromBottomToTop) {
    const CurveScale scale{100.0, 200.0};
    EXPECT_EQ(curveRow(100.0, scale, 400), 400);
    EXPECT_EQ(curveRow(200.0, scale, 400), 0);
    EXPECT_EQ(curveRow(150.1, scale, 400), 200); // 199.6 rounds up
}

TEST(LinkageGeometry, CurveRowBeyondTheRangeRoundsTowardsZero) {
    EXPECT_EQ(curveRow(200.2, {100.0, 200.0}, 400), 0); // -0.8 + 0.5
    EXPECT_EQ(curveRow(200.4, {100.0, 200.0}, 400), -1); // -1.6 + 0.5
    EXPECT_EQ(curveRow(99.9, {100.0, 200.0}, 400), 400); // 400.4 + 0.5
    EXPECT_EQ(curveRow(99.8, {100.0, 200.0}, 400), 401); // 400.8 + 0.5
}

TEST(LinkageGeometry, CurveRowOfAFallingRangeStandsOnItsHead) {
    EXPECT_EQ(curveRow(300.0, {300.0, 100.0}, 400), 400);
    EXPECT_EQ(curveRow(100.0, {300.0, 100.0}, 400), 0);
}

TEST(LinkageGeometry, CurveRowOfARangeWithoutHeightIsTheMiddle) {
    EXPECT_EQ(curveRow(0.0, {0.0, 0.0}, 401), 201);
}

TEST(LinkageGeometry, CurveRowOfNoNumberIsTheBottom) {
    EXPECT_EQ(curveRow(std::nan(""), {0.0, 1.0}, 400), 400);
    EXPECT_EQ(curveRow(kInfinity, {0.0, 1.0}, 400), 400);
    EXPECT_EQ(curveRow(1.0, {0.0, kInfinity}, 400), 400);
}

TEST(LinkageGeometry, TotalScaleRunsFromTheFirstToTheLastAmounts) {
    const CurveScale scale = totalAmountScale({{570, {0.0, 0.0}}, {571, {300.0, 0.0}}, {572, {500.0, 200.0}}});
    EXPECT_DOUBLE_EQ(scale.low, 200.0);
    EXPECT_DOUBLE_EQ(scale.high, 500.0);
}

TEST(LinkageGeometry, OneAmountAloneIsSpreadToNineTenthsAndElevenTenths) {
    const CurveScale scale = totalAmountScale({{571, {300.0, 0.0}}, {575, {300.0, 0.0}}});
    EXPECT_DOUBLE_EQ(scale.low, 270.0);
    EXPECT_DOUBLE_EQ(scale.high, 330.0);
}

TEST(LinkageGeometry, AmountsOfTheSameSizeAreSpreadWithinTheTolerance) {
    const CurveScale near = totalAmountScale({{571, {300.0, 0.0}}, {575, {300.000009, 0.0}}});
    EXPECT_DOUBLE_EQ(near.low, 270.0);
    const CurveScale far = totalAmountScale({{571, {300.0, 0.0}}, {575, {300.00002, 0.0}}});
    EXPECT_DOUBLE_EQ(far.low, 300.0);
    EXPECT_DOUBLE_EQ(far.high, 300.00002);
}

TEST(LinkageGeometry, TotalScaleIsThatOfTheFirstAndLastAmountsThoughOthersLieBeyond) {
    const CurveScale scale = totalAmountScale({{571, {300.0, 0.0}}, {572, {900.0, 0.0}}, {573, {100.0, 0.0}}});
    EXPECT_DOUBLE_EQ(scale.low, 300.0);
    EXPECT_DOUBLE_EQ(scale.high, 100.0);
}

TEST(LinkageGeometry, NegativeAmountsCountForNoTotalScale) {
    const CurveScale none = totalAmountScale({{571, {-300.0, -20.0}}});
    EXPECT_DOUBLE_EQ(none.low, 1e10);
    EXPECT_DOUBLE_EQ(none.high, 0.0);
    const CurveScale sells = totalAmountScale({{571, {-300.0, 20.0}}, {572, {-100.0, 50.0}}});
    EXPECT_DOUBLE_EQ(sells.low, 20.0);
    EXPECT_DOUBLE_EQ(sells.high, 50.0);
}

TEST(LinkageGeometry, BalancedScaleTakesTheLargerSide) {
    EXPECT_DOUBLE_EQ(balancedScale({{570, -40.0}, {571, 30.0}}).high, 40.0);
    EXPECT_DOUBLE_EQ(balancedScale({{570, -40.0}, {571, 30.0}}).low, -40.0);
}

TEST(LinkageGeometry, NegativeBalancesDoNotWidenTheRange) {
    EXPECT_DOUBLE_EQ(positiveScale({{570, -400.0}, {571, 30.0}}).high, 30.0);
    EXPECT_DOUBLE_EQ(positiveScale({{570, -400.0}}).high, 0.0);
}

TEST(LinkageGeometry, WhatIsNoNumberCountsForNoRange) {
    const double kNone = std::nan("");
    const CurveScale total = totalAmountScale(
        {{570, {kNone, kInfinity}}, {571, {100.0, 0.0}}, {572, {kUnsetValue, 50.0}}, {573, {300.0, kNone}}});
    EXPECT_DOUBLE_EQ(total.low, 50.0);
    EXPECT_DOUBLE_EQ(total.high, 300.0);
    EXPECT_DOUBLE_EQ(balancedScale({{570, kNone}, {571, -40.0}, {572, kInfinity}, {573, 10.0}}).high, 40.0);
    EXPECT_DOUBLE_EQ(positiveScale({{570, kNone}, {571, 40.0}, {572, kUnsetValue}}).high, 40.0);
}

TEST(LinkageGeometry, SellsAloneMakeTheRangeOfTotals) {
    const CurveScale scale = totalAmountScale({{571, {0.0, 20.0}}, {575, {0.0, 80.0}}});
    EXPECT_DOUBLE_EQ(scale.low, 20.0);
    EXPECT_DOUBLE_EQ(scale.high, 80.0);
}

int columnOf(int index) {
    return index * 10;
}
int rowOf(double value) {
    return static_cast<int>(value);
}

TEST(LinkageGeometry, CostStepsGoAcrossAndThenToTheNewCost) {
    // 100 at 10, then 100 at 20: cost 10, then 15.
    CostStep at;
    const auto lines = costSteps({{1, {100, 1000.0}}, {4, {100, 2000.0}}}, at, columnOf, rowOf);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0], QLine(10, 10, 40, 10));
    EXPECT_EQ(lines[1], QLine(40, 10, 40, 15));
    EXPECT_TRUE(at.any);
    EXPECT_EQ(at.x, 40);
    EXPECT_EQ(at.y, 15);
}

TEST(LinkageGeometry, FirstStepOfTheSecondWalkStartsWhereTheFirstEnded) {
    CostStep at{true, 40, 15};
    const auto lines = costSteps({{6, {50, 600.0}}}, at, columnOf, rowOf);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0], QLine(40, 15, 60, 15));
    EXPECT_EQ(lines[1], QLine(60, 15, 60, 12));
}

TEST(LinkageGeometry, RunningCountOfZeroMakesNoStep) {
    CostStep at;
    EXPECT_TRUE(costSteps({{1, {0, 0.0}}}, at, columnOf, rowOf).empty());
    EXPECT_FALSE(at.any);
}

} // namespace
} // namespace TC
