#include "viewmodel/CRealTimeCustomIndexAxis.h"

#include "host/records/ValueComparison.h"
#include "host/services/CHostClock.h"
#include "host/services/CIndexManager.h"
#include "host/services/CStockManager.h"

namespace TC {
namespace {

constexpr double kDefaultBaseValue = 100.0;
constexpr qint32 kDefaultOption2 = 100;

qint64 inMilliseconds(const QDateTime &moment) {
    return moment.toSecsSinceEpoch() * 1000;
}

QList<QPair<QString, QString>> knownMembers(const QList<QString> &keys, CStockManager &stocks) {
    QList<QPair<QString, QString>> members;
    for (const QString &key : keys) {
        const CInstrumentDetailPtr detail = stocks.getInstrumentDetail(key);
        if (detail) {
            members.append(qMakePair(getDetailQsMarket(detail), getDetailQsCode(detail)));
        }
    }
    return members;
}

} // namespace

CRealTimeCustomIndexAxis::CRealTimeCustomIndexAxis() {
    mMainFormulas = {CRealtimeBaseFormulaAxis::getBasicFormula(), CRealtimeBaseFormulaAxis::getVolFormula()};
}

QList<QString> CRealTimeCustomIndexAxis::getMainFormula() const {
    return CRealtimeBaseFormulaAxis::getMainFormula();
}

QString CRealTimeCustomIndexAxis::getBasicFormula() const {
    return CRealtimeBaseFormulaAxis::getBasicFormula();
}

QString CRealTimeCustomIndexAxis::getVolFormula() const {
    return CRealtimeBaseFormulaAxis::getVolFormula();
}

bool CRealTimeCustomIndexAxis::showContextMenu() const {
    return true;
}

bool CRealTimeCustomIndexAxis::fillRequestParam(CFormulaParam &param, const QString &key,
                                                boost::shared_ptr<CFormulaDetail>) {
    const CIndexDetail *index = mServices->get<CIndexManager>().getIndex(key);
    if (!index) {
        return false;
    }
    param.mIndexName = key;
    param.mIndexKey = key;
    param.mIndexOption1 = index->mOption1;
    param.mIndexStartTime = isZero(double(index->mStartTime))
                                ? inMilliseconds(mServices->get<CHostClock>().currentDateTime())
                                : index->mStartTime;
    param.mIndexBaseValue = isZero(index->mBaseValue) ? kDefaultBaseValue : index->mBaseValue;
    param.mIndexOption2 = isZero(index->mOption2) ? kDefaultOption2 : index->mOption2;
    param.mCode = key;
    param.mIndexOption3 = index->mOption3;
    param.mMarket = QStringLiteral("CD");
    if (index->mMembers.isEmpty()) {
        return false;
    }
    param.mMembers += knownMembers(index->mMembers, mServices->get<CStockManager>());
    return true;
}

} // namespace TC
