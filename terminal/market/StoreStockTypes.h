#pragma once

#include "host/services/StockTypeCenter.h"
#include "terminal/market/CMarketStore.h"

namespace terminal {

/// Types of instruments over the market store.
class StoreStockTypes : public kvservice::StockTypeCenter {
public:
    explicit StoreStockTypes(CMarketStore &store) : mStore(store) {}

    bool isOfType(int type, const std::string &market, const std::string &code) override;
    bool isIndex(const std::string &market, const std::string &code) override;
    std::string convertibleBond(const std::string &market, const std::string &code) override;

private:
    CMarketStore &mStore;
};

} // namespace terminal
