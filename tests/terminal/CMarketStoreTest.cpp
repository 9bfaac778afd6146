#include "terminal/market/CMarketStore.h"
#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketWriter.h"
#include "terminal/market/StoreSchema.h"
#include "tests/support/NoMoreFiles.h"
#include "tests/terminal/StoreFixture.h"

#include <QSqlError>
#include <QSqlQuery>

#include <thread>

using namespace terminal;

namespace {

/// A connection beside the store's, as another program has one.
class OtherConnection {
public:
    explicit OtherConnection(const QString &path) {
        mDatabase = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("other"));
        mDatabase.setDatabaseName(path);
        EXPECT_TRUE(mDatabase.open());
    }
    ~OtherConnection() {
        mDatabase = QSqlDatabase();
        QSqlDatabase::removeDatabase(QStringLiteral("other"));
    }
    void run(const char *statement) {
        QSqlQuery query(mDatabase);
        EXPECT_TRUE(query.exec(QString::fromLatin1(statement))) << query.lastError().text().toStdString();
    }
    QString ask(const char *statement, int column = 0) {
        QSqlQuery query(mDatabase);
        return query.exec(QString::fromLatin1(statement)) && query.next() ? query.value(column).toString()
                                                                          : QString();
    }

private:
    QSqlDatabase mDatabase;
};

Instrument gold() {
    Instrument instrument;
    instrument.market = QStringLiteral("SHFE");
    instrument.code = QStringLiteral("AU2612");
    instrument.name = QStringLiteral("沪金2612");
    instrument.initials = QStringLiteral("HJ");
    instrument.product = QStringLiteral("AU");
    instrument.kind = InstrumentKind::Future;
    instrument.types = {3, 7};
    instrument.priceTick = 0.02;
    instrument.lastClose = 782.46;
    instrument.underlyingMarket = QStringLiteral("X");
    instrument.underlyingCode = QStringLiteral("GOLD");
    instrument.sessions = DaySessions({{1260, 1440}, {1, 150}, {541, 615}});
    return instrument;
}

MinuteBar storedBar(qint64 time, double price, double volume) {
    return {time, price, price + 1.0, price - 1.0, price, price, volume, price * volume};
}

class CMarketStoreTest : public StoreFixture {
protected:
    qint64 put(const Instrument &instrument) {
        MarketWriter writer(mStore);
        const qint64 row = writer.putInstrument(instrument);
        EXPECT_TRUE(writer.commit()) << writer.error().toStdString();
        return row;
    }
};

} // namespace

TEST_F(CMarketStoreTest, AConnectionThatCouldNotBeOpenedIsOpenedLaterAndHasAllItsSettings) {
    openStore();
    std::thread([this] {
        {
            const tests::NoMoreFiles shortage;
            EXPECT_FALSE(mStore.connection().isOpen());
        }
        QSqlQuery query(mStore.connection());
        ASSERT_TRUE(query.exec("PRAGMA foreign_keys") && query.next());
        EXPECT_EQ(query.value(0).toInt(), 1);
    }).join();
}

TEST_F(CMarketStoreTest, ANewStoreIsMadeWithItsFolder) {
    ASSERT_EQ(mStore.open(pathOf("deep/er/market.db")).toStdString(), "");
    EXPECT_TRUE(mStore.isOpen());
    EXPECT_TRUE(mStore.catalogue()->instruments.isEmpty());
    OtherConnection other(mStore.path());
    EXPECT_EQ(other.ask("PRAGMA journal_mode"), QStringLiteral("wal"));
    EXPECT_EQ(other.ask("PRAGMA user_version").toInt(), currentSchemaVersion());
}

TEST_F(CMarketStoreTest, AnInstrumentComesBackAsItWasPut) {
    openStore();
    const qint64 row = put(gold());
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    const Instrument *read = catalogue->find(QStringLiteral("SHFEAU2612"));
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read->id, row);
    EXPECT_EQ(read->name, QStringLiteral("沪金2612"));
    EXPECT_EQ(read->initials, QStringLiteral("HJ"));
    EXPECT_EQ(read->product, QStringLiteral("AU"));
    EXPECT_EQ(read->kind, InstrumentKind::Future);
    EXPECT_EQ(read->types, (QVector<int>{3, 7}));
    EXPECT_EQ(read->priceTick, 0.02);
    EXPECT_EQ(read->lastClose, 782.46);
    EXPECT_EQ(read->underlyingMarket, QStringLiteral("X"));
    EXPECT_EQ(read->underlyingCode, QStringLiteral("GOLD"));
    EXPECT_EQ(read->sessions.table(), gold().sessions.table());
    EXPECT_FALSE(read->ownSessions);
    EXPECT_TRUE(catalogue->nightMarkets.contains(QStringLiteral("SHFE")));
}

TEST_F(CMarketStoreTest, AnInstrumentThatIsPutAgainKeepsItsRowAndItsBars) {
    openStore();
    const qint64 row = put(gold());
    {
        MarketWriter writer(mStore);
        writer.putDay(row, 1000, BarSource::Imported, {storedBar(5, 10.0, 3.0)});
        ASSERT_TRUE(writer.commit());
    }
    Instrument changed = gold();
    changed.name = QStringLiteral("renamed");
    changed.lastClose = TC::kUnsetValue;
    EXPECT_EQ(put(changed), row);
    EXPECT_EQ(mStore.catalogue()->find(changed.key())->name, QStringLiteral("renamed"));
    EXPECT_EQ(mStore.catalogue()->find(changed.key())->lastClose, TC::kUnsetValue);
    EXPECT_EQ(mStore.bars(row, 1000).size(), 1u);
}

TEST_F(CMarketStoreTest, ADayKeepsItsBarsAndItsFigures) {
    openStore();
    const qint64 row = put(gold());
    const MinuteBars bars{storedBar(60000, 10.0, 3.0), storedBar(120000, 12.5, 4.0),
                          storedBar(180000, 9.5, 5.0)};
    MarketWriter writer(mStore);
    ASSERT_TRUE(writer.putDay(row, 1000, BarSource::Imported, bars));
    ASSERT_TRUE(writer.putDay(row, 2000, BarSource::Simulated, {storedBar(240000, 7.0, 1.0)}));
    ASSERT_TRUE(writer.commit());
    EXPECT_EQ(mStore.bars(row, 1000), bars);
    EXPECT_EQ(mStore.days(row), (QVector<int>{1000, 2000}));
    const std::optional<DaySummary> day = mStore.summary(row, 1000);
    ASSERT_TRUE(day.has_value());
    EXPECT_EQ(day->source, BarSource::Imported);
    EXPECT_EQ(day->open, 10.0);
    EXPECT_EQ(day->high, 13.5);
    EXPECT_EQ(day->low, 8.5);
    EXPECT_EQ(day->close, 9.5);
    EXPECT_EQ(day->volume, 12.0);
    EXPECT_EQ(day->amount, 127.5);
    EXPECT_EQ(mStore.summaryBefore(row, 2000)->day, 1000);
    EXPECT_FALSE(mStore.summaryBefore(row, 1000).has_value());
    EXPECT_FALSE(mStore.summary(row, 1500).has_value());
}

TEST_F(CMarketStoreTest, AWriterThatGoesWithoutCommitLeavesNothing) {
    openStore();
    const qint64 row = put(gold());
    {
        MarketWriter writer(mStore);
        EXPECT_TRUE(writer.putDay(row, 1000, BarSource::Imported, {storedBar(60000, 10.0, 3.0)}));
        EXPECT_EQ(mStore.days(row).size(), 1); // seen by the same connection
    }
    EXPECT_TRUE(mStore.days(row).isEmpty());
}

TEST_F(CMarketStoreTest, ADayOfNoInstrumentIsRefused) {
    openStore();
    MarketWriter writer(mStore);
    EXPECT_FALSE(writer.putDay(77, 1000, BarSource::Imported, {}));
    EXPECT_FALSE(writer.isGood());
    EXPECT_FALSE(writer.commit());
}

TEST_F(CMarketStoreTest, EveryThreadReadsThroughItsOwnConnection) {
    openStore();
    const qint64 row = put(gold());
    {
        MarketWriter writer(mStore);
        writer.putDay(row, 1000, BarSource::Imported, {storedBar(60000, 10.0, 3.0)});
        ASSERT_TRUE(writer.commit());
    }
    const int before = QSqlDatabase::connectionNames().size();
    std::vector<size_t> found(8);
    for (int round = 0; round < 2; ++round) {
        std::vector<std::thread> threads;
        for (size_t &count : found) {
            threads.emplace_back([&count, row, this] { count += mStore.bars(row, 1000).size(); });
        }
        for (std::thread &thread : threads) {
            thread.join();
        }
    }
    for (size_t count : found) {
        EXPECT_EQ(count, 2u);
    }
    EXPECT_EQ(QSqlDatabase::connectionNames().size(), before); // they ended with their threads
}

TEST_F(CMarketStoreTest, AClosedStoreLeavesNoConnection) {
    const int before = QSqlDatabase::connectionNames().size();
    {
        CMarketStore store;
        ASSERT_TRUE(store.open(storePath()).isEmpty());
        EXPECT_EQ(QSqlDatabase::connectionNames().size(), before + 1);
    }
    EXPECT_EQ(QSqlDatabase::connectionNames().size(), before);
}

TEST_F(CMarketStoreTest, AStoreOfAnEarlierVersionIsTakenForward) {
    openStore();
    const qint64 row = put(gold());
    {
        // What version 1 did not have, taken away again.
        OtherConnection other(storePath());
        for (const char *table : {"set_aside",        "day_sessions",       "previous_closes",
                                  "self_stocks",      "self_stock_lists",   "ticks",
                                  "trade_cancels",    "trade_deals",        "trade_orders",
                                  "trade_task_items", "trade_tasks",        "trade_days",
                                  "trade_strategies", "trade_accounts",     "portfolio_positions",
                                  "portfolios",       "user_index_members", "user_indexes",
                                  "listed_pairs",     "convertible_links",  "sector_members",
                                  "sectors"}) {
            other.run(qPrintable(QStringLiteral("DROP TABLE %1").arg(QLatin1String(table))));
        }
        other.run("PRAGMA user_version = 1");
    }
    CMarketStore again;
    ASSERT_EQ(again.open(storePath()).toStdString(), "");
    EXPECT_EQ(again.catalogue()->find(gold().key())->id, row);
    MarketWriter writer(again);
    EXPECT_TRUE(writer.addPortfolio({1, QStringLiteral("p"), {{gold().key(), 2.0}}}));
    EXPECT_TRUE(writer.commit());
    EXPECT_EQ(again.catalogue()->portfolios.value(QStringLiteral("TZZH1")).positions.size(), 1);
}

TEST_F(CMarketStoreTest, AStoreOfANewerVersionIsLeftAlone) {
    openStore();
    {
        OtherConnection other(storePath());
        other.run("PRAGMA user_version = 999");
    }
    CMarketStore again;
    EXPECT_EQ(again.open(storePath()),
              storePath() + QStringLiteral(": was written by a newer version of this program"));
    EXPECT_FALSE(again.isOpen());
    OtherConnection other(storePath());
    EXPECT_EQ(other.ask("PRAGMA user_version"), QStringLiteral("999"));
}

TEST_F(CMarketStoreTest, TheCatalogueIsReadAgainWhenSomethingOfItWasWritten) {
    openStore();
    qint64 row = 0;
    const std::shared_ptr<const Catalogue> empty = mStore.catalogue();
    {
        MarketWriter writer(mStore);
        row = writer.putInstrument(gold());
        ASSERT_TRUE(writer.commit());
    }
    const std::shared_ptr<const Catalogue> one = mStore.catalogue();
    EXPECT_NE(one, empty);
    EXPECT_NE(one->find(gold().key()), nullptr);
    {
        MarketWriter writer(mStore);
        writer.putDay(row, 1000, BarSource::Imported, {storedBar(60000, 10.0, 3.0)});
        ASSERT_TRUE(writer.commit());
    }
    EXPECT_EQ(mStore.catalogue(), one) << "bars are none of it";
    {
        MarketWriter writer(mStore);
        writer.putTradingDay(gold().market, QDate(2026, 11, 21), true);
        ASSERT_TRUE(writer.commit());
    }
    EXPECT_NE(mStore.catalogue(), one);
    EXPECT_TRUE(mStore.catalogue()->calendar(gold().market).isTradingDay(QDate(2026, 11, 21)));
}

TEST_F(CMarketStoreTest, AnInstrumentIsFoundByItsKeyWithoutLookingAtAllOthers) {
    constexpr int kPlanDetail = 3; // column
    openStore();
    const QString plan =
        OtherConnection(storePath())
            .ask("EXPLAIN QUERY PLAN SELECT id FROM instruments WHERE market || code = 'SHFEAU2612'",
                 kPlanDetail);
    EXPECT_TRUE(plan.startsWith("SEARCH instruments USING")) << plan.toStdString();
}

TEST_F(CMarketStoreTest, TheDatabaseOfAnotherProgramIsLeftAlone) {
    {
        OtherConnection other(storePath());
        other.run("CREATE TABLE photos (id INTEGER)");
    }
    EXPECT_EQ(mStore.open(storePath()),
              storePath() + QStringLiteral(": is the database of another program, not a market store"));
    OtherConnection other(storePath());
    EXPECT_EQ(other.ask("SELECT count(*) FROM sqlite_master"), QStringLiteral("1"));
    EXPECT_EQ(other.ask("PRAGMA journal_mode"), QStringLiteral("delete"));
}

TEST_F(CMarketStoreTest, AFileThatIsNoDatabaseIsCalledDamaged) {
    const QByteArray content(5000, 'x');
    write("market.db", content);
    const QString trouble = mStore.open(storePath());
    EXPECT_EQ(trouble,
              storePath() + QStringLiteral(": the store is damaged; move the file away and start again to "
                                           "get a new one"));
    QFile file(storePath());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), content);
}

TEST_F(CMarketStoreTest, ADamagedPageIsFoundWhenTheStoreIsOpened) {
    {
        CMarketStore store;
        ASSERT_TRUE(store.open(storePath()).isEmpty());
        MarketWriter writer(store);
        const qint64 row = writer.putInstrument(gold());
        MinuteBars bars;
        for (int i = 1; i < 2000; ++i) {
            bars.push_back(storedBar(i * 60000LL, 10.0, 3.0));
        }
        writer.putDay(row, 1000, BarSource::Imported, bars);
        ASSERT_TRUE(writer.commit());
    }
    QFile file(storePath());
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_GT(file.size(), 65536);
    for (qint64 at = file.size() - 40000; at < file.size() - 8000; at += 4096) {
        file.seek(at);
        file.write(QByteArray(3000, '\x5a'));
    }
    file.close();
    EXPECT_TRUE(mStore.open(storePath()).startsWith(storePath() + QStringLiteral(": the store is damaged")));
}

TEST_F(CMarketStoreTest, AStoreThatAnotherHoldsIsSaidSoInOneLine) {
    openStore();
    OtherConnection other(storePath());
    other.run("BEGIN EXCLUSIVE");
    CMarketStore again;
    EXPECT_EQ(again.open(storePath()),
              storePath() + QStringLiteral(": another process holds the store; close it and try again"));
    other.run("ROLLBACK");
    EXPECT_EQ(again.open(storePath()).toStdString(), "");
}

TEST_F(CMarketStoreTest, AWriterWaitsNoLongerThanTheBusyTimeAndSaysWho) {
    openStore();
    OtherConnection other(storePath());
    other.run("BEGIN IMMEDIATE");
    MarketWriter writer(mStore);
    EXPECT_EQ(writer.error(),
              storePath() + QStringLiteral(": another process holds the store; close it and try again"));
    EXPECT_EQ(writer.putInstrument(gold()), 0);
    EXPECT_FALSE(writer.commit());
    other.run("ROLLBACK");
}

TEST_F(CMarketStoreTest, AFolderThatCannotBeMadeIsSaidSo) {
    write("file", "x");
    EXPECT_EQ(mStore.open(pathOf("file/market.db")),
              pathOf("file/market.db") + QStringLiteral(": its folder cannot be made"));
}

TEST_F(CMarketStoreTest, AFolderInPlaceOfTheStoreIsAnError) {
    EXPECT_TRUE(mStore.open(mFolder.path()).startsWith(mFolder.path() + QStringLiteral(": ")));
    EXPECT_FALSE(mStore.isOpen());
}

TEST_F(CMarketStoreTest, NotesAreKept) {
    openStore();
    EXPECT_EQ(mStore.note(QStringLiteral("a")), QString());
    MarketWriter writer(mStore);
    writer.putNote(QStringLiteral("a"), QStringLiteral("1"));
    writer.putNote(QStringLiteral("a"), QStringLiteral("2"));
    ASSERT_TRUE(writer.commit());
    EXPECT_EQ(mStore.note(QStringLiteral("a")), QStringLiteral("2"));
}
