#pragma once

#include "host/services/CLinkageManager.h"

namespace terminal {

/// What is to be signalled of the user's trading.
struct TradeNotices {
    using Keys = TC::CLinkageManager::Keys;

    Keys linkage; ///< instruments whose records have changed
    Keys tasks; ///< instruments whose tasks have
    bool accounts = false;
    bool strategies = false;
    bool stocks = false;
    bool datas = false; ///< figures
    Keys newDays; ///< as yyyyMMdd
};

} // namespace terminal
