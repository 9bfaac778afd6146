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
    detail->mOrderKey = order.key;
    detail->mAccount = order.account;
    detail->mDirection = order.direction;
    detail->mOffsetFlag = order.offset;
    detail->mPrice = order.price;
    detail->mVolume = order.volume;
    detail->mTradedVolume = order.traded;
    detail->mStatus = order.status;
    detail->mContractNo = order.key;
    detail->mDate = marketDateTime(order.time).toString(QStringLiteral("yyyyMMdd")).toStdString();
    detail->mTime = clockText(order.time);
    detail->mCommand = commandOf(order.command, order.strategy);
    return detail;
}

boost::shared_ptr<kvservice::CDealDetail> detailOf(const TradeDeal &deal) {
    auto detail = boost::make_shared<kvservice::CDealDetail>();
    detail->mDealKey = deal.key;
    detail->mAccount = deal.account;
    detail->mDirection = deal.direction;
    detail->mOffsetFlag = deal.offset;
    detail->mPrice = deal.price;
    detail->mVolume = deal.volume;
    detail->mAmount = deal.price * deal.volume;
    detail->mTime = clockText(deal.time);
    detail->mCommand = commandOf(deal.command, deal.strategy);
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
