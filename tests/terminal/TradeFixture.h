#pragma once

#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketServices.h"
#include "terminal/market/SimulatedExchange.h"
#include "terminal/trade/TradeService.h"
#include "tests/terminal/StoreFixture.h"

#include <atomic>
#include <memory>
#include <tuple>
#include <vector>

/// The trade service over the simulated market of Friday, 2026-11-20, whose clock the test moves.
class TradeFixture : public StoreFixture {
protected:
    using Orders = terminal::TradeService::Records<kvservice::COrderDetail>;
    using Deals = terminal::TradeService::Records<kvservice::CDealDetail>;
    using Tasks = terminal::TradeService::Records<kvservice::CTaskDetail>;
    using Keys = terminal::TradeService::Keys;

    const QDate mDate{2026, 11, 20};
    const int mDay = terminal::dayOf(mDate);
    const std::string kShare = "SH600000";
    const Keys kStockAccounts{"80010001", "80020002"};
    const Keys kAllAccounts{"80010001", "80020002", "90010001"};

    qint64 at(int hour, int minute, int second = 0) const {
        return terminal::timeOf(mDate, hour * 60 + minute) + second * 1000;
    }
    /// The store that the test begins with.
    virtual void openDay() { openFilledStore(at(9, 25)); }
    void SetUp() override {
        openDay();
        mServices = std::make_unique<terminal::MarketServices>(mStore);
        mClock.pause();
        before = TC::CSingletonT<TC::CHostClock>::install(&mClock);
        restart();
    }
    void TearDown() override {
        mTrade.reset();
        TC::CSingletonT<TC::CHostClock>::install(before);
    }
    /// Another service over the same store.
    void restart() {
        mTrade.reset();
        mTrade = std::make_unique<terminal::TradeService>(mStore, mExchange, mClock);
    }
    void wantFigures() {
        mTrade->startProfitCalculator();
        mTrade->startBalanceCalculator();
    }
    void goTo(qint64 time) {
        mClock.setTime(time);
        mTrade->advance();
    }
    void recordPast() {
        while (mTrade->recordPastDay()) {
        }
    }

    template <class Record>
    static std::vector<boost::shared_ptr<Record>> flat(const terminal::TradeService::Records<Record> &records) {
        std::vector<boost::shared_ptr<Record>> all;
        for (const auto &account : records) {
            for (const auto &entry : account.second) {
                all.push_back(entry.second);
            }
        }
        return all;
    }
    using OrderState = std::tuple<std::string, std::string, std::string, int, double, int, int, int>;
    static std::vector<OrderState> states(const Orders &orders) {
        std::vector<OrderState> states;
        for (const auto &order : flat(orders)) {
            states.emplace_back(order->mAccount, order->mOrderKey, order->mTime, order->mDirection,
                                order->mPrice, order->mVolume, order->mTradedVolume, order->mStatus);
        }
        return states;
    }
    using DealState = std::tuple<std::string, std::string, std::string, int, double, int, double>;
    static std::vector<DealState> states(const Deals &deals) {
        std::vector<DealState> states;
        for (const auto &deal : flat(deals)) {
            states.emplace_back(deal->mAccount, deal->mDealKey, deal->mTime, deal->mDirection, deal->mPrice,
                                deal->mVolume, deal->mAmount);
        }
        return states;
    }
    std::vector<OrderState> orderStates(int day, const std::string &instrument) {
        return states(mTrade->getOrderDetails(day, instrument, kAllAccounts));
    }
    std::vector<DealState> dealStates(int day, const std::string &instrument) {
        return states(mTrade->getDealDetails(day, instrument, kAllAccounts));
    }
    boost::shared_ptr<kvservice::CTaskDetail> firstTask(const std::string &instrument,
                                                        const std::string &account) {
        const Tasks tasks = mTrade->getTaskDetails(instrument, {account});
        return tasks.empty() ? nullptr : flat(tasks).front();
    }

    terminal::SimulatedClock mClock{at(9, 25), 1.0};
    terminal::SimulatedExchange mExchange{mStore, mClock};
    std::unique_ptr<terminal::MarketServices> mServices;
    std::unique_ptr<terminal::TradeService> mTrade;
    TC::CHostClock *before = nullptr;
};
