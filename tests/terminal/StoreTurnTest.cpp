#include "terminal/market/MarketWriter.h"
#include "terminal/market/StoreSelfStocks.h"
#include "tests/terminal/StoreFixture.h"

#include <QSqlQuery>

#include <atomic>
#include <thread>
#include <utility>

#include <sys/stat.h>

using namespace terminal;

namespace {

class StoreTurnTest : public StoreFixture {
protected:
    void SetUp() override { openStore(); }
};

} // namespace

TEST_F(StoreTurnTest, AWriterWaitsForTheOneBeforeIt) {
    auto first = std::make_unique<MarketWriter>(mStore);
    EXPECT_TRUE(first->putNote(QStringLiteral("a"), QStringLiteral("1")));
    std::atomic<bool> begun{false};
    std::string trouble = "not written";
    std::thread other([&] {
        begun = true;
        MarketWriter second(mStore);
        second.putNote(QStringLiteral("a"), QStringLiteral("2"));
        second.commit();
        trouble = second.error().toStdString();
    });
    while (!begun) {
        std::this_thread::yield();
    }
    EXPECT_TRUE(first->putNote(QStringLiteral("b"), QStringLiteral("1")));
    EXPECT_TRUE(first->commit());
    first.reset();
    other.join();
    EXPECT_EQ(trouble, "");
    EXPECT_EQ(mStore.note(QStringLiteral("a")), QStringLiteral("2"));
    EXPECT_EQ(mStore.note(QStringLiteral("b")), QStringLiteral("1"));
}

TEST_F(StoreTurnTest, WhoDoesNotWaitIsToldOfOurOwnTaskAndOfNoOtherProcess) {
    MarketWriter importing(mStore);
    EXPECT_FALSE(mStore.isBeingWritten()); // by another thread
    QString said;
    bool busy = false;
    std::thread user([&] {
        busy = mStore.isBeingWritten();
        said = StoreSelfStocks(mStore).addStocks(QStringLiteral("自选股"), {QStringLiteral("SH600000")});
    });
    user.join();
    EXPECT_TRUE(busy);
    EXPECT_TRUE(said.contains(QStringLiteral("another task of this program is writing"))) << said.toStdString();
    EXPECT_FALSE(said.contains(QStringLiteral("process")));
}

TEST_F(StoreTurnTest, AnInstrumentIsFoundByItsKeyThroughAnIndex) {
    QSqlQuery query(mStore.connection());
    ASSERT_TRUE(query.exec(QStringLiteral(
                    "EXPLAIN QUERY PLAN SELECT id FROM instruments WHERE market || code = 'SH600000'")) &&
                query.next());
    EXPECT_TRUE(query.value(3).toString().contains(QStringLiteral("instruments_by_key")))
        << query.value(3).toString().toStdString();
}

TEST_F(StoreTurnTest, AStoreInMemoryOrByAddressIsRefused) {
    for (const char *path : {":memory:", "file:market.db?mode=ro", ""}) {
        CMarketStore store;
        EXPECT_EQ(store.open(QLatin1String(path)),
                  QStringLiteral("\"%1\": the store is a file on disk: give the path of one")
                      .arg(QLatin1String(path)));
        EXPECT_FALSE(store.isOpen());
    }
}

TEST_F(StoreTurnTest, AStoreThatIsNoFileIsRefused) {
    const QString folder = mFolder.path();
    const QString pipe = mFolder.filePath(QStringLiteral("pipe"));
    ASSERT_EQ(::mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    const std::pair<QString, const char *> places[] = {
        {pipe, "it is a pipe or a device, no file"},
        {QStringLiteral("/dev/zero"), "it is a pipe or a device, no file"},
        {folder, "it is a folder"}};
    for (const auto &[path, reason] : places) {
        CMarketStore store;
        EXPECT_EQ(store.open(path), QStringLiteral("%1: %2: the store is a file on disk: give the path of one")
                                        .arg(path, QLatin1String(reason)));
        EXPECT_FALSE(store.isOpen());
    }
}
