// When the minutes that a chart shows were traded, with stamps worked out by hand: seconds since the epoch at UTC+8.

#include "terminal/market/TradedSpan.h"

#include "terminal/market/Catalogue.h"

#include <gtest/gtest.h>

using namespace terminal;

namespace {

constexpr qint64 kThursdayStart = 1795017600; ///< 2026-11-19 00:00
constexpr qint64 kFridayStart = 1795104000; ///< 2026-11-20 00:00
constexpr qint64 kSaturdayStart = 1795190400; ///< 2026-11-21 00:00
constexpr qint64 kMondayStart = 1795363200; ///< 2026-11-23 00:00
constexpr qint64 kDayBeforeHoliday = 1790697600; ///< 2026-09-30 00:00
constexpr qint64 kDayAfterHoliday = 1791388800; ///< 2026-10-08 00:00

constexpr qint64 chartTime(qint64 midnight, int hour, int minute = 0) {
    return (midnight + hour * 3600 + minute * 60) * 1000;
}

class TradedSpanTest : public testing::Test {
protected:
    void SetUp() override {
        add("SHFE", "AU2612", {{1260, 1440}, {1, 150}, {541, 615}, {631, 690}, {811, 900}});
        add("SH", "600000", {{570, 690}, {781, 900}});
    }
    void add(const char *market, const char *code, const DaySessions::Table &sessions) {
        Instrument instrument;
        instrument.market = QString::fromLatin1(market);
        instrument.code = QString::fromLatin1(code);
        instrument.sessions = DaySessions(sessions);
        mCatalogue.instruments.insert(instrument.key(), instrument);
    }
    void expectSpan(qint64 chartStart, qint64 chartEnd, qint64 day, qint64 start, qint64 end,
                    const char *key = "SHFEAU2612") {
        const TradedSpan span = tradedSpan(mCatalogue, QString::fromLatin1(key), chartStart, chartEnd, mNow);
        EXPECT_EQ(span.day, day);
        EXPECT_EQ(span.start, start);
        EXPECT_EQ(span.end, end);
    }

    Catalogue mCatalogue;
    qint64 mNow = chartTime(kMondayStart, 10, 30);
};

TEST_F(TradedSpanTest, NightOfADayLiesOnTheEveningBefore) {
    expectSpan(chartTime(kFridayStart, 21), chartTime(kFridayStart, 22), kFridayStart,
               chartTime(kThursdayStart, 21), chartTime(kThursdayStart, 22));
    expectSpan(chartTime(kFridayStart, 21), chartTime(kFridayStart, 22), 1795104000, 1795093200000,
               1795096800000);
}

TEST_F(TradedSpanTest, NightOfAMondayIsThatOfFriday) {
    expectSpan(chartTime(kMondayStart, 21), chartTime(kMondayStart, 23, 59), kMondayStart,
               chartTime(kFridayStart, 21), chartTime(kFridayStart, 23, 59));
    expectSpan(chartTime(kMondayStart, 1), chartTime(kMondayStart, 2, 30), 1795363200, 1795194000000,
               1795199400000);
    expectSpan(chartTime(kMondayStart, 22), chartTime(kMondayStart, 0), kMondayStart,
               chartTime(kFridayStart, 22), chartTime(kSaturdayStart, 0));
}

TEST_F(TradedSpanTest, StretchFromTheNightIntoTheDayIsOne) {
    expectSpan(chartTime(kMondayStart, 21), chartTime(kMondayStart, 10), kMondayStart,
               chartTime(kFridayStart, 21), chartTime(kMondayStart, 10));
    expectSpan(chartTime(kMondayStart, 9, 1), chartTime(kMondayStart, 15), kMondayStart,
               chartTime(kMondayStart, 9, 1), chartTime(kMondayStart, 15));
}

TEST_F(TradedSpanTest, SecondsStay) {
    expectSpan(chartTime(kFridayStart, 21) + 30500, chartTime(kFridayStart, 1) + 999, kFridayStart,
               chartTime(kThursdayStart, 21) + 30500, chartTime(kFridayStart, 1) + 999);
}

TEST_F(TradedSpanTest, MinutesOfTonightBelongToTheDayThatRuns) {
    mNow = chartTime(kFridayStart, 21, 30); // which is Monday; the chart has the date of the clock
    expectSpan(chartTime(kFridayStart, 21), chartTime(kFridayStart, 21, 30), kMondayStart,
               chartTime(kFridayStart, 21), chartTime(kFridayStart, 21, 30));
    expectSpan(chartTime(kFridayStart, 9, 1), chartTime(kFridayStart, 10), kFridayStart,
               chartTime(kFridayStart, 9, 1), chartTime(kFridayStart, 10));
    mNow = chartTime(kSaturdayStart, 1);
    expectSpan(chartTime(kSaturdayStart, 21), chartTime(kSaturdayStart, 1), kMondayStart,
               chartTime(kFridayStart, 21), chartTime(kSaturdayStart, 1));
    mNow = chartTime(kFridayStart, 10, 30);
    expectSpan(chartTime(kFridayStart, 21), chartTime(kFridayStart, 23), kFridayStart,
               chartTime(kThursdayStart, 21), chartTime(kThursdayStart, 23));
}

TEST_F(TradedSpanTest, NoNightIsHeldInFrontOfAHoliday) {
    expectSpan(chartTime(kDayAfterHoliday, 21), chartTime(kDayAfterHoliday, 10), kDayAfterHoliday,
               chartTime(kDayBeforeHoliday, 21), chartTime(kDayAfterHoliday, 10));
}

TEST_F(TradedSpanTest, WhatDoesNotTradeAtNightKeepsItsTimes) {
    expectSpan(chartTime(kMondayStart, 21), chartTime(kMondayStart, 22), kMondayStart,
               chartTime(kMondayStart, 21), chartTime(kMondayStart, 22), "SH600000");
    expectSpan(chartTime(kMondayStart, 1), chartTime(kMondayStart, 2), kMondayStart, chartTime(kMondayStart, 1),
               chartTime(kMondayStart, 2), "SH999999");
}

} // namespace
