#pragma once

#include "host/records/CDealDetail.h"
#include "host/records/COrderDetail.h"
#include "host/records/CTaskDetail.h"

#include <QDateTime>

#include <boost/make_shared.hpp>

namespace tests {

/// Seconds since the epoch of a clock time on 2024-03-15 in the machine's zone.
inline int secondsAt(int hour, int minute, int second = 0) {
    return int(QDateTime(QDate(2024, 3, 15), QTime(hour, minute, second)).toSecsSinceEpoch());
}

inline boost::shared_ptr<kvservice::COrderDetail> makeOrder(const std::string &key, double price = 10.0,
                                                            const std::string &time = "09:50:00") {
    auto order = boost::make_shared<kvservice::COrderDetail>();
    order->mOrderKey = key;
    order->mContractNo = key;
    order->mStockKey = "SH600000";
    order->mDirection = 48;
    order->mPrice = price;
    order->mVolume = 100;
    order->mTime = time;
    return order;
}

inline boost::shared_ptr<kvservice::CDealDetail> makeDeal(const std::string &key, double price = 10.0,
                                                          const std::string &time = "10:10:00") {
    auto deal = boost::make_shared<kvservice::CDealDetail>();
    deal->mDealKey = key;
    deal->mStockKey = "SH600000";
    deal->mDirection = 49;
    deal->mPrice = price;
    deal->mVolume = 100;
    deal->mTime = time;
    return deal;
}

inline boost::shared_ptr<kvservice::CTaskItem> makeItem(const std::string &code = "600000",
                                                        long long quantity = 300) {
    auto item = boost::make_shared<kvservice::CTaskItem>();
    item->mAccount = boost::make_shared<kvservice::CAccountInfo>();
    item->mAccount->mAccountId = "80010001";
    item->mMarket = "SH";
    item->mCode = code;
    item->mPriceType = 11;
    item->mPrice = 10.0;
    item->mQuantity = quantity;
    return item;
}

/// A running task of command 70 + id, from 10:30:00 to 11:15:30, of one item of 300 in SH600000.
inline boost::shared_ptr<kvservice::CTaskDetail> makeTask(int id, int status = kvservice::eTaskRunning) {
    auto task = boost::make_shared<kvservice::CTaskDetail>();
    task->mTaskId = id;
    task->mStatus = status;
    task->mStartTime = secondsAt(10, 30);
    task->mEndTime = secondsAt(11, 15, 30);
    task->mCommand = boost::make_shared<kvservice::CCommandDetail>();
    task->mCommand->mCommandId = 70 + id;
    task->mItems = {makeItem()};
    return task;
}

} // namespace tests
