#include "containers/PaneArithmetic.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr int kMidnight = 1710432000; // 2024-03-15 00:00 at UTC+8, 16:00 of the 14th at UTC
constexpr int kHour = 3600;
constexpr int kDay = 86400;

TEST(RequestDateTest, AMidnightOfTheExchangeStands) {
    EXPECT_EQ(TC::requestDate(kMidnight), kMidnight);
    EXPECT_EQ(TC::requestDate(kMidnight + 3 * kDay), kMidnight + 3 * kDay);
}

TEST(RequestDateTest, ASecondAfterMidnightGivesTheOneBefore) {
    EXPECT_EQ(TC::requestDate(kMidnight + 1), kMidnight - kDay); // still the 14th at UTC
    EXPECT_EQ(TC::requestDate(kMidnight + 8 * kHour - 1), kMidnight - kDay);
}

TEST(RequestDateTest, FromEightOClockOnItIsTheMidnightOfThatDay) {
    EXPECT_EQ(TC::requestDate(kMidnight + 8 * kHour), kMidnight); // 00:00 of the 15th at UTC
    EXPECT_EQ(TC::requestDate(kMidnight + 10 * kHour + 1), kMidnight);
    EXPECT_EQ(TC::requestDate(kMidnight + kDay - 1), kMidnight);
}

TEST(RequestDateTest, TheEpochAndWhatLiesBeforeIt) {
    EXPECT_EQ(TC::requestDate(0), -28800);
    EXPECT_EQ(TC::requestDate(-1), -28800); // toward zero
    EXPECT_EQ(TC::requestDate(-86400), -115200);
    EXPECT_EQ(TC::requestDate(std::numeric_limits<int>::max()), 2147472000 - 28800); // 24855 whole days
}

class MergeRangesTest : public ::testing::Test {
protected:
    const TC::CFormulaKey kPrice{QStringLiteral("SH600000"), QStringLiteral("REALTIME")};
    const TC::CFormulaKey kVolume{QStringLiteral("SH600000"), QStringLiteral("REALTIMEVOL")};
    TC::IndexBaseData::MaxMinMap mRanges{{kPrice, {11.0, 9.0}}};
};

TEST_F(MergeRangesTest, EachEndIsWidenedByItself) {
    TC::mergeRanges(mRanges, {{kPrice, {10.5, 8.0}}});
    EXPECT_EQ(mRanges.value(kPrice), (QPair<double, double>(11.0, 8.0)));
    TC::mergeRanges(mRanges, {{kPrice, {12.0, 8.5}}});
    EXPECT_EQ(mRanges.value(kPrice), (QPair<double, double>(12.0, 8.0)));
}

TEST_F(MergeRangesTest, ANewKeyTakesTheRangeAsItIs) {
    TC::mergeRanges(mRanges, {{kVolume, {700.0, 0.0}}});
    EXPECT_EQ(mRanges.size(), 2);
    EXPECT_EQ(mRanges.value(kVolume), (QPair<double, double>(700.0, 0.0)));
    EXPECT_EQ(mRanges.value(kPrice), (QPair<double, double>(11.0, 9.0)));
}

TEST_F(MergeRangesTest, NothingAddsNothing) {
    TC::mergeRanges(mRanges, {});
    EXPECT_EQ(mRanges.size(), 1);
}

} // namespace
