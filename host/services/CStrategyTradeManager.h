#pragma once

#include "host/Export.h"
#include "host/services/CSingletonT.h"

#include <QString>
#include <QVector>

namespace TC {

/// A strategy that trades by a model.
struct CStrategyInfo {
    QString mName;
    bool mRunning = false;
};

/// Strategies and their back-tests.
class TIMESHARE_EXPORT CStrategyTradeManager {
public:
    virtual ~CStrategyTradeManager() = default;

    /// Fills the record of a strategy; false when the name is unknown.
    virtual bool getStrategyByName(const QString &name, CStrategyInfo &strategy) = 0;
    /// Whether a formula runs in model trading.
    virtual bool isFomrulaRun(const QString &name) = 0;
    /// Refreshes the back-test series of requests that are about to be withdrawn.
    virtual void updateBacktestData(const QVector<QString> &requestIds) = 0;
};

} // namespace TC
