#pragma once

#include "host/records/CDealDetail.h"
#include "host/records/COrderDetail.h"
#include "host/records/CTaskDetail.h"
#include "terminal/market/MinuteBar.h"

#include <boost/shared_ptr.hpp>

#include <string>
#include <vector>

namespace terminal {

constexpr int kBuy = 48; ///< directions, as isBuyByDirection() reads them
constexpr int kSell = 49;
constexpr int kOpening = 48; ///< offsets of futures; shares have none
constexpr int kClosing = 49;

/// Where a trade record came from.
enum class TradeSource : int { Own = 0, Imported = 1 };

/// An account of the user.
struct TradeAccount {
    std::string id;
    std::string name;
    int type = 0; ///< CLinkageManager::kFutureAccounts or kStockAccounts
    TradeSource source = TradeSource::Own;
};

/// An order of the user. Times of trade records are in milliseconds since the epoch, days as in MarketDate.h.
struct TradeOrder {
    std::string account;
    std::string key; ///< among the orders of the account
    std::string instrument; ///< key, such as "SH600000"
    int day = 0; ///< trading day
    qint64 time = 0;
    int direction = kBuy;
    int offset = 0; ///< of a future: kOpening or kClosing
    double price = 0.0;
    int volume = 0;
    int traded = 0; ///< filled so far
    int status = kvservice::eOrderReported;
    std::string strategy; ///< empty when it was given by hand
    int command = 0; ///< 0 for none
    int task = 0; ///< 0 for none
    TradeSource source = TradeSource::Own;

    bool isOpen() const {
        return status == kvservice::eOrderReported || status == kvservice::eOrderPartlyFilled;
    }
    int rest() const { return volume - traded; }
};

/// A deal of the user.
struct TradeDeal {
    std::string account;
    std::string key; ///< among the deals of the account
    std::string order; ///< key of its order; empty when that is unknown
    std::string instrument;
    int day = 0;
    qint64 time = 0;
    int direction = kBuy;
    int offset = 0;
    double price = 0.0;
    int volume = 0;
    double commission = 0.0; ///< money
    std::string strategy;
    int command = 0;
    TradeSource source = TradeSource::Own;
};

/// One instrument's part of a task.
struct TradeTaskItem {
    std::string market;
    std::string code;
    kvservice::EOperationType operation = kvservice::EOperationType::Buy;
    int priceType = 0;
    double price = 0.0; ///< of the market when the task started
    int quantity = 0;
    int finished = 0; ///< filled so far

    std::string instrument() const { return market + code; }
};

/// A task of the user.
struct TradeTask {
    int id = 0;
    std::string account;
    int day = 0;
    std::string strategy;
    int command = 0;
    int status = kvservice::eTaskWaiting;
    qint64 start = 0;
    qint64 end = 0; ///< planned
    qint64 cancelled = 0; ///< 0 when it was not
    std::vector<TradeTaskItem> items;

    bool canBeCancelled() const {
        return status == kvservice::eTaskWaiting || status == kvservice::eTaskRunning;
    }
};

/// A task that the user has cancelled.
struct TradeCancel {
    int task = 0;
    int day = 0;
    qint64 time = 0;
    std::string text;
};

/// Records that are new or take the place of those with the same key.
struct TradeChanges {
    std::vector<TradeOrder> orders;
    std::vector<TradeDeal> deals;
    std::vector<TradeTask> tasks;

    bool isEmpty() const { return orders.empty() && deals.empty() && tasks.empty(); }
};

// The records as a chart reads them: new objects, which nobody changes any more.

boost::shared_ptr<kvservice::COrderDetail> detailOf(const TradeOrder &order);
boost::shared_ptr<kvservice::CDealDetail> detailOf(const TradeDeal &deal);
boost::shared_ptr<kvservice::CTaskDetail> detailOf(const TradeTask &task);

} // namespace terminal
