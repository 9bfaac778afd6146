#include "terminal/market/MarketServices.h"

namespace terminal {

MarketServices::MarketServices(CMarketStore &store)
    : mStocks(store), mTimes(store), mSectors(store), mIndexes(store), mTypes(store) {
    TC::CSingletonT<TC::CStockManager>::install(&mStocks);
    TC::CSingletonT<TC::CTradeOpenCloseTimeManager>::install(&mTimes);
    TC::CSingletonT<TC::CSectorManager>::install(&mSectors);
    TC::CSingletonT<TC::CIndexManager>::install(&mIndexes);
    TC::CSingletonT<kvservice::StockTypeCenter>::install(&mTypes);
}

MarketServices::~MarketServices() {
    TC::CSingletonT<TC::CStockManager>::install(nullptr);
    TC::CSingletonT<TC::CTradeOpenCloseTimeManager>::install(nullptr);
    TC::CSingletonT<TC::CSectorManager>::install(nullptr);
    TC::CSingletonT<TC::CIndexManager>::install(nullptr);
    TC::CSingletonT<kvservice::StockTypeCenter>::install(nullptr);
}

} // namespace terminal
