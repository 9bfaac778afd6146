// The user's own lists of instruments in the store.

#include "terminal/market/StoreSelfStocks.h"
#include "terminal/market/SqlConnections.h"
#include "tests/terminal/StoreFixture.h"

#include <QElapsedTimer>
#include <QSqlQuery>

using terminal::StoreSelfStocks;

namespace {

using Keys = QVector<QString>;

class StoreSelfStocksTest : public StoreFixture {
protected:
    void SetUp() override { openStore(); }
    StoreSelfStocks mLists{mStore};
    const QString kFirst = QStringLiteral("自选股");
};

TEST_F(StoreSelfStocksTest, AStoreHasOneEmptyListToBeginWith) {
    EXPECT_EQ(mLists.groups(), Keys{kFirst});
    EXPECT_TRUE(mLists.stocks(kFirst).isEmpty());
    EXPECT_TRUE(mLists.stocks("none").isEmpty());
}

TEST_F(StoreSelfStocksTest, InstrumentsStandInTheOrderInWhichTheyCame) {
    EXPECT_EQ(mLists.addStocks(kFirst, {"SZ2", "SH1"}), QString());
    EXPECT_EQ(mLists.addStocks(kFirst, {"CD9", "SZ2"}), QString());
    EXPECT_EQ(mLists.stocks(kFirst), (Keys{"SZ2", "SH1", "CD9"}));
}

TEST_F(StoreSelfStocksTest, AListIsMadeWithItsFirstInstrument) {
    EXPECT_EQ(mLists.addStocks("b", {"SH1"}), QString());
    EXPECT_EQ(mLists.addStocks("a", {"SH1"}), QString());
    EXPECT_EQ(mLists.groups(), (Keys{kFirst, "b", "a"}));
    EXPECT_EQ(mLists.stocks("a"), Keys{"SH1"});
}

TEST_F(StoreSelfStocksTest, AnInstrumentIsTakenOffOneList) {
    mLists.addStocks("a", {"SH1", "SH2"});
    mLists.addStocks("b", {"SH1"});
    EXPECT_EQ(mLists.removeStocks("a", {"SH1", "unknown"}), QString());
    EXPECT_EQ(mLists.stocks("a"), Keys{"SH2"});
    EXPECT_EQ(mLists.stocks("b"), Keys{"SH1"});
}

TEST_F(StoreSelfStocksTest, AListWithoutANameIsRefused) {
    EXPECT_EQ(mLists.addStocks(" ", {"SH1"}), QStringLiteral("列表要有名称"));
    EXPECT_EQ(mLists.groups(), Keys{kFirst});
}

TEST_F(StoreSelfStocksTest, ListsAreThereAfterARestart) {
    mLists.addStocks("a", {"SH1"});
    const QString copy = pathOf("copy.db");
    ASSERT_TRUE(QSqlQuery(mStore.connection()).exec(QStringLiteral("VACUUM INTO '%1'").arg(copy)));
    terminal::CMarketStore again;
    ASSERT_EQ(again.open(copy), QString());
    EXPECT_EQ(StoreSelfStocks(again).stocks("a"), Keys{"SH1"});
    EXPECT_EQ(StoreSelfStocks(again).groups(), (Keys{kFirst, "a"}));
}

TEST_F(StoreSelfStocksTest, AListThatCannotBeWrittenStaysAsItWas) {
    mLists.addStocks("a", {"SH1"});
    ASSERT_TRUE(QSqlQuery(mStore.connection()).exec(QStringLiteral("PRAGMA query_only = 1")));
    int changes = 0;
    mLists.setChangeListener([&] { ++changes; });
    const QString refusal = mLists.addStocks("a", {"SH2"});
    EXPECT_TRUE(refusal.startsWith(QStringLiteral("列表“a”没有改变：")));
    EXPECT_EQ(mLists.stocks("a"), Keys{"SH1"});
    EXPECT_EQ(changes, 0);
    ASSERT_TRUE(QSqlQuery(mStore.connection()).exec(QStringLiteral("PRAGMA query_only = 0")));
    EXPECT_EQ(mLists.addStocks("a", {"SH2"}), QString());
    EXPECT_EQ(changes, 1);
}

TEST_F(StoreSelfStocksTest, AnotherProcessThatWritesHoldsTheUserUpNoLongerThanForAFrame) {
    ASSERT_EQ(mLists.addStocks("a", {"SH1"}), QString());
    QString refusal;
    qint64 taken = 0;
    {
        QSqlDatabase other = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("other"));
        other.setDatabaseName(storePath());
        ASSERT_TRUE(other.open());
        QSqlQuery writing(other);
        ASSERT_TRUE(writing.exec(QStringLiteral("BEGIN IMMEDIATE")));
        QElapsedTimer time;
        time.start();
        refusal = mLists.addStocks("a", {"SH2"});
        taken = time.elapsed();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("other"));
    EXPECT_TRUE(refusal.contains(QStringLiteral("another process holds the store"))) << refusal.toStdString();
    EXPECT_LT(taken, terminal::kForeignPatience); // it would be more otherwise
    EXPECT_EQ(mLists.stocks("a"), Keys{"SH1"});
    EXPECT_EQ(mLists.addStocks("a", {"SH2"}), QString());
    QSqlQuery patience(mStore.connection());
    ASSERT_TRUE(patience.exec(QStringLiteral("PRAGMA busy_timeout")) && patience.next());
    EXPECT_EQ(patience.value(0).toInt(), terminal::kForeignPatience) << "who writes in the background waits";
}

} // namespace
