#include "terminal/market/MarketCalendar.h"
#include "terminal/market/MarketDate.h"
#include "tests/terminal/Samples.h"

#include <gtest/gtest.h>

using namespace terminal;
using tests::clockTime;

namespace {

MarketCalendar calendarOf(const char *market) {
    return MarketCalendar::ofMarket(QString::fromLatin1(market));
}

int tradingDaysOfYear(const MarketCalendar &calendar, int year) {
    int days = 0;
    for (QDate date(year, 1, 1); date.year() == year; date = date.addDays(1)) {
        days += calendar.isTradingDay(date) ? 1 : 0;
    }
    return days;
}

} // namespace

TEST(MarketCalendar, WeekendsAndHolidaysAreNoTradingDays) {
    const MarketCalendar mainland = calendarOf("SH");
    EXPECT_TRUE(mainland.isTradingDay(QDate(2026, 11, 20)));
    EXPECT_FALSE(mainland.isTradingDay(QDate(2026, 11, 21)));
    EXPECT_FALSE(mainland.isTradingDay(QDate(2026, 2, 16)));
    EXPECT_FALSE(mainland.isTradingDay(QDate(2026, 10, 1)));
    EXPECT_TRUE(mainland.isTradingDay(QDate(2026, 10, 8)));
    EXPECT_FALSE(mainland.isTradingDay(QDate(2026, 10, 10))); // a working Saturday is no trading day
    EXPECT_FALSE(mainland.isTradingDay(QDate()));
}

/// The exchanges publish how many trading days their years had.
TEST(MarketCalendar, TheYearsHaveAsManyTradingDaysAsTheExchangesTell) {
    const MarketCalendar mainland = calendarOf("SZ");
    EXPECT_EQ(tradingDaysOfYear(mainland, 2018), 243);
    EXPECT_EQ(tradingDaysOfYear(mainland, 2019), 244);
    EXPECT_EQ(tradingDaysOfYear(mainland, 2020), 243);
    EXPECT_EQ(tradingDaysOfYear(mainland, 2021), 243);
    EXPECT_EQ(tradingDaysOfYear(mainland, 2022), 242);
    EXPECT_EQ(tradingDaysOfYear(mainland, 2023), 242);
    EXPECT_EQ(tradingDaysOfYear(mainland, 2024), 242);
    EXPECT_EQ(tradingDaysOfYear(mainland, 2025), 243);
}

TEST(MarketCalendar, PlacesHaveHolidaysOfTheirOwn) {
    const QDate christmas(2026, 12, 25);
    EXPECT_TRUE(calendarOf("SH").isTradingDay(christmas));
    EXPECT_FALSE(calendarOf("HK").isTradingDay(christmas));
    EXPECT_FALSE(calendarOf("HGT").isTradingDay(christmas));
    const QDate goldenWeek(2026, 10, 5);
    EXPECT_TRUE(calendarOf("HK").isTradingDay(goldenWeek));
    EXPECT_FALSE(calendarOf("SGT").isTradingDay(goldenWeek));
    EXPECT_TRUE(calendarOf("YSWP").isTradingDay(goldenWeek));
}

TEST(MarketCalendar, ShiftsByTradingDays) {
    const MarketCalendar mainland = calendarOf("SH");
    EXPECT_EQ(mainland.shifted(QDate(2026, 11, 20), -1), QDate(2026, 11, 19));
    EXPECT_EQ(mainland.shifted(QDate(2026, 11, 20), 1), QDate(2026, 11, 23));
    EXPECT_EQ(mainland.shifted(QDate(2026, 10, 8), -1), QDate(2026, 9, 30));
    EXPECT_EQ(mainland.shifted(QDate(2026, 2, 13), 1), QDate(2026, 2, 24));
    EXPECT_EQ(mainland.shifted(QDate(2026, 11, 21), 0), QDate(2026, 11, 20));
    EXPECT_EQ(mainland.shifted(QDate(2026, 11, 22), -1), QDate(2026, 11, 19));
    EXPECT_TRUE(mainland.shifted(QDate(2026, 11, 20), 2147483647).isValid());
    EXPECT_TRUE(mainland.shifted(QDate(2026, 11, 20), -2147483647 - 1).isValid());
}

TEST(MarketCalendar, AnExceptionOverridesTheRule) {
    MarketCalendar calendar = calendarOf("SH");
    calendar.setException(QDate(2026, 11, 21), true);
    calendar.setException(QDate(2026, 11, 20), false);
    EXPECT_EQ(calendar.next(QDate(2026, 11, 19)), QDate(2026, 11, 21));
    EXPECT_EQ(calendar.previous(QDate(2026, 11, 21)), QDate(2026, 11, 19));
}

TEST(MarketCalendar, NoNightIsHeldBeforeAHoliday) {
    const MarketCalendar futures = calendarOf("SHFE");
    EXPECT_EQ(futures.eveningBefore(QDate(2026, 11, 20)), QDate(2026, 11, 19));
    EXPECT_EQ(futures.eveningBefore(QDate(2026, 11, 23)), QDate(2026, 11, 20));
    EXPECT_TRUE(futures.eveningBefore(QDate(2026, 10, 8)).isNull());
    EXPECT_TRUE(futures.eveningBefore(QDate(2026, 6, 22)).isNull());
}

TEST(MarketCalendar, TheTradingDayOfATimeIsTheLastOne) {
    const MarketCalendar mainland = calendarOf("SH");
    EXPECT_EQ(mainland.dayAt(clockTime(QDate(2026, 11, 20), 0, 0), false), QDate(2026, 11, 20));
    EXPECT_EQ(mainland.dayAt(clockTime(QDate(2026, 11, 20), 23, 59), false), QDate(2026, 11, 20));
    EXPECT_EQ(mainland.dayAt(clockTime(QDate(2026, 11, 22), 12, 0), false), QDate(2026, 11, 20));
}

TEST(MarketCalendar, WithANightTheNextDayStartsInTheEvening) {
    const MarketCalendar futures = calendarOf("SHFE");
    EXPECT_EQ(futures.dayAt(clockTime(QDate(2026, 11, 19), 20, 54), true), QDate(2026, 11, 19));
    EXPECT_EQ(futures.dayAt(clockTime(QDate(2026, 11, 19), 20, 55), true), QDate(2026, 11, 20));
    EXPECT_EQ(futures.dayAt(clockTime(QDate(2026, 11, 20), 21, 0), true), QDate(2026, 11, 23));
    EXPECT_EQ(futures.dayAt(clockTime(QDate(2026, 11, 21), 1, 0), true), QDate(2026, 11, 23));
    EXPECT_EQ(futures.dayAt(clockTime(QDate(2026, 11, 22), 12, 0), true), QDate(2026, 11, 23));
    // Nothing is traded on the evening before a holiday, so the day stays until the next one begins.
    EXPECT_EQ(futures.dayAt(clockTime(QDate(2026, 9, 30), 22, 0), true), QDate(2026, 9, 30));
    EXPECT_EQ(futures.dayAt(clockTime(QDate(2026, 10, 7), 22, 0), true), QDate(2026, 9, 30));
    EXPECT_EQ(futures.dayAt(clockTime(QDate(2026, 10, 8), 0, 0), true), QDate(2026, 10, 8));
}
