#include "terminal/market/RowInserter.h"

#include "tests/terminal/StoreFixture.h"

#include <QSqlQuery>
#include <QVariant>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace terminal;

namespace {

class RowInserterTest : public StoreFixture {
protected:
    void SetUp() override {
        openStore();
        ask("CREATE TEMP TABLE pairs (name INTEGER PRIMARY KEY, value REAL CHECK (value >= 0))");
    }
    QVariant ask(const char *statement) {
        QSqlQuery query(mStore.connection());
        EXPECT_TRUE(query.exec(QLatin1String(statement))) << statement;
        return query.next() ? query.value(0) : QVariant();
    }
    int count() { return ask("SELECT count(*) FROM pairs").toInt(); }
};

TEST_F(RowInserterTest, RowsAreWrittenTogetherAndTheRestWhenItIsFlushed) {
    constexpr int kRows = 2 * RowInserter::kTogether + 5;
    RowInserter rows(mStore.connection(), "pairs", 2);
    for (int i = 0; i < kRows; ++i) {
        rows.add(qint64(i)).add(i / 8.0);
    }
    EXPECT_EQ(count(), 2 * RowInserter::kTogether);
    ASSERT_TRUE(rows.flush());
    EXPECT_EQ(count(), kRows);
    EXPECT_EQ(ask("SELECT count(*) FROM pairs WHERE value = name / 8.0 AND typeof(value) = 'real'").toInt(),
              kRows);
    ASSERT_TRUE(rows.flush()) << "nothing waits";
    EXPECT_EQ(count(), kRows);
}

TEST_F(RowInserterTest, WholeNumbersAndFractionsComeBackToTheBit) {
    ask("CREATE TEMP TABLE numbers (a INTEGER, b REAL)");
    const qint64 wholes[] = {0, -1, std::numeric_limits<qint64>::min(), std::numeric_limits<qint64>::max()};
    const double fractions[] = {0.1, -0.0, std::numeric_limits<double>::denorm_min(), 1e300};
    RowInserter rows(mStore.connection(), "numbers", 2);
    for (int i = 0; i < 4; ++i) {
        rows.add(wholes[i]).add(fractions[i]);
    }
    ASSERT_TRUE(rows.flush());
    QSqlQuery query(mStore.connection());
    ASSERT_TRUE(query.exec("SELECT a, b FROM numbers ORDER BY rowid"));
    for (int i = 0; i < 4; ++i) {
        ASSERT_TRUE(query.next());
        EXPECT_EQ(query.value(0).toLongLong(), wholes[i]);
        EXPECT_EQ(query.value(1).toDouble(), fractions[i]);
    }
}

TEST_F(RowInserterTest, TheFirstErrorStaysAndNothingIsWrittenAfterIt) {
    RowInserter rows(mStore.connection(), "pairs", 2);
    rows.add(qint64(1)).add(-1.0);
    rows.add(qint64(2)).add(2.0);
    EXPECT_TRUE(rows.isGood()) << "nothing is written yet";
    EXPECT_FALSE(rows.flush());
    EXPECT_EQ(rows.error().nativeErrorCode().toInt() & 0xff, 19) << "SQLITE_CONSTRAINT";
    EXPECT_TRUE(rows.error().databaseText().contains("CHECK constraint failed"));
    const QString text = rows.error().databaseText();
    for (int i = 3; i < 100; ++i) {
        rows.add(qint64(i)).add(1.0);
    }
    EXPECT_FALSE(rows.flush());
    EXPECT_EQ(rows.error().databaseText(), text);
    EXPECT_EQ(count(), 0);
}

TEST_F(RowInserterTest, ARowOfManyThatIsRefusedTakesTheOthersWithIt) {
    RowInserter rows(mStore.connection(), "pairs", 2);
    for (int i = 0; i < RowInserter::kTogether; ++i) {
        rows.add(qint64(i)).add(i == 7 ? std::nan("") : 1.0); // NULL, which the check lets pass
    }
    EXPECT_TRUE(rows.isGood());
    EXPECT_EQ(count(), RowInserter::kTogether);
    for (int i = 0; i < RowInserter::kTogether; ++i) {
        rows.add(qint64(100 + i % 7)).add(1.0);
    }
    EXPECT_FALSE(rows.isGood()) << "a key twice";
    EXPECT_EQ(count(), RowInserter::kTogether);
}

TEST_F(RowInserterTest, WithoutItsTableOrItsStoreItTellsSo) {
    RowInserter none(mStore.connection(), "nowhere", 2);
    EXPECT_TRUE(none.error().databaseText().contains("no such table: nowhere"));
    none.add(qint64(1)).add(1.0);
    EXPECT_FALSE(none.flush());
    RowInserter closed(QSqlDatabase(), "pairs", 2);
    EXPECT_FALSE(closed.isGood());
    EXPECT_FALSE(closed.flush());
}

} // namespace
