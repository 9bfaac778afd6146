// Questions to the store that are kept ready.

#include "terminal/market/PreparedQueries.h"
#include "terminal/market/StoreRows.h"
#include "tests/terminal/StoreFixture.h"

#include <QSqlError>

#include <thread>
#include <utility>

using terminal::PreparedQueries;

namespace {

const QString kValueOf = QStringLiteral("SELECT value FROM notes WHERE name = ?");

class PreparedQueriesTest : public StoreFixture {
protected:
    void SetUp() override {
        openStore();
        QSqlQuery query(mStore.connection());
        ASSERT_TRUE(
            query.exec(QStringLiteral("INSERT INTO notes (name, value) VALUES ('a', '1'), ('b', '2')")));
        mQueries.forget();
    }
    QSqlQuery asked(const QString &name) {
        QSqlQuery query = mQueries.take(mStore.connection(), kValueOf);
        query.addBindValue(name);
        EXPECT_TRUE(query.exec()) << query.lastError().text().toStdString();
        EXPECT_TRUE(query.next());
        return query;
    }
    void putBack(QSqlQuery query) { mQueries.giveBack(mStore.connection(), kValueOf, std::move(query)); }

    PreparedQueries &mQueries = PreparedQueries::ofThisThread();
};

TEST_F(PreparedQueriesTest, AQuestionIsAskedAgainWithOtherValues) {
    for (int i = 0; i < 3; ++i) {
        QSqlQuery first = asked(QStringLiteral("a"));
        EXPECT_EQ(mQueries.count(), 0);
        EXPECT_EQ(first.value(0).toString(), QStringLiteral("1"));
        putBack(std::move(first));
        EXPECT_EQ(mQueries.count(), 1);
        QSqlQuery second = asked(QStringLiteral("b"));
        EXPECT_EQ(second.value(0).toString(), QStringLiteral("2"));
        putBack(std::move(second));
    }
    EXPECT_EQ(mQueries.count(), 1);
}

TEST_F(PreparedQueriesTest, TheSameQuestionInTheMidstOfItsRowsHasRowsOfItsOwn) {
    putBack(asked(QStringLiteral("a")));
    QSqlQuery outer = asked(QStringLiteral("a"));
    QSqlQuery inner = asked(QStringLiteral("b"));
    EXPECT_EQ(outer.value(0).toString(), QStringLiteral("1"));
    EXPECT_EQ(inner.value(0).toString(), QStringLiteral("2"));
    putBack(std::move(inner));
    putBack(std::move(outer));
    EXPECT_EQ(mQueries.count(), 1);
}

TEST_F(PreparedQueriesTest, WhatLiesReadyHoldsNothingOfTheStore) {
    QSqlQuery writing(mStore.connection());
    ASSERT_TRUE(writing.exec(QStringLiteral("UPDATE notes SET value = '3' WHERE name = 'a'")));
    QSqlQuery reading = asked(QStringLiteral("a"));
    const auto isCut = [this] { // the log, by another thread's connection
        bool isFree = false;
        std::thread([&] {
            QSqlQuery query(mStore.connection());
            query.exec(QStringLiteral("PRAGMA busy_timeout = 0"));
            isFree = query.exec(QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)")) && query.next() &&
                     query.value(0).toInt() == 0;
        }).join();
        return isFree;
    };
    EXPECT_FALSE(isCut()) << "the rows are being read";
    putBack(std::move(reading));
    EXPECT_EQ(mQueries.count(), 1);
    EXPECT_TRUE(isCut());
}

TEST_F(PreparedQueriesTest, AStatementThatIsWrongTellsSoAndIsNotKept) {
    const QSqlQuery query = mQueries.take(mStore.connection(), QStringLiteral("SELECT nothing FROM nowhere"));
    EXPECT_TRUE(query.lastError().isValid());
    EXPECT_EQ(mQueries.count(), 0);
}

TEST_F(PreparedQueriesTest, AChangedTableIsReadAsItIs) {
    putBack(asked(QStringLiteral("a")));
    QSqlQuery query(mStore.connection());
    ASSERT_TRUE(query.exec(QStringLiteral("ALTER TABLE notes RENAME TO former")));
    ASSERT_TRUE(query.exec(QStringLiteral("CREATE TABLE notes (name TEXT, value TEXT)")));
    ASSERT_TRUE(query.exec(QStringLiteral("INSERT INTO notes VALUES ('a', 'new')")));
    EXPECT_EQ(asked(QStringLiteral("a")).value(0).toString(), QStringLiteral("new"));
}

TEST_F(PreparedQueriesTest, AnotherStoreHasItsOwn) {
    putBack(asked(QStringLiteral("a")));
    terminal::CMarketStore other;
    ASSERT_EQ(other.open(pathOf("other.db")), QString());
    EXPECT_EQ(other.note(QStringLiteral("a")), QString());
    EXPECT_EQ(mStore.note(QStringLiteral("a")), QStringLiteral("1"));
}

TEST_F(PreparedQueriesTest, NoMoreAreKeptThanTheBound) {
    for (int i = 0; i < PreparedQueries::kMostKept + 5; ++i) {
        const QString statement = QStringLiteral("SELECT %1").arg(i);
        QSqlQuery query = mQueries.take(mStore.connection(), statement);
        EXPECT_TRUE(query.exec());
        mQueries.giveBack(mStore.connection(), statement, std::move(query));
    }
    EXPECT_EQ(mQueries.count(), PreparedQueries::kMostKept);
}

TEST_F(PreparedQueriesTest, AConnectionThatIsOpenedAnewIsAskedAnew) {
    EXPECT_EQ(mStore.note(QStringLiteral("a")), QStringLiteral("1"));
    EXPECT_EQ(mQueries.count(), 1);
    const QSqlError readOnly(QString(), QString(), QSqlError::ConnectionError, QStringLiteral("8"));
    mStore.describe(readOnly); // it is opened anew when it is asked for next
    EXPECT_EQ(mStore.note(QStringLiteral("b")), QStringLiteral("2"));
}

} // namespace
