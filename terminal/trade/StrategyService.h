#pragma once

#include "host/services/CStrategyTradeManager.h"

namespace terminal {

/// Model trading. The terminal runs no strategies: no name is known, and no formula trades.
class StrategyService : public TC::CStrategyTradeManager {
public:
    bool getStrategyByName(const QString &, TC::CStrategyInfo &) override { return false; }
    bool isFomrulaRun(const QString &) override { return false; }
    void updateBacktestData(const QVector<QString> &) override {}
};

} // namespace terminal
