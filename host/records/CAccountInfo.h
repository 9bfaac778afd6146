#pragma once

#include "host/Export.h"
#include "host/records/IData.h"

namespace kvservice {

/// One trading account of the user.
class TIMESHARE_EXPORT CAccountInfo : public IData {
public:
    std::string getKey() const override { return mAccountId; }

    std::string mAccountId;
    std::string mAccountName; ///< shown beside the id, UTF-8
};

} // namespace kvservice
