// What is added to a day that is known, and what is no day of a server.

#include "terminal/market/DayMerge.h"
#include "terminal/history/HistoryServer.h"
#include "terminal/market/BarDays.h"
#include "tests/history/ScriptedServer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace terminal;
using tests::minutesOf;

namespace {

constexpr int kDay = 1763654400; // 2025-11-21

ServedDay servedDay(MinuteBars bars) {
    return {kDay, static_cast<int>(bars.size()), 0.0, {}, std::move(bars)};
}

} // namespace

TEST(DayMergeTest, MinutesOfBothAreThereOnceAndInOrder) {
    const MinuteBars all = minutesOf(kDay, 6, 10.0);
    MinuteBars bars{all[0], all[2], all[3], all[5]};
    EXPECT_EQ(mergeBars({all[1], all[2], all[4]}, bars), std::nullopt);
    EXPECT_EQ(bars, all);
    EXPECT_EQ(mergeBars({}, bars), std::nullopt);
    EXPECT_EQ(bars, all);
}

TEST(DayMergeTest, AMinuteWithOtherValuesIsToldAndNothingIsChanged) {
    const MinuteBars known = minutesOf(kDay, 3, 10.0);
    MinuteBars bars = known;
    bars[1].volume += 1.0;
    const MinuteBars before = bars;
    EXPECT_EQ(mergeBars(known, bars), std::optional<qint64>(known[1].time));
    EXPECT_EQ(bars, before);
    bars = known;
    bars[1].average = 3.0; // depends on the other bars of the day
    EXPECT_EQ(mergeBars(known, bars), std::nullopt);
}

TEST(DayMergeTest, AveragesThatWereMadeAreMadeAnewAndToldOnesStay) {
    // Amounts of 1000 and 4400 for 100 and 400 shares: averages 10 and 10.8.
    MinuteBars bars{{(kDay + 571 * 60) * 1000LL, 10.0, 10.0, 10.0, 10.0, 0.0, 100.0, 1000.0},
                    {(kDay + 572 * 60) * 1000LL, 11.0, 11.0, 11.0, 11.0, 0.0, 400.0, 4400.0}};
    MinuteBars later{bars[1]};
    fillAverages(later);
    EXPECT_DOUBLE_EQ(later[0].average, 11.0);
    clearFilledAverages(later);
    EXPECT_EQ(later[0].average, 0.0);
    ASSERT_EQ(mergeBars({bars[0]}, later), std::nullopt);
    fillAverages(later);
    EXPECT_DOUBLE_EQ(later[0].average, 10.0);
    EXPECT_DOUBLE_EQ(later[1].average, 10.8);
    later[1].average = 10.5;
    clearFilledAverages(later);
    EXPECT_DOUBLE_EQ(later[0].average, 10.0);
    EXPECT_DOUBLE_EQ(later[1].average, 10.5);
}

TEST(ServedDayTest, ASoundDayHasNoFault) {
    EXPECT_EQ(faultOf(servedDay(minutesOf(kDay, 240, 10.0))), QString());
    MinuteBars night = minutesOf(kDay, 2, 10.0);
    night[0].time -= 3 * 86400 * 1000LL; // of a Friday, before a Monday
    EXPECT_EQ(faultOf(servedDay(night)), QString());
}

TEST(ServedDayTest, ARowThatIsNoBarIsTold) {
    const double nan = std::nan("");
    const double infinity = std::numeric_limits<double>::infinity();
    const auto faultWith = [](const std::function<void(MinuteBar &)> &change) {
        MinuteBars bars = minutesOf(kDay, 3, 10.0);
        change(bars[1]);
        return faultOf(servedDay(bars));
    };
    EXPECT_EQ(faultWith([](MinuteBar &bar) { bar.price = 0.0; }), QString("no bar at 2025-11-21 09:32"));
    EXPECT_EQ(faultWith([&](MinuteBar &bar) { bar.price = nan; }), QString("no bar at 2025-11-21 09:32"));
    EXPECT_NE(faultWith([&](MinuteBar &bar) { bar.volume = infinity; }), QString());
    EXPECT_NE(faultWith([&](MinuteBar &bar) { bar.amount = nan; }), QString());
    EXPECT_NE(faultWith([](MinuteBar &bar) { bar.low = bar.high + 1.0; }), QString());
    EXPECT_NE(faultWith([](MinuteBar &bar) { bar.open = -1.0; }), QString());
    EXPECT_NE(faultWith([](MinuteBar &bar) { bar.high = 2e9; }), QString());
    EXPECT_NE(faultWith([](MinuteBar &bar) { bar.time += 1; }), QString());
    EXPECT_NE(faultWith([](MinuteBar &bar) { bar.time -= 60000; }), QString()) << "a minute twice";
    EXPECT_NE(faultWith([](MinuteBar &bar) { bar.time = std::numeric_limits<qint64>::max(); }), QString());
    EXPECT_NE(faultWith([](MinuteBar &bar) { bar.time = 0; }), QString());
}

TEST(ServedDayTest, ADayWithOtherThanItsBarsIsTold) {
    ServedDay day = servedDay(minutesOf(kDay, 3, 10.0));
    day.count = 4;
    EXPECT_EQ(faultOf(day), QString("3 bars of 4"));
    EXPECT_EQ(faultOf(servedDay({})), QString("0 bars of 0"));
    day = servedDay(minutesOf(kDay, 3, 10.0));
    day.previousClose = -1.0;
    EXPECT_EQ(faultOf(day), QString("no close before it"));
}

TEST(ServedDayTest, SessionsAreTakenWhenTheyAreSome) {
    EXPECT_EQ(sessionsOf({571, 690, 781, 900}).table(), (DaySessions::Table{{571, 690}, {781, 900}}));
    EXPECT_TRUE(sessionsOf({}).isEmpty());
    EXPECT_TRUE(sessionsOf({571}).isEmpty());
    EXPECT_TRUE(sessionsOf({571, 690, 600, 700}).isEmpty());
    EXPECT_TRUE(sessionsOf({690, 571}).isEmpty());
    EXPECT_TRUE(sessionsOf({0, 1441}).isEmpty());
}
