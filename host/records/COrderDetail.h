#pragma once

#include "host/records/CCommandDetail.h"
#include "host/records/IData.h"

namespace kvservice {

/// One order of the user.
class COrderDetail : public IData {
public:
    std::string getKey() const override { return mOrderKey; }

    std::string mOrderKey;
    std::string mAccount;
    int mDirection = 0; ///< see isBuyByDirection
    int mOffsetFlag = 0; ///< see isBuyByDirection
    double mPrice = 0.0;
    int mVolume = 0;
    std::string mContractNo;
    std::string mDate; ///< "yyyyMMdd"
    std::string mTime; ///< "hh:mm:ss" or "hhmmss"
    boost::shared_ptr<CCommandDetail> mCommand;
};

} // namespace kvservice
