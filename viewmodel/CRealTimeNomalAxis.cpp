#include "viewmodel/CRealTimeNomalAxis.h"

#include "host/services/CStockManager.h"

namespace TC {

CRealTimeNomalAxis::CRealTimeNomalAxis() {
    mMainFormulas = {CRealtimeBaseFormulaAxis::getBasicFormula(), CRealtimeBaseFormulaAxis::getVolFormula()};
}

QList<QString> CRealTimeNomalAxis::getMainFormula() const {
    return CRealtimeBaseFormulaAxis::getMainFormula();
}

QString CRealTimeNomalAxis::getBasicFormula() const {
    return CRealtimeBaseFormulaAxis::getBasicFormula();
}

QString CRealTimeNomalAxis::getVolFormula() const {
    return CRealtimeBaseFormulaAxis::getVolFormula();
}

bool CRealTimeNomalAxis::showContextMenu() const {
    return true;
}

bool CRealTimeNomalAxis::fillRequestParam(CFormulaParam &param, const QString &key,
                                          boost::shared_ptr<CFormulaDetail>) {
    const CInstrumentDetailPtr detail = mServices->get<CStockManager>().getInstrumentDetail(key);
    if (!detail) {
        return false;
    }
    param.mMarket = getDetailQsMarket(detail);
    param.mCode = getDetailQsCode(detail);
    return true;
}

} // namespace TC
