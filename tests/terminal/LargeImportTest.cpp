// Files that do not fit into memory.

#include "terminal/market/FileImporter.h"
#include "terminal/market/MarketDate.h"
#include "tests/support/BytesInUse.h"
#include "tests/support/Effort.h"
#include "tests/terminal/StoreFixture.h"

#include <QDir>

#include <algorithm>
#include <memory>

using namespace terminal;

namespace {

/// A target that keeps nothing.
class NoTarget : public ImportTarget {
public:
    bool isGood() const override { return true; }
    QString error() const override { return {}; }
    qint64 putInstrument(const Instrument &) override { return 1; }
    bool putTradingDay(const QString &, const QDate &, bool) override { return true; }
    bool putDay(qint64, int, BarSource, const MinuteBars &) override { return true; }
    bool putTick(qint64, int, int, const Tick &) override { return true; }
    bool putPreviousClose(qint64, int, double) override { return true; }
    bool putDaySessions(qint64, int, const DaySessions &) override { return true; }
    MinuteBars importedBars(qint64, int) override { return {}; }
    Ticks importedTicks(qint64, int) override { return {}; }
    bool commit() override { return true; }
};

class LargeImportTest : public StoreFixture {
protected:
    void SetUp() override { openStore(); }

    /// A file of two shares over so many years, whose rows take turns; the years stand in reverse.
    QString writeYears(const char *name, int years, int daysOfYear) {
        QByteArray content("symbol,datetime,open,high,low,close,volume,amount\n");
        for (int year = 2000 + years - 1; year >= 2000; --year) {
            for (int day = 0; day < daysOfYear; ++day) {
                const QByteArray date = QDate(year, 1, 1).addDays(day).toString(Qt::ISODate).toLatin1();
                for (int minute = 571; minute <= 690; ++minute) {
                    const QByteArray rest = "," + date + " " +
                                            (minute < 600   ? "09:"
                                             : minute < 660 ? "10:"
                                                            : "11:") +
                                            QByteArray::number(minute % 60).rightJustified(2, '0') +
                                            ",10,10.2,9.9,10.1,1000,10100\n";
                    content += "600001.SH" + rest + "600002.SH" + rest;
                }
            }
        }
        return write(name, content);
    }

    /// The most that an import has on the heap.
    qint64 peakOf(const QString &path, const ImportOptions &options) {
        const qint64 before = tests::bytesInUse();
        qint64 most = before;
        const auto watch = [&most](int, int) {
            most = std::max(most, tests::bytesInUse());
            return true;
        };
        const ImportOutcome outcome =
            importMarketFile(mStore, options, path, watch, [] { return std::make_unique<NoTarget>(); });
        EXPECT_EQ(outcome.error.toStdString(), "");
        return most - before;
    }
};

} // namespace

TEST_F(LargeImportTest, TheMemoryDoesNotGrowWithTheFile) {
    ImportOptions options;
    const QString small = writeYears("small.csv", 3, 60); // 43 200 rows
    const QString large = writeYears("large.csv", 12, 60); // 172 800 rows
    const qint64 unbounded = peakOf(large, options);
    EXPECT_GT(unbounded, 15000000) << "what the rows take in memory";
    options.memoryOfRows = 1000000;
    const qint64 ofSmall = peakOf(small, options);
    const qint64 ofLarge = peakOf(large, options);
    EXPECT_LT(ofSmall, 5000000);
    EXPECT_LT(ofLarge, ofSmall + 500000);
    EXPECT_EQ(QDir(mFolder.path()).entryList({"import-*"}, QDir::Files).size(), 0);
}

TEST_F(LargeImportTest, WhatWaitsOnTheDiskIsStoredAsWhatDoesNot) {
    ImportOptions options;
    options.memoryOfRows = 10000;
    const ImportOutcome outcome = importMarketFile(mStore, options, writeYears("bars.csv", 3, 5));
    ASSERT_EQ(outcome.error.toStdString(), "");
    ASSERT_EQ(outcome.instruments.size(), 2);
    for (const ImportedBars &imported : outcome.instruments) {
        EXPECT_EQ(imported.bars, 3 * 5 * 120);
        EXPECT_EQ(imported.firstDay, dayOf(QDate(2000, 1, 1)));
        EXPECT_EQ(imported.lastDay, dayOf(QDate(2002, 1, 5)));
        const Instrument *instrument = mStore.catalogue()->find(imported.key);
        ASSERT_NE(instrument, nullptr);
        EXPECT_EQ(mStore.days(instrument->id).size(), 15);
        const MinuteBars bars = mStore.bars(instrument->id, dayOf(QDate(2001, 1, 3)));
        ASSERT_EQ(bars.size(), 120u);
        EXPECT_EQ(bars[119].time, timeOf(QDate(2001, 1, 3), 690));
        EXPECT_EQ(bars[119].amount, 10100.0);
    }
    const ImportOutcome again = importMarketFile(mStore, options, pathOf("bars.csv"));
    EXPECT_EQ(again.error.toStdString(), "") << "the same rows change nothing";
}

TEST_F(LargeImportTest, TheFirstFaultOfTheFileIsToldWhateverItsYear) {
    const QByteArray head("symbol,datetime,open,high,low,close,volume,amount\n");
    const QByteArray good("600000.SH,2001-01-03 09:31,10,10,10,10,1,10\n");
    const auto errorOf = [this](const QByteArray &content) {
        const QString path = write("bars.csv", content);
        return importMarketFile(mStore, {}, path).error.mid(path.size()).toStdString();
    };
    EXPECT_EQ(errorOf(head + "600000.SH,2005-01-03 12:31,10,10,10,10,1,10\n" + good +
                      "600000.SH,2001-01-03 12:30,10,10,10,10,1,10\n"),
              ":2: 12:31 is outside the sessions");
    // What the file itself says twice is told before what the store has otherwise.
    ASSERT_EQ(errorOf(head + good), "");
    const QByteArray other("600000.SH,2001-01-03 09:31,11,11,11,11,1,11\n");
    EXPECT_EQ(errorOf(head + other + "600000.SH,2005-01-04 09:31,10,10,10,10,1,10\n" +
                      "600000.SH,2005-01-04 09:31,10,10,10,10,2,20\n"),
              ":4: 09:31 of 2005-01-04 stands on line 3 with other values");
    EXPECT_EQ(errorOf(head + "600000.SH,2005-01-04 09:31,10,10,10,10,1,10\n" + other),
              ":3: 2001-01-03 09:31 of SH600000 is in the store with other values");
}

TEST_F(LargeImportTest, ALineThatIsTooLongIsTold) {
    const QByteArray head("symbol,datetime,open,high,low,close,volume,amount\n");
    const QByteArray row("600000.SH,2001-01-03 09:31,10,10,10,10,1,10\n");
    QString path = write("bars.csv", head + row + QByteArray(1000001, 'x') + "\n" + row);
    EXPECT_EQ(importMarketFile(mStore, {}, path).error, path + ":3: a line of more than 1000000 bytes");
    path = write("bars.csv", QByteArray(3000000, 'x'));
    EXPECT_EQ(importMarketFile(mStore, {}, path).error, path + ":1: a line of more than 1000000 bytes");
    EXPECT_TRUE(mStore.catalogue()->instruments.isEmpty());
}

TEST_F(LargeImportTest, MoreRowsThanAYearCanHaveAreRefused) {
    if (tests::kSanitized) {
        GTEST_SKIP() << "two million rows";
    }
    const QByteArray head("datetime,open,high,low,close,volume\n");
    const QByteArray row("2001-01-03 09:31,1,1,1,1,1\n");
    const QString path = write("SH600000.csv", head + row.repeated(2000001));
    EXPECT_EQ(importMarketFile(mStore, {}, path).error,
              path + ":2000002: more than 2000000 rows of one instrument and year");
    EXPECT_TRUE(mStore.catalogue()->instruments.isEmpty());
}

TEST_F(LargeImportTest, MoreInstrumentsThanMarketsHaveAreRefused) {
    QByteArray content("symbol,datetime,open,high,low,close,volume\n");
    for (int i = 0; i <= 200000; ++i) {
        content += QByteArray::number(300000 + i) + ".SH,2001-01-03 09:31,1,1,1,1,1\n";
    }
    const QString path = write("bars.csv", content);
    EXPECT_EQ(importMarketFile(mStore, {}, path).error,
              path + ":200002: more than 200000 instruments: split it");
    EXPECT_TRUE(mStore.catalogue()->instruments.isEmpty());
}

TEST_F(LargeImportTest, TicksThatWaitOnTheDiskAreStored) {
    ImportOptions options;
    options.memoryOfRows = 1000;
    QByteArray content("symbol,datetime,price,volume\n");
    for (int i = 0; i < 100; ++i) {
        const QByteArray time = "2025-03-24 10:" + QByteArray::number(10 + i / 2 % 50);
        content +=
            (i % 2 == 0 ? "600001.SH," : "600002.SH,") + time + ":30,10," + QByteArray::number(i + 1) + "\n";
    }
    const ImportOutcome outcome = importMarketFile(mStore, options, write("ticks.csv", content));
    ASSERT_EQ(outcome.error.toStdString(), "");
    ASSERT_EQ(outcome.instruments.size(), 2);
    EXPECT_EQ(outcome.instruments[1].ticks, 50);
    const Instrument *second = mStore.catalogue()->find(QStringLiteral("SH600002"));
    ASSERT_NE(second, nullptr);
    const Ticks ticks = mStore.ticks(second->id, dayOf(QDate(2025, 3, 24)));
    ASSERT_EQ(ticks.size(), 50u);
    EXPECT_EQ(ticks[49].volume, 100.0);
}
