#include "viewmodel/TradingSessions.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

using namespace TC;

namespace {

constexpr int kMaxInt = std::numeric_limits<int>::max();
constexpr int kMinInt = std::numeric_limits<int>::min();

int stockIndex(int minute) {
    return indexOfMinute(tradingDay(ETradingDay::Stock).sessions, minute, false);
}

int nightIndex(int minute) {
    return indexOfMinute(tradingDay(ETradingDay::Night).sessions, minute, true);
}

int minutesOf(const Sessions &sessions) {
    int sum = 0;
    for (const auto &session : sessions) {
        sum += session.second - session.first + 1;
    }
    return sum;
}

TEST(TradingDay, HasAsManyPositionsAsMinutesOnAllDaysButTheAfterHoursOne) {
    for (const ETradingDay kind :
         {ETradingDay::Night, ETradingDay::TreasuryFutures, ETradingDay::CommodityFutures,
          ETradingDay::HongKong, ETradingDay::Overseas, ETradingDay::LongAfternoon, ETradingDay::Stock}) {
        const TradingDay day = tradingDay(kind);
        EXPECT_EQ(day.pointCount, minutesOf(day.sessions)) << int(kind);
    }
}

TEST(TradingDay, AfterHoursDayHas267MinutesAnd266Positions) {
    const TradingDay day = tradingDay(ETradingDay::AfterHours);
    EXPECT_EQ(minutesOf(day.sessions), 267);
    EXPECT_EQ(day.pointCount, 266);
}

TEST(TradingDay, AfterHoursDayNeverShowsItsLastMinute) {
    const TradingDay day = tradingDay(ETradingDay::AfterHours);
    EXPECT_EQ(minuteOfIndex(day, 265), 929);
    EXPECT_EQ(minuteOfIndex(day, 266), 929);
    EXPECT_EQ(indexOfMinute(day.sessions, 930, false), 266);
}

TEST(TradingDay, DirectSwitchOfAfterHoursDiffersFromTheTable) {
    EXPECT_EQ(stockDay(true).pointCount, 271);
    EXPECT_EQ(stockDay(true).sessions, (Sessions{{570, 690}, {781, 900}, {901, 930}}));
    EXPECT_EQ(tradingDay(ETradingDay::AfterHours).sessions, (Sessions{{570, 690}, {781, 900}, {905, 930}}));
    EXPECT_EQ(stockDay(false).pointCount, 241);
    EXPECT_EQ(stockDay(false).sessions, (Sessions{{570, 690}, {781, 900}}));
}

TEST(TradingDayOfMarket, GivesEachMarketWordItsDay) {
    for (const char *market : {"DF", "DCE", "ZF", "CZCE", "SF", "SHFE"}) {
        EXPECT_EQ(tradingDayOfMarket(market, "a2405", ""), ETradingDay::CommodityFutures) << market;
    }
    for (const char *market : {"HGT", "SSEHKEX", "SGT", "SZSEHKEX", "HK"}) {
        EXPECT_EQ(tradingDayOfMarket(market, "00700", ""), ETradingDay::HongKong) << market;
    }
    for (const char *market : {"SSE", "SZSE", "BKZS", "CD", "", "sf", "HKX", "IFX"}) {
        EXPECT_EQ(tradingDayOfMarket(market, "600000", "T"), ETradingDay::Stock) << market;
    }
}

TEST(TradingDayOfMarket, TreasuryProductsAreComparedExactly) {
    for (const char *market : {"IF", "CFFEX"}) {
        for (const char *product : {"TS", "TF", "T"}) {
            EXPECT_EQ(tradingDayOfMarket(market, "x", product), ETradingDay::TreasuryFutures) << product;
        }
        for (const char *product : {"IF", "TL", "t", "", "TFX"}) {
            EXPECT_EQ(tradingDayOfMarket(market, "x", product), ETradingDay::Stock) << product;
        }
    }
}

TEST(TradingDayOfMarket, TheChinaIndexOfTheOverseasMarketHasAStockDay) {
    EXPECT_EQ(tradingDayOfMarket("YSWP", "CNINDEX", ""), ETradingDay::Stock);
    EXPECT_EQ(tradingDayOfMarket("YSWP", "cnindex", ""), ETradingDay::Overseas);
    EXPECT_EQ(tradingDayOfMarket("YSWP", "CL", ""), ETradingDay::Overseas);
}

TEST(IndexOfMinute, IsZeroBeforeTheOpen) {
    EXPECT_EQ(stockIndex(569), 0);
    EXPECT_EQ(stockIndex(0), 0);
    EXPECT_EQ(stockIndex(570), 0);
    EXPECT_EQ(stockIndex(571), 1);
}

TEST(IndexOfMinute, IsTheLastPositionBeforeABreakInIt) {
    EXPECT_EQ(stockIndex(690), 120);
    EXPECT_EQ(stockIndex(720), 120);
    EXPECT_EQ(stockIndex(780), 120);
    EXPECT_EQ(stockIndex(781), 121);
}

TEST(IndexOfMinute, IsTheLastPositionAfterTheClose) {
    EXPECT_EQ(stockIndex(900), 240);
    EXPECT_EQ(stockIndex(930), 240);
    EXPECT_EQ(stockIndex(1439), 240);
}

TEST(IndexOfMinute, IsZeroWithoutSessions) {
    EXPECT_EQ(indexOfMinute({}, 600, false), 0);
    EXPECT_EQ(indexOfMinute({}, 600, true), 0);
    EXPECT_EQ(indexOfMinute({}, 1300, true), 0);
}

TEST(IndexOfMinute, OnANightAxisTheEveningComesFirst) {
    EXPECT_EQ(nightIndex(1260), 0);
    EXPECT_EQ(nightIndex(1261), 1);
    EXPECT_EQ(nightIndex(1439), 179);
    EXPECT_EQ(nightIndex(1440), 180);
}

TEST(IndexOfMinute, OnANightAxisTheFirstMinuteAfterMidnightSharesThePositionOfMidnight) {
    EXPECT_EQ(nightIndex(1), 180);
    EXPECT_EQ(nightIndex(1), nightIndex(1440));
}

TEST(IndexOfMinute, OnANightAxisTimesAfterMidnightFallOneShortOfTheirPosition) {
    const TradingDay day = tradingDay(ETradingDay::Night);
    for (const int minute : {1, 2, 149, 541, 600, 614, 631, 689, 811, 899, 900}) {
        const int index = nightIndex(minute);
        EXPECT_EQ(minuteOfIndex(day, index + 1), minute);
    }
}

TEST(IndexOfMinute, InAGapOfANightAxisIsTooLowAndMayBeNegative) {
    EXPECT_EQ(nightIndex(1000), -259);
    EXPECT_EQ(nightIndex(200), -10);
    // 11:45: 180 + 150 + 75 + 60 are counted, the afternoon begins 106 minutes later: 465 - 106 + 1, and 1 off.
    EXPECT_EQ(nightIndex(705), 359);
}

TEST(IndexOfMinute, OnANightAxisTheLastMinuteOfAMiddleSessionFallsIntoTheGap) {
    EXPECT_EQ(nightIndex(150), -60);
}

TEST(IndexOfMinute, OnANightAxisSixteenOClockBelongsToTheEvening) {
    EXPECT_EQ(nightIndex(959), 180 + 150 + 75 + 60 + 90 - 1);
    EXPECT_EQ(nightIndex(960), -299);
}

TEST(IndexOfMinute, OnTheOverseasAxisATimeAfterMidnightGivesZero) {
    const Sessions sessions = tradingDay(ETradingDay::Overseas).sessions;
    for (int minute = 1; minute <= 120; ++minute) {
        EXPECT_EQ(indexOfMinute(sessions, minute, false), 0) << minute;
    }
    EXPECT_EQ(minuteOfIndex(tradingDay(ETradingDay::Overseas), 856), 1);
}

TEST(IndexOfMinute, NeverFallsWithTimeOnAnAxisInClockOrder) {
    std::mt19937 random(20240315);
    for (int round = 0; round < 300; ++round) {
        Sessions sessions;
        int minute = int(random() % 300);
        for (int i = int(random() % 6); i >= 0; --i) {
            const int last = minute + int(random() % 200);
            sessions.append({minute, last});
            minute = last + 1 + int(random() % 100);
        }
        const int count = minutesOf(sessions);
        int before = 0;
        for (int at = -10; at < 1700; ++at) {
            const int index = indexOfMinute(sessions, at, false);
            ASSERT_GE(index, before);
            ASSERT_LT(index, count);
            before = index;
        }
        ASSERT_EQ(before, indexOfMinute(sessions, kMaxInt, false));
    }
}

TEST(IndexOfMinute, FindsEveryPositionAgainOnAnAxisInClockOrder) {
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        TradingDay day;
        int minute = int(random() % 300);
        for (int i = int(random() % 6); i >= 0; --i) {
            const int last = minute + int(random() % 200);
            day.sessions.append({minute, last});
            minute = last + 1 + int(random() % 100);
        }
        day.pointCount = minutesOf(day.sessions);
        for (int index = 0; index < day.pointCount; ++index) {
            ASSERT_EQ(indexOfMinute(day.sessions, minuteOfIndex(day, index), false), index);
        }
    }
}

TEST(TradingSessions, AnySessionsAndNumbersAreAccepted) {
    std::mt19937 random(42);
    const QVector<int> extremes{kMinInt, kMinInt + 1, -1441, -1, 0, 1, 960, 961, 1440, kMaxInt - 1, kMaxInt};
    const auto any = [&] {
        return random() % 2 ? extremes[int(random() % unsigned(extremes.size()))] : int(random() % 3000) - 700;
    };
    for (int round = 0; round < 20000; ++round) {
        TradingDay day;
        day.pointCount = any();
        for (int i = int(random() % 5); i > 0; --i) {
            day.sessions.append({any(), any()});
        }
        indexOfMinute(day.sessions, any(), false);
        indexOfMinute(day.sessions, any(), true);
        minuteOfIndex(day, any());
        const double width = any() * (random() % 3 ? 1.0 : 1e300);
        pixelOfIndex(width, day.pointCount, any());
        const int index = indexOfPixel(width, day.pointCount, any());
        ASSERT_GE(index, -1);
        ASSERT_TRUE(index == -1 || index < day.pointCount);
    }
}

TEST(MinuteOfIndex, IsClampedToTheLastPosition) {
    const TradingDay day = tradingDay(ETradingDay::Stock);
    EXPECT_EQ(minuteOfIndex(day, 240), 900);
    EXPECT_EQ(minuteOfIndex(day, 241), 900);
    EXPECT_EQ(minuteOfIndex(day, kMaxInt), 900);
}

TEST(MinuteOfIndex, IsMinusOneWhenTheSessionsHaveNoSuchPosition) {
    EXPECT_EQ(minuteOfIndex({{}, 0}, 0), -1);
    EXPECT_EQ(minuteOfIndex({{}, 241}, 100), -1);
    EXPECT_EQ(minuteOfIndex({{{570, 579}}, 241}, 9), 579);
    EXPECT_EQ(minuteOfIndex({{{570, 579}}, 241}, 10), -1);
}

TEST(PixelOfIndex, LeavesOnePixelFreeAtEachEdge) {
    EXPECT_EQ(pixelOfIndex(242.0, 241, 0), 1);
    EXPECT_EQ(pixelOfIndex(242.0, 241, 240), 241);
    EXPECT_EQ(pixelOfIndex(242.0, 241, 120), 121);
}

TEST(PixelOfIndex, IsOneForANegativeIndex) {
    EXPECT_EQ(pixelOfIndex(242.0, 241, -1), 1);
    EXPECT_EQ(pixelOfIndex(700.0, 241, kMinInt), 1);
}

TEST(PixelOfIndex, IsClampedToTheRightEdge) {
    EXPECT_EQ(pixelOfIndex(242.0, 241, 241), 241);
    EXPECT_EQ(pixelOfIndex(242.0, 241, kMaxInt), 241);
    EXPECT_EQ(pixelOfIndex(700.75, 241, 300), 699);
}

TEST(PixelOfIndex, SeveralPositionsShareAPixelOnANarrowGraph) {
    // 98 pixels over 240 steps: positions 0 to 2 lie below one step of a pixel.
    EXPECT_EQ(pixelOfIndex(100.0, 241, 2), 1);
    EXPECT_EQ(pixelOfIndex(100.0, 241, 3), 2);
    EXPECT_EQ(pixelOfIndex(100.0, 241, 4), 2);
    EXPECT_EQ(pixelOfIndex(100.0, 241, 5), 3);
}

TEST(PixelOfIndex, NeverFallsWithTheIndexAndStaysInsideTheGraph) {
    for (double width = 2.0; width < 900.0; width += 3.7) {
        for (const int count : {2, 226, 241, 556, 976}) {
            int before = 1;
            for (int index = 0; index < count; ++index) {
                const int x = pixelOfIndex(width, count, index);
                ASSERT_GE(x, before);
                ASSERT_LE(x, int(width) - 1 > 1 ? int(width) - 1 : 1);
                before = x;
            }
        }
    }
}

TEST(PixelOfIndex, IsHarmlessOnAnAxisOfOneOrNoPosition) {
    EXPECT_EQ(pixelOfIndex(100.0, 1, 0), 1);
    EXPECT_EQ(pixelOfIndex(100.0, 1, 5), 99);
    EXPECT_EQ(pixelOfIndex(100.0, 0, 0), 1);
    EXPECT_EQ(pixelOfIndex(100.0, 0, 7), 1);
}

TEST(PixelOfIndex, IsHarmlessOnAWidthThatIsNoNumber) {
    EXPECT_EQ(pixelOfIndex(std::numeric_limits<double>::quiet_NaN(), 241, 100), 1);
    EXPECT_EQ(pixelOfIndex(std::numeric_limits<double>::infinity(), 241, 0), 1);
    EXPECT_EQ(pixelOfIndex(std::numeric_limits<double>::infinity(), 241, 1), kMaxInt);
    EXPECT_EQ(pixelOfIndex(1e300, 241, 240), kMaxInt);
}

TEST(IndexOfPixel, IsMinusOneOnAGraphWithoutWidth) {
    EXPECT_EQ(indexOfPixel(0.0, 241, 5), -1);
    EXPECT_EQ(indexOfPixel(-10.0, 241, 5), -1);
    EXPECT_EQ(indexOfPixel(std::numeric_limits<double>::quiet_NaN(), 241, 5), -1);
}

TEST(IndexOfPixel, TheHalfStepSelectsTheNearestPosition) {
    EXPECT_EQ(indexOfPixel(242.0, 241, 0), 0);
    EXPECT_EQ(indexOfPixel(242.0, 241, 1), 1);
    // Steps of ten pixels: pixel 4 is nearest to position 0, pixel 5 to position 1.
    EXPECT_EQ(indexOfPixel(2402.0, 241, 4), 0);
    EXPECT_EQ(indexOfPixel(2402.0, 241, 5), 1);
    EXPECT_EQ(indexOfPixel(2402.0, 241, 14), 1);
    EXPECT_EQ(indexOfPixel(2402.0, 241, 15), 2);
}

TEST(IndexOfPixel, IsClampedToTheAxis) {
    EXPECT_EQ(indexOfPixel(242.0, 241, -100), 0);
    EXPECT_EQ(indexOfPixel(242.0, 241, 5000), 240);
    EXPECT_EQ(indexOfPixel(242.0, 241, kMaxInt), 240);
    EXPECT_EQ(indexOfPixel(242.0, 241, kMinInt), 0);
}

TEST(IndexOfPixel, FindsThePositionOfAWideEnoughGraphAgain) {
    for (const int count : {226, 241, 266, 271, 341, 556, 976}) {
        for (double width = 2.0 * count + 2.0; width < 5.0 * count; width += 31.3) {
            for (int index = 0; index < count; ++index) {
                const int x = pixelOfIndex(width, count, index);
                const int found = indexOfPixel(width, count, x);
                // The pixel lies up to one to the right of the position.
                ASSERT_GE(found, index);
                ASSERT_LE(found, index + 1);
            }
        }
    }
}

TEST(IndexOfPixel, IsHarmlessWhereAllPositionsShareOnePixel) {
    EXPECT_EQ(indexOfPixel(2.0, 241, 0), 0);
    EXPECT_EQ(indexOfPixel(2.0, 241, 1), 240);
    EXPECT_EQ(indexOfPixel(2.0, 241, -1), 0);
    EXPECT_EQ(indexOfPixel(100.0, 1, 50), 0);
}

TEST(IndexOfPixel, IsMinusOneOnAnAxisWithoutPositions) {
    EXPECT_EQ(indexOfPixel(100.0, 0, 50), -1);
    EXPECT_EQ(indexOfPixel(100.0, -5, 50), -1);
}

} // namespace
