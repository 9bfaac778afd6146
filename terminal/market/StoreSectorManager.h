#pragma once

#include "host/services/CSectorManager.h"
#include "terminal/market/CMarketStore.h"

namespace terminal {

/// Sectors, convertible links and listed pairs over the market store.
class StoreSectorManager : public TC::CSectorManager {
public:
    explicit StoreSectorManager(CMarketStore &store) : mStore(store) {}

    QString getBkzsCodeByName(const QString &name) override;
    QString getSWSectorByStock(const QString &key, int level) override;
    QSet<QString> getConvertibleCodeByStock(const QString &key) override;
    QString getAStockByHStock(const QString &key) override;
    QString getHStockByAStock(const QString &key) override;

private:
    CMarketStore &mStore;
};

} // namespace terminal
