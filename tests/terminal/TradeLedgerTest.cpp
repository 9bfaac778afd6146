#include "terminal/trade/TradeLedger.h"

#include "tests/support/MessageGuard.h"
#include "tests/terminal/Samples.h"
#include "tests/terminal/StoreFixture.h"

#include <QSqlError>
#include <QSqlQuery>

using namespace terminal;
using tests::kToday;

namespace {

const TradeAccount kAccount{"a1", "Account", TC::CLinkageManager::kStockAccounts, TradeSource::Own};

TradeOrder ledgerOrder(const char *key, const char *instrument = "SH600000") {
    TradeOrder made;
    made.account = kAccount.id;
    made.key = key;
    made.instrument = instrument;
    made.day = kToday;
    made.time = kToday * 1000LL + 36000000;
    made.price = 10.0;
    made.volume = 100;
    made.strategy = "grid";
    return made;
}

class TradeLedgerTest : public StoreFixture {
protected:
    void SetUp() override {
        openStore();
        mLedger = std::make_unique<TradeLedger>(mStore);
        mLedger->addAccount(kAccount);
    }
    size_t orders(int day = kToday) {
        size_t count = 0;
        mLedger->withDay(day, [&](const TradeBook &book) {
            for (const auto &account : book.orders("SH600000", {kAccount.id})) {
                count += account.second.size();
            }
        });
        return count;
    }
    /// Another ledger over the same store.
    void restart() { mLedger = std::make_unique<TradeLedger>(mStore); }

    /// Makes readings of orders fail until showOrders().
    void hideOrders() { run("ALTER TABLE trade_orders RENAME TO elsewhere"); }
    void showOrders() { run("ALTER TABLE elsewhere RENAME TO trade_orders"); }
    void run(const char *statement) {
        QSqlQuery query(mStore.connection());
        ASSERT_TRUE(query.exec(QString::fromLatin1(statement))) << qPrintable(query.lastError().text());
    }

    std::unique_ptr<TradeLedger> mLedger;
};

} // namespace

TEST_F(TradeLedgerTest, AChangeIsKnownAndSignalledAtOnceAndWrittenLater) {
    mLedger->enter(kToday, {{ledgerOrder("1")}, {}, {}});
    EXPECT_EQ(orders(), 1u);
    const TradeNotices notices = mLedger->takeNotices();
    EXPECT_EQ(notices.linkage, TradeLedger::Keys({"SH600000"}));
    EXPECT_TRUE(notices.strategies);
    EXPECT_TRUE(notices.stocks);
    EXPECT_TRUE(mLedger->takeNotices().linkage.empty()) << "told once";
    restart();
    EXPECT_EQ(orders(), 0u) << "it was not written";
}

TEST_F(TradeLedgerTest, WhatIsWrittenIsThereAfterARestart) {
    mLedger->enter(kToday, {{ledgerOrder("1"), ledgerOrder("2")}, {}, {}});
    mLedger->finishDay(kAccount.id, kToday);
    mLedger->write();
    restart();
    EXPECT_EQ(orders(), 2u);
    EXPECT_EQ(mLedger->strategies(), TradeLedger::Keys({"grid"}));
    EXPECT_EQ(mLedger->stocks(), TradeLedger::Keys({"SH600000"}));
    EXPECT_EQ(mLedger->finishedDays(kAccount.id), std::set<int>({kToday}));
    EXPECT_EQ(mLedger->daysFrom(kAccount.id, kToday), std::set<int>({kToday}));
}

TEST_F(TradeLedgerTest, AnOldStrategyIsNoNewOne) {
    mLedger->enter(kToday, {{ledgerOrder("1")}, {}, {}});
    mLedger->takeNotices();
    mLedger->enter(kToday, {{ledgerOrder("2")}, {}, {}});
    const TradeNotices notices = mLedger->takeNotices();
    EXPECT_FALSE(notices.strategies);
    EXPECT_FALSE(notices.stocks);
    EXPECT_TRUE(notices.datas);
}

TEST_F(TradeLedgerTest, AForgottenDayIsForgottenInTheStoreToo) {
    mLedger->enter(kToday, {{ledgerOrder("1")}, {}, {}});
    mLedger->write();
    mLedger->forgetDay(kAccount.id, kToday);
    EXPECT_EQ(orders(), 0u);
    mLedger->write();
    restart();
    EXPECT_EQ(orders(), 0u);
}

TEST_F(TradeLedgerTest, AnImportBringsItsAccountOnce) {
    TradeOrder imported = ledgerOrder("i");
    imported.account = "b2";
    imported.source = TradeSource::Imported;
    const TradeAccount account{"b2", "b2", TC::CLinkageManager::kStockAccounts, TradeSource::Imported};
    mLedger->import(imported, account);
    EXPECT_TRUE(mLedger->takeNotices().accounts);
    EXPECT_EQ(mLedger->accounts().size(), 2u);
    mLedger->import(imported, account);
    EXPECT_FALSE(mLedger->takeNotices().accounts);
    mLedger->forgetImports();
    EXPECT_EQ(mLedger->accounts().size(), 1u);
    EXPECT_TRUE(mLedger->takeNotices().accounts);
}

TEST_F(TradeLedgerTest, ADayWithoutRecordsIsNotShown) {
    bool called = false;
    mLedger->withDay(kToday, [&](const TradeBook &) { called = true; });
    EXPECT_FALSE(called);
}

TEST_F(TradeLedgerTest, ADayWithoutRecordsIsReadOnce) {
    EXPECT_EQ(orders(), 0u);
    EXPECT_EQ(mLedger->daysInMemory(), 1u);
    TradeLedger other(mStore); // writes behind its back what a second reading would find
    other.addAccount(kAccount);
    other.enter(kToday, {{ledgerOrder("1")}, {}, {}});
    other.write();
    EXPECT_EQ(orders(), 0u);
}

TEST_F(TradeLedgerTest, AReadingThatFailsIsNotKeptAsADayWithoutRecords) {
    mLedger->enter(kToday, {{ledgerOrder("1")}, {}, {}});
    mLedger->write();
    restart();
    hideOrders();
    const tests::ExpectMessages told("no such table: trade_orders");
    EXPECT_EQ(orders(), 0u);
    EXPECT_EQ(orders(), 0u);
    EXPECT_EQ(mLedger->daysInMemory(), 0u);
    EXPECT_EQ(told.seen().size(), 1) << "told once";
    showOrders();
    EXPECT_EQ(orders(), 1u);
}

TEST_F(TradeLedgerTest, AChangeOfADayThatCannotBeReadHidesNothingOfItForLong) {
    mLedger->enter(kToday, {{ledgerOrder("1")}, {}, {}});
    mLedger->write();
    restart();
    hideOrders();
    const tests::ExpectMessages told("no such table: trade_orders");
    mLedger->enter(kToday, {{ledgerOrder("2")}, {}, {}});
    showOrders();
    mLedger->write();
    EXPECT_EQ(orders(), 2u);
    restart();
    EXPECT_EQ(orders(), 2u);
}

TEST_F(TradeLedgerTest, ADayThatWasReadAheadIsNotReadAgain) {
    mLedger->enter(kToday, {{ledgerOrder("1")}, {}, {}});
    mLedger->write();
    restart();
    EXPECT_EQ(mLedger->daysInMemory(), 0u);
    mLedger->readAhead(kToday);
    EXPECT_EQ(mLedger->daysInMemory(), 1u);
    hideOrders();
    EXPECT_EQ(orders(), 1u);
}

TEST_F(TradeLedgerTest, WhatATaskHasFilledIsCountedByInstrument) {
    TradeTask task;
    task.id = 7;
    task.account = kAccount.id;
    task.day = kToday;
    TradeTaskItem item;
    item.market = "SH";
    item.code = "600000";
    item.quantity = 500;
    item.finished = 200;
    task.items = {item, item};
    mLedger->enter(kToday, {{}, {}, {task}});
    EXPECT_EQ(mLedger->finishedOf(7, "SH600000"), 400);
    EXPECT_EQ(mLedger->finishedOf(7, "SZ000001"), 0);
    EXPECT_EQ(mLedger->finishedOf(8, "SH600000"), 0);
    EXPECT_EQ(mLedger->takeNotices().tasks, TradeLedger::Keys({"SH600000"}));
}

TEST_F(TradeLedgerTest, DaysThatAreNotUsedGoFromMemoryAndComeBackFromTheStore) {
    constexpr int kDay = 86400;
    constexpr int kDays = 3 * static_cast<int>(TradeBooks::kMost);
    for (int day = 0; day < kDays; ++day) {
        mLedger->enter(kToday - day * kDay, {{ledgerOrder("1")}, {}, {}});
    }
    EXPECT_EQ(mLedger->daysInMemory(), static_cast<size_t>(kDays)) << "the store does not have them yet";
    mLedger->write();
    EXPECT_EQ(mLedger->daysInMemory(), TradeBooks::kMost);
}

TEST_F(TradeLedgerTest, ADayThatWentIsReadAsItWasWritten) {
    constexpr int kDay = 86400;
    for (int day = 0; day < 40; ++day) {
        TradeOrder order = ledgerOrder(std::to_string(day).c_str());
        order.day = kToday - day * kDay;
        mLedger->enter(order.day, {{order}, {}, {}});
    }
    mLedger->write();
    for (int day = 0; day < 40; ++day) {
        EXPECT_EQ(orders(kToday - day * kDay), 1u) << day;
    }
    EXPECT_LE(mLedger->daysInMemory(), TradeBooks::kMost);
}

TEST_F(TradeLedgerTest, ImportsThatAreForgottenAreGoneBeforeThatIsWritten) {
    const TradeAccount imported{"i1", "Imported", TC::CLinkageManager::kStockAccounts, TradeSource::Imported};
    TradeOrder order = ledgerOrder("1");
    order.account = imported.id;
    order.source = TradeSource::Imported;
    mLedger->import(order, imported);
    mLedger->write();
    restart(); // nothing of the day is in memory
    mLedger->forgetImports();
    size_t left = 0;
    const auto count = [&](const TradeBook &book) {
        for (const auto &account : book.orders("SH600000", {imported.id})) {
            left += account.second.size();
        }
    };
    mLedger->withDay(kToday, count);
    EXPECT_EQ(left, 0u);
    EXPECT_EQ(mLedger->takeNotices().linkage, TradeLedger::Keys({"SH600000"}));
    mLedger->write();
    mLedger->withDay(kToday, count);
    EXPECT_EQ(left, 0u);
}
