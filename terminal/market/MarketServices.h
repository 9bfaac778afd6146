#pragma once

#include "terminal/market/StoreIndexManager.h"
#include "terminal/market/StoreSectorManager.h"
#include "terminal/market/StoreStockManager.h"
#include "terminal/market/StoreStockTypes.h"
#include "terminal/market/StoreTradeTimes.h"

namespace terminal {

/// The market's services over one store, installed as the host's while it lives. The clock is another's to install.
class MarketServices {
public:
    explicit MarketServices(CMarketStore &store);
    ~MarketServices();
    MarketServices(const MarketServices &) = delete;
    MarketServices &operator=(const MarketServices &) = delete;

    StoreTradeTimes &times() { return mTimes; }

private:
    StoreStockManager mStocks;
    StoreTradeTimes mTimes;
    StoreSectorManager mSectors;
    StoreIndexManager mIndexes;
    StoreStockTypes mTypes;
};

} // namespace terminal
