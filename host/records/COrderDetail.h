#pragma once

#include "host/Export.h"
#include "host/records/CCommandDetail.h"
#include "host/records/IData.h"

namespace kvservice {

/// What became of an order.
enum EOrderStatus : int {
    eOrderReported = 0, ///< rests at the exchange, nothing filled
    eOrderPartlyFilled = 1,
    eOrderFilled = 2,
    eOrderCancelled = 3, ///< what was not filled has been taken back
    eOrderRejected = 4,
};

/// One order of the user.
class TIMESHARE_EXPORT COrderDetail : public IData {
public:
    std::string getKey() const override { return mOrderKey; }

    std::string mOrderKey;
    std::string mAccount;
    std::string mStockKey; ///< of the instrument, see vmStockKey
    int mDirection = 0; ///< see isBuyByDirection
    int mOffsetFlag = 0; ///< see isBuyByDirection
    double mPrice = 0.0;
    int mVolume = 0;
    int mTradedVolume = 0; ///< filled so far
    int mStatus = 0; ///< EOrderStatus
    std::string mContractNo;
    std::string mDate; ///< "yyyyMMdd"
    std::string mTime; ///< "hh:mm:ss" or "hhmmss"
    boost::shared_ptr<CCommandDetail> mCommand;
};

} // namespace kvservice
