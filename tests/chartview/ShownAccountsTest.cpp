#include "chartview/ShownAccounts.h"

#include "tests/chartview/ChartFixture.h"

using namespace TC;

namespace {

class ShownAccountsTest : public tests::ChartFixture {
protected:
    ShownAccountsTest() : mShown(*mUi) {
        mUi->mStockAccounts = {"s1"};
        mUi->mFutureAccounts = {"f1", "f2"};
    }
    ShownAccounts mShown;
};

TEST_F(ShownAccountsTest, ListIsThatOfTheInstrumentsKind) {
    EXPECT_EQ(mShown.list(), QList<QString>{"s1"});
    mDetail->mMarket = "SHFE";
    EXPECT_EQ(mShown.list(), (QList<QString>{"f1", "f2"}));
    mShown.list().append("f3");
    EXPECT_EQ(mUi->mFutureAccounts, (QList<QString>{"f1", "f2", "f3"}));
}

TEST_F(ShownAccountsTest, AccountsAreAskedForByTheKindOfTheInstrument) {
    mShown.offered();
    mDetail->mMarket = "CFFEX";
    mShown.offered();
    EXPECT_EQ(mHost.mLog.of("CLinkageManager::getAccountIds"),
              (QStringList{"CLinkageManager::getAccountIds 2", "CLinkageManager::getAccountIds 1"}));
}

TEST_F(ShownAccountsTest, AnAccountOfEitherKindIsListed) {
    EXPECT_TRUE(mShown.isListed("s1"));
    EXPECT_TRUE(mShown.isListed("f2"));
    EXPECT_FALSE(mShown.isListed("f"));
}

TEST_F(ShownAccountsTest, AccountViewIsOnAsLongAsEitherListHasOne) {
    mUi->mLinkageFlags = 1 | 4;
    mShown.switchView();
    EXPECT_EQ(mUi->mLinkageFlags, 1 | 2 | 4);
    mUi->mStockAccounts.clear();
    mShown.switchView();
    EXPECT_EQ(mUi->mLinkageFlags, 1 | 2 | 4);
    mUi->mFutureAccounts.clear();
    mShown.switchView();
    EXPECT_EQ(mUi->mLinkageFlags, 1 | 4);
}

} // namespace
