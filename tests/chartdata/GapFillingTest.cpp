#include "chartdata/GapFilling.h"
#include "tests/support/Series.h"

#include <gtest/gtest.h>

#include <random>

using namespace tests;
using se::RPCFormulaResultCache;

namespace {

constexpr int kPoints = 241;

/// An axis of consecutive minutes from 09:30 on, whose time stops growing at its last index.
qint64 secondsAt(int index) {
    return kDay + (570 + std::min(index, kPoints - 1)) * 60LL;
}

/// Points at the given minutes; line 0 a price, line 1 sticks.
RPCFormulaResultCache series(const std::vector<int> &minutes) {
    RPCFormulaResultCache entry;
    entry.meta = *makeMeta(2, {0, 2});
    std::vector<se::TimePosition> times;
    std::vector<double> prices;
    std::vector<double> sticks;
    for (std::size_t i = 0; i < minutes.size(); ++i) {
        times.push_back(minuteTime(kDay, minutes[i]));
        prices.push_back(10.0 + double(i));
        sticks.push_back(100.0 + double(i));
    }
    entry.result = *makeResult(times, prices, sticks);
    return entry;
}

std::vector<double> line(const RPCFormulaResultCache &entry, int number) {
    return entry.result.mValues[std::size_t(number)];
}

} // namespace

TEST(FillGaps, AGapRepeatsThePointBeforeAndSticksAreZeroThere) {
    const RPCFormulaResultCache filled = TC::fillGaps(series({570, 571, 574}), kPoints, secondsAt);
    EXPECT_EQ(filled.result.mTimes, minuteTimes(kDay, 570, 5));
    EXPECT_EQ(line(filled, 0), (std::vector<double>{10, 11, 11, 11, 12}));
    EXPECT_EQ(line(filled, 1), (std::vector<double>{100, 101, 0, 0, 102}));
}

TEST(FillGaps, AFilledPointTakesTheFlagOfThePointBefore) {
    RPCFormulaResultCache entry = series({570, 572, 574});
    entry.result.mValid = {1, 0, 1};
    EXPECT_EQ(TC::fillGaps(entry, kPoints, secondsAt).result.mValid, (std::vector<qint32>{1, 1, 0, 0, 1}));
}

TEST(FillGaps, NothingIsPutInBeforeTheFirstPointOrAfterTheLast) {
    const RPCFormulaResultCache filled = TC::fillGaps(series({575, 577}), kPoints, secondsAt);
    // The first point takes index 0; the axis goes on from index 1, which is 09:31.
    EXPECT_EQ(filled.result.mTimes.front(), minuteTime(kDay, 575));
    EXPECT_EQ(filled.result.mTimes.back(), minuteTime(kDay, 577));
    // 577 is later than 571 to 576: six points are put in between.
    EXPECT_EQ(line(filled, 0), (std::vector<double>{10, 10, 10, 10, 10, 10, 10, 11}));
    EXPECT_EQ(TC::fillGaps(series({570, 571}), kPoints, secondsAt).result.mTimes.size(), 2u);
}

TEST(FillGaps, AFilledPointLiesOnTheWholeMinuteOfItsIndex) {
    RPCFormulaResultCache entry = series({570, 571, 573});
    entry.result.mTimes = {{kDay * 1000LL + 570 * 60000, 0},
                           {kDay * 1000LL + 571 * 60000 + 400, 7},
                           {kDay * 1000LL + 573 * 60000, 0}};
    const RPCFormulaResultCache filled = TC::fillGaps(entry, kPoints, secondsAt);
    // 09:31:00.400 is later than 09:31, so 09:31 itself is filled, and the point comes next.
    EXPECT_EQ(filled.result.mTimes[1], minuteTime(kDay, 571));
    EXPECT_EQ(filled.result.mTimes[2], entry.result.mTimes[1]);
    EXPECT_EQ(line(filled, 0), (std::vector<double>{10, 10, 11, 12}));
}

TEST(FillGaps, TextsAndFurtherValuesAreLeftAsTheyAre) {
    RPCFormulaResultCache entry = series({570, 573});
    entry.result.mTexts[0] = {"a", "b"};
    entry.result.mExtra2[1] = {3.0, 4.0};
    const RPCFormulaResultCache filled = TC::fillGaps(entry, kPoints, secondsAt);
    EXPECT_EQ(filled.result.mTexts[0], (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(filled.result.mExtra2[1], (std::vector<double>{3.0, 4.0}));
    EXPECT_EQ(filled.result.mExtra1, entry.result.mExtra1);
}

TEST(FillGaps, PointsPastTheEndOfTheAxisEndTheFilling) {
    const RPCFormulaResultCache filled = TC::fillGaps(series({570, 2000, 2001}), kPoints, secondsAt);
    // Indices 1 to 240 are filled, then the two late points follow.
    EXPECT_EQ(filled.result.mTimes.size(), 243u);
    EXPECT_EQ(filled.result.mTimes.back(), minuteTime(kDay, 2001));
}

TEST(FillGaps, WithoutAnAxisASeriesStaysAsItIs) {
    const RPCFormulaResultCache filled = TC::fillGaps(series({570, 580}), 0, [](int) { return qint64(0); });
    EXPECT_EQ(line(filled, 0), (std::vector<double>{10, 11}));
}

TEST(FillGaps, AnEmptySeriesStaysEmpty) {
    EXPECT_TRUE(TC::fillGaps(RPCFormulaResultCache(), kPoints, secondsAt).result.mTimes.empty());
}

TEST(FillGaps, ShortVectorsStayShort) {
    RPCFormulaResultCache entry = series({570, 572, 574});
    entry.result.mValid = {1};
    entry.result.mValues[1] = {100.0, 101.0};
    entry.meta.mLineStyles.clear();
    const RPCFormulaResultCache filled = TC::fillGaps(entry, kPoints, secondsAt);
    EXPECT_EQ(filled.result.mValid, (std::vector<qint32>{1, 1}));
    EXPECT_EQ(line(filled, 0), (std::vector<double>{10, 10, 11, 11, 12}));
    EXPECT_EQ(line(filled, 1), (std::vector<double>{100, 100, 101, 101}));
}

TEST(FillGaps, EndsWhateverItIsFed) {
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        std::vector<int> minutes;
        const int count = int(random() % 40);
        for (int i = 0; i < count; ++i) {
            minutes.push_back(int(random() % 4000) - 500); // unsorted, before and after the axis
        }
        RPCFormulaResultCache entry = series(minutes);
        if (round % 5 == 0 && count > 0) {
            entry.result.mTimes.back().first = std::numeric_limits<qint64>::max();
            entry.result.mTimes.front().first = std::numeric_limits<qint64>::min();
        }
        const RPCFormulaResultCache filled = TC::fillGaps(
            entry, kPoints, [&](int index) { return round % 3 == 0 ? qint64(0) : secondsAt(index); });
        ASSERT_LE(filled.result.mTimes.size(), std::size_t(count + kPoints));
        ASSERT_EQ(filled.result.mTimes.size(), line(filled, 0).size());
        // What was there is still there, in order: dropping the filled points gives the source.
        std::size_t next = 0;
        for (const se::TimePosition &time : filled.result.mTimes) {
            next += next < entry.result.mTimes.size() && time == entry.result.mTimes[next] ? 1 : 0;
        }
        ASSERT_EQ(next, std::size_t(count));
    }
}
