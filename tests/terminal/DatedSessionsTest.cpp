#include "terminal/market/DatedSessions.h"
#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketServices.h"
#include "terminal/market/MarketSessions.h"
#include "terminal/market/MinuteBarImporter.h"
#include "terminal/market/NightHours.h"
#include "tests/terminal/StoreFixture.h"

using namespace terminal;

namespace {

QByteArray sugar(std::initializer_list<const char *> times) {
    QByteArray content("datetime,open,high,low,close,volume\n");
    for (const char *time : times) {
        content += QByteArray(time) + ",5500,5500,5500,5500,2\n";
    }
    return content;
}

class DatedSessionsTest : public StoreFixture {
protected:
    void SetUp() override { openStore(); }
    ImportOutcome import(const QByteArray &content, const char *market, const char *code,
                         bool fromFile = false) {
        ImportOptions how;
        how.market = QLatin1String(market);
        how.code = QLatin1String(code);
        how.sessionsFromFile = fromFile;
        return MinuteBarImporter(mStore, how).importFile(write("bars.csv", content));
    }
    DaySessions::Table kept(const char *key, const QDate &day) {
        const Instrument *instrument = mStore.catalogue()->find(QLatin1String(key));
        return instrument ? mStore.daySessions(instrument->id, dayOf(day)).table() : DaySessions::Table();
    }
};

} // namespace

TEST(NightHoursTest, HoursAreThoseOfTheExchangesNotices) {
    const auto end = [](const char *exchange, const char *product, const QDate &evening) {
        return nightEndOn(QLatin1String(exchange), QLatin1String(product), evening).value_or(-1);
    };
    EXPECT_EQ(end("CZCE", "SR", QDate(2014, 12, 11)), 0);
    EXPECT_EQ(end("CZCE", "SR", QDate(2014, 12, 12)), 1410); // until 23:30
    EXPECT_EQ(end("CZCE", "SR", QDate(2019, 12, 10)), 1410);
    EXPECT_EQ(end("CZCE", "SR", QDate(2019, 12, 11)), 1380);
    EXPECT_EQ(end("SHFE", "RB", QDate(2015, 6, 1)), 60);
    EXPECT_EQ(end("SHFE", "RB", QDate(2016, 5, 3)), 1380);
    EXPECT_EQ(end("DCE", "P", QDate(2014, 8, 1)), 150);
    EXPECT_EQ(end("DCE", "P", QDate(2015, 5, 8)), 1410);
    EXPECT_EQ(end("DCE", "P", QDate(2019, 3, 29)), 1380);
    for (const QDate &evening :
         {QDate(2020, 2, 3), QDate(2020, 3, 18), QDate(2020, 4, 30), QDate(2026, 4, 3)}) {
        EXPECT_EQ(end("SHFE", "AU", evening), 0) << evening.toString().toStdString();
    }
    EXPECT_EQ(end("SHFE", "AU", QDate(2020, 5, 6)), 150);
    EXPECT_EQ(end("SHFE", "AU", QDate(2014, 9, 5)), 0); // before a holiday of which SHFE and DCE have told
    EXPECT_EQ(end("DCE", "JD", QDate(2020, 5, 6)), -1); // no history is stated
}

TEST(NightHoursTest, TheLastHoursAreThoseOfToday) {
    for (const char *product : {"AU", "CU", "RB", "BU", "RU", "NI", "FU", "SP", "SS", "AO", "BR", "AD",
                                "OP", "SC", "NR", "LU", "BC", "EC", "P",  "JM", "A",  "CS", "EG", "PG",
                                "LG", "SR", "CF", "OI", "CY", "SA", "PF", "SH", "PX", "PR"}) {
        EXPECT_EQ(nightEndOn(QStringLiteral("SHFE"), QLatin1String(product), QDate(2026, 5, 11)).value_or(-1),
                  nightEndOfProduct(QLatin1String(product)))
            << product;
    }
}

TEST_F(DatedSessionsTest, ADayHasTheNightThatWasHeldThen) {
    ASSERT_EQ(import(sugar({"2019-06-25 21:01", "2019-06-25 23:30", "2019-06-26 09:01"}), "CZCE", "SR909")
                  .error.toStdString(),
              "");
    EXPECT_EQ(kept("CZCESR909", QDate(2019, 6, 26)),
              (DaySessions::Table{{1260, 1410}, {541, 615}, {631, 690}, {811, 900}}));
    ASSERT_EQ(import(sugar({"2020-01-07 21:01", "2020-01-07 23:00", "2020-01-08 09:01"}), "CZCE", "SR909")
                  .error.toStdString(),
              "");
    EXPECT_TRUE(kept("CZCESR909", QDate(2020, 1, 8)).isEmpty()); // those of today
    // No night was held in the spring of 2020: its day begins at 09:00 sharp.
    ASSERT_EQ(import(sugar({"2020-03-18 09:00", "2020-03-18 15:00"}), "CZCE", "SR909").error.toStdString(), "");
    EXPECT_EQ(kept("CZCESR909", QDate(2020, 3, 18)), (DaySessions::Table{{540, 615}, {631, 690}, {811, 900}}));
}

TEST_F(DatedSessionsTest, WhatNoSessionOfTheDayHasIsRefused) {
    EXPECT_TRUE(import(sugar({"2019-12-12 23:30"}), "CZCE", "SR909")
                    .error.endsWith(QStringLiteral(":2: 23:30 is outside the sessions")));
    EXPECT_TRUE(import(sugar({"2020-03-18 21:01"}), "CZCE", "SR909")
                    .error.endsWith(QStringLiteral(":2: 21:01 is outside the sessions")));
}

TEST_F(DatedSessionsTest, TheFileShowsItsSessionsWhereTheUserSaysSo) {
    const QByteArray night =
        sugar({"2019-12-12 23:29", "2019-12-12 23:30", "2019-12-13 00:00", "2019-12-13 00:01",
               "2019-12-13 09:01", "2019-12-13 09:10", "2019-12-13 10:00"});
    ASSERT_EQ(import(night, "CZCE", "SR909", true).error.toStdString(), "");
    EXPECT_EQ(kept("CZCESR909", QDate(2019, 12, 13)),
              (DaySessions::Table{{1409, 1410}, {1440, 1440}, {1, 1}, {541, 550}, {600, 600}}));
    const Instrument *instrument = mStore.catalogue()->find(QStringLiteral("CZCESR909"));
    EXPECT_EQ(mStore.bars(instrument->id, dayOf(QDate(2019, 12, 13))).size(), 7u);
    // A share at noon and in the evening: of the same day.
    ASSERT_EQ(import(sugar({"2026-03-23 12:00", "2026-03-23 20:00"}), "SH", "600000", true).error.toStdString(),
              "");
    EXPECT_EQ(kept("SH600000", QDate(2026, 3, 23)), (DaySessions::Table{{720, 720}, {1200, 1200}}));
}

TEST_F(DatedSessionsTest, TheAxisHasTheSessionsOfItsDay) {
    ASSERT_TRUE(import(sugar({"2019-06-25 23:30", "2019-06-26 09:01"}), "CZCE", "SR909").isGood());
    StoreTradeTimes times(mStore);
    QVector<QPair<int, int>> sessions;
    int count = 0;
    const QString market = QStringLiteral("CZCE");
    ASSERT_TRUE(times.getTradeTime(market, QStringLiteral("SR909"), sessions, count));
    EXPECT_EQ(sessions.first(), qMakePair(1260, 1380));
    times.setAxisDay(QStringLiteral("CZCESR909"), dayOf(QDate(2019, 6, 26)));
    ASSERT_TRUE(times.getTradeTime(market, QStringLiteral("SR909"), sessions, count));
    EXPECT_EQ(sessions.first(), qMakePair(1260, 1410));
    EXPECT_EQ(count, 151 + 75 + 60 + 90);
    EXPECT_EQ(times.axisSessions(QStringLiteral("CZCESR909")).count(), count);
    times.setAxisDay(QStringLiteral("CZCESR909"), dayOf(QDate(2019, 6, 27)));
    EXPECT_EQ(times.axisSessions(QStringLiteral("CZCESR909")).table().first(), qMakePair(1260, 1380));
}
