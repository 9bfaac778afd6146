#pragma once

#include "host/Export.h"
#include "host/records/CCommandDetail.h"
#include "host/records/IData.h"

namespace kvservice {

/// One deal of the user.
class TIMESHARE_EXPORT CDealDetail : public IData {
public:
    std::string getKey() const override { return mDealKey; }

    std::string mDealKey;
    std::string mAccount;
    std::string mStockKey; ///< of the instrument, see vmStockKey
    int mDirection = 0; ///< see isBuyByDirection
    int mOffsetFlag = 0; ///< see isBuyByDirection
    double mPrice = 0.0;
    int mVolume = 0;
    double mAmount = 0.0; ///< price times volume, without the multiplier of a contract
    std::string mContractNo; ///< of its order; empty when that is unknown
    std::string mTime; ///< "hh:mm:ss" or "hhmmss"
    boost::shared_ptr<CCommandDetail> mCommand;
};

} // namespace kvservice
