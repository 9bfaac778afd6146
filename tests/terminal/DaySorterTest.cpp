// Rows that come a year at a time land on the days on which all of them at once do.

#include "terminal/market/DaySorter.h"

#include "terminal/market/MarketDate.h"

#include <gtest/gtest.h>

using namespace terminal;

namespace {

BarRow rowAt(int line, int date, int clock, double price = 10.0) {
    BarRow row;
    row.line = line;
    row.date = date;
    row.clock = clock;
    row.open = row.high = row.low = row.close = price;
    return row;
}

/// Checks all rows, then adds them in these parts; answers the days as they were completed.
QMap<QDate, MinuteBars> sorted(std::vector<std::vector<BarRow>> parts, const BarReading &reading,
                               BarDays &days) {
    QMap<QDate, MinuteBars> result;
    DaySorter sorter(reading, days);
    for (const std::vector<BarRow> &part : parts) {
        for (const BarRow &row : part) {
            EXPECT_TRUE(sorter.check(row).isNone());
        }
    }
    for (std::vector<BarRow> &part : parts) {
        EXPECT_TRUE(sorter.add(part).isNone());
        for (const QDate &day : &part == &parts.back() ? sorter.completeDays() : sorter.completePastDays()) {
            EXPECT_FALSE(result.contains(day)) << "a day is completed once";
            result[day] = days.days.take(day);
        }
    }
    EXPECT_TRUE(days.days.isEmpty());
    return result;
}

} // namespace

TEST(DaySorter, ANightOverTheEndOfAYearBelongsToOneDay) {
    BarReading reading;
    reading.sessions = DaySessions({{1261, 1440}, {1, 150}, {541, 615}});
    const std::vector<BarRow> before{rowAt(2, 20141230, 600), rowAt(3, 20141231, 1439)};
    const std::vector<BarRow> after{rowAt(5, 20150101, 1), rowAt(4, 20150101, 0), rowAt(6, 20150105, 600)};
    BarDays days;
    const QMap<QDate, MinuteBars> read = sorted({before, after}, reading, days);
    ASSERT_EQ(read.keys(), (QList<QDate>{QDate(2014, 12, 30), QDate(2015, 1, 5)}));
    std::vector<qint64> times;
    for (const MinuteBar &bar : read[QDate(2015, 1, 5)]) {
        times.push_back(bar.time);
    }
    const QDate last(2014, 12, 31);
    EXPECT_EQ(times, (std::vector<qint64>{timeOf(last, 1439), timeOf(last, 1440), timeOf(last, 1441),
                                          timeOf(QDate(2015, 1, 5), 600)}));
    EXPECT_EQ(days.sessions.size(), 2);
}

TEST(DaySorter, ASessionAfterMidnightStaysWithTheDayBefore) {
    BarReading reading;
    reading.sessions = DaySessions({{1381, 1440}, {1, 300}});
    BarDays days;
    const QMap<QDate, MinuteBars> read =
        sorted({{rowAt(2, 20141231, 1400)}, {rowAt(3, 20150101, 200)}}, reading, days);
    ASSERT_EQ(read.keys().size(), 1);
    EXPECT_EQ(read.first().size(), 2u);
}

TEST(DaySorter, AMinuteThatStandsTwiceIsToldOnce) {
    BarReading reading;
    reading.sessions = DaySessions({{571, 690}});
    BarDays days;
    sorted({{rowAt(2, 20141230, 600), rowAt(3, 20141230, 600)}, {rowAt(4, 20150105, 600)}}, reading, days);
    EXPECT_EQ(days.repeated.count, 1);
    ASSERT_EQ(days.repeated.first.size(), 1);
    EXPECT_EQ(days.repeated.first[0].line, 3);
}

TEST(DaySorter, TheRowsToAddFollowThoseBefore) {
    BarReading reading;
    reading.sessions = DaySessions({{571, 690}});
    BarDays days;
    DaySorter sorter(reading, days);
    EXPECT_TRUE(sorter.completePastDays().empty()) << "nothing was added";
    std::vector<BarRow> first{rowAt(2, 20141230, 600)};
    ASSERT_TRUE(sorter.add(first).isNone());
    EXPECT_TRUE(sorter.completePastDays().empty()) << "another row of this day may come";
    std::vector<BarRow> other{rowAt(3, 20141230, 600, 11.0)};
    EXPECT_EQ(sorter.add(other).reason,
              QStringLiteral("10:00 of 2014-12-30 stands on line 2 with other values"));
}
