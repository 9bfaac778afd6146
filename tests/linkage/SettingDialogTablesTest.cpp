// The settings dialog follows the trade service: its rows, what is chosen of them, and what it tells.

#include "tests/linkage/SettingDialogFixture.h"

#include "host/toolkit/Events.h"

#include <thread>

using namespace TC;

namespace {

constexpr int kAccounts = 0;
constexpr int kStrategies = 1;
constexpr int kStocks = 2;

class SettingDialogTablesTest : public tests::SettingDialogFixture {
protected:
    CLinkageManager &service() { return mHost.mLinkage; }
    std::vector<int> tick() {
        mDialog->slotTimeout();
        return events();
    }
    QList<bool> checked(int tableId) const {
        QList<bool> found;
        for (int row = 0; row < table(tableId)->rowCount(); ++row) {
            found.append(rowBox(tableId, row)->isChecked());
        }
        return found;
    }
};

} // namespace

// The poll

TEST_F(SettingDialogTablesTest, TablesFillBeforeTheDialogIsShownAndNothingIsTold) {
    fillService();
    EXPECT_EQ(tick(), std::vector<int>{eLinkageDatasChanged}) << "the data alone, which are new at the start";
    EXPECT_EQ(table(kAccounts)->rowCount(), 2);
    EXPECT_EQ(texts(kAccounts, 0), (Names{"a1", "股票账号"}));
    EXPECT_EQ(texts(kAccounts, 1), (Names{"a2", "期货账号"}));
    EXPECT_EQ(texts(kStrategies, 0), Names("s1"));
    EXPECT_EQ(texts(kStrategies, 1), Names("s2"));
    EXPECT_EQ(texts(kStocks, 0), (Names{"SH", "600000", "600000"}));
    EXPECT_EQ(texts(kStocks, 1), (Names{"SZ", "000001", "平安银行"}));
    for (const int id : {kAccounts, kStrategies, kStocks}) {
        for (int row = 0; row < 2; ++row) {
            EXPECT_EQ(rowBox(id, row)->id(), row);
            EXPECT_EQ(rowBox(id, row)->text(), QString());
            EXPECT_EQ(rowBox(id, row)->objectName(),
                      (Names{"account_table", "strategy_table", "stock_table"}[id]));
        }
    }
    EXPECT_TRUE(tick().empty()) << "nothing is new any more";
}

TEST_F(SettingDialogTablesTest, NewAccountsAreChosenAndOthersAreNot) {
    fillService();
    tick();
    EXPECT_EQ(checked(kAccounts), (QList<bool>{true, true}));
    EXPECT_EQ(checked(kStrategies), (QList<bool>{false, false}));
    EXPECT_EQ(checked(kStocks), (QList<bool>{false, false}));
    EXPECT_EQ(mDialog->getAccounts(), (Keys{"a1", "a2"}));
    EXPECT_TRUE(mDialog->getStrategys().empty());
    EXPECT_TRUE(mDialog->getStocks().empty());
}

TEST_F(SettingDialogTablesTest, AccountThatComesWhileItIsOpenIsToldAndTheDataLater) {
    showFilled();
    addAccount("a3", "");
    service().sigAccountsChanged();
    service().sigDatasChanged();
    EXPECT_EQ(tick(), std::vector<int>{eLinkageChosen});
    EXPECT_EQ(mDialog->getAccounts().count("a3"), 1u);
    EXPECT_EQ(tick(), std::vector<int>{eLinkageDatasChanged}) << "put off to this turn";
    EXPECT_TRUE(tick().empty());
}

TEST_F(SettingDialogTablesTest, AccountThatComesWhileItIsClosedIsThereWhenItOpens) {
    tick();
    addAccount("a1", "");
    service().sigAccountsChanged();
    EXPECT_TRUE(tick().empty());
    EXPECT_TRUE(tick().empty());
    show();
    EXPECT_EQ(table(kAccounts)->rowCount(), 1);
    EXPECT_EQ(mDialog->getAccounts(), Keys{"a1"});
    EXPECT_TRUE(tick().empty()) << "the change was taken";
}

TEST_F(SettingDialogTablesTest, KnownAccountsAgainLeaveTheChoiceAlone) {
    showFilled();
    click(rowBox(kAccounts, 0));
    EXPECT_EQ(events(), std::vector<int>{eLinkageChosen});
    EXPECT_EQ(mDialog->getAccounts(), Keys{"a2"});
    service().sigAccountsChanged();
    EXPECT_TRUE(tick().empty());
    EXPECT_FALSE(mDialog->updateAccounts());
    EXPECT_EQ(mDialog->getAccounts(), Keys{"a2"});
    EXPECT_EQ(checked(kAccounts), (QList<bool>{false, true}));
}

TEST_F(SettingDialogTablesTest, EmptyListsAndNullAccountsAddNothing) {
    show();
    EXPECT_FALSE(mDialog->updateAccounts());
    mHost.mLinkage.mAccounts.push_back(nullptr);
    addAccount("a1", "");
    mHost.mLinkage.mAccounts.push_back(nullptr);
    EXPECT_TRUE(mDialog->updateAccounts());
    EXPECT_EQ(table(kAccounts)->rowCount(), 1);
    EXPECT_FALSE(mDialog->updateStrategys());
    EXPECT_FALSE(mDialog->updateStocks());
}

TEST_F(SettingDialogTablesTest, TwoAccountsOfOneKeyAreOneRow) {
    addAccount("a1", "first");
    addAccount("a1", "second");
    tick();
    EXPECT_EQ(table(kAccounts)->rowCount(), 1);
    EXPECT_EQ(texts(kAccounts, 0), (Names{"a1", "first"}));
}

TEST_F(SettingDialogTablesTest, WhatVanishesStaysInTheTables) {
    showFilled();
    event(67, 1, 1, "stock_table");
    mHost.mLinkage.mAccounts.clear();
    mHost.mLinkage.mStrategys.clear();
    mHost.mLinkage.mStocks.clear();
    service().sigAccountsChanged();
    service().sigStrategysChanged();
    service().sigStocksChanged();
    forget();
    EXPECT_TRUE(tick().empty());
    for (const int id : {kAccounts, kStrategies, kStocks}) {
        EXPECT_EQ(table(id)->rowCount(), 2) << id;
    }
    EXPECT_EQ(mDialog->getAccounts(), (Keys{"a1", "a2"}));
    EXPECT_EQ(mDialog->getStocks(), Keys{"SZ000001"});
}

TEST_F(SettingDialogTablesTest, ReturnOfAKnownNameIsNoNewRow) {
    showFilled();
    mHost.mLinkage.mStrategys = {"s0", "s2"};
    service().sigStrategysChanged();
    EXPECT_TRUE(tick().empty()) << "a row that starts unchecked changes no choice";
    EXPECT_EQ(table(kStrategies)->rowCount(), 3);
    EXPECT_EQ(texts(kStrategies, 2), Names("s0")) << "rows are added at the end";
}

TEST_F(SettingDialogTablesTest, InstrumentWithoutARecordIsAskedForAgainWhenTheServiceTells) {
    showFilled();
    mHost.mLinkage.mStocks.insert("SZ000002");
    service().sigStocksChanged();
    tick();
    EXPECT_EQ(table(kStocks)->rowCount(), 2);
    mHost.mStocks.add("SZ", "000002");
    tick();
    EXPECT_EQ(table(kStocks)->rowCount(), 2) << "not before";
    service().sigStocksChanged();
    tick();
    EXPECT_EQ(table(kStocks)->rowCount(), 3);
    EXPECT_EQ(texts(kStocks, 2), (Names{"SZ", "000002", "000002"}));
}

TEST_F(SettingDialogTablesTest, DataAloneAreToldHoweverOftenTheyChangeOnceATurn) {
    showFilled();
    for (int i = 0; i < 1000; ++i) {
        service().sigDatasChanged();
    }
    EXPECT_EQ(tick(), std::vector<int>{eLinkageDatasChanged});
    EXPECT_TRUE(tick().empty());
}

TEST_F(SettingDialogTablesTest, SignalsOfAnotherThreadAreTaken) {
    showFilled();
    addAccount("a3", "");
    std::thread([this] {
        service().sigAccountsChanged();
        service().sigStrategysChanged();
        service().sigStocksChanged();
        service().sigDatasChanged();
        service().sigNewTradingDay("20240318");
    }).join();
    EXPECT_TRUE(events().empty()) << "only the poll tells";
    EXPECT_EQ(tick(), std::vector<int>{eLinkageChosen});
}

TEST_F(SettingDialogTablesTest, NewTradingDayLeavesEverythingAsItIs) {
    showFilled();
    click(rowBox(kStocks, 0));
    forget();
    service().sigNewTradingDay("20240318");
    EXPECT_TRUE(tick().empty());
    EXPECT_EQ(table(kStocks)->rowCount(), 2);
    EXPECT_EQ(mDialog->getStocks(), Keys{"SH600000"});
    EXPECT_TRUE(calls().isEmpty());
}

TEST_F(SettingDialogTablesTest, GoneItHearsNothing) {
    showFilled();
    mDialog.reset();
    service().sigAccountsChanged();
    service().sigDatasChanged();
    service().sigNewTradingDay("20240318");
    EXPECT_TRUE(service().sigAccountsChanged.empty());
    EXPECT_TRUE(service().sigStrategysChanged.empty());
    EXPECT_TRUE(service().sigStocksChanged.empty());
    EXPECT_TRUE(service().sigDatasChanged.empty());
    EXPECT_TRUE(service().sigNewTradingDay.empty());
}

// Choosing

TEST_F(SettingDialogTablesTest, RowsAreChosenByTheirBoxes) {
    showFilled();
    click(rowBox(kStocks, 1));
    EXPECT_EQ(mDialog->getStocks(), Keys{"SZ000001"});
    EXPECT_EQ(events(), std::vector<int>{eLinkageChosen});
    click(rowBox(kStocks, 1));
    EXPECT_TRUE(mDialog->getStocks().empty());
    EXPECT_EQ(events(), std::vector<int>{eLinkageChosen});
    click(radio(19));
    events();
    click(rowBox(kStrategies, 0));
    EXPECT_EQ(mDialog->getStrategys(), Keys{"s1"});
    EXPECT_EQ(events(), std::vector<int>{eLinkageChosen});
    click(rowBox(kAccounts, 1));
    EXPECT_EQ(mDialog->getAccounts(), Keys{"a1"});
    EXPECT_EQ(events(), std::vector<int>{eLinkageChosen});
}

TEST_F(SettingDialogTablesTest, TextOfTheEventTellsTheTableBeforeItsNumberIsLookedAt) {
    showFilled();
    for (int i = 0; i < 12; ++i) {
        addAccount("b" + std::to_string(i), "");
    }
    mDialog->updateAccounts();
    forget();
    EXPECT_TRUE(event(67, 3, 0, "account_table")) << "row 3, and not the kind with that number";
    EXPECT_EQ(mDialog->getAccounts().count("b1"), 0u);
    EXPECT_FALSE(mDialog->showFlags()[0]);
    EXPECT_TRUE(event(67, 8, 0, "account_table"));
    EXPECT_TRUE(calls().isEmpty());
}

TEST_F(SettingDialogTablesTest, RowWithoutAKeyIsToldAndChangesNothing) {
    showFilled();
    const Keys accounts = mDialog->getAccounts();
    mDialog->selectAccount(7, false);
    mDialog->selectAccount(-1, true);
    mDialog->selectStock(7, true);
    mDialog->selectStrategy(7, true);
    EXPECT_EQ(events(), (std::vector<int>{eLinkageChosen, eLinkageChosen, eLinkageChosen, eLinkageChosen}));
    EXPECT_EQ(mDialog->getAccounts(), accounts);
    EXPECT_TRUE(mDialog->getStocks().empty());
    EXPECT_TRUE(mDialog->getStrategys().empty());
}

TEST_F(SettingDialogTablesTest, ChoosingInAClosedDialogIsNotTold) {
    fillService();
    tick();
    mDialog->selectStock(0, true);
    EXPECT_EQ(mDialog->getStocks(), Keys{"SH600000"});
    mDialog->selectAllStrategy();
    mDialog->selectRevertStrategy();
    mDialog->selectAllStrategy();
    mDialog->selectAllStock();
    EXPECT_EQ(mDialog->getStocks(), (Keys{"SH600000", "SZ000001"}));
    EXPECT_EQ(mDialog->getStrategys(), (Keys{"s1", "s2"}));
    EXPECT_TRUE(events().empty());
}

TEST_F(SettingDialogTablesTest, AllAreChosenAtOnceAndToldOnce) {
    showFilled();
    click(button(14));
    EXPECT_EQ(mDialog->getStocks(), (Keys{"SH600000", "SZ000001"}));
    EXPECT_EQ(checked(kStocks), (QList<bool>{true, true}));
    EXPECT_EQ(events(), std::vector<int>{eLinkageChosen});
    click(button(14));
    EXPECT_TRUE(events().empty()) << "all were chosen";
    click(radio(19));
    events();
    click(button(16));
    EXPECT_EQ(mDialog->getStrategys(), (Keys{"s1", "s2"}));
    EXPECT_EQ(events(), std::vector<int>{eLinkageChosen});
    click(button(16));
    EXPECT_TRUE(events().empty());
}

TEST_F(SettingDialogTablesTest, InvertingFlipsEveryRow) {
    showFilled();
    click(rowBox(kStocks, 0));
    events();
    click(button(15));
    EXPECT_EQ(mDialog->getStocks(), Keys{"SZ000001"});
    EXPECT_EQ(checked(kStocks), (QList<bool>{false, true}));
    EXPECT_EQ(events(), std::vector<int>{eLinkageChosen});
    click(radio(19));
    events();
    click(button(17));
    EXPECT_EQ(mDialog->getStrategys(), (Keys{"s1", "s2"}));
    EXPECT_EQ(events(), std::vector<int>{eLinkageChosen});
    click(button(17));
    EXPECT_TRUE(mDialog->getStrategys().empty());
}

TEST_F(SettingDialogTablesTest, InvertingAnEmptyTableIsToldAndChoosingAllOfItIsNot) {
    show();
    forget();
    mDialog->selectRevertStock();
    EXPECT_EQ(events(), std::vector<int>{eLinkageChosen});
    mDialog->selectRevertStrategy();
    EXPECT_EQ(events(), std::vector<int>{eLinkageChosen});
    mDialog->selectAllStock();
    mDialog->selectAllStrategy();
    EXPECT_TRUE(events().empty());
}

TEST_F(SettingDialogTablesTest, ChosenAutomaticallyAllAreChosenAtOnceAndNewRowsAsWell) {
    showFilled();
    click(box(10));
    EXPECT_EQ(mDialog->getStocks(), (Keys{"SH600000", "SZ000001"}));
    EXPECT_EQ(events(), std::vector<int>{eLinkageChosen});
    mHost.mStocks.add("SZ", "000002");
    mHost.mLinkage.mStocks.insert("SZ000002");
    service().sigStocksChanged();
    EXPECT_EQ(tick(), std::vector<int>{eLinkageChosen});
    EXPECT_EQ(mDialog->getStocks(), (Keys{"SH600000", "SZ000001", "SZ000002"}));
    click(box(10));
    EXPECT_TRUE(events().empty()) << "unchecked, it leaves the choice";
    EXPECT_EQ(mDialog->getStocks().size(), 3u);
    mHost.mStocks.add("SZ", "000003");
    mHost.mLinkage.mStocks.insert("SZ000003");
    service().sigStocksChanged();
    EXPECT_TRUE(tick().empty());
    EXPECT_EQ(checked(kStocks), (QList<bool>{true, true, true, false}));
    EXPECT_EQ(mDialog->getStocks().size(), 3u);
}

TEST_F(SettingDialogTablesTest, StrategiesAreChosenAutomaticallyAsWell) {
    showFilled();
    click(radio(19));
    events();
    click(box(11));
    EXPECT_EQ(mDialog->getStrategys(), (Keys{"s1", "s2"}));
    EXPECT_EQ(events(), std::vector<int>{eLinkageChosen});
    mHost.mLinkage.mStrategys.insert("s3");
    service().sigStrategysChanged();
    EXPECT_EQ(tick(), std::vector<int>{eLinkageChosen});
    EXPECT_EQ(mDialog->getStrategys(), (Keys{"s1", "s2", "s3"}));
    click(box(11));
    EXPECT_TRUE(events().empty());
    mHost.mLinkage.mStrategys.insert("s4");
    service().sigStrategysChanged();
    EXPECT_TRUE(tick().empty());
    EXPECT_EQ(mDialog->getStrategys(), (Keys{"s1", "s2", "s3"}));
}

TEST_F(SettingDialogTablesTest, NamesInUtf8AreShownAsText) {
    mHost.mLinkage.mStrategys = {"网格策略"};
    tick();
    EXPECT_EQ(texts(kStrategies, 0), Names("网格策略"));
    mDialog->selectAllStrategy();
    EXPECT_EQ(mDialog->getStrategys(), Keys{"网格策略"});
}
