#include "tests/support/MessageGuard.h"
#include "tests/terminal/TradeFixture.h"

#include <QElapsedTimer>
#include <QSqlQuery>
#include <QVariant>

#include <cmath>
#include <cstdio>
#include <limits>

using namespace terminal;

namespace {

/// What a user imports: records from elsewhere, good and bad.
class TradeImportTest : public TradeFixture {
protected:
    long long seconds(int hour, int minute, int second = 0) const { return at(hour, minute, second) / 1000; }
    size_t orderCount(const std::string &account) {
        return flat(mTrade->getOrderDetails(mDay, kShare, {account})).size();
    }
    size_t dealCount(const std::string &account) {
        return flat(mTrade->getDealDetails(mDay, kShare, {account})).size();
    }
    int stored(const QString &table) {
        QSqlQuery query(mStore.connection());
        query.exec(QStringLiteral("SELECT count(*) FROM %1 WHERE source = 1").arg(table));
        return query.next() ? query.value(0).toInt() : -1;
    }
};

} // namespace

TEST_F(TradeImportTest, OrderAndDealShowOnTheirDay) {
    mTrade->importOrder("out", kShare, "o1", 9.87, 300, seconds(10, 15, 7), 49);
    mTrade->importDeal("out", kShare, "d1", 9.88, 200, seconds(10, 16), 48);
    const auto orders = flat(mTrade->getOrderDetails(mDay, kShare, {"out"}));
    ASSERT_EQ(orders.size(), 1U);
    EXPECT_EQ(orders[0]->mTime, "10:15:07");
    EXPECT_EQ(orders[0]->mDate, "20261120");
    EXPECT_EQ(orders[0]->mDirection, 49);
    EXPECT_DOUBLE_EQ(orders[0]->mPrice, 9.87);
    EXPECT_EQ(orders[0]->mVolume, 300);
    EXPECT_EQ(orders[0]->getKey(), "o1");
    EXPECT_FALSE(orders[0]->mCommand);
    const auto deals = flat(mTrade->getDealDetails(mDay, kShare, {"out"}));
    ASSERT_EQ(deals.size(), 1U);
    EXPECT_DOUBLE_EQ(deals[0]->mAmount, 1976.0);
    EXPECT_TRUE(mTrade->getDealDetails(mDay - 86400, kShare, {"out"}).empty());
}

TEST_F(TradeImportTest, DayOfARecordIsTheTradingDayOfItsTime) {
    const int thursday = dayOf(QDate(2026, 11, 19));
    mTrade->importDeal("out", kShare, "d", 9.8, 100, timeOf(QDate(2026, 11, 19), 600) / 1000, 48);
    mTrade->importDeal("out", "SHFEAU2612", "night", 780.0, 1, timeOf(QDate(2026, 11, 19), 1290) / 1000, 48);
    EXPECT_EQ(flat(mTrade->getDealDetails(thursday, kShare, {"out"})).size(), 1U);
    EXPECT_EQ(flat(mTrade->getDealDetails(mDay, "SHFEAU2612", {"out"})).size(), 1U); // the next trading day
}

TEST_F(TradeImportTest, UnknownAccountIsAddedAndTold) {
    int told = 0;
    mTrade->sigAccountsChanged.connect([&] { ++told; });
    mTrade->importDeal("out", kShare, "d", 9.8, 100, seconds(10, 0), 48);
    mTrade->importDeal("outF", "CFFEXIF2612", "d", 4000.0, 1, seconds(10, 0), 48);
    mTrade->advance();
    EXPECT_EQ(told, 1);
    EXPECT_EQ(mTrade->getAccountIds(2).size(), 3U);
    EXPECT_EQ(mTrade->getAccountIds(1), (std::vector<std::string>{"90010001", "outF"}));
}

TEST_F(TradeImportTest, SameKeyAgainReplacesTheRecord) {
    mTrade->importDeal("out", kShare, "d", 9.8, 100, seconds(10, 0), 48);
    mTrade->importDeal("out", kShare, "d", 9.9, 700, seconds(10, 0), 48);
    const auto deals = flat(mTrade->getDealDetails(mDay, kShare, {"out"}));
    ASSERT_EQ(deals.size(), 1U);
    EXPECT_EQ(deals[0]->mVolume, 700);
    mTrade->advance();
    EXPECT_EQ(stored(QStringLiteral("trade_deals")), 1);
}

TEST_F(TradeImportTest, EmptyKeysStayApart) {
    mTrade->importDeal("out", kShare, "", 9.8, 100, seconds(10, 0), 48);
    mTrade->importDeal("out", kShare, "", 9.8, 100, seconds(10, 0), 48);
    EXPECT_EQ(dealCount("out"), 2U);
}

TEST_F(TradeImportTest, OwnRecordHidesAnImportedOneWithItsKey) {
    goTo(at(11, 0));
    const auto own = flat(mTrade->getDealDetails(mDay, kShare, {"80010001"}));
    ASSERT_FALSE(own.empty());
    const auto before = mTrade->getTotalBuySellAmounts({kShare}, kStockAccounts, {}, false);
    mTrade->importDeal("80010001", kShare, own[0]->mDealKey, 1.0, 999900, seconds(10, 0), 48);
    mTrade->advance();
    const auto after = mTrade->getDealDetails(mDay, kShare, {"80010001"});
    EXPECT_DOUBLE_EQ(after.at("80010001").at(own[0]->mDealKey)->mPrice, own[0]->mPrice);
    EXPECT_EQ(mTrade->getTotalBuySellAmounts({kShare}, kStockAccounts, {}, false), before);
}

TEST_F(TradeImportTest, ImportsSurviveARestartAndADayThatIsTradedAnew) {
    goTo(at(10, 30));
    mTrade->importOrder("out", kShare, "o", 9.87, 300, seconds(10, 15), 49);
    mTrade->importDeal("80010001", kShare, "d", 9.88, 200, seconds(10, 16), 48);
    mTrade->advance();
    restart();
    goTo(at(10, 20)); // forgets the own records of the day first
    EXPECT_EQ(orderCount("out"), 1U);
    EXPECT_EQ(mTrade->getDealDetails(mDay, kShare, {"80010001"}).at("80010001").count("d"), 1U);
    EXPECT_EQ(mTrade->getAccountIds(2).size(), 3U);
}

TEST_F(TradeImportTest, ForgettingTakesImportsAloneAndForGood) {
    goTo(at(10, 30));
    const auto own = dealStates(mDay, kShare);
    mTrade->importOrder("out", kShare, "o", 9.87, 300, seconds(10, 15), 49);
    mTrade->importDeal("80010001", "SZ002594", "d", 100.0, 200, seconds(10, 16), 48);
    mTrade->advance();
    EXPECT_EQ(mTrade->getStocks().count("SZ002594"), 1U);
    mTrade->importDeal("out", kShare, "not written yet", 9.88, 200, seconds(10, 17), 48);
    Keys told;
    mTrade->sigLinkageChanged.connect(
        [&](const std::vector<std::string> &keys) { told.insert(keys.begin(), keys.end()); });
    mTrade->clearImportData();
    EXPECT_EQ(orderCount("out"), 0U);
    mTrade->advance();
    EXPECT_EQ(told.count(kShare), 1U);
    EXPECT_EQ(stored(QStringLiteral("trade_orders")), 0);
    EXPECT_EQ(stored(QStringLiteral("trade_deals")), 0);
    EXPECT_EQ(mTrade->getAccountIds(2).size(), 2U);
    EXPECT_EQ(mTrade->getStocks().count("SZ002594"), 0U);
    EXPECT_EQ(dealStates(mDay, kShare), own);
    restart();
    EXPECT_EQ(orderCount("out"), 0U);
}

TEST_F(TradeImportTest, WhatCannotBeReadIsLeftOut) {
    constexpr double kInfinite = std::numeric_limits<double>::infinity();
    const auto both = [&](const std::string &account, const std::string &instrument, double price, int volume,
                          long long time, int direction) {
        mTrade->importOrder(account, instrument, "k", price, volume, time, direction);
        mTrade->importDeal(account, instrument, "k", price, volume, time, direction);
    };
    for (const double price : {0.0, -9.8, kInfinite, -kInfinite, std::nan(""), TC::kUnsetValue}) {
        both("bad", kShare, price, 100, seconds(10, 0), 48);
    }
    for (const long long time : {0LL, -1LL, 4294967295LL, std::numeric_limits<long long>::max(),
                                 std::numeric_limits<long long>::min(), 2147483647LL}) {
        both("bad", kShare, 9.8, 100, time, 48);
    }
    for (const int volume : {0, -100, std::numeric_limits<int>::min()}) {
        both("bad", kShare, 9.8, volume, seconds(10, 0), 48);
    }
    for (const int direction : {0, 1, 50, -48}) {
        both("bad", kShare, 9.8, 100, seconds(10, 0), direction);
    }
    both("", kShare, 9.8, 100, seconds(10, 0), 48);
    both("bad", "", 9.8, 100, seconds(10, 0), 48);
    tests::ExpectMessages told(QStringLiteral("import: 42 trade records are left out.*no instrument"));
    mTrade->advance();
    EXPECT_EQ(told.seen().size(), 1);
    EXPECT_EQ(mTrade->getAccountIds(2).size(), 2U);
    EXPECT_EQ(stored(QStringLiteral("trade_orders")), 0);
    EXPECT_EQ(stored(QStringLiteral("trade_deals")), 0);
}

TEST_F(TradeImportTest, InstrumentWithoutADetailIsTakenAndHarmless) {
    wantFigures();
    mTrade->importOrder("out", "ZZ9", "o", 9.87, 300, seconds(10, 15), 49);
    mTrade->importDeal("out", "ZZ9", "d", 9.87, 100, seconds(10, 15), 49);
    goTo(at(10, 30));
    EXPECT_EQ(flat(mTrade->getOrderDetails(mDay, "ZZ9", {"out"})).size(), 1U);
    EXPECT_EQ(mTrade->getOrderAmplitude({"ZZ9"}, {"out"}), 0.0); // no close to compare with
    const auto profits = mTrade->getTotalProfits({"ZZ9"}, {"out"}, {}, false);
    ASSERT_EQ(profits.size(), 1U);
    EXPECT_NEAR(profits.at(615), 0.0, 1e-9);
}

TEST_F(TradeImportTest, TextThatTheStoreWouldReadAsSqlIsText) {
    const std::string nasty = "'; DROP TABLE trade_deals; --\xE4\xB8\xAD";
    mTrade->importDeal(nasty, kShare, nasty, 9.87, 100, seconds(10, 15), 49);
    mTrade->advance();
    restart();
    const auto deals = flat(mTrade->getDealDetails(mDay, kShare, {nasty}));
    ASSERT_EQ(deals.size(), 1U);
    EXPECT_EQ(deals[0]->getKey(), nasty);
}

TEST_F(TradeImportTest, WhatCannotBeWrittenNowIsWrittenLater) {
    mTrade->advance();
    {
        tests::ExpectMessages told(QStringLiteral("another process holds the store"));
        QSqlDatabase other = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("other"));
        other.setDatabaseName(storePath());
        ASSERT_TRUE(other.open());
        QSqlQuery query(other);
        ASSERT_TRUE(query.exec(QStringLiteral("BEGIN IMMEDIATE")));
        mTrade->importDeal("out", kShare, "d", 9.87, 100, seconds(10, 15), 49);
        mTrade->advance(); // another writer holds the store
        EXPECT_EQ(dealCount("out"), 1U);
        EXPECT_EQ(stored(QStringLiteral("trade_deals")), 0);
        EXPECT_EQ(told.seen().size(), 1);
        query.exec(QStringLiteral("ROLLBACK"));
    }
    QSqlDatabase::removeDatabase(QStringLiteral("other"));
    mTrade->advance();
    EXPECT_EQ(stored(QStringLiteral("trade_deals")), 1);
}

TEST_F(TradeImportTest, TenThousandOrdersAreAnsweredQuickly) {
    for (int i = 0; i < 10000; ++i) {
        mTrade->importOrder("out", kShare, std::to_string(i), 9.5 + 0.0001 * (i % 5000), 100,
                            seconds(9, 31) + i % 14000, 48 + i % 2);
    }
    QElapsedTimer timer;
    timer.start();
    mTrade->advance();
    const double writing = static_cast<double>(timer.nsecsElapsed()) / 1e6;
    timer.start();
    constexpr int kTimes = 20;
    size_t found = 0;
    for (int i = 0; i < kTimes; ++i) {
        const Orders orders = mTrade->getOrderDetails(mDay, kShare, {"out"});
        found += orders.at("out").size();
    }
    const double asking = static_cast<double>(timer.nsecsElapsed()) / 1e6 / kTimes;
    timer.start();
    for (int i = 0; i < kTimes; ++i) {
        EXPECT_GT(mTrade->getOrderAmplitude({kShare}, {"out"}), 0.0);
    }
    const double spanning = static_cast<double>(timer.nsecsElapsed()) / 1e3 / kTimes;
    std::printf("10 000 orders: written in %.1f ms, asked for in %.2f ms, amplitude in %.1f us\n", writing,
                asking, spanning);
    EXPECT_EQ(found, 10000U * kTimes);
    EXPECT_LT(asking, 100.0);
}

TEST_F(TradeImportTest, RunningTheDayCostsLittle) {
    goTo(at(9, 30));
    QElapsedTimer timer;
    timer.start();
    int looks = 0;
    for (qint64 time = at(9, 30); time <= at(10, 0); time += 10000, ++looks) {
        mClock.setTime(time);
        mTrade->advance();
    }
    const double perSecond = static_cast<double>(timer.nsecsElapsed()) / 1e3 / (looks * 10.0);
    timer.start();
    restart();
    goTo(at(11, 30));
    const double start = static_cast<double>(timer.nsecsElapsed()) / 1e6;
    std::printf("%.1f us a market second; a start at 11:30 %.1f ms\n", perSecond, start);
    EXPECT_LT(perSecond, 1000.0);
}
