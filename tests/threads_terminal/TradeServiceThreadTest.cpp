#include "terminal/app/TradeWatch.h"
#include "tests/terminal/TradeFixture.h"

#include <QCoreApplication>

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
    /// The exchange and the service run at the fastest pace from the opening on.
    void runFast() {
        mClock.setTime(at(9, 31));
        mClock.setPace(600.0);
        mClock.resume();
        mTrade->start();
    }
    /// Connects a slot to every signal of the service; the connections end with what is answered.
    template <class Slot> std::vector<boost::signals2::scoped_connection> hearAll(Slot slot) {
        std::vector<boost::signals2::scoped_connection> all;
        all.emplace_back(mTrade->sigLinkageChanged.connect([slot](const auto &) { slot(); }));
        all.emplace_back(mTrade->sigTaskChanged.connect([slot](const auto &) { slot(); }));
        all.emplace_back(mTrade->sigAccountsChanged.connect([slot] { slot(); }));
        all.emplace_back(mTrade->sigStrategysChanged.connect([slot] { slot(); }));
        all.emplace_back(mTrade->sigStocksChanged.connect([slot] { slot(); }));
        all.emplace_back(mTrade->sigDatasChanged.connect([slot] { slot(); }));
        all.emplace_back(mTrade->sigNewTradingDay.connect([slot](const auto &) { slot(); }));
        return all;
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
    mExchange.start();
    runFast();
    std::vector<std::thread> askers;
    for (int i = 0; i < 4; ++i) {
        askers.emplace_back([&, i] {
            const std::string account = "X" + std::to_string(i);
            const std::string instrument = i % 2 ? kShare : "SHFEAU2612";
            for (int n = 0; mClock.now() < at(10, 30); ++n) {
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

TEST_F(TradeServiceThreads, ListenersComeAndGoWhileSignalsFly) {
    std::atomic<int> told{0};
    std::atomic<int> changes{0};
    runFast();
    std::vector<std::thread> listeners;
    for (int i = 0; i < 3; ++i) {
        listeners.emplace_back([&, i] {
            for (int n = 0; mClock.now() < at(10, 0); ++n, ++changes) {
                const auto heard = std::make_shared<int>(0); // as long as a slot can run
                const auto connections = hearAll([heard, &told] {
                    EXPECT_GE(*heard, 0);
                    ++told;
                });
                mTrade->importDeal("X" + std::to_string(i), kShare, std::to_string(n), 10.0, 100,
                                   at(9, 31) / 1000, 48);
            }
        });
    }
    for (std::thread &listener : listeners) {
        listener.join();
    }
    mTrade->stop();
    EXPECT_GT(told, 0);
    EXPECT_GT(changes, 10);
    EXPECT_TRUE(mTrade->sigLinkageChanged.empty());
    EXPECT_TRUE(mTrade->sigDatasChanged.empty());
}

TEST_F(TradeServiceThreads, AServiceThatGoesWhileItTellsIsSilentAfterwards) {
    for (int round = 0; round < 3; ++round) {
        std::atomic<int> told{0};
        restart();
        mTrade->sigLinkageChanged.connect([&](const std::vector<std::string> &) { ++told; });
        runFast();
        int n = 0;
        do {
            mTrade->importDeal("X", kShare, std::to_string(++n), 10.0, 100, at(9, 31) / 1000, 48);
            std::this_thread::sleep_for(std::chrono::milliseconds(1)); // and not thousands of deals
        } while (told == 0);
        mTrade.reset();
        const int atTheEnd = told;
        EXPECT_GT(atTheEnd, 0);
        EXPECT_EQ(told, atTheEnd);
        restart();
        EXPECT_EQ(flat(mTrade->getDealDetails(mDay, kShare, {"X"})).size(), static_cast<size_t>(n))
            << "written before it went";
        mTrade->clearImportData();
        mTrade->advance();
    }
}

TEST_F(TradeServiceThreads, WatchesComeAndGoWhileTheServiceTells) {
    TC::CLinkageManager *before = TC::CSingletonT<TC::CLinkageManager>::install(mTrade.get());
    runFast();
    int told = 0;
    for (int n = 0; mClock.now() < at(10, 0) || told == 0; ++n) {
        TradeWatch watch;
        QObject::connect(&watch, &TradeWatch::changed,
                         [&](const QSet<QString> &instruments) { told += instruments.isEmpty() ? 0 : 1; });
        mTrade->importDeal("X", kShare, std::to_string(n), 10.0, 100, at(9, 31) / 1000, 48);
        QCoreApplication::processEvents();
    }
    mTrade->stop();
    QCoreApplication::processEvents(); // what was told to watches that have gone
    EXPECT_GT(told, 0);
    EXPECT_TRUE(mTrade->sigLinkageChanged.empty());
    TC::CSingletonT<TC::CLinkageManager>::install(before);
}

} // namespace
