#include "chartdata/RequestTimes.h"

#include <gtest/gtest.h>

namespace TC {
namespace {

constexpr int kLast = 1710432000; // the last trading day, seconds
constexpr qint64 kMidnight = 1710432000000; // the same, milliseconds
constexpr qint64 kClose = kMidnight + 15 * 3600000LL; // 15:00

TEST(RequestTimes, LiveDayGetsTheStream) {
    const RequestTimes times = requestTimes("SH", kMidnight, kClose, kLast);
    EXPECT_EQ(times.start, se::TimePosition(kMidnight, 0));
    EXPECT_EQ(times.end, se::TimePosition(kClose, 0));
    EXPECT_EQ(times.demand, 3);
}

TEST(RequestTimes, DayThatEndsAtMidnightOfTheLastDayIsPast) {
    EXPECT_EQ(requestTimes("SH", 0, kMidnight, kLast).demand, 1);
    EXPECT_EQ(requestTimes("SH", 0, kMidnight + 1, kLast).demand, 3);
}

TEST(RequestTimes, YswpDayCountsAsPastForTwoHoursMore) {
    EXPECT_EQ(requestTimes("YSWP", 0, kMidnight + 7199999, kLast).demand, 1);
    EXPECT_EQ(requestTimes("YSWP", 0, kMidnight + 7200000, kLast).demand, 1);
    EXPECT_EQ(requestTimes("YSWP", 0, kMidnight + 7200001, kLast).demand, 3);
}

TEST(RequestTimes, UserIndexRunsFromTheLastTradingDayWithoutEnd) {
    const RequestTimes times = requestTimes("CD", 5, kClose, kLast);
    EXPECT_EQ(times.start, se::TimePosition(kMidnight, 0));
    EXPECT_EQ(times.end, se::TimePosition(2147483632000, 0));
    EXPECT_EQ(times.demand, 3);
    EXPECT_EQ(requestTimes("CD", 5, kMidnight, kLast).demand, 1); // the day's own end counts
    EXPECT_EQ(calendarMarket("CD"), "SH");
    EXPECT_EQ(calendarMarket("SZ"), "SZ");
}

TEST(RequestTimes, FixedPriceSessionLastsFrom1505To1530) {
    const RequestTimes times = fixedPriceTimes(kMidnight, kClose, kLast);
    EXPECT_EQ(times.start.first - kMidnight, (15 * 60 + 5) * 60000);
    EXPECT_EQ(times.end.first - kMidnight, (15 * 60 + 30) * 60000);
    EXPECT_EQ(times.demand, 3);
    EXPECT_EQ(fixedPriceTimes(kMidnight, kMidnight, kLast).demand, 1);
}

} // namespace
} // namespace TC
