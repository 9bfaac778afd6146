#include "terminal/market/MinuteBarImporter.h"
#include "terminal/market/ColumnChoice.h"
#include "terminal/market/FileImporter.h"
#include "terminal/market/ImportPreview.h"
#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketWriter.h"
#include "terminal/market/PreviousClose.h"
#include "tests/terminal/StoreFixture.h"

#include <QElapsedTimer>
#include <QSqlDatabase>
#include <QSqlQuery>

#include <cstdio>

using namespace terminal;

namespace {

const QByteArray kHeader("datetime,open,high,low,close,volume,amount\n");
const QByteArray kFirst("2026-03-23 09:31:00,10,10.2,9.9,10.1,1000,10100\n");
const QByteArray kSecond("2026-03-23 09:32:00,10.1,10.3,10.1,10.2,3000,30600\n");

ImportOptions options(const char *market, const char *code) {
    ImportOptions result;
    result.market = QString::fromLatin1(market);
    result.code = QString::fromLatin1(code);
    return result;
}

class MinuteBarImporterTest : public StoreFixture {
protected:
    void SetUp() override { openStore(); }

    ImportOutcome import(const QByteArray &content, const ImportOptions &how) {
        return MinuteBarImporter(mStore, how).importFile(write("bars.csv", content));
    }
    /// The reason behind the path of the file, and the line.
    std::string trouble(const QByteArray &content, const ImportOptions &how = options("SH", "600000")) {
        const ImportOutcome outcome = import(content, how);
        EXPECT_TRUE(outcome.instruments.isEmpty());
        EXPECT_FALSE(outcome.error.contains(QLatin1Char('\n')));
        const QString path = pathOf("bars.csv") + QLatin1Char(':');
        EXPECT_TRUE(outcome.error.startsWith(path)) << outcome.error.toStdString();
        EXPECT_TRUE(mStore.catalogue()->instruments.isEmpty());
        EXPECT_EQ(countRows(), 0);
        return outcome.error.mid(path.size()).toStdString();
    }
    int countRows() {
        QSqlQuery query(mStore.connection());
        return query.exec(
                   QStringLiteral("SELECT (SELECT count(*) FROM minute_bars) + (SELECT count(*) FROM days) + "
                                  "(SELECT count(*) FROM instruments)")) &&
                       query.next()
                   ? query.value(0).toInt()
                   : -1;
    }
    MinuteBars bars(const char *key, const QDate &day) {
        const Instrument *instrument = mStore.catalogue()->find(QString::fromLatin1(key));
        return instrument ? mStore.bars(instrument->id, dayOf(day)) : MinuteBars();
    }
};

} // namespace

TEST_F(MinuteBarImporterTest, ABarStandsUnderTheEndOfItsMinute) {
    const ImportOutcome outcome = import(kHeader + kFirst + kSecond, options("SH", "600000"));
    ASSERT_EQ(outcome.error.toStdString(), "");
    ASSERT_EQ(outcome.instruments.size(), 1);
    EXPECT_EQ(outcome.instruments[0].key, QStringLiteral("SH600000"));
    EXPECT_EQ(outcome.instruments[0].bars, 2);
    EXPECT_EQ(outcome.instruments[0].lastDay, dayOf(QDate(2026, 3, 23)));
    const MinuteBars read = bars("SH600000", QDate(2026, 3, 23));
    ASSERT_EQ(read.size(), 2u);
    EXPECT_EQ(read[0].time, timeOf(QDate(2026, 3, 23), 571));
    EXPECT_EQ(read[0].open, 10.0);
    EXPECT_EQ(read[0].high, 10.2);
    EXPECT_EQ(read[0].low, 9.9);
    EXPECT_EQ(read[0].price, 10.1);
    EXPECT_EQ(read[0].volume, 1000.0);
    EXPECT_EQ(read[0].amount, 10100.0);
    EXPECT_DOUBLE_EQ(read[0].average, 10.1);
    EXPECT_DOUBLE_EQ(read[1].average, 40700.0 / 4000.0);
}

TEST_F(MinuteBarImporterTest, LabelsAtTheStartAreMovedToTheEnd) {
    ImportOptions how = options("SH", "600000");
    how.labelAtStart = true;
    ASSERT_TRUE(
        import(kHeader + "2026-03-23 11:29:00,10,10,10,10,1,10\n2026-03-23 13:00:00,10,10,10,10,1,10\n", how)
            .isGood());
    const MinuteBars read = bars("SH600000", QDate(2026, 3, 23));
    ASSERT_EQ(read.size(), 2u);
    EXPECT_EQ(minuteAt(read[0].time), 690);
    EXPECT_EQ(minuteAt(read[1].time), 781);
}

TEST_F(MinuteBarImporterTest, VolumeInLotsIsAHundredShares) {
    ImportOptions how = options("SH", "600000");
    how.volumeInLots = true;
    ASSERT_TRUE(import(kHeader + kFirst, how).isGood());
    EXPECT_EQ(bars("SH600000", QDate(2026, 3, 23)).at(0).volume, 100000.0);
}

TEST_F(MinuteBarImporterTest, WithoutTheOptionTheMoneyTellsLots) {
    ASSERT_TRUE(import(kHeader + "2026-03-23 09:31:00,10,10,10,10,5,5000\n", options("SH", "600000")).isGood());
    const MinuteBars read = bars("SH600000", QDate(2026, 3, 23));
    EXPECT_EQ(read.at(0).volume, 500.0);
    EXPECT_EQ(read.at(0).average, 10.0);
}

TEST_F(MinuteBarImporterTest, AnIndexWithoutMoneyHasThePricesWeighedByVolume) {
    ASSERT_TRUE(import("dt,open,high,low,close,vol,symbol\n2020-07-01 09:31,1,11,9,10,100,000001.XSHG\n"
                       "2020-07-01 09:32,1,11,9,11,300,000001.XSHG\n",
                       ImportOptions())
                    .isGood());
    const MinuteBars read = bars("SH000001", QDate(2020, 7, 1));
    ASSERT_EQ(read.size(), 2u);
    EXPECT_EQ(read[0].average, 10.0);
    EXPECT_EQ(read[1].average, (10.0 * 100 + 11.0 * 300) / 400);
    EXPECT_EQ(mStore.catalogue()->find(QStringLiteral("SH000001"))->kind, InstrumentKind::Index);
}

TEST_F(MinuteBarImporterTest, TheAverageOfTheFileIsTaken) {
    ASSERT_TRUE(
        import("时间,开盘,最高,最低,收盘,成交量,成交额,均价\n2026-03-23 09:31,0.0,11,9,10,100,900,9.75\n",
               options("SH", "600000"))
            .isGood());
    const MinuteBars read = bars("SH600000", QDate(2026, 3, 23));
    EXPECT_EQ(read.at(0).average, 9.75);
    EXPECT_EQ(read.at(0).open, 0.0);
}

TEST_F(MinuteBarImporterTest, SymbolsTellMarketAndCode) {
    const QByteArray header("code,exchange,datetime,open,high,low,close,volume\n");
    const QByteArray rest(",2026-03-23 09:31,1,1,1,1,1\n");
    ASSERT_EQ(
        import(header + "000001,SZSE" + rest + "600000.SH," + rest + "SZ300750," + rest + "00700.HK," + rest,
               ImportOptions())
            .error.toStdString(),
        "");
    EXPECT_EQ(QStringList(mStore.catalogue()->instruments.keys()),
              (QStringList{"HK00700", "SH600000", "SZ000001", "SZ300750"}));
    EXPECT_TRUE(mStore.catalogue()->find(QStringLiteral("SZ300750"))->hasAfterHours());
}

TEST_F(MinuteBarImporterTest, CarriageReturnsAndBlankLinesDoNotMatter) {
    QByteArray content = "\xef\xbb\xbf" + kHeader + kFirst + "\n" + kSecond;
    content.replace("\n", "\r\n");
    EXPECT_EQ(import(content, options("SH", "600000")).error.toStdString(), "");
    EXPECT_EQ(bars("SH600000", QDate(2026, 3, 23)).size(), 2u);
}

TEST_F(MinuteBarImporterTest, RowsMayComeInAnyOrder) {
    ASSERT_TRUE(import(kHeader + kSecond + kFirst, options("SH", "600000")).isGood());
    const MinuteBars read = bars("SH600000", QDate(2026, 3, 23));
    ASSERT_EQ(read.size(), 2u);
    EXPECT_LT(read[0].time, read[1].time);
}

TEST_F(MinuteBarImporterTest, AMinuteThatStandsTwiceWithEqualValuesCountsOnce) {
    ASSERT_TRUE(import(kHeader + kFirst + kFirst + kSecond, options("SH", "600000")).isGood());
    EXPECT_EQ(bars("SH600000", QDate(2026, 3, 23)).size(), 2u);
}

TEST_F(MinuteBarImporterTest, AMinuteThatStandsTwiceWithOtherValuesIsAnError) {
    EXPECT_EQ(trouble(kHeader + kFirst + kSecond + "2026-03-23 09:31:00,10,10.2,9.9,10.15,1000,10100\n"),
              "4: 09:31 of 2026-03-23 stands on line 2 with other values");
}

TEST_F(MinuteBarImporterTest, AMissingColumnIsAnError) {
    EXPECT_EQ(trouble("datetime,open,high,low,volume\n2026-03-23 09:31:00,1,1,1,1\n"),
              "1: no column \"close\"");
}

TEST_F(MinuteBarImporterTest, ATextForANumberIsAnErrorOfItsLine) {
    EXPECT_EQ(trouble(kHeader + kFirst + "2026-03-23 09:32:00,10,10,10,ten,1,1\n"),
              "3: no number in column \"close\": \"ten\"");
}

TEST_F(MinuteBarImporterTest, AnUnknownTimeIsAnErrorOfItsLine) {
    EXPECT_EQ(trouble(kHeader + kFirst + "noon,10,10,10,10,1,1\n"), "3: unknown time \"noon\"");
}

TEST_F(MinuteBarImporterTest, AMinuteOutsideTheSessionsIsAnError) {
    EXPECT_EQ(trouble(kHeader + kFirst + "2026-03-23 12:00:00,10,10,10,10,1,1\n"),
              "3: 12:00 is outside the sessions");
    EXPECT_EQ(trouble(kHeader + "2026-03-23 13:00:00,10,10,10,10,1,1\n"),
              "2: 13:00 is outside the sessions; if the file labels a minute by its start, give --label start");
    EXPECT_EQ(trouble(kHeader + "2026-03-23 00:00:00,10,10,10,10,1,1\n"), "2: 00:00 is outside the sessions");
}

TEST_F(MinuteBarImporterTest, AFileWithoutRowsIsAnError) {
    EXPECT_EQ(trouble(""), "1: the file is empty");
    EXPECT_EQ(trouble(kHeader), "1: the file has no rows");
    EXPECT_EQ(trouble(kHeader + "\n\n"), "3: the file has no rows");
    EXPECT_EQ(trouble(kHeader.trimmed()), "1: the file has no rows");
}

TEST_F(MinuteBarImporterTest, ABinaryFileIsAnError) {
    EXPECT_EQ(trouble(QByteArray("\x7f"
                                 "ELF\0\1\2",
                                 7)),
              "1: a binary file, not a text of minute bars");
    EXPECT_EQ(trouble(kHeader + kFirst + QByteArray("a\0b\n", 4)),
              "3: a binary file, not a text of minute bars");
    EXPECT_EQ(trouble("\xff\xfe\x80\x81 no text\n"), "1: no column \"open\"");
}

TEST_F(MinuteBarImporterTest, ALastLineWithoutItsEndIsALine) {
    EXPECT_EQ(trouble(kHeader + kFirst + kSecond.left(30)), "3: 4 fields where the heading has 7");
    EXPECT_EQ(import(kHeader + kFirst + kSecond.left(kSecond.size() - 1), options("SH", "600000")).rows, 2);
    EXPECT_EQ(bars("SH600000", QDate(2026, 3, 23)).size(), 2u);
}

TEST_F(MinuteBarImporterTest, HeadingsOverAgainArePassedOverAndTold) {
    const ImportOutcome outcome = import(kHeader + kFirst + kHeader + kSecond, options("SH", "600000"));
    ASSERT_EQ(outcome.error.toStdString(), "");
    EXPECT_EQ(outcome.rows, 2);
    ASSERT_EQ(outcome.leftOut.count, 1);
    EXPECT_EQ(outcome.leftOut.first[0].line, 3);
    EXPECT_EQ(outcome.leftOut.first[0].reason, QStringLiteral("the headings over again"));
}

TEST_F(MinuteBarImporterTest, TheFirstTenWrongRowsAreToldAtOnce) {
    QByteArray content = kHeader;
    for (int i = 0; i < 30; ++i) {
        content += i % 2 == 0 ? kFirst : QByteArray("2026-03-23 09:32:00,x,1,1,1,1,1\n");
    }
    const ImportOutcome outcome = import(content, options("SH", "600000"));
    EXPECT_TRUE(outcome.error.endsWith(QStringLiteral("bars.csv:3: no number in column \"open\": \"x\"")));
    EXPECT_EQ(outcome.leftOut.count, 10);
    EXPECT_EQ(outcome.leftOut.first.last().line, 21);
}

TEST_F(MinuteBarImporterTest, ARowThatStandsTwiceIsTold) {
    const ImportOutcome outcome = import(kHeader + kFirst + kFirst, options("SH", "600000"));
    ASSERT_TRUE(outcome.isGood());
    ASSERT_EQ(outcome.leftOut.count, 1);
    EXPECT_EQ(outcome.leftOut.first[0].line, 3);
}

TEST_F(MinuteBarImporterTest, TimesAreReadAsProgramsWriteThem) {
    const QByteArray header("datetime,open,high,low,close,volume\n");
    for (const char *time :
         {"2026-03-23T09:31:00", "2026-03-23t09:31", "2026.03.23 09:31:00", "2026.03.23T09:31:00.000",
          "2026-03-23T09:31:00+08:00", "20260323 09:31:00", "20260323093100", "202603230931"}) {
        ASSERT_EQ(import(header + time + ",10,10,10,10,1\n", options("SH", "600000")).error.toStdString(), "");
        ASSERT_EQ(bars("SH600000", QDate(2026, 3, 23)).size(), 1u) << time;
    }
    ASSERT_EQ(import("date,time,open,high,low,close,volume\n2026.03.24 00:00:00,09:31:00,10,10,10,10,1\n",
                     options("SH", "600000"))
                  .error.toStdString(),
              "");
    EXPECT_EQ(bars("SH600000", QDate(2026, 3, 24)).size(), 1u);
    EXPECT_EQ(MinuteBarImporter(mStore, options("SH", "600001"))
                  .importFile(write("z.csv", header + "2026-03-23T09:31:00Z,10,10,10,10,1\n"))
                  .error.toStdString(),
              pathOf("z.csv").toStdString() + ":2: unknown time \"09:31:00Z\"");
}

TEST_F(MinuteBarImporterTest, ACodeWithItsExchangeTellsTheMarket) {
    const QByteArray header("code,datetime,open,high,low,close,volume\n");
    const QByteArray row(",2026-03-23 09:31:00,10,10,10,10,1\n");
    for (const auto &code :
         {std::make_pair("688293.SH", "SH688293"), std::make_pair("600000.XSHG", "SH600000"),
          std::make_pair("sh600001", "SH600001"), std::make_pair("SZ.000001", "SZ000001"),
          std::make_pair("000002.XSHE", "SZ000002"), std::make_pair("SHSE.600003", "SH600003"),
          std::make_pair("600004.ss", "SH600004")}) {
        EXPECT_EQ(import(header + code.first + row, ImportOptions()).error.toStdString(), "");
        EXPECT_EQ(bars(code.second, QDate(2026, 3, 23)).size(), 1u) << code.first;
    }
    // And where the user tells it.
    EXPECT_EQ(import("datetime,open,high,low,close,volume\n" + row.mid(1), options("", "600005.XSHG"))
                  .error.toStdString(),
              "");
    EXPECT_EQ(bars("SH600005", QDate(2026, 3, 23)).size(), 1u);
}

TEST_F(MinuteBarImporterTest, ColumnsAreWhatTheUserSays) {
    const QByteArray content("when,A,B,C,D,vol,volume\n2026-03-23 09:31:00,10,12,9,11,100,7\n");
    EXPECT_EQ(trouble(content), "1: two columns for \"volume\"");
    ImportOptions how = options("SH", "600000");
    how.columns = QStringLiteral("datetime=when, open=A,high=b,low=4,close=#5,volume=vol");
    ASSERT_EQ(import(content, how).error.toStdString(), "");
    const MinuteBars read = bars("SH600000", QDate(2026, 3, 23));
    ASSERT_EQ(read.size(), 1u);
    EXPECT_EQ(read[0].open, 10.0);
    EXPECT_EQ(read[0].high, 12.0);
    EXPECT_EQ(read[0].low, 9.0);
    EXPECT_EQ(read[0].price, 11.0);
    EXPECT_EQ(read[0].volume, 100.0);
}

TEST_F(MinuteBarImporterTest, AWrongChoiceOfColumnsIsTold) {
    ImportOptions how = options("SH", "600000");
    const auto with = [&](const char *columns) {
        how.columns = QString::fromUtf8(columns);
        return trouble(kHeader + kFirst, how);
    };
    EXPECT_EQ(with("open=nothing"), "1: no column \"nothing\" for open");
    EXPECT_EQ(with("open=open,open=high"), "1: \"open\" is given twice");
    EXPECT_EQ(with("open=open,high=open"), "1: \"open\" is given twice");
    EXPECT_EQ(with("open=8"), "1: no column \"8\" for open");
    EXPECT_EQ(with("colour=open").find("1: \"colour=open\" names no column: give WORD=HEADING, with one of "),
              0u);
    EXPECT_EQ(with("open=open"), "1: no column \"high\"");
}

TEST_F(MinuteBarImporterTest, AChoiceIsRememberedForFilesOfTheSameHeadings) {
    const QString file = write("odd.csv", "when,A,B,C,D,v\n2026-03-23 09:31:00,10,12,9,11,100\n");
    const ImportOptions how = options("SH", "600000");
    EXPECT_FALSE(importMarketFile(mStore, how, file).isGood());
    const TableHeadings headings = previewFile(file).headings;
    ASSERT_EQ(rememberColumns(mStore, headings,
                              QStringLiteral("datetime=#1,open=#2,high=#3,low=#4,close=#5,volume=#6"))
                  .toStdString(),
              "");
    EXPECT_EQ(importMarketFile(mStore, how, file).error.toStdString(), "");
    EXPECT_EQ(bars("SH600000", QDate(2026, 3, 23)).size(), 1u);
    EXPECT_EQ(rememberedColumns(mStore, previewFile(write("x.csv", "when,A\n1,2\n")).headings), QString());
}

TEST_F(MinuteBarImporterTest, WhatTheFileDoesNotTellIsAskedFor) {
    EXPECT_NE(trouble(kHeader + kFirst, ImportOptions()).find("give --market"), std::string::npos);
    EXPECT_EQ(trouble(kHeader + kFirst, options("SH", "")),
              "2: the file does not tell the instrument; give --code");
    EXPECT_EQ(
        trouble(kHeader + kFirst, options("MOON", "1")).rfind("1: unknown market \"MOON\"; give --market", 0),
        0u);
}

TEST_F(MinuteBarImporterTest, OneCodeCannotNameTwoInstruments) {
    EXPECT_EQ(trouble("code,datetime,open,high,low,close,volume\n600000,2026-03-23 09:31,1,1,1,1,1\n"
                      "600001,2026-03-23 09:31,1,1,1,1,1\n",
                      options("SH", "600000")),
              "3: a second instrument \"600001\"; --code names one only");
}

TEST_F(MinuteBarImporterTest, AFileThatIsNotThereIsSaidSo) {
    const ImportOutcome outcome = MinuteBarImporter(mStore, options("SH", "1")).importFile(pathOf("none.csv"));
    EXPECT_TRUE(outcome.error.startsWith(pathOf("none.csv") + QStringLiteral(": cannot be read: ")));
}

TEST_F(MinuteBarImporterTest, AnErrorOfALaterInstrumentTakesBackTheEarlierOnes) {
    EXPECT_EQ(trouble("code,datetime,open,high,low,close,volume\nSH600000,2026-03-23 09:31,1,1,1,1,1\n"
                      "SH600001,2026-03-23 12:31,1,1,1,1,1\n",
                      ImportOptions()),
              "3: 12:31 is outside the sessions");
}

TEST_F(MinuteBarImporterTest, AnotherImportOfTheSameRowsChangesNothing) {
    ASSERT_TRUE(import(kHeader + kFirst, options("SH", "600000")).isGood());
    ASSERT_TRUE(import(kHeader + kFirst + kSecond, options("SH", "600000")).isGood());
    ASSERT_TRUE(import(kHeader + kFirst, options("SH", "600000")).isGood());
    const MinuteBars read = bars("SH600000", QDate(2026, 3, 23));
    ASSERT_EQ(read.size(), 2u);
    EXPECT_DOUBLE_EQ(read[1].average, 40700.0 / 4000.0);
}

TEST_F(MinuteBarImporterTest, AnotherImportWithOtherValuesIsAnErrorAndLeavesTheStore) {
    ASSERT_TRUE(import(kHeader + kFirst, options("SH", "600000")).isGood());
    const ImportOutcome outcome = import(
        kHeader + kSecond + "2026-03-23 09:31:00,10,10.2,9.9,10.1,1001,10100\n", options("SH", "600000"));
    EXPECT_EQ(outcome.error,
              pathOf("bars.csv") +
                  QStringLiteral(":3: 2026-03-23 09:31 of SH600000 is in the store with other values"));
    const MinuteBars read = bars("SH600000", QDate(2026, 3, 23));
    ASSERT_EQ(read.size(), 1u);
    EXPECT_EQ(read[0].volume, 1000.0);
}

TEST_F(MinuteBarImporterTest, ASimulatedDayGivesWayToAnImportedOne) {
    ASSERT_TRUE(import(kHeader + kFirst, options("SH", "600000")).isGood());
    const qint64 row = mStore.catalogue()->find(QStringLiteral("SH600000"))->id;
    {
        MarketWriter writer(mStore);
        const QDate day(2026, 3, 24);
        writer.putDay(row, dayOf(day), BarSource::Simulated, {{timeOf(day, 600), 1, 1, 1, 1, 1, 1, 1}});
        ASSERT_TRUE(writer.commit());
    }
    QByteArray next = kHeader + kFirst;
    next.replace("03-23", "03-24");
    ASSERT_TRUE(import(next, options("SH", "600000")).isGood());
    const MinuteBars read = bars("SH600000", QDate(2026, 3, 24));
    ASSERT_EQ(read.size(), 1u);
    EXPECT_EQ(read[0].price, 10.1);
    EXPECT_EQ(mStore.summary(row, dayOf(QDate(2026, 3, 24)))->source, BarSource::Imported);
}

TEST_F(MinuteBarImporterTest, AStoppedImportLeavesTheStore) {
    MinuteBarImporter importer(mStore, options("SH", "600000"));
    int calls = 0;
    importer.setProgress([&calls](int done, int total) {
        ++calls;
        EXPECT_LE(done, total);
        return false;
    });
    const ImportOutcome outcome = importer.importFile(write("bars.csv", kHeader + kFirst));
    EXPECT_TRUE(outcome.error.endsWith(QStringLiteral(": the import was stopped")));
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(countRows(), 0);
}

// Night sessions of a future, whose trading days are those of the file.

namespace {

QByteArray future(std::initializer_list<const char *> times) {
    QByteArray content("time,open,close,high,low,volume,amount\n");
    int price = 300;
    for (const char *time : times) {
        const QByteArray p = QByteArray::number(++price);
        content += QByteArray(time) + "," + p + "," + p + "," + p + "," + p + ",2," +
                   QByteArray::number(price * 2000) + "\n";
    }
    return content;
}

} // namespace

TEST_F(MinuteBarImporterTest, FridaysNightBelongsToMonday) {
    ASSERT_EQ(import(future({"2019-06-28 15:00:00", "2019-06-28 21:00:00", "2019-06-29 00:00:00",
                             "2019-06-29 02:30:00", "2019-07-01 09:01:00"}),
                     options("SHFE", "AU"))
                  .error.toStdString(),
              "");
    const MinuteBars monday = bars("SHFEAU", QDate(2019, 7, 1));
    ASSERT_EQ(monday.size(), 4u);
    EXPECT_EQ(monday[0].time, timeOf(QDate(2019, 6, 28), 1260));
    EXPECT_EQ(monday[1].time, timeOf(QDate(2019, 6, 29), 0));
    EXPECT_EQ(monday[2].time, timeOf(QDate(2019, 6, 29), 150));
    EXPECT_EQ(monday[3].time, timeOf(QDate(2019, 7, 1), 541));
    EXPECT_DOUBLE_EQ(monday[0].average, 302.0); // a contract of 1000 g
    EXPECT_DOUBLE_EQ(monday[1].average, 302.5);
    EXPECT_EQ(bars("SHFEAU", QDate(2019, 6, 28)).size(), 1u);
}

TEST_F(MinuteBarImporterTest, TheFilesOwnDaysDecideAHoliday) {
    // In a year without a table of holidays: Monday's night, no Tuesday, then Wednesday.
    ASSERT_TRUE(import(future({"2016-08-01 21:30:00", "2016-08-03 09:01:00"}), options("SHFE", "AU")).isGood());
    EXPECT_EQ(bars("SHFEAU", QDate(2016, 8, 3)).size(), 2u);
    EXPECT_FALSE(mStore.catalogue()->calendar(QStringLiteral("SHFE")).isTradingDay(QDate(2016, 8, 2)));
    EXPECT_TRUE(mStore.catalogue()->calendar(QStringLiteral("DCE")).isTradingDay(QDate(2016, 8, 2)));
}

TEST_F(MinuteBarImporterTest, ALastNightBelongsToTheNextDayOfTheCalendar) {
    ASSERT_TRUE(import(future({"2026-11-20 14:00:00", "2026-11-20 21:30:00"}), options("SHFE", "AU")).isGood());
    EXPECT_EQ(bars("SHFEAU", QDate(2026, 11, 23)).size(), 1u);
}

TEST_F(MinuteBarImporterTest, TwoNightsBeforeOneDayAreAnError) {
    EXPECT_EQ(trouble(future({"2026-11-17 21:30:00", "2026-11-18 21:30:00", "2026-11-19 09:01:00"}),
                      options("SHFE", "AU")),
              "3: two nights, of 2026-11-17 and of 2026-11-18, before the trading day 2026-11-19");
}

TEST_F(MinuteBarImporterTest, ATradingDayThatDoesNotFollowItsNightIsAnError) {
    const QByteArray header("datetime,tradingday,open,high,low,close,volume\n");
    const ImportOptions gold = options("SHFE", "AU2606");
    EXPECT_EQ(trouble(header + "2028-03-20 21:01:00,20260323,1,1,1,1,1\n", gold),
              "2: the trading day 2026-03-23 does not follow the night of 2028-03-20");
    EXPECT_EQ(trouble(header + "2026-03-20 21:01:00,20260320,1,1,1,1,1\n", gold),
              "2: the trading day 2026-03-20 does not follow the night of 2026-03-20");
    EXPECT_EQ(trouble(header + "2026-03-20 21:01:00,20260520,1,1,1,1,1\n", gold),
              "2: the trading day 2026-05-20 does not follow the night of 2026-03-20");
    EXPECT_EQ(trouble(header + "2026-03-20 21:01:00,20260325,1,1,1,1,1\n"
                               "2026-03-23 09:01:00,20260323,1,1,1,1,1\n",
                      gold),
              "2: the trading day 2026-03-25 does not follow the night of 2026-03-20");
    EXPECT_EQ(trouble(header + "2026-03-19 21:01:00,20260324,1,1,1,1,1\n"
                               "2026-03-20 21:01:00,20260323,1,1,1,1,1\n",
                      gold),
              "3: the trading day 2026-03-23 does not follow the night of 2026-03-20");
}

TEST_F(MinuteBarImporterTest, ATradingDayColumnDecides) {
    ASSERT_TRUE(import("tradingDay,datetime,open,high,low,close,volume\n20261124,2026-11-20 21:30,1,1,1,1,1\n",
                       options("SHFE", "AU"))
                    .isGood());
    EXPECT_EQ(bars("SHFEAU", QDate(2026, 11, 24)).size(), 1u);
}

TEST_F(MinuteBarImporterTest, ProductsKnowWhereTheirNightEnds) {
    EXPECT_EQ(trouble(future({"2019-06-25 23:01:00"}), options("SHFE", "RB")),
              "2: 23:01 is outside the sessions");
    EXPECT_EQ(trouble(future({"2019-06-25 21:01:00"}), options("CZCE", "SM")),
              "2: 21:01 is outside the sessions");
    ASSERT_TRUE(import(future({"2019-06-25 23:00:00"}), options("SHFE", "RB")).isGood());
    const Instrument *steel = mStore.catalogue()->find(QStringLiteral("SHFERB"));
    EXPECT_TRUE(steel->ownSessions);
    EXPECT_EQ(steel->sessions.count(), 346);
}

TEST_F(MinuteBarImporterTest, AnUnknownProductsNightIsThatOfItsBars) {
    ASSERT_TRUE(import(future({"2019-06-25 21:01:00", "2019-06-26 00:45:00"}), options("SHFE", "QQ")).isGood());
    ASSERT_TRUE(import(future({"2019-06-25 21:01:00"}), options("SHFE", "QR")).isGood());
    ASSERT_TRUE(import(future({"2019-06-25 09:01:00"}), options("SHFE", "QS")).isGood());
    const auto count = [this](const char *key) {
        return mStore.catalogue()->find(QString::fromLatin1(key))->sessions.count();
    };
    EXPECT_EQ(count("SHFEQQ"), 181 + 60 + 225);
    EXPECT_EQ(count("SHFEQR"), 121 + 225);
    EXPECT_EQ(count("SHFEQS"), 226);
}

TEST_F(MinuteBarImporterTest, ThePriceStepIsThatOfThePrices) {
    ASSERT_TRUE(import(future({"2019-06-25 09:01:00", "2019-06-25 09:02:00"}), options("SHFE", "AU")).isGood());
    EXPECT_EQ(mStore.catalogue()->find(QStringLiteral("SHFEAU"))->priceTick, 1.0);
    ASSERT_TRUE(import("time,open,high,low,close,volume\n2019-06-25 09:31,3,3867.6,3860.2,3861,1\n",
                       options("CFFEX", "IF"))
                    .isGood());
    EXPECT_EQ(mStore.catalogue()->find(QStringLiteral("CFFEXIF"))->priceTick, 0.2);
}

TEST_F(MinuteBarImporterTest, ImportsEveryRowOfALargeFileAndTellsTheRate) {
    QByteArray content = kHeader;
    int rows = 0;
    for (QDate day(2025, 1, 1); rows < 100000; day = day.addDays(1)) {
        for (int minute = 570; minute <= 900; minute += minute == 690 ? 91 : 1, ++rows) {
            content += qPrintable(QStringLiteral("%1 %2:%3:00,10.01,10.22,9.93,10.%4,1234500,12468450.25\n")
                                      .arg(day.toString(Qt::ISODate))
                                      .arg(minute / 60, 2, 10, QLatin1Char('0'))
                                      .arg(minute % 60, 2, 10, QLatin1Char('0'))
                                      .arg(10 + minute % 10));
        }
    }
    const QString path = write("big.csv", content);
    QElapsedTimer timer;
    timer.start();
    const ImportOutcome outcome = MinuteBarImporter(mStore, options("SH", "600000")).importFile(path);
    const double seconds = static_cast<double>(timer.nsecsElapsed()) / 1e9;
    ASSERT_EQ(outcome.error.toStdString(), "");
    EXPECT_EQ(outcome.instruments[0].bars, rows);
    std::printf("imported %d rows in %.3f s: %.0f rows a second\n", rows, seconds, rows / seconds);
    RecordProperty("rows_a_second", static_cast<int>(rows / seconds));
}

TEST_F(MinuteBarImporterTest, ThePreviousCloseOfTheFileCounts) {
    const QByteArray header("datetime,open,high,low,close,volume,PreClosePx\n");
    ASSERT_EQ(import(header + "2026-03-23 09:31:00,10,10,10,10,1,9.5\n2026-03-23 09:32:00,10,10,10,10,1,9.5\n"
                              "2026-03-24 09:31:00,11,11,11,11,1,9.75\n",
                     options("SH", "600000"))
                  .error.toStdString(),
              "");
    const QString key = QStringLiteral("SH600000");
    const PreviousClose first = previousCloseOf(mStore, key, dayOf(QDate(2026, 3, 23)));
    EXPECT_EQ(first.price, 9.5);
    EXPECT_FALSE(first.isFirstOpen);
    // A dividend lies between the close of 10 and what the next day is counted from.
    EXPECT_EQ(previousCloseOf(mStore, key, dayOf(QDate(2026, 3, 24))).price, 9.75);
}

TEST_F(MinuteBarImporterTest, WithoutAPreviousCloseTheFirstOpenStandsForIt) {
    ASSERT_TRUE(import(kHeader + "2026-03-23 09:31:00,10.05,10.2,9.9,10.1,1000,10100\n" + kSecond,
                       options("SH", "600000"))
                    .isGood());
    const PreviousClose guess = previousCloseOf(mStore, QStringLiteral("SH600000"), dayOf(QDate(2026, 3, 23)));
    EXPECT_EQ(guess.price, 10.05);
    EXPECT_TRUE(guess.isFirstOpen);
}

TEST_F(MinuteBarImporterTest, AFirstPriceStandsForTheCloseWhereTheOpenIsNotKnown) {
    ASSERT_TRUE(
        import(kHeader + "2026-03-23 09:31:00,0,10.2,9.9,10.1,1000,10100\n", options("SH", "600000")).isGood());
    EXPECT_EQ(previousCloseOf(mStore, QStringLiteral("SH600000"), dayOf(QDate(2026, 3, 23))).price, 10.1);
}

TEST_F(MinuteBarImporterTest, AFigureAboveAllMarketsIsRefused) {
    EXPECT_EQ(trouble(kHeader + "2026-03-23 09:31:00,10,1000000001,9.9,10.1,1000,10100\n"),
              "2: number above 1000000000 in column \"high\"");
    EXPECT_EQ(trouble(kHeader + "2026-03-23 09:31:00,10,11,9.9,10.1,1e16,10100\n"),
              "2: number above 1000000000000000 in column \"volume\"");
}
