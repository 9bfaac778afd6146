#include "host/services/CLinkageManager.h"
#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketServices.h"
#include "terminal/market/MarketWriter.h"
#include "terminal/market/StoreRules.h"
#include "terminal/trade/TradeStore.h"
#include "tests/support/MessageGuard.h"
#include "tests/terminal/StoreFixture.h"

#include <QSqlError>
#include <QSqlQuery>

#include <random>

using namespace terminal;

namespace {

const QString kToldRow = QStringLiteral("^market store: ");
const qint64 kFilledAt = timeOf(QDate(2026, 11, 20), 600);

/// Stores whose file is whole, and whose values another hand has changed.
class StoreRowsTest : public StoreFixture {
protected:
    /// Runs statements on the file as a program would that holds it to nothing.
    void spoil(const QStringList &statements, bool mayFail = false) {
        {
            QSqlDatabase other = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("hand"));
            other.setDatabaseName(storePath());
            ASSERT_TRUE(other.open());
            QSqlQuery query(other);
            query.exec(QStringLiteral("PRAGMA foreign_keys = OFF"));
            query.exec(QStringLiteral("PRAGMA ignore_check_constraints = ON"));
            for (const QString &statement : statements) {
                EXPECT_TRUE(query.exec(statement) || mayFail)
                    << statement.toStdString() << ": " << query.lastError().text().toStdString();
            }
        }
        QSqlDatabase::removeDatabase(QStringLiteral("hand"));
    }
    qint64 rowOf(const char *key) {
        const Instrument *instrument = mStore.catalogue()->find(QLatin1String(key));
        return instrument ? instrument->id : 0;
    }
    QString faults() { return mStore.faults().lines().join(QLatin1Char('\n')); }
};

/// Reads all that a store has, as the program does.
void readAll(CMarketStore &store) {
    StoreStockManager stocks(store);
    const std::shared_ptr<const Catalogue> catalogue = store.catalogue();
    for (const Instrument &instrument : catalogue->instruments) {
        EXPECT_GE(static_cast<int>(instrument.kind), 0);
        EXPECT_LE(static_cast<int>(instrument.kind), 5);
        EXPECT_GT(instrument.priceTick, 0.0);
        EXPECT_LE(instrument.sessions.count(), 1440);
        for (const int day : store.days(instrument.id)) {
            const std::optional<DaySummary> summary = store.summary(instrument.id, day);
            EXPECT_TRUE(summary && summary->close >= 0.0 && summary->close <= 1e9);
            EXPECT_LE(instrument.sessions.times(dateOf(day), dateOf(day).addDays(-1)).size(), 1440u);
            stocks.getCurrentDateLastClose(instrument.key(), day);
        }
        const int last = store.days(instrument.id).isEmpty() ? 0 : store.days(instrument.id).last();
        for (const MinuteBar &bar : store.bars(instrument.id, last)) {
            EXPECT_LE(std::abs(bar.time - last * 1000LL), 16 * 86400000LL);
            EXPECT_TRUE(bar.price >= 0.0 && bar.price <= 1e9);
        }
        store.daySessions(instrument.id, last);
    }
    for (const Sector &sector : catalogue->sectors) {
        for (const QString &member : sector.members) {
            EXPECT_NE(catalogue->find(member), nullptr);
        }
    }
    TradeStore trades(store);
    for (const TradeAccount &account : trades.accounts()) {
        for (const int day : trades.ownDaysFrom(account.id, 0)) {
            QString trouble;
            for (const TradeOrder &order : trades.read(day, trouble).value_or(TradeChanges()).orders) {
                EXPECT_TRUE(order.source == TradeSource::Own || order.source == TradeSource::Imported);
            }
        }
    }
}

TEST_F(StoreRowsTest, DifferentValuesAreHandedOverOnceAndOnlyOfSoundRows) {
    openStore();
    TradeStore store(mStore);
    TradeBatch batch;
    batch.accounts.push_back({"1", "A", TC::CLinkageManager::kStockAccounts, TradeSource::Own});
    ASSERT_EQ(store.write(batch).toStdString(), "");
    const QString order =
        QStringLiteral("INSERT INTO trade_orders (account, key, source, day, instrument, time, direction, "
                       "offset_flag, price, volume, traded, status, command) VALUES "
                       "('1', '%1', 0, 57600, '%2', 57600000, %3, 0, 10, 100, 0, 0, 0)");
    spoil({order.arg("a", "SH600000").arg(48), order.arg("b", "SH600000").arg(7),
           order.arg("c", "SZ000001").arg(49), order.arg("d", "SH600000").arg(49),
           order.arg("e", "SZ000002").arg(7)});
    EXPECT_EQ(store.instruments(), (std::set<std::string>{"SH600000", "SZ000001"}));
    EXPECT_EQ(mStore.faults().count(), 0) << "told when the day is read";
    const tests::ExpectMessages warned(kToldRow);
    QString trouble;
    store.read(57600, trouble);
    EXPECT_EQ(mStore.faults().count(), 2);
}

} // namespace

TEST_F(StoreRowsTest, ARowThatIsOutOfRangeIsToldAndSetAside) {
    const tests::ExpectMessages warned(kToldRow);
    openFilledStore(kFilledAt);
    const qint64 row = rowOf("SH600000");
    const int day = mStore.days(row).last();
    const size_t bars = mStore.bars(row, day).size();
    const int days = mStore.days(row).size();
    const DaySessions::Table gold = mStore.catalogue()->find(QStringLiteral("SHFEAU2612"))->sessions.table();
    spoil({QStringLiteral(
               "UPDATE minute_bars SET time = 2147483647 WHERE instrument = %1 AND day = %2 AND time = "
               "(SELECT min(time) FROM minute_bars WHERE instrument = %1 AND day = %2)")
               .arg(row)
               .arg(day),
           QStringLiteral(
               "UPDATE days SET source = -1 WHERE instrument = %1 AND day = (SELECT min(day) FROM days "
               "WHERE instrument = %1)")
               .arg(row),
           QStringLiteral("INSERT INTO sessions VALUES (999999, 0, 570, 690)"),
           QStringLiteral("UPDATE sessions SET last_minute = 2147483647 WHERE ordinal = 0 AND instrument = %1")
               .arg(rowOf("SHFEAU2612")),
           QStringLiteral("UPDATE instruments SET kind = 77 WHERE code = '600009'")});
    CMarketStore again;
    ASSERT_EQ(again.open(storePath()).toStdString(), "");
    const int known = again.faults().count();
    EXPECT_EQ(again.bars(row, day).size(), bars - 1);
    EXPECT_EQ(again.days(row).size(), days - 1);
    EXPECT_EQ(again.catalogue()->find(QStringLiteral("SH600009")), nullptr);
    const QString told = again.faults().lines().join(QLatin1Char('\n'));
    for (const QString &line :
         {QStringLiteral(
              "minute_bars (instrument %1, day %2, time 2147483647): a value out of range, set aside")
              .arg(row)
              .arg(day),
          QStringLiteral("days (instrument %1, day ").arg(row),
          QStringLiteral("sessions (instrument 999999, ordinal 0): refers to what is not there, set aside"),
          QStringLiteral("sessions (instrument %1, ordinal 0): a value out of range")
              .arg(rowOf("SHFEAU2612"))}) {
        EXPECT_TRUE(told.contains(line)) << line.toStdString() << "\n" << told.toStdString();
    }
    again.bars(row, day);
    EXPECT_EQ(again.faults().count(), known + 2); // told once, however often it is read
    EXPECT_FALSE(gold.isEmpty());
}

TEST_F(StoreRowsTest, TheTablesThemselvesRefuseWhatIsOutOfRange) {
    openStore();
    QSqlQuery query(mStore.connection());
    ASSERT_TRUE(
        query.exec(QStringLiteral("INSERT INTO instruments VALUES (1, 'SH', '600000', '', '', '', 0, 0.01, "
                                  "NULL, 0, '', '', 0, 0)")));
    ASSERT_TRUE(query.exec(QStringLiteral("INSERT INTO days VALUES (1, 1000, 1, 1, 1, 1, 1, 1, 1)")));
    for (const char *wrong :
         {"INSERT INTO sessions VALUES (1, 0, 570, 2147483647)", "INSERT INTO sessions VALUES (2, 0, 570, 690)",
          "INSERT INTO days VALUES (1, 2000, -1, 1, 1, 1, 1, 1, 1)",
          "INSERT INTO days VALUES (1, 2000, 1, 1, 1, 1, 1e10, 1, 1)",
          "INSERT INTO minute_bars VALUES (1, 1000, 2147483647000, 1, 1, 1, 1, 1, 1, 1)",
          "INSERT INTO minute_bars VALUES (1, 3000, 60000, 1, 1, 1, 1, 1, 1, 1)",
          "UPDATE instruments SET kind = 9"}) {
        EXPECT_FALSE(query.exec(QLatin1String(wrong))) << wrong;
    }
}

TEST_F(StoreRowsTest, AnEarlierStoreIsTakenForwardWithoutItsWrongRows) {
    const tests::ExpectMessages warned(kToldRow);
    openStore();
    spoil({QStringLiteral(
               "INSERT INTO instruments VALUES (1, 'SH', '600000', '', '', '', 0, 0.01, NULL, 0, '', '', "
               "0, 0)"),
           QStringLiteral("INSERT INTO days VALUES (1, 1000, 1, 1, 1, 1, 1, 1, 1)"),
           QStringLiteral("INSERT INTO days VALUES (1, 2000, 5, 1, 1, 1, 1, 1, 1)"),
           QStringLiteral("INSERT INTO minute_bars VALUES (1, 1000, 60000, 1, 1, 1, 1, 1, 1, 1)"),
           QStringLiteral("INSERT INTO minute_bars VALUES (1, 1000, 2147483647, x'00', 1, 1, 1, 1, 1, 1)"),
           QStringLiteral("DROP TABLE previous_closes"), QStringLiteral("DROP TABLE day_sessions"),
           QStringLiteral("DROP INDEX instruments_by_key"), QStringLiteral("PRAGMA user_version = 5")});
    CMarketStore again;
    ASSERT_EQ(again.open(storePath()).toStdString(), "");
    EXPECT_EQ(again.days(1), QVector<int>{1000});
    EXPECT_EQ(again.bars(1, 1000).size(), 1u);
    EXPECT_EQ(again.faults().count(), 2);
    QSqlQuery query(again.connection());
    ASSERT_TRUE(query.exec(QStringLiteral("SELECT content FROM set_aside ORDER BY source")) && query.next());
    EXPECT_EQ(query.value(0).toString(), QStringLiteral("1, 2000, 5, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0"));
    ASSERT_TRUE(query.next());
    EXPECT_EQ(query.value(0).toString(),
              QStringLiteral("1, 1000, 2147483647, X'00', 1.0, 1.0, 1.0, 1.0, 1.0, 1.0"));
    EXPECT_FALSE(query.exec(QStringLiteral("UPDATE days SET source = 5")));
    ASSERT_TRUE(
        query.exec(QStringLiteral("SELECT count(*) FROM sqlite_master WHERE name = 'trade_orders_by_day'")) &&
        query.next());
    EXPECT_EQ(query.value(0).toInt(), 1);
}

TEST_F(StoreRowsTest, AnyValueAnywhereOpens) {
    const tests::ExpectMessages warned(kToldRow);
    std::mt19937 random(20261122);
    const QStringList nasty{
        QStringLiteral("-1"),          QStringLiteral("2147483647"), QStringLiteral("9e18"),
        QStringLiteral("'x'"),         QStringLiteral("x'00ff'"),    QStringLiteral("1e300"),
        QStringLiteral("-1e300"),      QStringLiteral("''"),         QStringLiteral("0"),
        QStringLiteral("9e999"),       QStringLiteral("NULL"),       QStringLiteral("1441"),
        QStringLiteral("'2026-02-31'")};
    openFilledStore(kFilledAt);
    QStringList columns;
    QSqlQuery query(mStore.connection());
    for (const StoreRule &rule : storeRules()) {
        query.exec(QStringLiteral("SELECT name FROM pragma_table_info('%1')").arg(rule.table));
        while (query.next()) {
            columns.append(rule.table + QLatin1Char(' ') + query.value(0).toString());
        }
    }
    query.finish();
    ASSERT_GT(columns.size(), 100);
    for (int round = 0; round < 2; ++round) {
        QStringList statements;
        for (int change = 0; change < 30; ++change) {
            const QStringList where =
                columns[static_cast<int>(random() % columns.size())].split(QLatin1Char(' '));
            statements.append(
                QStringLiteral("UPDATE %1 SET %2 = %3 WHERE %4 = (SELECT %4 FROM %1 LIMIT 1 OFFSET %5)")
                    .arg(where[0], where[1], nasty[static_cast<int>(random() % nasty.size())],
                         storeRule(where[0]).key.split(QStringLiteral(", ")).last())
                    .arg(random() % 5));
        }
        spoil(statements, true);
        CMarketStore again;
        ASSERT_EQ(again.open(storePath()).toStdString(), "")
            << statements.join(QLatin1Char('\n')).toStdString();
        ASSERT_EQ(fillStore(again, kFilledAt).toStdString(), "")
            << statements.join(QLatin1Char('\n')).toStdString();
        readAll(again);
    }
}
