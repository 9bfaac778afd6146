#include "terminal/market/FileImporter.h"
#include "terminal/market/ImportPreview.h"
#include "terminal/market/ImportedInstrument.h"
#include "terminal/market/MarketDate.h"
#include "terminal/market/TickDays.h"
#include "tests/terminal/StoreFixture.h"

#include <QFileInfo>
#include <QSqlQuery>

#include <sys/stat.h>

using namespace terminal;

namespace {

const QByteArray kTrades("Symbol,Datetime,Price,Volume\n");
const QByteArray
    kSnapshots("MDDate,MDTime,SecurityID,PreClosePx,TotalVolumeTrade,TotalValueTrade,LastPx,HighPx,LowPx\n");
const QDate kMonday(2026, 3, 23);

class TickImporterTest : public StoreFixture {
protected:
    void SetUp() override { openStore(); }

    ImportOutcome import(const QByteArray &content, const ImportOptions &how = {},
                         const Progress &progress = {}) {
        return importMarketFile(mStore, how, write("ticks.csv", content), progress);
    }
    /// What went wrong, behind the path of the file; the store has to be empty afterwards.
    std::string trouble(const QByteArray &content, const ImportOptions &how = {}) {
        const ImportOutcome outcome = import(content, how);
        EXPECT_TRUE(outcome.instruments.isEmpty());
        const QString path = pathOf("ticks.csv") + QLatin1Char(':');
        EXPECT_TRUE(outcome.error.startsWith(path)) << outcome.error.toStdString();
        EXPECT_EQ(count("instruments") + count("days") + count("minute_bars") + count("ticks"), 0);
        return outcome.error.mid(path.size()).toStdString();
    }
    int count(const char *table) {
        QSqlQuery query(mStore.connection());
        return query.exec(QStringLiteral("SELECT count(*) FROM %1").arg(QLatin1String(table))) && query.next()
                   ? query.value(0).toInt()
                   : -1;
    }
    qint64 rowOf(const char *key) { return mStore.catalogue()->find(QString::fromLatin1(key))->id; }
    MinuteBars bars(const char *key, const QDate &day) { return mStore.bars(rowOf(key), dayOf(day)); }
    Ticks ticks(const char *key, const QDate &day) { return mStore.ticks(rowOf(key), dayOf(day)); }
};

/// A time of Monday, 2026-03-23.
qint64 mondayTime(int hour, int minute, int second, int millisecond = 0) {
    return timeOf(kMonday, hour * 60 + minute) + second * 1000 + millisecond;
}

} // namespace

TEST_F(TickImporterTest, AClockMinuteStandsForTheMinuteThatEndsAtIt) {
    const ImportOutcome outcome = import(kTrades + "600000.SH,2026-03-23 09:31:00,10.00,100\n"
                                                   "600000.SH,2026-03-23 09:31:01,10.20,200\n"
                                                   "600000.SH,2026-03-23 09:31:30,9.90,300\n"
                                                   "600000.SH,2026-03-23 09:32:00,10.10,400\n");
    ASSERT_EQ(outcome.error.toStdString(), "");
    EXPECT_EQ(outcome.rows, 4);
    EXPECT_EQ(outcome.instruments.at(0).key, QStringLiteral("SH600000"));
    EXPECT_EQ(outcome.instruments.at(0).ticks, 4);
    EXPECT_EQ(outcome.instruments.at(0).bars, 2);
    const MinuteBars day = bars("SH600000", kMonday);
    ASSERT_EQ(day.size(), 2u);
    EXPECT_EQ(day[0].time, timeOf(kMonday, 571));
    EXPECT_EQ(day[0].volume, 100.0);
    EXPECT_EQ(day[1].time, timeOf(kMonday, 572));
    EXPECT_EQ(day[1].open, 10.2);
    EXPECT_EQ(day[1].high, 10.2);
    EXPECT_EQ(day[1].low, 9.9);
    EXPECT_EQ(day[1].price, 10.1);
    EXPECT_EQ(day[1].volume, 900.0);
    EXPECT_DOUBLE_EQ(day[1].amount, 10.2 * 200 + 9.9 * 300 + 10.1 * 400);
    EXPECT_DOUBLE_EQ(day[1].average, (1000.0 + 2040.0 + 2970.0 + 4040.0) / 1000.0);
}

TEST_F(TickImporterTest, TradesAreKeptAsTheyAre) {
    ASSERT_TRUE(import(kTrades + "600000.SH,2026-03-23 09:31:00.250,10.00,100\n"
                                 "600000.SH,2026-03-23 09:31:00.250,10.01,5\n")
                    .isGood());
    EXPECT_EQ(ticks("SH600000", kMonday), (Ticks{{mondayTime(9, 31, 0, 250), 10.0, 100.0, 1000.0},
                                                 {mondayTime(9, 31, 0, 250), 10.01, 5.0, 10.01 * 5.0}}));
}

TEST_F(TickImporterTest, AuctionNoonAndCloseAreThoseOfTheSessions) {
    ASSERT_TRUE(import(kTrades + "600000.SH,2026-03-23 09:25:00,10,1\n" // the opening auction
                                 "600000.SH,2026-03-23 09:30:00,10,2\n"
                                 "600000.SH,2026-03-23 11:30:00,10,4\n"
                                 "600000.SH,2026-03-23 11:30:01,10,8\n" // told a little late
                                 "600000.SH,2026-03-23 13:00:00,10,16\n" // the moment of the reopening
                                 "600000.SH,2026-03-23 13:00:01,10,32\n"
                                 "600000.SH,2026-03-23 15:00:00,10,64\n"
                                 "600000.SH,2026-03-23 15:00:03,10,128\n") // the closing auction
                    .isGood());
    std::vector<std::pair<int, double>> volumes;
    for (const MinuteBar &bar : bars("SH600000", kMonday)) {
        volumes.emplace_back(minuteAt(bar.time), bar.volume);
    }
    EXPECT_EQ(volumes, (std::vector<std::pair<int, double>>{{570, 3}, {690, 12}, {781, 48}, {900, 192}}));
}

TEST_F(TickImporterTest, SnapshotsCountWhatTheDayHasGrownBy) {
    ASSERT_TRUE(import(kSnapshots + "2026.03.23,09:15:03.000,300918.SZ,8.179999999999999,0,0,0,0,0\n"
                                    "2026.03.23,09:25:03.000,300918.SZ,8.18,1000,8150,8.15,8.15,8.15\n"
                                    "2026.03.23,09:30:03.000,300918.SZ,8.18,1500,12230,8.16,8.19,8.15\n"
                                    "2026.03.23,09:30:06.000,300918.SZ,8.18,1500,12230,8.16,8.19,8.15\n"
                                    "2026.03.23,09:31:00.000,300918.SZ,8.18,1700,13860,8.15,8.19,8.12\n"
                                    "2026.03.23,12:00:00.000,300918.SZ,8.18,1700,13860,8.15,8.19,8.12\n")
                    .isGood());
    EXPECT_EQ(ticks("SZ300918", kMonday), (Ticks{{mondayTime(9, 25, 3), 8.15, 1000, 8150},
                                                 {mondayTime(9, 30, 3), 8.16, 500, 4080},
                                                 {mondayTime(9, 31, 0), 8.15, 200, 1630}}));
    const MinuteBars day = bars("SZ300918", kMonday);
    ASSERT_EQ(day.size(), 2u);
    EXPECT_EQ(minuteAt(day[0].time), 570);
    EXPECT_EQ(day[0].volume, 1000.0);
    EXPECT_EQ(minuteAt(day[1].time), 571);
    EXPECT_EQ(day[1].open, 8.16);
    EXPECT_EQ(day[1].high, 8.19) << "the day's highest price moved between the snapshots";
    EXPECT_EQ(day[1].low, 8.12);
    EXPECT_EQ(day[1].price, 8.15);
    EXPECT_DOUBLE_EQ(day[1].average, 13860.0 / 1700.0);
    EXPECT_EQ(mStore.catalogue()->find(QStringLiteral("SZ300918"))->lastClose, 8.18);
}

TEST_F(TickImporterTest, ANewDaysSnapshotsStartFromNothing) {
    ASSERT_TRUE(import(kSnapshots + "2026.03.23,14:00:00,300918.SZ,8,1000,8000,8,8,8\n"
                                    "2026.03.24,09:31:00,300918.SZ,8,300,2400,8,8,8\n")
                    .isGood());
    EXPECT_EQ(bars("SZ300918", kMonday).at(0).volume, 1000.0);
    EXPECT_EQ(bars("SZ300918", QDate(2026, 3, 24)).at(0).volume, 300.0);
}

TEST_F(TickImporterTest, ANightsSnapshotsGoOnIntoTheDayThatFollows) {
    const QByteArray header("datetime,symbol,last,total_volume,total_turnover\n");
    ASSERT_TRUE(import(header + "2026-03-20 20:59:00,RB2610.SHFE,3000,10,300000\n" // Friday's auction
                                "2026-03-20 23:00:00,RB2610.SHFE,3001,30,900200\n"
                                "2026-03-23 09:00:30,RB2610.SHFE,3002,35,1050300\n"
                                "2026-03-23 21:00:30,RB2610.SHFE,3003,4,120120\n")
                    .isGood());
    const MinuteBars monday = bars("SHFERB2610", kMonday);
    ASSERT_EQ(monday.size(), 3u);
    EXPECT_EQ(monday[0].time, timeOf(QDate(2026, 3, 20), 1260));
    EXPECT_EQ(monday[0].volume, 10.0);
    EXPECT_EQ(monday[1].volume, 20.0);
    EXPECT_EQ(monday[2].time, timeOf(kMonday, 541));
    EXPECT_EQ(monday[2].volume, 5.0);
    const MinuteBars tuesday = bars("SHFERB2610", QDate(2026, 3, 24));
    ASSERT_EQ(tuesday.size(), 1u);
    EXPECT_EQ(tuesday[0].volume, 4.0);
    EXPECT_EQ(ticks("SHFERB2610", kMonday).size(), 3u);
    EXPECT_EQ(ticks("SHFERB2610", QDate(2026, 3, 24)).size(), 1u);
}

TEST_F(TickImporterTest, MidnightBelongsToTheMinuteThatEndsThen) {
    ASSERT_TRUE(import(kTrades + "AU2606.SHFE,2026-03-24 00:00:00,780,2\n"
                                 "AU2606.SHFE,2026-03-24 00:00:01,781,3\n")
                    .isGood());
    const MinuteBars day = bars("SHFEAU2606", QDate(2026, 3, 24));
    ASSERT_EQ(day.size(), 2u);
    EXPECT_EQ(day[0].time, timeOf(QDate(2026, 3, 24), 0));
    EXPECT_EQ(day[1].time, timeOf(QDate(2026, 3, 24), 1));
    EXPECT_EQ(day[0].amount, 0.0) << "the size of a contract is not known";
    EXPECT_DOUBLE_EQ(day[1].average, (780.0 * 2 + 781.0 * 3) / 5);
}

TEST_F(TickImporterTest, RowsMayComeInAnyOrder) {
    ASSERT_TRUE(import(kTrades + "600000.SH,2026-03-23 09:31:30,10.1,2\n"
                                 "600000.SH,2026-03-23 09:31:10,10.0,1\n"
                                 "600000.SH,2026-03-23 09:31:10,10.2,3\n")
                    .isGood());
    const MinuteBars day = bars("SH600000", kMonday);
    ASSERT_EQ(day.size(), 1u);
    EXPECT_EQ(day[0].open, 10.0);
    EXPECT_EQ(day[0].price, 10.1);
    EXPECT_EQ(ticks("SH600000", kMonday).at(1).price, 10.2) << "equal times stay in the order of the file";
}

TEST_F(TickImporterTest, TheFilesNameTellsTheMarketOfItsSymbol) {
    const ImportOutcome outcome = importMarketFile(
        mStore, {}, write("tick_000001.SZ_trades.csv", kTrades + "000001,2026-03-23 09:31:30,10.1,2\n"));
    ASSERT_EQ(outcome.error.toStdString(), "");
    EXPECT_EQ(outcome.instruments.at(0).key, QStringLiteral("SZ000001"));
    const ImportOutcome other = importMarketFile(
        mStore, {}, write("tick_000001.SZ_trades.csv", kTrades + "600000,2026-03-23 09:31:30,10.1,2\n"));
    EXPECT_TRUE(other.error.contains(QStringLiteral("--market"))) << "it is another symbol";
}

TEST_F(TickImporterTest, TheMoneyTellsLots) {
    ASSERT_TRUE(
        import("symbol,datetime,price,volume,amount\n600000.SH,2026-03-23 09:31:30,10,5,5000\n").isGood());
    EXPECT_EQ(bars("SH600000", kMonday).at(0).volume, 500.0);
    EXPECT_EQ(ticks("SH600000", kMonday).at(0).volume, 500.0);
    EXPECT_EQ(bars("SH600000", kMonday).at(0).average, 10.0);
}

TEST_F(TickImporterTest, BrokenFilesAreErrorsOfTheirLines) {
    EXPECT_EQ(trouble(""), "1: the file is empty");
    EXPECT_EQ(trouble(kTrades), "1: the file has no rows");
    EXPECT_EQ(trouble("Symbol,Datetime,Price\n600000.SH,2026-03-23 09:31:30,10\n"), "1: no column \"volume\"");
    EXPECT_EQ(trouble("Symbol,Price,Volume\n600000.SH,10,1\n"),
              "1: no column \"datetime\", nor \"date\" and \"time\"");
    EXPECT_EQ(trouble("last,last,time\n"), "1: two columns for \"last\"");
    EXPECT_EQ(trouble(kTrades + "600000.SH,2026-03-23 09:31:30,10,1\n600000.SH,2026-03-23 09:31:30,x,1\n"),
              "3: no number in column \"price\": \"x\"");
    EXPECT_EQ(trouble(kTrades + "600000.SH,2026-03-23 09:31:30,10\n"), "2: 3 fields where the heading has 4");
    EXPECT_EQ(trouble(kTrades + "600000.SH,2026-03-23 09:61:30,10,1\n"), "2: unknown time \"09:61:30\"");
    EXPECT_EQ(trouble(kTrades + "600000.SH,2026-03-23 09:31:30,10,-1\n"),
              "2: negative number in column \"volume\"");
    EXPECT_EQ(trouble(kTrades + "600000.SH,2026-03-23 09:31:30,0,1\n"), "2: a price of zero");
    EXPECT_EQ(trouble(kTrades + "600000.SH,2026-03-23 12:00:00,10,1\n"), "2: 12:00:00 is outside the sessions");
    EXPECT_EQ(trouble(kTrades + "600000.SH,2026-03-23 09:31:30,10,0\n"), "2: nothing was traded of SH600000");
    EXPECT_EQ(trouble(kTrades + QByteArray("600000.SH,2026-03-23\0 09:31:30,10,1\n", 36)),
              "2: a binary file, not a text of minute bars");
    EXPECT_EQ(trouble(kSnapshots + "2026.03.23,09:31:00,300918.SZ,8,1000,8000,8,8,8\n"
                                   "2026.03.23,09:31:03,300918.SZ,8,900,8000,8,8,8\n"),
              "3: the volume of the day falls");
    EXPECT_EQ(trouble(kSnapshots + "2026.03.23,09:31:00,300918.SZ,8,1000,8000,8,8,8\n"
                                   "2026.03.23,09:31:03,300918.SZ,8,1001,7000,8,8,8\n"),
              "3: the amount of the day falls");
    ImportOptions nowhere;
    nowhere.market = QStringLiteral("MOON");
    EXPECT_TRUE(QString::fromStdString(trouble(kTrades + "1,2026-03-23 09:31:30,10,1\n", nowhere))
                    .startsWith(QLatin1String("1: unknown market \"MOON\"")));
}

TEST_F(TickImporterTest, AnErrorOfALaterInstrumentTakesBackTheEarlierOnes) {
    EXPECT_EQ(trouble(kTrades + "600000.SH,2026-03-23 09:31:30,10,1\n600519.SH,2026-03-23 12:31:30,10,1\n"),
              "3: 12:31:30 is outside the sessions");
}

TEST_F(TickImporterTest, AFolderIsNoFile) {
    const ImportOutcome outcome = importMarketFile(mStore, {}, mFolder.path());
    EXPECT_TRUE(outcome.error.contains(QStringLiteral("it is a folder"))) << outcome.error.toStdString();
}

TEST_F(TickImporterTest, WhatWouldNeverEndIsRefusedAndNotWaitedFor) {
    const QString pipe = pathOf("pipe.csv");
    ASSERT_EQ(::mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    const QString link = pathOf("link.csv");
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/zero"), link));
    for (const QString &path : {pipe, link, QStringLiteral("/dev/zero")}) {
        const QString said = path + QStringLiteral(": cannot be read: it is a pipe or a device, no file");
        EXPECT_EQ(importMarketFile(mStore, {}, path).error, said);
        EXPECT_EQ(previewFile(path).error, said);
    }
}

TEST_F(TickImporterTest, AFileOverTheBoundIsRefusedUnread) {
    QFile huge(pathOf("huge.csv"));
    ASSERT_TRUE(huge.open(QIODevice::WriteOnly));
    huge.write(kTrades);
    ASSERT_TRUE(huge.resize(20000000001)); // takes no room
    EXPECT_EQ(importMarketFile(mStore, {}, huge.fileName()).error,
              huge.fileName() + QStringLiteral(": larger than 20000 MB: split it by days"));
}

TEST_F(TickImporterTest, AnotherImportOfTheSameTicksChangesNothing) {
    const QByteArray content =
        kTrades + "600000.SH,2026-03-23 09:31:30,10,1\n600000.SH,2026-03-23 09:32:30,11,1\n";
    ASSERT_TRUE(import(content).isGood());
    const Ticks before = ticks("SH600000", kMonday);
    const MinuteBars bar = bars("SH600000", kMonday);
    ASSERT_EQ(import(content).error.toStdString(), "");
    EXPECT_EQ(ticks("SH600000", kMonday), before);
    EXPECT_EQ(bars("SH600000", kMonday), bar);
}

TEST_F(TickImporterTest, OtherTicksOfAStoredDayAreAnErrorAndLeaveTheStore) {
    const QByteArray first = kTrades + "600000.SH,2026-03-23 09:31:30,10,1\n";
    ASSERT_TRUE(import(first).isGood());
    const ImportOutcome more = import(first + "600000.SH,2026-03-23 09:33:30,10,1\n");
    EXPECT_TRUE(
        more.error.endsWith(QStringLiteral(":3: 2026-03-23 of SH600000 is in the store with other ticks")))
        << more.error.toStdString();
    const ImportOutcome other = import(kTrades + "600000.SH,2026-03-23 09:31:31,10,1\n");
    EXPECT_TRUE(
        other.error.endsWith(QStringLiteral(":2: 2026-03-23 of SH600000 is in the store with other ticks")))
        << other.error.toStdString();
    EXPECT_EQ(ticks("SH600000", kMonday).size(), 1u);
    EXPECT_EQ(bars("SH600000", kMonday).size(), 1u);
}

TEST_F(TickImporterTest, BarsImportedLaterLeaveTheTicks) {
    ASSERT_TRUE(import(kTrades + "600000.SH,2026-03-23 09:31:30,10,1\n").isGood());
    ASSERT_TRUE(import("symbol,datetime,open,high,low,close,volume,amount\n"
                       "600000.SH,2026-03-23 09:40:00,10,10,10,10,7,70\n")
                    .isGood());
    EXPECT_EQ(bars("SH600000", kMonday).size(), 2u);
    EXPECT_EQ(ticks("SH600000", kMonday).size(), 1u);
}

TEST_F(TickImporterTest, ANewInstrumentGetsTheNameThatWasGiven) {
    ImportOptions how;
    how.name = QStringLiteral("某某股份");
    ASSERT_TRUE(import(kTrades + "600998.SH,2026-03-23 09:31:30,10,1\n", how).isGood());
    EXPECT_EQ(mStore.catalogue()->find(QStringLiteral("SH600998"))->name, QStringLiteral("某某股份"));
}

TEST_F(TickImporterTest, AStoppedImportLeavesTheStoreWhereverItStops) {
    QByteArray content = kTrades;
    for (int i = 0; i < 60000; ++i) {
        content += "600000.SH,2026-03-23 09:31:30,10,1\n";
    }
    int reports = 0;
    ASSERT_TRUE(import(content, {}, [&reports](int done, int total) {
                    EXPECT_LE(done, total);
                    return ++reports > 0;
                }).isGood());
    ASSERT_GT(reports, 6);
    for (int stopAt = 1; stopAt <= reports; ++stopAt) {
        int heard = 0;
        QByteArray other = content;
        other.replace("600000.SH", "600998.SH");
        const ImportOutcome outcome = import(other, {}, [&](int, int) { return ++heard < stopAt; });
        EXPECT_TRUE(outcome.error.endsWith(QStringLiteral("the import was stopped")))
            << outcome.error.toStdString();
        EXPECT_EQ(mStore.catalogue()->find(QStringLiteral("SH600998")), nullptr);
        EXPECT_EQ(count("ticks"), 60000);
        EXPECT_EQ(count("instruments"), 1);
    }
}

TEST(TickColumns, TheHeadingsTellTheKind) {
    const auto kind = [](const char *line) { return kindOfTable(readHeadings(QByteArray(line))); };
    EXPECT_EQ(kind("datetime,open,high,low,close,volume"), ImportKind::Bars);
    EXPECT_EQ(kind("Symbol,Datetime,Price,Volume"), ImportKind::Trades);
    EXPECT_EQ(kind("date,time,code,last,volume"), ImportKind::Snapshots);
    EXPECT_EQ(kind("时间,代码,成交价,成交量"), ImportKind::Trades);
    EXPECT_EQ(kind("时间,代码,最新价,总成交量"), ImportKind::Snapshots);
    EXPECT_EQ(kind("日期,时间,开盘价,最高价,最低价,收盘价,成交量"), ImportKind::Bars);
    EXPECT_EQ(kind("name;size"), ImportKind::Bars);
}

TEST(TickDays, AMomentCountsForTheMinuteOfItsSession) {
    const auto minute = [](const DaySessions &sessions, int hour, int min, int second) {
        return minuteOfTick(sessions, ((hour * 60 + min) * 60 + second) * 1000).value_or(-1);
    };
    const DaySessions gold({{1260, 1440}, {1, 150}, {541, 615}, {631, 690}, {811, 900}});
    EXPECT_EQ(minute(gold, 20, 59, 0), 1260);
    EXPECT_EQ(minute(gold, 21, 0, 0), 1260);
    EXPECT_EQ(minute(gold, 21, 0, 1), 1261);
    EXPECT_EQ(minute(gold, 0, 0, 0), 0);
    EXPECT_EQ(minute(gold, 2, 30, 1), 150);
    EXPECT_EQ(minute(gold, 3, 0, 0), -1);
    EXPECT_EQ(minute(gold, 9, 0, 0), 541);
    EXPECT_EQ(minute(gold, 10, 15, 30), 615);
    EXPECT_EQ(minute(gold, 10, 30, 0), 631);
    EXPECT_EQ(minute(gold, 12, 0, 0), -1);
    const DaySessions growth({{570, 690}, {781, 900}, {905, 930}});
    EXPECT_EQ(minute(growth, 8, 29, 0), -1);
    EXPECT_EQ(minute(growth, 8, 30, 0), 570);
    EXPECT_EQ(minute(growth, 15, 3, 0), 900);
    EXPECT_EQ(minute(growth, 15, 4, 30), 905);
    EXPECT_EQ(minute(growth, 15, 34, 1), -1);
}

TEST(ImportedInstrument, AFilesNameMayTellTheInstrument) {
    const auto key = [](const char *file) {
        const InstrumentName name = instrumentOfFileName(QString::fromLatin1(file));
        return (name.market + name.code).toStdString();
    };
    EXPECT_EQ(key("tick_000001.SZ_trades_20180903.csv"), "SZ000001");
    EXPECT_EQ(key("a_000001.XSHG_index_1min_20200701-20200708.csv"), "SH000001");
    EXPECT_EQ(key("SH600519.csv"), "SH600519");
    EXPECT_EQ(key("600519.csv"), "") << "the market is not told";
    EXPECT_EQ(key("bars.csv"), "");
    EXPECT_EQ(likelyMarket(QStringLiteral("600519")).toStdString(), "SH");
    EXPECT_EQ(likelyMarket(QStringLiteral("300918")).toStdString(), "SZ");
    EXPECT_EQ(likelyMarket(QStringLiteral("113050")).toStdString(), "SH");
    EXPECT_EQ(likelyMarket(QStringLiteral("RB2610")).toStdString(), "");
}

// Real files, which stand beside the source tree on some machines only. The figures are those of the files, added up
// by other means.
class RealTicksTest : public TickImporterTest {
protected:
    void SetUp() override {
        if (!QFileInfo::exists(folder())) {
            GTEST_SKIP() << "no folder of real ticks";
        }
        openStore();
    }
    static QString folder() { return QStringLiteral(TIMESHARE_SOURCE_DIR "/../shared/data/"); }
    ImportedBars importReal(const char *file) {
        const ImportOutcome outcome = importMarketFile(mStore, {}, folder() + QString::fromLatin1(file));
        EXPECT_EQ(outcome.error.toStdString(), "");
        return outcome.instruments.value(0);
    }
};

TEST_F(RealTicksTest, TradesOfAShareOfShenzhen) {
    EXPECT_EQ(importReal("tick_000001.SZ_trades_20180903.csv").ticks, 31196);
    const QDate date(2018, 9, 3);
    const DaySummary day = *mStore.summary(rowOf("SZ000001"), dayOf(date));
    EXPECT_EQ(day.volume, 70117507.0);
    EXPECT_EQ(day.high, 10.3);
    EXPECT_EQ(day.low, 10.1);
    const MinuteBars minutes = bars("SZ000001", date);
    EXPECT_EQ(minuteAt(minutes.front().time), 571);
    EXPECT_EQ(minuteAt(minutes.back().time), 900);
    for (const MinuteBar &bar : minutes) {
        EXPECT_FALSE(minuteAt(bar.time) == 898 || minuteAt(bar.time) == 899) << "a call auction";
    }
}

TEST_F(RealTicksTest, SnapshotsOfAShareOfTheGrowthBoard) {
    importReal("tick_300918.SZ_snapshot_20220601.csv");
    const DaySummary day = *mStore.summary(rowOf("SZ300918"), dayOf(QDate(2022, 6, 1)));
    EXPECT_EQ(day.volume, 2388800.0);
    EXPECT_EQ(day.amount, 19711218.0);
    EXPECT_EQ(day.open, 8.15);
    EXPECT_EQ(day.high, 8.3);
    EXPECT_EQ(day.low, 8.12);
    EXPECT_EQ(day.close, 8.24);
    EXPECT_EQ(mStore.catalogue()->find(QStringLiteral("SZ300918"))->lastClose, 8.18);
    EXPECT_EQ(mStore.catalogue()->find(QStringLiteral("SZ300918"))->priceTick, 0.01);
}
