#include "terminal/formula/MinuteSeries.h"

#include "tests/terminal/Samples.h"

#include <gtest/gtest.h>

using namespace terminal;
using tests::pricedMinute;

namespace {} // namespace

TEST(MinuteSeries, AFirstAndALaterBarGoToTheEnd) {
    MinuteBars bars;
    EXPECT_EQ(takeBar(bars, pricedMinute(60, 1)), BarChange::Last);
    EXPECT_EQ(takeBar(bars, pricedMinute(120, 2)), BarChange::Last);
    EXPECT_EQ(bars, MinuteBars({pricedMinute(60, 1), pricedMinute(120, 2)}));
}

TEST(MinuteSeries, TheLastBarIsReplacedInPlace) {
    MinuteBars bars{pricedMinute(60, 1), pricedMinute(120, 2)};
    EXPECT_EQ(takeBar(bars, pricedMinute(120, 3)), BarChange::Last);
    EXPECT_EQ(bars, MinuteBars({pricedMinute(60, 1), pricedMinute(120, 3)}));
}

TEST(MinuteSeries, AnEarlierBarIsRevisedOrGoesBetween) {
    MinuteBars bars{pricedMinute(60, 1), pricedMinute(180, 2)};
    EXPECT_EQ(takeBar(bars, pricedMinute(60, 5)), BarChange::Earlier);
    EXPECT_EQ(takeBar(bars, pricedMinute(120, 4)), BarChange::Earlier);
    EXPECT_EQ(takeBar(bars, pricedMinute(0, 3)), BarChange::Earlier);
    EXPECT_EQ(bars, MinuteBars(
                        {pricedMinute(0, 3), pricedMinute(60, 5), pricedMinute(120, 4), pricedMinute(180, 2)}));
}

TEST(MinuteSeries, ALateBarBeforeTheOnlyOneIsEarlier) {
    MinuteBars bars{pricedMinute(120, 1)};
    EXPECT_EQ(takeBar(bars, pricedMinute(60, 2)), BarChange::Earlier);
}

TEST(MinuteSeries, TheSameBarChangesNothing) {
    MinuteBars bars{pricedMinute(60, 1), pricedMinute(120, 2)};
    EXPECT_EQ(takeBar(bars, pricedMinute(60, 1)), BarChange::None);
    EXPECT_EQ(takeBar(bars, pricedMinute(120, 2)), BarChange::None);
    EXPECT_EQ(bars.size(), 2u);
}

TEST(MinuteSeries, BarsStandOnThePositionsOfTheDay) {
    const PlacedBars placed = placeBars({pricedMinute(120, 1), pricedMinute(180, 2)}, {60, 120, 180, 240});
    EXPECT_EQ(placed.leading, (std::vector<qint64>{60})) << "the position before the first bar";
    EXPECT_EQ(placed.bars, MinuteBars({pricedMinute(120, 1), pricedMinute(180, 2)}))
        << "and none after the last one";
}

TEST(MinuteSeries, AMinuteWithoutATradeRepeatsThePriceWithoutVolume) {
    MinuteBar first = pricedMinute(60, 7.5);
    first.average = 7.25;
    first.volume = 100;
    const PlacedBars placed = placeBars({first, pricedMinute(180, 8)}, {60, 120, 180});
    ASSERT_EQ(placed.bars.size(), 3u);
    EXPECT_EQ(placed.bars[1].time, 120);
    EXPECT_EQ(placed.bars[1].price, 7.5);
    EXPECT_EQ(placed.bars[1].average, 7.25);
    EXPECT_EQ(placed.bars[1].volume, 0.0);
}

TEST(MinuteSeries, ABarOnNoPositionIsLeftOut) {
    EXPECT_EQ(placeBars({pricedMinute(60, 1), pricedMinute(90, 9), pricedMinute(120, 2)}, {60, 120}).bars,
              MinuteBars({pricedMinute(60, 1), pricedMinute(120, 2)}));
}

TEST(MinuteSeries, WithoutPositionsBarsStandAsTheyAre) {
    const MinuteBars bars{pricedMinute(60, 1), pricedMinute(90, 9)};
    EXPECT_EQ(placeBars(bars, {}).bars, bars);
    EXPECT_TRUE(placeBars({}, {60, 120}).bars.empty());
    EXPECT_TRUE(placeBars({}, {60, 120}).leading.empty()) << "no point without a bar";
}
