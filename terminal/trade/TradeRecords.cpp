#include "terminal/trade/TradeRecords.h"

#include "terminal/market/MarketDate.h"

#include <boost/make_shared.hpp>

namespace terminal {
namespace {

std::string clockText(qint64 time) {
    return marketDateTime(time).toString(QStringLiteral("hh:mm:ss")).toStdString();
}

int seconds(qint64 time) {
    return time > 0 ? static_cast<int>(time / 1000) : TC::kUnsetTime;
}

boost::shared_ptr<kvservice::CCommandDetail> commandOf(int command, const std::string &strategy) {
    if (command == 0) {
        return nullptr;
    }
    auto detail = boost::make_shared<kvservice::CCommandDetail>();
    detail->mCommandId = command;
    detail->mStrategyName = strategy;
    return detail;
}

/// What an order and a deal tell alike.
template <class Record, class Detail> void fill(Detail &detail, const Record &record) {
    detail.mAccount = record.account;
    detail.mStockKey = record.instrument;
    detail.mDirection = record.direction;
    detail.mOffsetFlag = record.offset;
    detail.mPrice = record.price;
    detail.mVolume = record.volume;
    detail.mTime = clockText(record.time);
    detail.mCommand = commandOf(record.command, record.strategy);
}

boost::shared_ptr<kvservice::CTaskItem> itemOf(const TradeTaskItem &item,
                                               const boost::shared_ptr<kvservice::CAccountInfo> &account) {
    auto detail = boost::make_shared<kvservice::CTaskItem>();
    detail->mAccount = account;
    detail->mOperation = item.operation;
    detail->mMarket = item.market;
    detail->mCode = item.code;
    detail->mPriceType = item.priceType;
    detail->mPrice = item.price;
    detail->mQuantity = item.quantity;
    return detail;
}

} // namespace

boost::shared_ptr<kvservice::COrderDetail> detailOf(const TradeOrder &order) {
    auto detail = boost::make_shared<kvservice::COrderDetail>();
    fill(*detail, order);
    detail->mOrderKey = order.key;
    detail->mTradedVolume = order.traded;
    detail->mStatus = order.status;
    detail->mContractNo = order.key;
    detail->mDate = marketDateTime(order.time).toString(QStringLiteral("yyyyMMdd")).toStdString();
    return detail;
}

boost::shared_ptr<kvservice::CDealDetail> detailOf(const TradeDeal &deal) {
    auto detail = boost::make_shared<kvservice::CDealDetail>();
    fill(*detail, deal);
    detail->mDealKey = deal.key;
    detail->mAmount = deal.price * deal.volume;
    detail->mContractNo = deal.order;
    return detail;
}

boost::shared_ptr<kvservice::CTaskDetail> detailOf(const TradeTask &task) {
    auto detail = boost::make_shared<kvservice::CTaskDetail>();
    detail->mTaskId = task.id;
    detail->mStatus = task.status;
    detail->mStartTime = seconds(task.start);
    // A task that was cancelled ends when that was done.
    detail->mEndTime = task.cancelled > 0 ? TC::kUnsetTime : seconds(task.end);
    detail->mCancelTime = seconds(task.cancelled);
    detail->mCommand = commandOf(task.command, task.strategy);
    if (detail->mCommand && task.cancelled > 0) {
        detail->mCommand->mCancelDisabled = 1;
    }
    auto account = boost::make_shared<kvservice::CAccountInfo>();
    account->mAccountId = task.account;
    for (const TradeTaskItem &item : task.items) {
        detail->mItems.push_back(itemOf(item, account));
    }
    return detail;
}

} // namespace terminal
