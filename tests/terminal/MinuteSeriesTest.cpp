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
