#include "chartdata/ValueRange.h"
#include "chartdata/ChartLayout.h"
#include "tests/support/Numbers.h"

#include <gtest/gtest.h>

using namespace TC;
using tests::kInfinity;
using tests::kNaN;

namespace {

const CFormulaKey kKey(QStringLiteral("SH600000"), QStringLiteral("REALTIME"));
const CFormulaKey kOther(QStringLiteral("SZ000001"), QStringLiteral("REALTIME"));

using RangeMap = IndexBaseData::MaxMinMap;

} // namespace

TEST(ValueComparison, AToleranceOfAHundredThousandthCountsAsEqual) {
    EXPECT_FALSE(exceeds(10.000009, 10.0));
    EXPECT_TRUE(exceeds(10.000011, 10.0));
    EXPECT_FALSE(liesBelow(9.999991, 10.0));
    EXPECT_TRUE(liesBelow(9.999989, 10.0));
    EXPECT_TRUE(isZero(0.000009));
    EXPECT_TRUE(isZero(-0.00001));
    EXPECT_FALSE(isZero(0.000011));
}

TEST(ValueComparison, TheLargestDoubleIsUnset) {
    EXPECT_TRUE(isUnset(1.7976931348623157e308));
    EXPECT_FALSE(isUnset(-1.7976931348623157e308));
    EXPECT_FALSE(isUnset(0.0));
    EXPECT_FALSE(isUnset(kInfinity));
    EXPECT_FALSE(isUnset(kNaN));
    EXPECT_FALSE(isUsable(1.7976931348623157e308));
    EXPECT_FALSE(isUsable(kInfinity));
    EXPECT_FALSE(isUsable(kNaN));
    EXPECT_TRUE(isUsable(-3.5));
}

TEST(Widen, UnsetExtremesTakeTheFirstOnes) {
    double max = kUnsetValue;
    double min = kUnsetValue;
    EXPECT_TRUE(widen(max, min, {11.0, 9.0}));
    EXPECT_EQ(max, 11.0);
    EXPECT_EQ(min, 9.0);
}

TEST(Widen, AnUnsetMinimumAloneIsTakenWithoutAChange) {
    double max = 11.0;
    double min = kUnsetValue;
    EXPECT_FALSE(widen(max, min, {10.5, 9.0}));
    EXPECT_EQ(max, 11.0);
    EXPECT_EQ(min, 9.0);
}

TEST(Widen, AnUnsetMinimumWithALargerMaximumIsAChange) {
    double max = 11.0;
    double min = kUnsetValue;
    EXPECT_TRUE(widen(max, min, {11.5, 9.0}));
    EXPECT_EQ(max, 11.5);
}

TEST(Widen, ExtremesOnlyWiden) {
    double max = 11.0;
    double min = 9.0;
    EXPECT_FALSE(widen(max, min, {10.5, 9.5}));
    EXPECT_FALSE(widen(max, min, {11.000009, 8.999991}));
    EXPECT_EQ(max, 11.0);
    EXPECT_EQ(min, 9.0);
    EXPECT_TRUE(widen(max, min, {10.0, 8.5}));
    EXPECT_EQ(max, 11.0);
    EXPECT_EQ(min, 8.5);
}

TEST(StoreRange, ANewKeyIsWritten) {
    RangeMap ranges;
    EXPECT_TRUE(storeRange(ranges, kKey, {11.0, 9.0}));
    EXPECT_EQ(ranges.value(kKey), qMakePair(11.0, 9.0));
}

TEST(StoreRange, InsideTheStoredRangeNothingIsWritten) {
    RangeMap ranges{{kKey, {11.0, 9.0}}};
    EXPECT_FALSE(storeRange(ranges, kKey, {10.5, 9.5}));
    EXPECT_FALSE(storeRange(ranges, kKey, {11.000009, 8.999991}));
    EXPECT_EQ(ranges.value(kKey), qMakePair(11.0, 9.0));
}

TEST(StoreRange, WideningOneSideWritesBothHalvesSoTheOtherMayNarrow) {
    RangeMap ranges{{kKey, {11.0, 9.0}}};
    EXPECT_TRUE(storeRange(ranges, kKey, {12.0, 9.5}));
    EXPECT_EQ(ranges.value(kKey), qMakePair(12.0, 9.5));
    EXPECT_TRUE(storeRange(ranges, kKey, {10.0, 8.0}));
    EXPECT_EQ(ranges.value(kKey), qMakePair(10.0, 8.0));
}

TEST(IsOutgrown, ARangeThatWasNeverDrawnIsOutgrown) {
    EXPECT_TRUE(isOutgrown({{kKey, {11.0, 9.0}}}, {}));
    EXPECT_FALSE(isOutgrown({}, {{kKey, {11.0, 9.0}}}));
}

TEST(IsOutgrown, OnlyALeavingSideCounts) {
    const RangeMap drawn{{kKey, {11.0, 9.0}}, {kOther, {2.0, 1.0}}};
    EXPECT_FALSE(isOutgrown({{kKey, {11.000009, 8.999991}}}, drawn));
    EXPECT_FALSE(isOutgrown({{kKey, {10.5, 9.5}}, {kOther, {2.0, 1.0}}}, drawn));
    EXPECT_TRUE(isOutgrown({{kKey, {11.1, 9.0}}}, drawn));
    EXPECT_TRUE(isOutgrown({{kKey, {11.0, 8.9}}}, drawn));
    EXPECT_TRUE(isOutgrown({{kKey, {11.0, 9.0}}, {kOther, {2.1, 1.0}}}, drawn));
}

TEST(AdoptRanges, EachSideWidensByItself) {
    RangeMap drawn{{kKey, {11.0, 9.0}}};
    EXPECT_FALSE(adoptRanges(drawn, {{kKey, {10.5, 9.5}}}, false));
    EXPECT_TRUE(adoptRanges(drawn, {{kKey, {12.0, 9.5}}}, false));
    EXPECT_EQ(drawn.value(kKey), qMakePair(12.0, 9.0));
    EXPECT_TRUE(adoptRanges(drawn, {{kKey, {11.0, 8.0}}}, false));
    EXPECT_EQ(drawn.value(kKey), qMakePair(12.0, 8.0));
}

TEST(AdoptRanges, OverwritingReplacesAndCountsAsAChangeAlwaysSo) {
    RangeMap drawn{{kKey, {11.0, 9.0}}};
    EXPECT_TRUE(adoptRanges(drawn, {{kKey, {10.5, 9.5}}}, true));
    EXPECT_EQ(drawn.value(kKey), qMakePair(10.5, 9.5));
    EXPECT_TRUE(adoptRanges(drawn, {{kKey, {10.5, 9.5}}}, true));
    EXPECT_FALSE(adoptRanges(drawn, {}, true));
}

TEST(GatherAmplitude, TheLargerDistanceFromTheBaseCounts) {
    double amplitude = 0.0;
    gatherAmplitude(amplitude, {10.5, 9.0}, 10.0);
    EXPECT_DOUBLE_EQ(amplitude, 0.1);
    gatherAmplitude(amplitude, {20.2, 19.9}, 20.0);
    EXPECT_DOUBLE_EQ(amplitude, 0.1);
}

TEST(GatherAmplitude, AZeroOrUnsetBaseLeavesItAlone) {
    double amplitude = 0.03;
    gatherAmplitude(amplitude, {10.5, 9.0}, 0.0);
    gatherAmplitude(amplitude, {10.5, 9.0}, kUnsetValue);
    gatherAmplitude(amplitude, {0.0, 0.0}, 0.0);
    gatherAmplitude(amplitude, {0.0, 0.0}, kUnsetValue);
    gatherAmplitude(amplitude, {10.5, 9.0}, kNaN);
    EXPECT_EQ(amplitude, 0.03);
}

TEST(GatherAmplitude, AnAllZeroSeriesSetsBackWhatEarlierOnesGathered) {
    double amplitude = 0.03;
    gatherAmplitude(amplitude, {0.0, 0.0}, 10.0);
    EXPECT_EQ(amplitude, 0.0);
}

TEST(CentredRange, TheFartherExtremeDecides) {
    EXPECT_EQ(centredRange({10.5, 9.0}, 10.0, 0.1), qMakePair(11.0, 9.0));
}

TEST(CentredRange, HalfMustExceedTheMinimumStrictly) {
    EXPECT_EQ(centredRange({10.0, 10.0}, 10.0, 0.125), qMakePair(10.125, 9.875));
    EXPECT_EQ(centredRange({10.125, 10.0}, 10.0, 0.125), qMakePair(10.125, 9.875));
    EXPECT_EQ(centredRange({0.0, 0.0}, 10.0, 0.125), qMakePair(10.125, 9.875));
}

TEST(RowOfValue, TruncatesTowardZero) {
    EXPECT_EQ(rowOfValue(11.0, {11.0, 9.0}, 100), 0);
    EXPECT_EQ(rowOfValue(9.0, {11.0, 9.0}, 100), 100);
    EXPECT_EQ(rowOfValue(10.03, {11.0, 9.0}, 100), 48); // 48.5
    EXPECT_EQ(rowOfValue(11.01, {11.0, 9.0}, 100), 0); // -0.5
    EXPECT_EQ(rowOfValue(11.03, {11.0, 9.0}, 100), -1); // -1.5
}

TEST(RowOfValue, WithoutAHeightOfTheRangeThereIsNoRow) {
    EXPECT_EQ(rowOfValue(10.0, {10.0, 10.0}, 100), -1);
    EXPECT_EQ(rowOfValue(kNaN, {11.0, 9.0}, 100), -1);
    EXPECT_EQ(rowOfValue(kUnsetValue, {11.0, 9.0}, 100), -1);
    EXPECT_EQ(rowOfValue(10.0, {kUnsetValue, -kUnsetValue}, 100), -1);
    EXPECT_EQ(rowOfValue(10.0, {kNaN, 9.0}, 100), -1);
    EXPECT_EQ(rowOfValue(1e300, {1e-300, 0.0}, 100), -1);
    EXPECT_EQ(rowOfValue(1e300, {1.0, 0.0}, 100), -1000000000);
}

TEST(ValueOfRow, IsTheReverseOfARow) {
    EXPECT_DOUBLE_EQ(valueOfRow(0, {11.0, 9.0}, 100), 11.0);
    EXPECT_DOUBLE_EQ(valueOfRow(100, {11.0, 9.0}, 100), 9.0);
    EXPECT_DOUBLE_EQ(valueOfRow(25, {11.0, 9.0}, 100), 10.5);
}

TEST(ValueOfRow, NoRowsOrNoRoomGiveADefiniteValue) {
    EXPECT_EQ(valueOfRow(3, {11.0, 9.0}, 0), 0.0);
    EXPECT_EQ(valueOfRow(3, {10.0, 10.0}, 100), 10.0);
    EXPECT_EQ(valueOfRow(3, {kNaN, 9.0}, 100), 0.0);
}

TEST(ChartLayout, TwoThirdsAreRoundedToTheNearestRow) {
    const ChartLayout layout = chartLayout(QSize(400, 301), true); // 200.67 rounds to 201
    EXPECT_EQ(layout.price, QRect(1, 3, 398, 196));
    EXPECT_EQ(layout.volume, QRect(1, 204, 398, 95));
}

TEST(ChartLayout, WithoutVolumeThePriceTakesTheWholePane) {
    const ChartLayout layout = chartLayout(QSize(400, 301), false);
    EXPECT_EQ(layout.price, QRect(1, 3, 398, 296));
    EXPECT_TRUE(layout.volume.isNull());
}

TEST(ChartLayout, TheValueAxisRoundsTowardZero) {
    EXPECT_EQ(priceAxisHeight(301, true), 200);
    EXPECT_EQ(priceAxisHeight(301, false), 301);
    EXPECT_EQ(priceAxisHeight(0, true), 0);
    EXPECT_EQ(priceAxisHeight(2000000000, true), 1333333333);
}
