// The settings dialog beside a trade service that tells its changes on threads of its own.

#include "tests/linkage/SettingDialogFixture.h"

#include <atomic>
#include <thread>

namespace {

class SettingDialogThreadTest : public tests::SettingDialogFixture {};

TEST_F(SettingDialogThreadTest, DialogsComeAndGoWhileTheServiceTells) {
    fillService();
    std::atomic<bool> done{false};
    std::vector<std::thread> tellers;
    for (int i = 0; i < 2; ++i) {
        tellers.emplace_back([this, &done] {
            while (!done) {
                mHost.mLinkage.sigAccountsChanged();
                mHost.mLinkage.sigStrategysChanged();
                mHost.mLinkage.sigStocksChanged();
                mHost.mLinkage.sigDatasChanged();
                mHost.mLinkage.sigNewTradingDay("20240318");
            }
        });
    }
    for (int i = 0; i < 50; ++i) {
        makeDialog();
        mDialog->slotTimeout();
        EXPECT_EQ(table(0)->rowCount(), 2);
        mDialog->slotTimeout();
    }
    done = true;
    for (std::thread &teller : tellers) {
        teller.join();
    }
    mKeeper->mEvents.clear();
    mDialog->slotTimeout();
    mHost.mLinkage.sigDatasChanged();
    mDialog->slotTimeout();
    EXPECT_FALSE(mKeeper->of(3163).empty()) << "it still hears";
}

} // namespace
