// When the minutes that a chart shows were traded, with stamps worked out by hand: seconds since the epoch at UTC+8.

#include "terminal/market/TradedSpan.h"

#include "terminal/market/Catalogue.h"

#include <gtest/gtest.h>

using namespace terminal;

namespace {

constexpr qint64 kThursday = 1795017600; ///< 2026-11-19 00:00
constexpr qint64 kFriday = 1795104000; ///< 2026-11-20 00:00
constexpr qint64 kSaturday = 1795190400; ///< 2026-11-21 00:00
constexpr qint64 kMonday = 1795363200; ///< 2026-11-23 00:00
constexpr qint64 kBeforeHoliday = 1790697600; ///< 2026-09-30 00:00
constexpr qint64 kAfterHoliday = 1791388800; ///< 2026-10-08 00:00

constexpr qint64 at(qint64 midnight, int hour, int minute = 0) {
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
    qint64 mNow = at(kMonday, 10, 30);
};

TEST_F(TradedSpanTest, NightOfADayLiesOnTheEveningBefore) {
    expectSpan(at(kFriday, 21), at(kFriday, 22), kFriday, at(kThursday, 21), at(kThursday, 22));
    expectSpan(at(kFriday, 21), at(kFriday, 22), 1795104000, 1795093200000, 1795096800000);
}

TEST_F(TradedSpanTest, NightOfAMondayIsThatOfFriday) {
    expectSpan(at(kMonday, 21), at(kMonday, 23, 59), kMonday, at(kFriday, 21), at(kFriday, 23, 59));
    expectSpan(at(kMonday, 1), at(kMonday, 2, 30), 1795363200, 1795194000000, 1795199400000);
    expectSpan(at(kMonday, 22), at(kMonday, 0), kMonday, at(kFriday, 22), at(kSaturday, 0));
}

TEST_F(TradedSpanTest, StretchFromTheNightIntoTheDayIsOne) {
    expectSpan(at(kMonday, 21), at(kMonday, 10), kMonday, at(kFriday, 21), at(kMonday, 10));
    expectSpan(at(kMonday, 9, 1), at(kMonday, 15), kMonday, at(kMonday, 9, 1), at(kMonday, 15));
}

TEST_F(TradedSpanTest, SecondsStay) {
    expectSpan(at(kFriday, 21) + 30500, at(kFriday, 1) + 999, kFriday, at(kThursday, 21) + 30500,
               at(kFriday, 1) + 999);
}

TEST_F(TradedSpanTest, MinutesOfTonightBelongToTheDayThatRuns) {
    mNow = at(kFriday, 21, 30); // which is Monday; the chart has the date of the clock
    expectSpan(at(kFriday, 21), at(kFriday, 21, 30), kMonday, at(kFriday, 21), at(kFriday, 21, 30));
    expectSpan(at(kFriday, 9, 1), at(kFriday, 10), kFriday, at(kFriday, 9, 1), at(kFriday, 10));
    mNow = at(kSaturday, 1);
    expectSpan(at(kSaturday, 21), at(kSaturday, 1), kMonday, at(kFriday, 21), at(kSaturday, 1));
    mNow = at(kFriday, 10, 30);
    expectSpan(at(kFriday, 21), at(kFriday, 23), kFriday, at(kThursday, 21), at(kThursday, 23));
}

TEST_F(TradedSpanTest, NoNightIsHeldInFrontOfAHoliday) {
    expectSpan(at(kAfterHoliday, 21), at(kAfterHoliday, 10), kAfterHoliday, at(kBeforeHoliday, 21),
               at(kAfterHoliday, 10));
}

TEST_F(TradedSpanTest, WhatDoesNotTradeAtNightKeepsItsTimes) {
    expectSpan(at(kMonday, 21), at(kMonday, 22), kMonday, at(kMonday, 21), at(kMonday, 22), "SH600000");
    expectSpan(at(kMonday, 1), at(kMonday, 2), kMonday, at(kMonday, 1), at(kMonday, 2), "SH999999");
}

} // namespace
