#include "host/toolkit/Text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

const QString kBad = QStringLiteral("非法值");

std::string text(long double number, int decimals, int flags = 0, bool grouped = false) {
    return GZ::formatDoubleNumber(number, decimals, flags, grouped, kBad).toStdString();
}

TEST(FormatDoubleNumber, WritesAFixedCountOfDecimals) {
    EXPECT_EQ(text(12.345, 2), "12.35");
    EXPECT_EQ(text(12, 3), "12.000");
    EXPECT_EQ(text(-0.5, 1), "-0.5");
    EXPECT_EQ(text(1234567.891, 2), "1234567.89");
    EXPECT_EQ(text(0, 0), "0");
}

TEST(FormatDoubleNumber, DecimalsAreHeldToZeroToTen) {
    EXPECT_EQ(text(1.75L, -3), "2");
    EXPECT_EQ(text(0.5L, 30), "0.5000000000");
}

TEST(FormatDoubleNumber, NegativeZeroHasNoSign) {
    EXPECT_EQ(text(-0.0L, 2), "0.00");
    EXPECT_EQ(text(-0.004L, 2), "0.00");
    EXPECT_EQ(text(-0.006L, 2), "-0.01");
}

TEST(FormatDoubleNumber, PercentMultipliesByAHundred) {
    EXPECT_EQ(text(0.0512, 2, utils::eFormatPercent), "5.12%");
    EXPECT_EQ(text(-1, 0, utils::eFormatPercent), "-100%");
    EXPECT_EQ(text(-0.00001, 2, utils::eFormatPercent), "0.00%");
}

TEST(FormatDoubleNumber, ScalesFromEachUnitOn) {
    EXPECT_EQ(text(9999, 2, utils::eFormatScaled), "9999.00");
    EXPECT_EQ(text(10000, 2, utils::eFormatScaled), "1.00万");
    EXPECT_EQ(text(-25600, 2, utils::eFormatScaled), "-2.56万");
    EXPECT_EQ(text(1e8, 1, utils::eFormatScaled), "1.0亿");
    EXPECT_EQ(text(3.21e12, 2, utils::eFormatScaled), "3.21万亿");
}

TEST(FormatDoubleNumber, AUnitBeginsWithinTheTolerance) {
    EXPECT_EQ(text(9999.999995L, 2, utils::eFormatScaled), "1.00万");
    EXPECT_EQ(text(9999.9998L, 2, utils::eFormatScaled), "10000.00");
}

TEST(FormatDoubleNumber, PercentIsTakenBeforeTheUnit) {
    EXPECT_EQ(text(250, 1, utils::eFormatScaled | utils::eFormatPercent), "2.5万%");
}

TEST(FormatDoubleNumber, GroupsOfThreeDigits) {
    EXPECT_EQ(text(1234567.5L, 1, 0, true), "1,234,567.5");
    EXPECT_EQ(text(-123456, 0, 0, true), "-123,456");
    EXPECT_EQ(text(-123, 2, 0, true), "-123.00");
    EXPECT_EQ(text(1000, 0, 0, true), "1,000");
}

TEST(FormatDoubleNumber, WhatIsNoNumberGivesTheFallback) {
    EXPECT_EQ(text(std::nan(""), 2), "非法值");
    EXPECT_EQ(text(std::numeric_limits<double>::infinity(), 2), "非法值");
    EXPECT_EQ(text(-std::numeric_limits<long double>::infinity(), 2), "非法值");
    EXPECT_EQ(text(TC::kUnsetValue, 2), "非法值");
    EXPECT_EQ(text(TC::kUnsetValue, 2, utils::eFormatPercent), "非法值");
    EXPECT_EQ(text(std::numeric_limits<long double>::max(), 2, utils::eFormatPercent), "非法值");
}

TEST(FormatDoubleNumber, TheLargestNumberHasAllItsDigits) {
    EXPECT_EQ(text(std::numeric_limits<long double>::max(), 10).size(), 4933u + 11u);
}

TEST(MillisecondsToTime, IsTheLocalClockTime) {
    const QDateTime local(QDate(2024, 3, 15), QTime(9, 31, 7, 999));
    EXPECT_EQ(utils::millisecondsToTime(local.toMSecsSinceEpoch()), 93107);
    const QDateTime midnight(QDate(2024, 3, 15), QTime(0, 0));
    EXPECT_EQ(utils::millisecondsToTime(midnight.toMSecsSinceEpoch()), 0);
    EXPECT_EQ(utils::millisecondsToTime(midnight.toMSecsSinceEpoch() - 1), 235959);
}

TEST(MillisecondsToTime, TheEndsOfTimeAreTimes) {
    for (const qint64 end : {std::numeric_limits<qint64>::min(), std::numeric_limits<qint64>::max()}) {
        const int time = utils::millisecondsToTime(end);
        EXPECT_GE(time, 0);
        EXPECT_LE(time, 235959);
    }
}

TEST(Text, Utf8BecomesText) {
    EXPECT_EQ(GZ::sToQs("分时"), QStringLiteral("分时"));
    EXPECT_EQ(GZ::sToQs(std::string("a\0b", 3)).size(), 3);
}

TEST(Text, SecondsAreLocalDateAndTime) {
    const QDateTime local(QDate(2024, 3, 15), QTime(15, 0));
    EXPECT_EQ(GZ::secondToQDateTime(local.toSecsSinceEpoch()), local);
}

} // namespace
