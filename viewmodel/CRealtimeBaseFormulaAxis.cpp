#include "viewmodel/CRealtimeBaseFormulaAxis.h"

#include "host/toolkit/Text.h"

namespace TC {

bool CRealtimeBaseFormulaAxis::isMainFormula(const QString &name) const {
    return mMainFormulas.contains(name);
}

bool CRealtimeBaseFormulaAxis::isBasicFormula(const QString &name) const {
    return GZ::isSameName(name, getBasicFormula());
}

bool CRealtimeBaseFormulaAxis::isVolFormula(const QString &name) const {
    return GZ::isSameName(name, getVolFormula());
}

QList<QString> CRealtimeBaseFormulaAxis::getMainFormula() const {
    return mMainFormulas;
}

QString CRealtimeBaseFormulaAxis::getBasicFormula() const {
    return QStringLiteral("REALTIME");
}

QString CRealtimeBaseFormulaAxis::getVolFormula() const {
    return QStringLiteral("REALTIMEVOL");
}

void CRealtimeBaseFormulaAxis::setPortfolioGraphType(int) {}

} // namespace TC
