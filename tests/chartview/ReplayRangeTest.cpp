#include "chartview/ReplayRange.h"

#include <gtest/gtest.h>

using namespace TC;

namespace {

void expectRange(const QString &text, qint64 start, qint64 end, const QString &key) {
    const ReplayRange range = ReplayRange::fromText(text);
    EXPECT_EQ(range.start, start) << text.toStdString();
    EXPECT_EQ(range.end, end) << text.toStdString();
    EXPECT_EQ(range.key, key) << text.toStdString();
}

TEST(ReplayRange, HasItsTimesInTheSecondAndThirdField) {
    expectRange("120,1710466200,1710473400", 1710466200, 1710473400, "");
}

TEST(ReplayRange, HasTheKeyInTheFourthField) {
    expectRange("120,1710466200,1710473400,SH600000", 1710466200, 1710473400, "SH600000");
    expectRange("120,1710466200,1710473400,SH600000,more", 1710466200, 1710473400, "SH600000");
    expectRange("120,1710466200,1710473400,", 1710466200, 1710473400, "");
}

TEST(ReplayRange, DoesNotReadTheFirstField) {
    expectRange("no number,5,6", 5, 6, "");
    expectRange(",5,6", 5, 6, "");
}

TEST(ReplayRange, NumbersAreOf64Bits) {
    expectRange("0,5000000000,-9223372036854775808", 5000000000, std::numeric_limits<qint64>::min(), "");
}

TEST(ReplayRange, WhatCannotBeReadIsZero) {
    expectRange("", 0, 0, "");
    expectRange("7", 0, 0, "");
    expectRange("7,8", 8, 0, "");
    expectRange("7,0x10,1.5,K", 0, 0, "K");
    expectRange("7,99999999999999999999,eight", 0, 0, "");
    expectRange(",,,", 0, 0, "");
}

TEST(ReplayRange, MillisecondsAreAThousandTimesTheSeconds) {
    EXPECT_EQ(toMilliseconds(1710466200), 1710466200000);
    EXPECT_EQ(toMilliseconds(-3), -3000);
    EXPECT_EQ(toMilliseconds(0), 0);
}

TEST(ReplayRange, MillisecondsBeyond64BitsAreHeld) {
    EXPECT_EQ(toMilliseconds(std::numeric_limits<qint64>::max()), 9223372036854775000);
    EXPECT_EQ(toMilliseconds(std::numeric_limits<qint64>::min()), -9223372036854775000);
}

} // namespace
