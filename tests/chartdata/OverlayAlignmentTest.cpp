#include "chartdata/OverlayAlignment.h"

#include "tests/support/Series.h"

#include <gtest/gtest.h>

namespace TC {
namespace {

using tests::kDay;
using tests::makeResult;
using tests::minuteTime;
using tests::minuteTimes;

/// Time position `milliseconds` after 09:31:00.
se::TimePosition after(qint64 milliseconds) {
    return {minuteTime(kDay, 571).first + milliseconds, 0};
}

TEST(OverlayAlignment, ShapeIsThatOfTheMainSeriesAndZero) {
    auto main = makeResult(minuteTimes(kDay, 570, 3), {1, 2, 3}, std::vector<double>{4, 5, 6});
    main->mPointTags = {7, 8, 9};
    main->mShared1 = {1.5};
    main->mShared2 = {"x"};
    se::RPCFormulaResult aligned;
    shapeLike(aligned, *main);
    EXPECT_TRUE(hasShapeOf(aligned, *main));
    EXPECT_EQ(aligned.mTimes, std::vector<se::TimePosition>(3));
    EXPECT_EQ(aligned.mValid, (std::vector<qint32>{0, 0, 0}));
    EXPECT_EQ(aligned.mValues, (std::vector<std::vector<double>>{{0, 0, 0}, {0, 0, 0}}));
    EXPECT_EQ(aligned.mPointTags, main->mPointTags);
    EXPECT_EQ(aligned.mShared1, main->mShared1);
    EXPECT_EQ(aligned.mShared2, main->mShared2);
}

TEST(OverlayAlignment, ReshapingKeepsThePointsThatAreThere) {
    const auto main = makeResult(minuteTimes(kDay, 570, 4), {1, 2, 3, 4});
    auto aligned = *makeResult(minuteTimes(kDay, 570, 2), {8, 9});
    EXPECT_FALSE(hasShapeOf(aligned, *main));
    shapeLike(aligned, *main);
    EXPECT_EQ(aligned.mValues[0], (std::vector<double>{8, 9, 0, 0}));
    EXPECT_EQ(aligned.mValid, (std::vector<qint32>{1, 1, 0, 0}));
}

TEST(OverlayAlignment, PointsOfTheSameSecondShareASlot) {
    const auto main = makeResult({after(900)}, {1});
    const auto overlay = makeResult({after(400)}, {5});
    se::RPCFormulaResult aligned;
    shapeLike(aligned, *main);
    alignValues(aligned, *main, *overlay, 0);
    EXPECT_EQ(aligned.mTimes[0], after(900));
    EXPECT_EQ(aligned.mValues[0][0], 5);
    EXPECT_EQ(aligned.mValid[0], 1);
}

TEST(OverlayAlignment, PointsOfNeighbouringSecondsDoNotShareASlot) {
    const auto main = makeResult({after(1000)}, {1});
    const auto overlay = makeResult({after(999)}, {5});
    se::RPCFormulaResult aligned;
    shapeLike(aligned, *main);
    alignValues(aligned, *main, *overlay, 0);
    EXPECT_EQ(aligned.mValues[0][0], 0);
    EXPECT_EQ(aligned.mValid[0], 0);
}

TEST(OverlayAlignment, SlotWithoutPointKeepsWhatItHad) {
    const auto main = makeResult(minuteTimes(kDay, 570, 3), {1, 2, 3});
    const auto overlay = makeResult({minuteTime(kDay, 570), minuteTime(kDay, 572)}, {10, 30});
    se::RPCFormulaResult aligned;
    shapeLike(aligned, *main);
    aligned.mValues[0][1] = 77;
    alignValues(aligned, *main, *overlay, 0);
    EXPECT_EQ(aligned.mValues[0], (std::vector<double>{10, 77, 30}));
    EXPECT_EQ(aligned.mValid, (std::vector<qint32>{1, 0, 1}));
}

TEST(OverlayAlignment, OverlayPointWithoutSlotIsDropped) {
    const auto main = makeResult({minuteTime(kDay, 570), minuteTime(kDay, 572)}, {1, 3});
    const auto overlay = makeResult(minuteTimes(kDay, 569, 5), {9, 10, 20, 30, 40});
    se::RPCFormulaResult aligned;
    shapeLike(aligned, *main);
    alignValues(aligned, *main, *overlay, 0);
    EXPECT_EQ(aligned.mValues[0], (std::vector<double>{10, 30}));
}

TEST(OverlayAlignment, BeginsAtTheFirstIndexOfBoth) {
    const auto main = makeResult(minuteTimes(kDay, 570, 4), {1, 2, 3, 4});
    const auto overlay = makeResult(minuteTimes(kDay, 570, 4), {10, 20, 30, 40});
    se::RPCFormulaResult aligned;
    shapeLike(aligned, *main);
    alignValues(aligned, *main, *overlay, 2);
    EXPECT_EQ(aligned.mValues[0], (std::vector<double>{0, 0, 30, 40}));
}

TEST(OverlayAlignment, TellsTheFirstSlotThatIsAnotherOneNow) {
    const auto main = makeResult(minuteTimes(kDay, 570, 4), {1, 2, 3, 4});
    auto overlay = makeResult(minuteTimes(kDay, 570, 4), {0, 20, 30, 40});
    se::RPCFormulaResult aligned;
    shapeLike(aligned, *main);
    EXPECT_EQ(alignValues(aligned, *main, *overlay, 0), 0u); // the value is the 0 of a new slot, but valid now
    EXPECT_EQ(alignValues(aligned, *main, *overlay, 0), 4u); // nothing
    overlay->mValues[0][1] = 21;
    overlay->mValues[0][3] = 41;
    EXPECT_EQ(alignValues(aligned, *main, *overlay, 2), 3u);
    EXPECT_EQ(alignValues(aligned, *main, *overlay, 0), 1u);
}

TEST(OverlayAlignment, ShortLinesAndUnsortedTimesAreHarmless) {
    auto main = makeResult({after(5000), after(1000), after(5000)}, {1, 2, 3}, std::vector<double>{1});
    auto overlay =
        makeResult({after(5000), after(5000), after(1000), after(9000)}, {10}, std::vector<double>{});
    se::RPCFormulaResult aligned;
    shapeLike(aligned, *main);
    alignValues(aligned, *main, *overlay, 0);
    EXPECT_TRUE(hasShapeOf(aligned, *main));
    EXPECT_EQ(aligned.mValues[0][0], 10);
}

} // namespace
} // namespace TC
