#include "viewmodel/AxisTicks.h"

#include "host/records/RPCFormulaResult.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace TC;

namespace {

QVector<int> rows(const QVector<AxisTick> &ticks) {
    QVector<int> rows;
    for (const AxisTick &tick : ticks) {
        rows.append(tick.y);
    }
    return rows;
}

QVector<double> values(const QVector<AxisTick> &ticks) {
    QVector<double> values;
    for (const AxisTick &tick : ticks) {
        values.append(tick.value);
    }
    return values;
}

// How many ticks

TEST(AxisTickCount, IsHowOftenThreePointTwoLinesFit) {
    EXPECT_EQ(axisTickCount(0, 10), 0);
    EXPECT_EQ(axisTickCount(31, 10), 0);
    EXPECT_EQ(axisTickCount(32, 10), 1);
    EXPECT_EQ(axisTickCount(63, 10), 1);
    EXPECT_EQ(axisTickCount(64, 10), 2);
    EXPECT_EQ(axisTickCount(224, 10), 7);
    EXPECT_EQ(axisTickCount(700, 17), 12);
}

TEST(AxisTickCount, TakesAFontWithoutHeight) {
    EXPECT_EQ(axisTickCount(700, 0), 0);
    EXPECT_EQ(axisTickCount(700, -1), 0);
}

// Sub panes

TEST(SubPaneTicks, RunFromEdgeToEdge) {
    const QVector<AxisTick> ticks = subPaneTicks(100, 3, {4.0, 1.0});
    EXPECT_EQ(rows(ticks), (QVector<int>{0, 33, 66, 100}));
    EXPECT_EQ(values(ticks), (QVector<double>{4.0, 3.0, 2.0, 1.0}));
}

TEST(SubPaneTicks, OneIntervalHasItsTwoEnds) {
    const QVector<AxisTick> ticks = subPaneTicks(40, 1, {2.0, -2.0});
    EXPECT_EQ(rows(ticks), (QVector<int>{0, 40}));
    EXPECT_EQ(values(ticks), (QVector<double>{2.0, -2.0}));
}

TEST(SubPaneTicks, NoneWithoutRoom) {
    EXPECT_TRUE(subPaneTicks(20, 0, {2.0, 1.0}).isEmpty());
    EXPECT_TRUE(subPaneTicks(20, -1, {2.0, 1.0}).isEmpty());
}

// Main panes

TEST(MainPaneTicks, SevenWithVolumeBecomeFourOfPriceAndTwoOfVolume) {
    const QVector<AxisTick> ticks = mainPaneTicks(120, 7, true, {14.0, 10.0}, {500.0, 100.0});
    EXPECT_EQ(rows(ticks), (QVector<int>{0, 20, 40, 60, 80, 100}));
    EXPECT_EQ(values(ticks), (QVector<double>{14.0, 13.0, 12.0, 11.0, 500.0, 300.0}));
}

TEST(MainPaneTicks, EightWithVolumeBecomeNine) {
    const QVector<AxisTick> ticks = mainPaneTicks(90, 8, true, {16.0, 10.0}, {300.0, 0.0});
    EXPECT_EQ(rows(ticks), (QVector<int>{0, 10, 20, 30, 40, 50, 60, 70, 80}));
    EXPECT_EQ(values(ticks), (QVector<double>{16.0, 15.0, 14.0, 13.0, 12.0, 11.0, 300.0, 200.0, 100.0}));
}

TEST(MainPaneTicks, SixWithVolumeStaySix) {
    EXPECT_EQ(mainPaneTicks(60, 6, true, {1.0, 0.0}, {1.0, 0.0}).size(), 6);
}

TEST(MainPaneTicks, TwoWithVolumeBecomeThree) {
    const QVector<AxisTick> ticks = mainPaneTicks(100, 2, true, {2.0, 0.0}, {9.0, 0.0});
    EXPECT_EQ(rows(ticks), (QVector<int>{0, 33, 66}));
    EXPECT_EQ(values(ticks), (QVector<double>{2.0, 1.0, 9.0}));
}

TEST(MainPaneTicks, SevenWithoutVolumeBecomeSixOfPrice) {
    const QVector<AxisTick> ticks = mainPaneTicks(60, 7, false, {16.0, 10.0}, {500.0, 100.0});
    EXPECT_EQ(rows(ticks), (QVector<int>{0, 10, 20, 30, 40, 50}));
    EXPECT_EQ(values(ticks), (QVector<double>{16.0, 15.0, 14.0, 13.0, 12.0, 11.0}));
}

TEST(MainPaneTicks, BottomEdgeHasNone) {
    for (const AxisTick &tick : mainPaneTicks(600, 12, false, {2.0, 1.0}, {})) {
        EXPECT_LT(tick.y, 600);
    }
}

TEST(MainPaneTicks, NoneWhenFewerThanTwoRemain) {
    EXPECT_TRUE(mainPaneTicks(40, 1, true, {2.0, 1.0}, {}).isEmpty());
    EXPECT_TRUE(mainPaneTicks(40, 1, false, {2.0, 1.0}, {}).isEmpty());
    EXPECT_TRUE(mainPaneTicks(10, 0, true, {2.0, 1.0}, {}).isEmpty());
    EXPECT_TRUE(mainPaneTicks(10, 0, false, {2.0, 1.0}, {}).isEmpty());
}

TEST(MainPaneTicks, TakesAnyRangeAndSize) {
    const double infinite = std::numeric_limits<double>::infinity();
    for (const AxisRange &range : {AxisRange(std::nan(""), 1.0), AxisRange(infinite, -infinite),
                                   AxisRange(kUnsetValue, -kUnsetValue), AxisRange(0.0, 0.0)}) {
        EXPECT_EQ(mainPaneTicks(300, 6, true, range, range).size(), 6);
        EXPECT_EQ(subPaneTicks(300, 6, range).size(), 7);
    }
    const QVector<AxisTick> tall = mainPaneTicks(16777215, 400000, false, {2.0, 1.0}, {});
    EXPECT_EQ(tall.last().y, 16777173) << "16777215 * 399999 / 400000";
}

// Time lines

TEST(TimeLines, StockDayHasOneEveryHalfHourAndOneAtNoon) {
    EXPECT_EQ(timeLineIndexes({{570, 690}, {781, 900}}), (QVector<int>{30, 60, 90, 120, 150, 180, 210}));
}

TEST(TimeLines, CommodityDayHasOneAtTheEndOfEachSession) {
    // 75 minutes, 60 from 10:30, 90 from 13:30; the ends of the first two at 75 and 135.
    EXPECT_EQ(timeLineIndexes({{540, 615}, {631, 690}, {811, 900}}),
              (QVector<int>{30, 60, 75, 105, 135, 165, 195}));
}

TEST(TimeLines, NightDayGoesOnAfterMidnight) {
    const QVector<int> lines = timeLineIndexes({{1260, 1440}, {1, 150}, {541, 615}, {631, 690}, {811, 900}});
    EXPECT_EQ(lines, (QVector<int>{30, 60, 90, 120, 150, 180, 210, 240, 270, 300, 330, 360, 390, 405, 435, 465,
                                   495, 525}));
}

TEST(TimeLines, SessionOfExactlyThirtyMinutesHasNoInnerLine) {
    EXPECT_EQ(timeLineIndexes({{570, 600}}), QVector<int>());
    EXPECT_EQ(timeLineIndexes({{570, 600}, {781, 900}}), (QVector<int>{30, 60, 90, 120}));
    EXPECT_EQ(timeLineIndexes({{570, 601}}), (QVector<int>{30}));
}

TEST(TimeLines, NoSessionsHaveNone) {
    EXPECT_TRUE(timeLineIndexes({}).isEmpty());
}

TEST(TimeLines, SessionsWithoutMinutesAddNothing) {
    EXPECT_EQ(timeLineIndexes({{570, 570}, {600, 500}, {781, 840}}), (QVector<int>{30}));
}

TEST(TimeLines, TakesAnySessions) {
    constexpr int most = std::numeric_limits<int>::max();
    constexpr int least = std::numeric_limits<int>::min();
    EXPECT_LE(timeLineIndexes({{least, most}, {least, most}, {most, least}, {least, least}}).size(), 200);
}

} // namespace
