#pragma once

#include "host/Export.h"
#include "host/records/BSONObj.h"
#include "host/records/CFormulaParam.h"
#include "host/records/Quotes.h"
#include "host/records/RPCFormulaResult.h"
#include "host/services/CSingletonT.h"

#include <QString>
#include <QVector>
#include <boost/function.hpp>

#include <memory>
#include <string>
#include <vector>

namespace TC {

using FormulaMetaPtr = std::shared_ptr<se::RPCFormulaMetaResult>;
using FormulaResultPtr = std::shared_ptr<se::RPCFormulaResult>;
using FormulaInstantPtr = std::shared_ptr<se::RPCFormulaInstantResult>;

/// Receives a whole series: description, points, request id, data type, formula, and whether the earlier value
/// range of the series still holds.
using FormulaHistoryCallback = boost::function<void(const FormulaMetaPtr &, const FormulaResultPtr &,
                                                    const QString &, int, const QString &, bool)>;
/// Receives one point: a number that is the service's own, the request id and the point.
using FormulaRealtimeCallback = boost::function<void(int, const QString &, const FormulaInstantPtr &)>;
/// Receives the progress of a download: done, total, market and code.
using SuppleProgressCallback = boost::function<void(int, int, const QString &, const QString &)>;
/// Receives quotes: two numbers that are the service's own, the records, and a text that is the caller's.
using HistoryQuoteCallback =
    boost::function<void(int, int, const std::vector<std::shared_ptr<quoter::QuoterBase>> &, const QString &)>;

/// Evaluates formulas. May call back on any thread; UiThreadFormulas brings that to the user-interface thread. A callback
/// object is kept until its request is withdrawn and is to be released outside the service's own locks.
///
/// A host has to answer the first three. The rest answer nothing unless it has something to say.
class TIMESHARE_EXPORT CFormulaManager {
public:
    virtual ~CFormulaManager() = default;

    /// Starts every request of the list.
    virtual void requestFormulas(QVector<CFormulaParam> &params, FormulaHistoryCallback onHistory,
                                 FormulaRealtimeCallback onRealtime) = 0;
    /// Blocks until the results are in: normally one element per parameter, in the same order.
    virtual void requestFormulasSync(QVector<CFormulaParam> &params, std::vector<FormulaMetaPtr> &metas,
                                     std::vector<FormulaResultPtr> &results) = 0;
    /// Withdraw by request id; an unknown id is harmless.
    virtual void unrequestFormula(const QString &requestId) = 0;
    virtual void unrequestFormulas(const QVector<QString> &requestIds) {
        for (const QString &id : requestIds) {
            unrequestFormula(id);
        }
    }
    /// Cached quotes of a range.
    virtual void fetchCacheData(se::RPCFetchCacheDataParam &,
                                std::vector<std::shared_ptr<quoter::QuoterBase>> &) {}
    /// Quotes of a range, later, through the callback.
    virtual void requestHistoryQuote(const quoter::TSMetaInfo &, const quoter::TRegionInfo &,
                                     HistoryQuoteCallback) {}
    /// Hidden variables of the series of a request at an axis index, as text.
    virtual QString lookHideVar(const QString &, int) { return {}; }
    /// Fetches missing history of a name from the server. The progress may come on any thread.
    virtual void suppleDataFromServer(const QString &, CHistoryDataParam &, SuppleProgressCallback) {}
    /// Progress of a group model run; false when the id is unknown.
    virtual bool groupRunProgress(const std::string &, bson::BSONObj &) { return false; }
};

} // namespace TC

namespace corvane {

/// Progress of a group model run.
inline bool getGroupRunProgress2(const std::string &requestId, bson::BSONObj &progress) {
    return TC::CSingletonT<TC::CFormulaManager>::instance().groupRunProgress(requestId, progress);
}

} // namespace corvane
