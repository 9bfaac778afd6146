#include "terminal/market/DaySessions.h"
#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketSessions.h"

#include <gtest/gtest.h>

using namespace terminal;
using Place = DaySessions::Place;

namespace {

const DaySessions kGold({{1260, 1440}, {1, 150}, {541, 615}, {631, 690}, {811, 900}});
const DaySessions kSteel({{1260, 1380}, {541, 615}, {631, 690}, {811, 900}});
const DaySessions kOverseas({{540, 955}, {1001, 1440}, {1, 120}});

/// Milliseconds of a clock time at UTC+8, by another road than the code under test.
qint64 utc8(int year, int month, int day, int hour, int minute) {
    return QDateTime(QDate(year, month, day), QTime(hour, minute), Qt::UTC).toMSecsSinceEpoch() - 8 * 3600000LL;
}

DaySessions sessions(const char *market, const char *code, const QVector<int> &types = {}) {
    return marketSessions({QString::fromLatin1(market), QString::fromLatin1(code), QString(), types});
}

} // namespace

TEST(MarketDate, DaysAreMidnightsAtUtcPlusEight) {
    EXPECT_EQ(dayOf(QDate(2024, 3, 15)), 1710432000);
    EXPECT_EQ(dateOf(1710432000), QDate(2024, 3, 15));
    EXPECT_EQ(dateOf(1710432000 - 1), QDate(2024, 3, 14));
    EXPECT_EQ(dayOf(QDate()), 0);
    EXPECT_EQ(dayOf(QDate(1970, 1, 1)), -28800);
}

TEST(MarketDate, TimesAreThoseOfTheExchangeInAnyZoneOfTheProcess) {
    EXPECT_EQ(timeOf(QDate(2024, 3, 15), 570), utc8(2024, 3, 15, 9, 30));
    EXPECT_EQ(timeOf(QDate(2024, 3, 15), 1440), utc8(2024, 3, 16, 0, 0));
    EXPECT_EQ(minuteAt(utc8(2024, 3, 15, 9, 30)), 570);
    EXPECT_EQ(dateAt(utc8(2024, 3, 15, 0, 0)), QDate(2024, 3, 15));
    EXPECT_EQ(dateAt(utc8(2024, 3, 15, 0, 0) - 1), QDate(2024, 3, 14));
    EXPECT_EQ(minuteAt(-28800000), 0);
    EXPECT_EQ(dateAt(-28800001), QDate(1969, 12, 31));
    EXPECT_EQ(marketDateTime(utc8(2024, 3, 15, 9, 30)).toString(QStringLiteral("yyyy-MM-dd HH:mm")),
              QStringLiteral("2024-03-15 09:30"));
}

TEST(DaySessions, CountsBothEndsOfEverySession) {
    EXPECT_EQ(DaySessions({{570, 690}, {781, 900}}).count(), 241);
    EXPECT_EQ(kGold.count(), 556);
    EXPECT_EQ(kSteel.count(), 346);
    EXPECT_EQ(kOverseas.count(), 976);
    EXPECT_EQ(DaySessions().count(), 0);
}

TEST(DaySessions, ANightStandsInFrontOfItsDay) {
    EXPECT_TRUE(kGold.hasNight());
    EXPECT_TRUE(kSteel.hasNight());
    EXPECT_FALSE(kOverseas.hasNight());
    EXPECT_FALSE(DaySessions().hasNight());
    EXPECT_EQ(kGold.placeOf(1260), Place::EveningBefore);
    EXPECT_EQ(kGold.placeOf(1), Place::MorningAfterEvening);
    EXPECT_EQ(kGold.placeOf(541), Place::OnDay);
    EXPECT_EQ(kGold.placeOf(900), Place::OnDay);
    EXPECT_EQ(kSteel.placeOf(1380), Place::EveningBefore);
    EXPECT_EQ(kSteel.placeOf(541), Place::OnDay);
    EXPECT_EQ(kOverseas.placeOf(1440), Place::OnDay);
    EXPECT_EQ(kOverseas.placeOf(120), Place::DayAfter);
}

TEST(DaySessions, MidnightEndsTheEvening) {
    EXPECT_EQ(kGold.placeOf(0), Place::EveningBefore);
    EXPECT_FALSE(kSteel.placeOf(0).has_value());
}

TEST(DaySessions, AMinuteInABreakHasNoPlace) {
    EXPECT_FALSE(kGold.placeOf(151).has_value());
    EXPECT_FALSE(kGold.placeOf(616).has_value());
    EXPECT_FALSE(kSteel.placeOf(1381).has_value());
    EXPECT_FALSE(kGold.placeOf(-5).has_value());
}

TEST(DaySessions, MondaysNightIsFridayEveningAndSaturdayMorning) {
    const std::vector<qint64> times = kGold.times(QDate(2019, 7, 1), QDate(2019, 6, 28));
    ASSERT_EQ(times.size(), 556u);
    EXPECT_EQ(times[0], utc8(2019, 6, 28, 21, 0));
    EXPECT_EQ(times[180], utc8(2019, 6, 29, 0, 0));
    EXPECT_EQ(times[181], utc8(2019, 6, 29, 0, 1));
    EXPECT_EQ(times[330], utc8(2019, 6, 29, 2, 30));
    EXPECT_EQ(times[331], utc8(2019, 7, 1, 9, 1));
    EXPECT_EQ(times[555], utc8(2019, 7, 1, 15, 0));
    EXPECT_TRUE(std::is_sorted(times.begin(), times.end()));
    EXPECT_EQ(kGold.endTime(QDate(2019, 7, 1), QDate(2019, 6, 28)), utc8(2019, 7, 1, 15, 0));
}

TEST(DaySessions, WithoutAnEveningTheNightIsLeftOut) {
    const std::vector<qint64> times = kGold.times(QDate(2026, 10, 8), QDate());
    ASSERT_EQ(times.size(), 225u);
    EXPECT_EQ(times.front(), utc8(2026, 10, 8, 9, 1));
}

TEST(DaySessions, AnOverseasDayEndsOnTheNextDate) {
    const std::vector<qint64> times = kOverseas.times(QDate(2026, 11, 20), QDate());
    ASSERT_EQ(times.size(), 976u);
    EXPECT_EQ(times.back(), utc8(2026, 11, 21, 2, 0));
    EXPECT_EQ(kOverseas.endTime(QDate(2026, 11, 20), QDate()), utc8(2026, 11, 21, 2, 0));
}

TEST(MarketSessions, EveryMarketHasItsOwn) {
    using Table = DaySessions::Table;
    EXPECT_EQ(sessions("SH", "600000").table(), (Table{{570, 690}, {781, 900}}));
    EXPECT_EQ(sessions("SZ", "300750", {277, 10006}).table(), (Table{{570, 690}, {781, 900}, {905, 930}}));
    EXPECT_EQ(sessions("SH", "688001", {100017}).table(), (Table{{570, 690}, {781, 930}}));
    EXPECT_EQ(sessions("CFFEX", "IF2612").table(), (Table{{570, 690}, {781, 900}}));
    EXPECT_EQ(sessions("CFFEX", "T2612").table(), (Table{{555, 690}, {781, 915}}));
    EXPECT_EQ(sessions("CFFEX", "TS2612").table(), (Table{{555, 690}, {781, 915}}));
    EXPECT_EQ(sessions("CZCE", "SM701").table(), (Table{{540, 615}, {631, 690}, {811, 900}}));
    EXPECT_EQ(sessions("SHFE", "AU2612").table(), kGold.table());
    EXPECT_EQ(sessions("SHFE", "rb2701").table(), kSteel.table());
    EXPECT_EQ(sessions("SHFE", "CU2701").table(),
              (Table{{1260, 1440}, {1, 60}, {541, 615}, {631, 690}, {811, 900}}));
    EXPECT_EQ(sessions("HK", "00700").table(), (Table{{570, 720}, {781, 970}}));
    EXPECT_EQ(sessions("SZSEHKEX", "00700").table(), (Table{{570, 720}, {781, 970}}));
    EXPECT_EQ(sessions("YSWP", "CN2612").table(), kOverseas.table());
    EXPECT_EQ(sessions("YSWP", "CNINDEX").table(), (Table{{570, 690}, {781, 900}}));
    EXPECT_EQ(sessions("BKZS", "801780").table(), (Table{{570, 690}, {781, 900}}));
}

TEST(MarketSessions, TheProductIsTheLettersInFrontOfTheCode) {
    EXPECT_EQ(productOfCode(QStringLiteral("au2612")), QStringLiteral("AU"));
    EXPECT_EQ(productOfCode(QStringLiteral("RB")), QStringLiteral("RB"));
    EXPECT_EQ(productOfCode(QStringLiteral("600000")), QString());
    EXPECT_EQ(nightEndOfProduct(QStringLiteral("SM")), 0);
    EXPECT_EQ(nightEndOfProduct(QStringLiteral("RB")), 1380);
    EXPECT_EQ(nightEndOfProduct(QStringLiteral("AG")), 150);
    EXPECT_EQ(nightEndOfProduct(QStringLiteral("XX")), -1);
}
