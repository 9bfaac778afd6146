#include "viewmodel/HalfHours.h"

#include <gtest/gtest.h>

#include <limits>

using namespace TC;

namespace {

/// "<index>" of a stop inside a session, "<index>|" at its end, "<index>." at the end of the day.
QStringList stopsOf(const Sessions &sessions) {
    QStringList stops;
    for (const HalfHour &stop : halfHours(sessions)) {
        const char *const ends[] = {"", "|", "."};
        stops.append(QString::number(stop.index) + QLatin1String(ends[static_cast<int>(stop.place)]));
    }
    return stops;
}

TEST(HalfHours, StockDayHasEightOfWhichTwoEndASession) {
    EXPECT_EQ(stopsOf({{570, 690}, {781, 900}}),
              (QStringList{"30", "60", "90", "120|", "150", "180", "210", "240."}));
}

TEST(HalfHours, RestOfASessionIsShorter) {
    // 09:00 to 10:15, 10:31 to 11:30: 75 and 60 minutes.
    EXPECT_EQ(stopsOf({{540, 615}, {631, 690}}), (QStringList{"30", "60", "75|", "105", "135."}));
    const QVector<HalfHour> stops = halfHours({{540, 615}, {631, 690}});
    EXPECT_EQ(stops[1].minutes, 30);
    EXPECT_EQ(stops[2].minutes, 15);
}

TEST(HalfHours, SessionOfHalfAnHourIsItsEnd) {
    EXPECT_EQ(stopsOf({{570, 600}}), QStringList{"30."});
    EXPECT_EQ(stopsOf({{570, 601}}), (QStringList{"30", "31."}));
}

TEST(HalfHours, SessionsWithoutMinutesHaveNone) {
    EXPECT_EQ(stopsOf({}), QStringList());
    EXPECT_EQ(stopsOf({{570, 570}, {600, 500}, {781, 840}}), (QStringList{"30", "60."}));
}

TEST(HalfHours, NoSessionIsLongerThanADay) {
    constexpr int most = std::numeric_limits<int>::max();
    constexpr int least = std::numeric_limits<int>::min();
    const QVector<HalfHour> stops = halfHours({{least, most}, {least, least}, {most, least}});
    ASSERT_EQ(stops.size(), 48 + 1) << "a day, and the one minute before the second session";
    EXPECT_EQ(stops[47].index, 1440);
}

} // namespace
