#include "terminal/formula/PlacedDay.h"

#include "tests/terminal/Samples.h"

#include <gtest/gtest.h>

#include <random>

using namespace terminal;
using tests::pricedMinute;

namespace {

const std::vector<qint64> kPositions{60, 120, 180, 240, 300};

} // namespace

TEST(PlacedDay, TheLastMinuteChangesItsPointAlone) {
    PlacedDay day({pricedMinute(60, 1), pricedMinute(120, 2)}, kPositions);
    EXPECT_EQ(day.take(pricedMinute(120, 3)), SeriesChange::LastPoint);
    EXPECT_EQ(day.placed().bars, MinuteBars({pricedMinute(60, 1), pricedMinute(120, 3)}));
}

TEST(PlacedDay, TheNextPositionIsANewPoint) {
    PlacedDay day({pricedMinute(60, 1)}, kPositions);
    EXPECT_EQ(day.take(pricedMinute(120, 3)), SeriesChange::NewPoint);
    EXPECT_EQ(day.placed().bars, MinuteBars({pricedMinute(60, 1), pricedMinute(120, 3)}));
}

TEST(PlacedDay, AMinuteAfterAQuietOneChangesMoreThanItsPoint) {
    PlacedDay day({pricedMinute(60, 1)}, kPositions);
    EXPECT_EQ(day.take(pricedMinute(180, 3)), SeriesChange::Whole);
    ASSERT_EQ(day.placed().bars.size(), 3u);
    EXPECT_EQ(day.placed().bars[1].price, 1.0);
}

TEST(PlacedDay, TheFirstBarIsTheWholeSeries) {
    PlacedDay day({}, kPositions);
    EXPECT_EQ(day.take(pricedMinute(120, 3)), SeriesChange::Whole);
    EXPECT_EQ(day.placed().leading, (std::vector<qint64>{60}));
}

TEST(PlacedDay, AnEarlierMinuteChangesTheWholeSeries) {
    PlacedDay day({pricedMinute(60, 1), pricedMinute(120, 2)}, kPositions);
    EXPECT_EQ(day.take(pricedMinute(60, 4)), SeriesChange::Whole);
    EXPECT_EQ(day.take(pricedMinute(120, 5)), SeriesChange::Whole)
        << "the change before has not been looked at";
    EXPECT_EQ(day.placed().bars, MinuteBars({pricedMinute(60, 4), pricedMinute(120, 5)}));
    EXPECT_EQ(day.take(pricedMinute(120, 6)), SeriesChange::LastPoint);
}

TEST(PlacedDay, TheSameBarChangesNothing) {
    PlacedDay day({pricedMinute(60, 1)}, kPositions);
    EXPECT_EQ(day.take(pricedMinute(60, 1)), SeriesChange::None);
}

TEST(PlacedDay, ABarOnNoPositionFillsUpToItselfOnce) {
    PlacedDay day({pricedMinute(60, 1)}, kPositions);
    EXPECT_EQ(day.take(pricedMinute(200, 7)), SeriesChange::Whole);
    EXPECT_EQ(day.placed().bars.size(), 3u) << "09:31 and 09:32 had no trade";
    EXPECT_EQ(day.take(pricedMinute(200, 8)), SeriesChange::None) << "it is on no position";
    EXPECT_EQ(day.placed().bars.back().price, 1.0);
}

TEST(PlacedDay, WithoutPositionsEveryLaterBarIsANewPoint) {
    PlacedDay day({pricedMinute(60, 1)}, {});
    EXPECT_EQ(day.take(pricedMinute(777, 2)), SeriesChange::NewPoint);
    EXPECT_EQ(day.placed().bars.size(), 2u);
}

TEST(PlacedDay, WhateverComesItIsWhatPlacingAllBarsGives) {
    std::mt19937 random(20251121);
    for (int round = 0; round < 400; ++round) {
        std::vector<qint64> positions;
        for (qint64 time = 60; time <= 1200; time += 60) {
            positions.push_back(time);
        }
        MinuteBars bars;
        PlacedDay day({}, round % 7 == 0 ? std::vector<qint64>() : positions);
        qint64 latest = 60;
        for (int i = 0; i < 60; ++i) {
            const int kind = static_cast<int>(random() % 10);
            latest += kind == 0 ? 120 : kind < 4 ? 60 : 0;
            const qint64 time = kind == 9 ? 60 * (1 + static_cast<qint64>(random() % 20)) : latest;
            const MinuteBar bar =
                pricedMinute(kind == 8 ? time + 7 : time, 1.0 + static_cast<double>(random() % 50));
            takeBar(bars, bar);
            day.take(bar);
            if (random() % 2 == 0) {
                const PlacedBars expected = placeBars(bars, round % 7 == 0 ? std::vector<qint64>() : positions);
                ASSERT_EQ(day.placed().bars, expected.bars) << round << " " << i;
                ASSERT_EQ(day.placed().leading, expected.leading);
            }
        }
    }
}
