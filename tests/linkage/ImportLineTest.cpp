#include "linkage/ImportLine.h"

#include <gtest/gtest.h>

#include <limits>

using TC::ImportLine;
using TC::importTime;

namespace {

const QString kComma = QStringLiteral(",");
const QString kTab = QStringLiteral("\t");
constexpr long long kUnreadable = 4294967295LL;

// A moment of the day that times of day are put on, at UTC+8 whatever the machine's zone.
const QDateTime kNow(QDate(2024, 3, 15), QTime(14, 20, 31), Qt::OffsetFromUTC, 8 * 3600);
constexpr long long kMidnight = 1710432000; // 2024-03-15 00:00 at UTC+8

std::optional<ImportLine> read(const char *line, const QString &separator = kComma) {
    return ImportLine::read(QString::fromUtf8(line), separator, kNow);
}
long long timeOf(const char *field) {
    return importTime(QString::fromUtf8(field), kNow);
}

} // namespace

TEST(ImportLineTest, SevenFieldsAreTakenInTheirOrder) {
    const auto line = read("a,b,c,1.5,100,1433122200,1");
    ASSERT_TRUE(line);
    EXPECT_EQ(line->mAccount, "a");
    EXPECT_EQ(line->mInstrument, "b");
    EXPECT_EQ(line->mKey, "c");
    EXPECT_EQ(line->mPrice, 1.5);
    EXPECT_EQ(line->mVolume, 100);
    EXPECT_EQ(line->mTime, 1433122200);
    EXPECT_EQ(line->mDirection, 1);
}

TEST(ImportLineTest, SixFieldsAreNoLine) {
    EXPECT_FALSE(read("a,b,c,1.5,100,09:31:05"));
    EXPECT_FALSE(read(""));
    EXPECT_FALSE(read("a\tb\tc\t1.5\t100\t09:31:05\t1")) << "another separator";
}

TEST(ImportLineTest, FieldsBeyondTheSeventhAreLeftOut) {
    const auto line = read("a,b,c,1.5,100,1433122200,49,1,2,3");
    ASSERT_TRUE(line);
    EXPECT_EQ(line->mDirection, 49);
}

TEST(ImportLineTest, FieldsThatAreLeftOutCostNothing) {
    const QString line = QStringLiteral("a,b,c,1.5,100,1433122200,49") + QString(50 * 1000 * 1000, QChar(','));
    const auto found = ImportLine::read(line, kComma, kNow);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->mDirection, 49);
}

TEST(ImportLineTest, TimeOfDayIsPutOnTheDateOfNow) {
    const auto line = read("a,b,c,1.5,100,09:31:05,1");
    ASSERT_TRUE(line);
    EXPECT_EQ(line->mTime, kMidnight + 9 * 3600 + 31 * 60 + 5);
}

TEST(ImportLineTest, EmptyFieldsAreKeptAndReadAsNothing) {
    const auto line = read("a,b,c,,,,");
    ASSERT_TRUE(line);
    EXPECT_EQ(line->mKey, "c");
    EXPECT_EQ(line->mPrice, 0.0);
    EXPECT_EQ(line->mVolume, 0);
    EXPECT_EQ(line->mTime, 0);
    EXPECT_EQ(line->mDirection, 0);
}

TEST(ImportLineTest, SixSeparatorsAloneAreAFullLine) {
    const auto line = read(",,,,,,");
    ASSERT_TRUE(line);
    EXPECT_EQ(line->mAccount, "");
    EXPECT_EQ(line->mInstrument, "");
    EXPECT_EQ(line->mKey, "");
}

TEST(ImportLineTest, TabsSeparateAndCommasAreText) {
    const auto line = read("1,000\tSH600000\tk,1\t9.87\t300\t09:31:05\t49", kTab);
    ASSERT_TRUE(line);
    EXPECT_EQ(line->mAccount, "1,000");
    EXPECT_EQ(line->mKey, "k,1");
    EXPECT_EQ(line->mVolume, 300);
    EXPECT_FALSE(read("a,b,c,1.5,100,09:31:05,1", kTab));
}

TEST(ImportLineTest, HeadingIsALineWithoutNumbers) {
    const auto line = read("账号,证券,编号,价格,数量,时间,方向");
    ASSERT_TRUE(line);
    EXPECT_EQ(line->mAccount, "账号");
    EXPECT_EQ(line->mPrice, 0.0);
    EXPECT_EQ(line->mVolume, 0);
    EXPECT_EQ(line->mTime, 0);
    EXPECT_EQ(line->mDirection, 0);
}

TEST(ImportLineTest, NumberThatCannotBeReadIsZero) {
    const auto line = read("a,b,c,1.5元,12.0,abc,99999999999");
    ASSERT_TRUE(line);
    EXPECT_EQ(line->mPrice, 0.0);
    EXPECT_EQ(line->mVolume, 0) << "no whole number";
    EXPECT_EQ(line->mTime, 0);
    EXPECT_EQ(line->mDirection, 0) << "too large";
}

TEST(ImportLineTest, TextsAreTakenAsTheyStandAndNumbersBetweenBlanks) {
    const auto line = read(" a ,\"b\",中文, 1.5 , 100 , 1433122200 , 48 ");
    ASSERT_TRUE(line);
    EXPECT_EQ(line->mAccount, " a ");
    EXPECT_EQ(line->mInstrument, "\"b\"");
    EXPECT_EQ(line->mKey, "中文");
    EXPECT_EQ(line->mPrice, 1.5);
    EXPECT_EQ(line->mVolume, 100);
    EXPECT_EQ(line->mTime, 1433122200);
    EXPECT_EQ(line->mDirection, 48);
}

TEST(ImportTimeTest, HoursOfOneAndOfTwoDigitsAreRead) {
    EXPECT_EQ(timeOf("9:30:00"), kMidnight + 9 * 3600 + 30 * 60);
    EXPECT_EQ(timeOf("09:30:00"), kMidnight + 9 * 3600 + 30 * 60);
    EXPECT_EQ(timeOf("23:59:59"), kMidnight + 86399);
    EXPECT_EQ(timeOf("0:00:00"), kMidnight);
}

TEST(ImportTimeTest, OnlyTheTailOfADateAndTimeCounts) {
    EXPECT_EQ(timeOf("2015-06-01 09:30:00"), kMidnight + 9 * 3600 + 30 * 60) << "the date is that of now";
}

TEST(ImportTimeTest, TimeOfDayThatCannotBeReadIsTheLargestNumberOfSeconds) {
    for (const char *field :
         {":", "09:30", "25:00:00", "09:61:00", "09:30:00 ", "9:5:0", "上午09:30", "::", "1:2"}) {
        EXPECT_EQ(timeOf(field), kUnreadable) << field;
    }
}

TEST(ImportTimeTest, WithoutAColonItIsANumberOfSeconds) {
    EXPECT_EQ(timeOf("1433122200"), 1433122200);
    EXPECT_EQ(timeOf("-5"), -5);
    EXPECT_EQ(timeOf("9223372036854775807"), std::numeric_limits<long long>::max());
    EXPECT_EQ(timeOf("9223372036854775808"), 0);
    EXPECT_EQ(timeOf("1433122200.5"), 0);
    EXPECT_EQ(timeOf("093105"), 93105) << "no time of day without colons";
    EXPECT_EQ(timeOf(""), 0);
}

TEST(ImportTimeTest, PartsOfNowBelowASecondDoNotMatter) {
    QDateTime late = kNow;
    late.setTime(QTime(14, 20, 31, 999));
    EXPECT_EQ(importTime(QStringLiteral("10:00:00"), late), kMidnight + 36000);
}
