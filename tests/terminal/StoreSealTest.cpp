#include "terminal/market/StoreSeal.h"

#include "terminal/market/CMarketStore.h"
#include "terminal/market/MarketWriter.h"
#include "tests/terminal/StoreFixture.h"

#include <QDir>
#include <QFile>
#include <QSqlError>

#include <gtest/gtest.h>

#include <memory>

using namespace terminal;

namespace {

class StoreSealTest : public StoreFixture {
protected:
    QString sealPath() const { return storePath() + QStringLiteral("-whole"); }
    /// Makes a store that is closed in order.
    void leaveStore() {
        CMarketStore store;
        ASSERT_EQ(store.open(storePath()), QString());
        MarketWriter writer(store);
        writer.putNote(QStringLiteral("text"), QString(200000, 'x'));
        ASSERT_TRUE(writer.commit());
    }
    /// Spoils pages in the middle of the file.
    void damage() {
        QFile file(storePath());
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_GT(file.size(), 100000);
        for (qint64 at = file.size() - 60000; at < file.size() - 8000; at += 4096) {
            file.seek(at);
            file.write(QByteArray(3000, '\x5a'));
        }
    }
};

TEST_F(StoreSealTest, AStoreThatWasClosedInOrderIsSealedUntilItIsUsed) {
    leaveStore();
    ASSERT_TRUE(QFile::exists(sealPath()));
    CMarketStore store;
    ASSERT_EQ(store.open(storePath()), QString());
    EXPECT_FALSE(QFile::exists(sealPath())) << "killed from now on, the program leaves none";
    EXPECT_FALSE(StoreSeal(storePath()).takeOff());
}

TEST_F(StoreSealTest, ASealHoldsOnceAndOnlyForTheFileAsItWasLeft) {
    leaveStore();
    const StoreSeal seal(storePath());
    EXPECT_TRUE(seal.takeOff());
    EXPECT_FALSE(seal.takeOff());
    seal.putOn();
    damage();
    EXPECT_FALSE(seal.takeOff()) << "changed since";
    seal.putOn();
    const QString copy = storePath() + QStringLiteral(".copy");
    ASSERT_TRUE(QFile::copy(storePath(), copy) && QFile::remove(storePath()) &&
                QFile::rename(copy, storePath()));
    EXPECT_FALSE(seal.takeOff()) << "another file with the same content";
    seal.putOn();
    write("market.db-whole", QByteArray(1000, '1'));
    EXPECT_FALSE(seal.takeOff());
    ASSERT_TRUE(QDir().mkdir(sealPath()));
    EXPECT_FALSE(seal.takeOff()) << "a folder in its place";
    seal.putOn();
    EXPECT_FALSE(seal.takeOff());
}

TEST_F(StoreSealTest, AStoreThatAnotherProgramHasOpenIsNotSealed) {
    leaveStore();
    const StoreSeal seal(storePath());
    ASSERT_TRUE(seal.takeOff());
    write("market.db-wal", "");
    seal.putOn();
    EXPECT_FALSE(QFile::exists(sealPath()));
    StoreSeal(storePath() + QStringLiteral("none")).putOn();
    EXPECT_FALSE(QFile::exists(storePath() + QStringLiteral("none-whole"))) << "no store";
}

TEST_F(StoreSealTest, OnlyAStoreWithoutItsSealIsLookedOver) {
    leaveStore();
    damage();
    {
        CMarketStore store;
        EXPECT_NE(store.open(storePath()), QString());
    }
    EXPECT_FALSE(QFile::exists(sealPath())) << "a damaged store gets none";
    StoreSeal(storePath()).putOn(); // as if it had been damaged without a trace
    CMarketStore store;
    EXPECT_EQ(store.open(storePath()), QString());
}

TEST_F(StoreSealTest, DamageThatIsMetLaterKeepsTheSealOff) {
    leaveStore();
    damage();
    StoreSeal(storePath()).putOn();
    {
        CMarketStore store;
        ASSERT_EQ(store.open(storePath()), QString());
        store.describe(QSqlError(QString(), QString(), QSqlError::StatementError, QStringLiteral("11")));
    }
    EXPECT_FALSE(QFile::exists(sealPath()));
}

} // namespace
