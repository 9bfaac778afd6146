#include "chartdata/DataWarnings.h"

#include "chartdata/ShownDay.h"
#include "host/records/ValueComparison.h"
#include "host/services/CStockManager.h"
#include "viewmodel/CRealtimeUiParam.h"

namespace TC {
namespace {

constexpr int kRememberedRequests = 256;

} // namespace

/// The axis of a series, without positions where it is that of another instrument.
TradingDay DataWarnings::dayOf(const CFormulaKey &key) const {
    return mView.isMainStock(key.mStock) ? TradingDay{mView.mSessions, mView.mPointCount} : TradingDay();
}

void DataWarnings::tell(const CFormulaKey &key, const QString &requestId,
                        const std::vector<ResultDoubt> &doubts) {
    if (doubts.empty()) {
        return;
    }
    if (mTold.size() > kRememberedRequests) {
        mTold.clear();
    }
    unsigned &told = mTold[requestId];
    for (const ResultDoubt &doubt : doubts) {
        const unsigned kind = 1U << static_cast<unsigned>(doubt.kind);
        if ((told & kind) == 0) {
            told |= kind;
            warnOfData(
                QStringLiteral("%1 %2, request %3: %4").arg(key.mStock, key.mFormula, requestId, doubt.words));
        }
    }
}

/// Which source of the previous close of an instrument has none; null when both do.
const char *DataWarnings::missingClose() const {
    const double shown = mView.getLastClose();
    if (!isUsable(shown) || shown <= 0.0) {
        return mView.mGetTradeDateFunc
                   ? "CStockManager::getCurrentDateLastClose of a past day, which setGetTradeDateFunc tells"
                   : "CInstrumentDetail::mLastClose of the running day";
    }
    const CInstrumentDetailPtr detail = mView.getStockDetail();
    const double ofAxis =
        detail ? mView.service<CStockManager>().getCurrentDateLastClose(detail, mDay.date()) : shown;
    return isUsable(ofAxis) ? nullptr : "CStockManager::getCurrentDateLastClose, around which the axis is made";
}

void DataWarnings::history(const CFormulaKey &key, const QString &requestId,
                           const se::RPCFormulaMetaResult *meta, const se::RPCFormulaResult *result) {
    if (!isOn()) {
        return;
    }
    if (!meta || !result) {
        tell(key, requestId,
             {{EDoubt::Shape,
               meta ? QStringLiteral("the history is null") : QStringLiteral("the description is null")}});
        return;
    }
    std::vector<ResultDoubt> doubts = doubtsOfSeries(*meta, *result, dayOf(key));
    const bool hasClose =
        mView.isMainFormula(key.mFormula) && mView.isMainStock(key.mStock) && mView.mStockKind == eInstrument;
    if (const char *missing = hasClose ? missingClose() : nullptr) {
        doubts.push_back(
            {EDoubt::Close, QStringLiteral("the previous close is unset: %1").arg(QLatin1String(missing))});
    }
    tell(key, requestId, doubts);
}

void DataWarnings::point(const CFormulaKey &key, const QString &requestId,
                         const se::RPCFormulaResultCache *series, const se::RPCFormulaInstantResult &point) {
    if (!isOn()) {
        return;
    }
    if (!series) {
        tell(key, requestId,
             {{EDoubt::Order, QStringLiteral("a point came before the history and is dropped")}});
        return;
    }
    tell(key, requestId, doubtsOfPoint(*series, point, dayOf(key)));
}

} // namespace TC
