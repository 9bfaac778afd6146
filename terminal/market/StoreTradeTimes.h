#pragma once

#include "host/services/CTradeOpenCloseTimeManager.h"
#include "terminal/market/CMarketStore.h"

namespace terminal {

/// Trading sessions over the market store.
class StoreTradeTimes : public TC::CTradeOpenCloseTimeManager {
public:
    explicit StoreTradeTimes(CMarketStore &store) : mStore(store) {}

    /// True for instruments with sessions of their own, imported ones among them; the others follow their market.
    bool getTradeTime(const QString &market, const QString &code, QVector<QPair<int, int>> &sessions,
                      int &count) override;
    /// By the name of an exchange or its short word, as a portfolio's positions have it.
    bool hasNightQuoter(const QString &market, const QString &code) override;

private:
    CMarketStore &mStore;
};

} // namespace terminal
