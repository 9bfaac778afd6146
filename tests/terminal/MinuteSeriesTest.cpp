#include "terminal/formula/MinuteSeries.h"

#include <gtest/gtest.h>

using namespace terminal;

namespace {

MinuteBar at(qint64 time, double price) {
    MinuteBar bar;
    bar.time = time;
    bar.price = price;
    return bar;
}

} // namespace

TEST(MinuteSeries, AFirstAndALaterBarGoToTheEnd) {
    MinuteBars bars;
    EXPECT_EQ(takeBar(bars, at(60, 1)), BarChange::Last);
    EXPECT_EQ(takeBar(bars, at(120, 2)), BarChange::Last);
    EXPECT_EQ(bars, MinuteBars({at(60, 1), at(120, 2)}));
}

TEST(MinuteSeries, TheLastBarIsReplacedInPlace) {
    MinuteBars bars{at(60, 1), at(120, 2)};
    EXPECT_EQ(takeBar(bars, at(120, 3)), BarChange::Last);
    EXPECT_EQ(bars, MinuteBars({at(60, 1), at(120, 3)}));
}

TEST(MinuteSeries, AnEarlierBarIsRevisedOrGoesBetween) {
    MinuteBars bars{at(60, 1), at(180, 2)};
    EXPECT_EQ(takeBar(bars, at(60, 5)), BarChange::Earlier);
    EXPECT_EQ(takeBar(bars, at(120, 4)), BarChange::Earlier);
    EXPECT_EQ(takeBar(bars, at(0, 3)), BarChange::Earlier);
    EXPECT_EQ(bars, MinuteBars({at(0, 3), at(60, 5), at(120, 4), at(180, 2)}));
}

TEST(MinuteSeries, ALateBarBeforeTheOnlyOneIsEarlier) {
    MinuteBars bars{at(120, 1)};
    EXPECT_EQ(takeBar(bars, at(60, 2)), BarChange::Earlier);
}

TEST(MinuteSeries, TheSameBarChangesNothing) {
    MinuteBars bars{at(60, 1), at(120, 2)};
    EXPECT_EQ(takeBar(bars, at(60, 1)), BarChange::None);
    EXPECT_EQ(takeBar(bars, at(120, 2)), BarChange::None);
    EXPECT_EQ(bars.size(), 2u);
}

TEST(MinuteSeries, BarsStandOnThePositionsOfTheDay) {
    const PlacedBars placed = placeBars({at(120, 1), at(180, 2)}, {60, 120, 180, 240});
    EXPECT_EQ(placed.leading, (std::vector<qint64>{60})) << "the position before the first bar";
    EXPECT_EQ(placed.bars, MinuteBars({at(120, 1), at(180, 2)})) << "and none after the last one";
}

TEST(MinuteSeries, AMinuteWithoutATradeRepeatsThePriceWithoutVolume) {
    MinuteBar first = at(60, 7.5);
    first.average = 7.25;
    first.volume = 100;
    const PlacedBars placed = placeBars({first, at(180, 8)}, {60, 120, 180});
    ASSERT_EQ(placed.bars.size(), 3u);
    EXPECT_EQ(placed.bars[1].time, 120);
    EXPECT_EQ(placed.bars[1].price, 7.5);
    EXPECT_EQ(placed.bars[1].average, 7.25);
    EXPECT_EQ(placed.bars[1].volume, 0.0);
}

TEST(MinuteSeries, ABarOnNoPositionIsLeftOut) {
    EXPECT_EQ(placeBars({at(60, 1), at(90, 9), at(120, 2)}, {60, 120}).bars,
              MinuteBars({at(60, 1), at(120, 2)}));
}

TEST(MinuteSeries, WithoutPositionsBarsStandAsTheyAre) {
    const MinuteBars bars{at(60, 1), at(90, 9)};
    EXPECT_EQ(placeBars(bars, {}).bars, bars);
    EXPECT_TRUE(placeBars({}, {60, 120}).bars.empty());
    EXPECT_TRUE(placeBars({}, {60, 120}).leading.empty()) << "no point without a bar";
}
