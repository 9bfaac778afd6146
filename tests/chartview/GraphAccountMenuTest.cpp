// The accounts in the menu of a graph.

#include "tests/chartview/GraphMenuFixture.h"

namespace {

class GraphAccountSlots : public tests::GraphMenuFixture {
protected:
    void SetUp() override {
        mHost.mLinkage.mEnabled = true;
        mHost.mLinkage.mAccountIds = {{1, {"f"}}, {2, {"a", "b"}}};
        showMain();
    }
    bool accountView() const { return (mUi->mLinkageFlags & 2) != 0; }
    const QString kMenu = QStringLiteral("显示交易数据/");
    const Events kTold{{3163, 0, 0, "", nullptr}};
};

TEST_F(GraphAccountSlots, AnAccountIsShownAndHidden) {
    EXPECT_EQ(choose(kMenu + "b"), kTold);
    EXPECT_EQ(mUi->mStockAccounts, QList<QString>{"b"});
    EXPECT_TRUE(accountView());
    EXPECT_EQ(choose(kMenu + "b"), kTold);
    EXPECT_TRUE(mUi->mStockAccounts.isEmpty());
    EXPECT_FALSE(accountView());
}

TEST_F(GraphAccountSlots, TheOtherKindOfAccountsKeepsTheViewOn) {
    mUi->mFutureAccounts = {"f"};
    mUi->mStockAccounts = {"a"};
    choose(kMenu + "a");
    EXPECT_TRUE(accountView());
}

TEST_F(GraphAccountSlots, AllAccountsAreShownAndHidden) {
    mUi->mStockAccounts = {"other", "b"};
    takeEvents();
    openMenu([&](QMenu &open) {
        QMenu &accounts = *tests::entryOf(open, QStringLiteral("显示交易数据"))->menu();
        accounts.actions().first()->trigger();
        EXPECT_EQ(tests::outline(accounts), QStringLiteral("+全选|-|+a|+b|-|显示详细交易数据"));
        EXPECT_EQ(mUi->mStockAccounts, (QList<QString>{"other", "b", "a"}));
        accounts.actions().first()->trigger(); // what all were when the menu was built still counts
        EXPECT_EQ(tests::outline(accounts), QStringLiteral("+全选|-|+a|+b|-|显示详细交易数据"));
    });
    EXPECT_EQ(takeEvents(), (Events{kTold[0], kTold[0]}));
    EXPECT_TRUE(accountView());
    openMenu([&](QMenu &open) {
        QMenu &accounts = *tests::entryOf(open, QStringLiteral("显示交易数据"))->menu();
        accounts.actions().first()->trigger();
        EXPECT_EQ(tests::outline(accounts), QStringLiteral("o全选|-|oa|ob|-|显示详细交易数据"));
    });
    EXPECT_EQ(mUi->mStockAccounts, QList<QString>{"other"});
    EXPECT_TRUE(accountView());
}

TEST_F(GraphAccountSlots, AccountsOfAFutureAreThoseOfFutures) {
    mDetail->mMarket = "SHFE";
    choose(kMenu + QStringLiteral("全选"));
    EXPECT_EQ(mUi->mFutureAccounts, QList<QString>{"f"});
    EXPECT_TRUE(mUi->mStockAccounts.isEmpty());
    choose(kMenu + QStringLiteral("全选"));
    EXPECT_TRUE(mUi->mFutureAccounts.isEmpty());
    EXPECT_FALSE(accountView());
    choose(kMenu + "f");
    EXPECT_EQ(mUi->mFutureAccounts, QList<QString>{"f"});
}

} // namespace
