#pragma once

#include "chartdata/ResultDoubts.h"
#include "host/records/CFormulaKey.h"
#include "host/services/CFormulaManager.h"
#include "host/services/DataLog.h"

#include <QHash>
#include <QString>

namespace TC {

class CRealtimeUiParam;
class ShownDay;

/// Tells what cannot be right in the results of a pane, each kind once a request. Nothing is looked at while the category
/// is off.
class DataWarnings {
public:
    /// `day` is that of the pane.
    DataWarnings(const CRealtimeUiParam &view, const ShownDay &day) : mView(view), mDay(day) {}

    static bool isOn() { return dataLog().isWarningEnabled(); }
    /// A whole series has come, null and all.
    void history(const CFormulaKey &key, const QString &requestId, const se::RPCFormulaMetaResult *meta,
                 const se::RPCFormulaResult *result);
    /// `series` is what the point goes to, null before there is one.
    void point(const CFormulaKey &key, const QString &requestId, const se::RPCFormulaResultCache *series,
               const se::RPCFormulaInstantResult &point);

private:
    const char *missingClose() const;
    TradingDay dayOf(const CFormulaKey &key) const;
    void tell(const CFormulaKey &key, const QString &requestId, const std::vector<ResultDoubt> &doubts);

    const CRealtimeUiParam &mView;
    const ShownDay &mDay;
    QHash<QString, unsigned> mTold; ///< kinds, a bit each, by request
};

} // namespace TC
