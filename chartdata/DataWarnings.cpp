#include "chartdata/DataWarnings.h"

#include "host/records/ValueComparison.h"
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
    const double close = mView.getLastClose();
    if (mView.isMainFormula(key.mFormula) && mView.isMainStock(key.mStock) && mView.mStockKind == eInstrument &&
        (!isUsable(close) || close <= 0.0)) {
        doubts.push_back(
            {EDoubt::Close,
             mView.mGetTradeDateFunc
                 ? QStringLiteral("the previous close is unset: CStockManager::getCurrentDateLastClose of a "
                                  "past day, which setGetTradeDateFunc tells")
                 : QStringLiteral("the previous close is unset: CInstrumentDetail::mLastClose of the running "
                                  "day")});
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
