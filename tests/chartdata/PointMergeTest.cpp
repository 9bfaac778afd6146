#include "chartdata/PointMerge.h"

#include "tests/support/Series.h"

#include <gtest/gtest.h>

namespace TC {
namespace {

using tests::kDay;
using tests::makePoint;
using tests::makeResult;
using tests::minuteTime;
using tests::minuteTimes;

std::vector<se::TimePosition> threeMinutes() {
    return {minuteTime(kDay, 570), minuteTime(kDay, 571), minuteTime(kDay, 573)};
}

TEST(PointMerge, LaterPointIsNew) {
    const PointPlace place = findPlace(threeMinutes(), minuteTime(kDay, 574));
    EXPECT_EQ(place.kind, EPointPlace::New);
    EXPECT_EQ(place.index, 3u);
}

TEST(PointMerge, FirstPointOfAnEmptySeriesIsNew) {
    const PointPlace place = findPlace({}, minuteTime(kDay, 570));
    EXPECT_EQ(place.kind, EPointPlace::New);
    EXPECT_EQ(place.index, 0u);
}

TEST(PointMerge, SubPositionDecidesBetweenEqualTimes) {
    const std::vector<se::TimePosition> times{minuteTime(kDay, 570, 1), minuteTime(kDay, 570, 3)};
    EXPECT_EQ(findPlace(times, minuteTime(kDay, 570, 4)).kind, EPointPlace::New);
    EXPECT_EQ(findPlace(times, minuteTime(kDay, 570, 3)).kind, EPointPlace::Newest);
    EXPECT_EQ(findPlace(times, minuteTime(kDay, 570, 2)).kind, EPointPlace::None);
    EXPECT_EQ(findPlace(times, minuteTime(kDay, 570, 1)).kind, EPointPlace::Older);
}

TEST(PointMerge, StoredOlderPointIsFound) {
    const PointPlace place = findPlace(threeMinutes(), minuteTime(kDay, 571));
    EXPECT_EQ(place.kind, EPointPlace::Older);
    EXPECT_EQ(place.index, 1u);
}

TEST(PointMerge, PointBetweenStoredOnesHasNoPlace) {
    EXPECT_EQ(findPlace(threeMinutes(), minuteTime(kDay, 572)).kind, EPointPlace::None);
}

TEST(PointMerge, PointBeforeTheFirstOneHasNoPlace) {
    EXPECT_EQ(findPlace(threeMinutes(), minuteTime(kDay, 569)).kind, EPointPlace::None);
}

TEST(PointMerge, UnsortedTimesGiveAPlaceInsideOrNone) {
    const std::vector<se::TimePosition> times{{5, 0}, {1, 0}, {9, 0}, {1, 0}, {4, 0}};
    for (qint64 time = 0; time < 12; ++time) {
        const PointPlace place = findPlace(times, {time, 0});
        if (place.kind == EPointPlace::Older || place.kind == EPointPlace::Newest) {
            ASSERT_LT(place.index, times.size());
            EXPECT_EQ(times[place.index].first, time);
        }
    }
}

TEST(PointMerge, StoringTakesAllItemsAndValidity) {
    auto series = makeResult(threeMinutes(), {1, 2, 3}, std::vector<double>{4, 5, 6});
    series->mValid[1] = 0;
    auto point = makePoint(minuteTime(kDay, 571), {20, 50});
    point->mTexts = {"a", "b"};
    point->mExtra1 = {7, 8};
    point->mExtra2 = {0.7, 0.8};
    storePoint(*series, {EPointPlace::Older, 1}, *point, EPointParts::Everything);
    EXPECT_EQ(series->mTimes, threeMinutes());
    EXPECT_EQ(series->mValid, (std::vector<qint32>{1, 1, 1}));
    EXPECT_EQ(series->mValues, (std::vector<std::vector<double>>{{1, 20, 3}, {4, 50, 6}}));
    EXPECT_EQ(series->mTexts, (std::vector<std::vector<std::string>>{{"", "a", ""}, {"", "b", ""}}));
    EXPECT_EQ(series->mExtra1, (std::vector<std::vector<qint32>>{{-1, 7, -1}, {-1, 8, -1}}));
    EXPECT_EQ(series->mExtra2, (std::vector<std::vector<double>>{{0, 0.7, 0}, {0, 0.8, 0}}));
}

TEST(PointMerge, StoringValuesAloneLeavesTextsAndFurtherItems) {
    auto series = makeResult(threeMinutes(), {1, 2, 3});
    auto point = makePoint(minuteTime(kDay, 574), {4});
    point->mTexts = {"a"};
    point->mExtra1 = {7};
    storePoint(*series, {EPointPlace::New, 3}, *point, EPointParts::Values);
    EXPECT_EQ(series->mTimes.size(), 4u);
    EXPECT_EQ(series->mValues[0], (std::vector<double>{1, 2, 3, 4}));
    EXPECT_EQ(series->mTexts[0].size(), 3u);
    EXPECT_EQ(series->mExtra1[0].size(), 3u);
}

TEST(PointMerge, StoringTellsWhetherAnythingIsDifferent) {
    auto series = makeResult(threeMinutes(), {1, 2, 3});
    const PointPlace newest{EPointPlace::Newest, 2};
    auto point = makePoint(minuteTime(kDay, 573), {3});
    const auto differs = [&](EPointParts parts) { return storePoint(*series, newest, *point, parts); };
    EXPECT_FALSE(differs(EPointParts::Values));
    point->mValues = {4};
    EXPECT_TRUE(differs(EPointParts::Values));
    EXPECT_FALSE(differs(EPointParts::Values));
    series->mValid[2] = 0;
    EXPECT_TRUE(differs(EPointParts::Values));
    point->mTexts = {"a"};
    EXPECT_FALSE(differs(EPointParts::Values));
    EXPECT_TRUE(differs(EPointParts::Everything));
    point->mExtra1 = {7};
    EXPECT_TRUE(differs(EPointParts::Everything));
    point->mExtra2 = {0.5};
    EXPECT_TRUE(differs(EPointParts::Everything));
    EXPECT_FALSE(differs(EPointParts::Everything));
    EXPECT_TRUE(
        storePoint(*series, {EPointPlace::New, 3}, *makePoint(minuteTime(kDay, 574), {}), EPointParts::Values));
}

TEST(PointMerge, PointWithFewerLinesLeavesTheOthers) {
    auto series = makeResult(threeMinutes(), {1, 2, 3}, std::vector<double>{4, 5, 6});
    storePoint(*series, {EPointPlace::Newest, 2}, *makePoint(minuteTime(kDay, 573), {30}),
               EPointParts::Everything);
    EXPECT_EQ(series->mValues, (std::vector<std::vector<double>>{{1, 2, 30}, {4, 5, 6}}));
}

TEST(PointMerge, ShortListsAreGrownWithUnsetValues) {
    auto series = makeResult(threeMinutes(), {1, 2, 3});
    series->mValues[0].resize(1);
    series->mValid.clear();
    storePoint(*series, {EPointPlace::New, 3}, *makePoint(minuteTime(kDay, 574), {4}), EPointParts::Everything);
    EXPECT_EQ(series->mValues[0], (std::vector<double>{1, kUnsetValue, kUnsetValue, 4}));
    EXPECT_EQ(series->mValid, (std::vector<qint32>{0, 0, 0, 1}));
}

TEST(PointMerge, PushedLaterPointIsAppendedWithAllLists) {
    auto series = makeResult(minuteTimes(kDay, 570, 2), {1, 2});
    auto incoming = makeResult(minuteTimes(kDay, 570, 4), {91, 92, 93, 94});
    incoming->mTexts[0][3] = "t";
    incoming->mExtra1[0][3] = 5;
    incoming->mExtra2[0][3] = 0.5;
    incoming->mPointTags[3] = 9;
    incoming->mValid[3] = 0;
    EXPECT_EQ(mergeLastPoint(*series, *incoming, EPointParts::Everything), EPushOutcome::Appended);
    EXPECT_EQ(series->mTimes.back(), minuteTime(kDay, 573));
    EXPECT_EQ(series->mValues[0], (std::vector<double>{1, 2, 94}));
    EXPECT_EQ(series->mTexts[0].back(), "t");
    EXPECT_EQ(series->mExtra1[0].back(), 5);
    EXPECT_EQ(series->mExtra2[0].back(), 0.5);
    EXPECT_EQ(series->mPointTags, (std::vector<qint32>{0, 0, 9}));
    EXPECT_EQ(series->mValid, (std::vector<qint32>{1, 1, 1}));
}

TEST(PointMerge, PushedPointOfTheSameTimeOverwritesWithItsSubPosition) {
    auto series =
        makeResult({minuteTime(kDay, 570), minuteTime(kDay, 571, 5)}, {1, 2}, std::vector<double>{3, 4});
    auto incoming = makeResult({minuteTime(kDay, 571, 2)}, {20}, std::vector<double>{});
    EXPECT_EQ(mergeLastPoint(*series, *incoming, EPointParts::Everything), EPushOutcome::Updated);
    EXPECT_EQ(series->mTimes.back(), minuteTime(kDay, 571, 2));
    EXPECT_EQ(series->mValues, (std::vector<std::vector<double>>{{1, 20}, {3, 4}})); // an empty line is skipped
}

TEST(PointMerge, PushedOlderPointChangesNothing) {
    auto series = makeResult(minuteTimes(kDay, 570, 3), {1, 2, 3});
    const auto incoming = makeResult(minuteTimes(kDay, 570, 2), {91, 92});
    EXPECT_EQ(mergeLastPoint(*series, *incoming, EPointParts::Everything), EPushOutcome::Outdated);
    EXPECT_EQ(series->mValues[0], (std::vector<double>{1, 2, 3}));
}

TEST(PointMerge, PushIntoAnEmptySeriesOfTheSameTimeChangesNothing) {
    se::RPCFormulaResult series;
    EXPECT_EQ(mergeLastPoint(series, *makeResult({{0, 0}}, {1}), EPointParts::Everything),
              EPushOutcome::Nothing);
    EXPECT_TRUE(series.mTimes.empty());
}

} // namespace
} // namespace TC
