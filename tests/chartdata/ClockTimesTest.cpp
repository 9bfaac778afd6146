#include "chartdata/ClockTimes.h"

#include "host/toolkit/Text.h"

#include <gtest/gtest.h>

#include <climits>
#include <random>

namespace TC {
namespace {

TEST(RecordTime, ReadsBothFormats) {
    EXPECT_EQ(recordTime("09:31:05"), QTime(9, 31, 5));
    EXPECT_EQ(recordTime("093105"), QTime(9, 31, 5));
}

TEST(RecordTime, UnreadableTextIsNull) {
    for (const char *text : {"", "9:31", "93105", "25:00:00", "noon", "09:31:05.123", "24:00:00", "09:60:00",
                             "093160", "+9:31:05", "09-31-05", "９３"}) {
        EXPECT_TRUE(recordTime(text).isNull()) << text;
    }
}

TEST(RecordTime, ReadsWhatQTimeReads) {
    std::mt19937 random(7);
    const std::string letters = "0123456789:: .x";
    std::uniform_int_distribution<std::size_t> letter(0, letters.size() - 1);
    std::uniform_int_distribution<int> second(0, 86399);
    std::uniform_int_distribution<int> percent(0, 99);
    int read = 0;
    for (int i = 0; i < 4000; ++i) {
        const QTime time = QTime(0, 0).addSecs(second(random));
        std::string text = time.toString(percent(random) < 50 ? "hh:mm:ss" : "hhmmss").toStdString();
        for (char &one : text) {
            one = percent(random) < 8 ? letters[letter(random)] : one;
        }
        if (percent(random) < 10) {
            text.pop_back();
        }
        const QString source = QString::fromStdString(text);
        QTime expected = QTime::fromString(source, QStringLiteral("hh:mm:ss"));
        expected = expected.isNull() ? QTime::fromString(source, QStringLiteral("hhmmss")) : expected;
        EXPECT_EQ(recordTime(text), expected) << text;
        read += !expected.isNull();
    }
    EXPECT_GT(read, 1000);
    EXPECT_LT(read, 3000);
}

TEST(ClockTimes, AreThoseOfTheLocalZone) {
    ClockTimes clock;
    for (const int second :
         {0, 1, 899, 900, 901, -1, -900, -901, 1710432000, 1710467999, 1710486305, INT_MAX}) {
        EXPECT_EQ(clock(second), GZ::secondToQDateTime(second).time()) << second;
    }
    // Two nights on which a zone with summer time changes, second by second through the hour.
    for (const int midnight : {1710028800, 1730592000}) {
        for (int second = midnight; second < midnight + 86400; second += 59) {
            ASSERT_EQ(clock(second), GZ::secondToQDateTime(second).time()) << second;
        }
    }
}

TEST(ClockTimes, AnyMomentHasATime) {
    ClockTimes clock;
    EXPECT_TRUE(clock(INT_MIN).isValid());
}

} // namespace
} // namespace TC
