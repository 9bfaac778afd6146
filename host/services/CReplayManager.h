#pragma once

#include "host/Export.h"
#include "host/services/CFormulaManager.h"

namespace TC {

/// Market replay: the same results as CFormulaManager, at the replay's own pace.
class TIMESHARE_EXPORT CReplayManager {
public:
    virtual ~CReplayManager() = default;

    virtual void requestFormulas(const QString &stock, QVector<CFormulaParam> &params,
                                 FormulaHistoryCallback onHistory, FormulaRealtimeCallback onRealtime) = 0;
    /// Withdraws by request id; unknown ids are harmless.
    virtual void deleteFormulas(QVector<QString> &requestIds) = 0;
    /// Range of the replay, in milliseconds since the epoch.
    virtual void setThousandRange(qint64 start, qint64 end) = 0;
};

} // namespace TC
