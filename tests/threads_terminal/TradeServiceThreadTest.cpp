#include "tests/terminal/TradeFixture.h"

#include <atomic>
#include <set>
#include <thread>

using namespace terminal;

namespace {

class TradeServiceThreads : public TradeFixture {
protected:
    /// Everything that a chart and its dialogs ask for; answers how many records were wrong.
    int askAll(const std::string &instrument) {
        int wrong = 0;
        for (const auto &order : flat(mTrade->getOrderDetails(mDay, instrument, kAllAccounts))) {
            wrong += order->mTradedVolume > order->mVolume;
        }
        for (const auto &deal : flat(mTrade->getDealDetails(mDay, instrument, kAllAccounts))) {
            wrong += deal->mVolume <= 0;
        }
        for (const auto &task : flat(mTrade->getTaskDetails(instrument, kAllAccounts))) {
            long long quantity = 0;
            for (const auto &item : task->mItems) {
                quantity += item->mMarket + item->mCode == instrument ? item->mQuantity : 0;
            }
            wrong += mTrade->getTaskItemFinishNumber(task, instrument) > quantity;
        }
        for (const auto &total : mTrade->getTotalBuySellAmounts({instrument}, kAllAccounts, {}, false)) {
            wrong += total.second.first < 0.0 || total.second.second < 0.0;
        }
        mTrade->getTotalProfits({instrument}, kAllAccounts, mTrade->getStrategys(), true);
        mTrade->getTotalBalances(mTrade->getStocks(), kAllAccounts, {}, false);
        wrong += mTrade->getOrderAmplitude({instrument}, kAllAccounts) < 0.0;
        wrong += mTrade->getDealAmplitude({instrument}, kAllAccounts) < 0.0;
        Keys accounts;
        wrong += !mTrade->getAccounts({QStringLiteral("80010001")}, accounts);
        return wrong;
    }
};

TEST_F(TradeServiceThreads, FourThreadsAskWhileTheExchangeTradesAtTheFastestPace) {
    std::atomic<int> told{0};
    std::atomic<int> wrong{0};
    std::mutex lock;
    std::set<std::thread::id> tellers;
    const auto hear = [&](const std::vector<std::string> &instruments) {
        wrong += askAll(instruments.front()); // who hears may ask back
        const std::lock_guard<std::mutex> hold(lock);
        tellers.insert(std::this_thread::get_id());
        ++told;
    };
    mTrade->sigLinkageChanged.connect(hear);
    mTrade->sigTaskChanged.connect(hear);
    wantFigures();
    mClock.setTime(at(9, 31));
    mClock.setPace(600.0);
    mClock.resume();
    mExchange.start();
    mTrade->start();
    std::vector<std::thread> askers;
    for (int i = 0; i < 4; ++i) {
        askers.emplace_back([&, i] {
            const std::string account = "X" + std::to_string(i);
            const std::string instrument = i % 2 ? kShare : "SHFEAU2612";
            for (int n = 0; mClock.now() < at(11, 30); ++n) {
                wrong += askAll(instrument);
                mTrade->importDeal(account, instrument, "k", 10.0, 100, at(9, 31) / 1000, 48);
                if (n % 8 == 7) {
                    mTrade->clearImportData();
                }
                for (const auto &task : flat(mTrade->getTaskDetails(instrument, kAllAccounts))) {
                    mTrade->cancelTask(task->mTaskId, QStringLiteral("test"));
                }
            }
        });
    }
    for (std::thread &asker : askers) {
        asker.join();
    }
    mTrade->stop();
    mExchange.stop();
    EXPECT_EQ(wrong, 0);
    EXPECT_GT(told, 3);
    EXPECT_EQ(tellers.size(), 1U);
    EXPECT_EQ(tellers.count(std::this_thread::get_id()), 0U);
    EXPECT_FALSE(mTrade->getDealDetails(mDay, kShare, kAllAccounts).empty());
}

} // namespace
