#include "viewmodel/CRealtimeBaseFormulaAxis.h"

namespace TC {

bool CRealtimeBaseFormulaAxis::isMainFormula(const QString &name) const {
    return mMainFormulas.contains(name);
}

bool CRealtimeBaseFormulaAxis::isBasicFormula(const QString &name) const {
    return name.compare(getBasicFormula(), Qt::CaseInsensitive) == 0;
}

bool CRealtimeBaseFormulaAxis::isVolFormula(const QString &name) const {
    const QString volume = getVolFormula();
    return name == volume || (name.size() == volume.size() && name.compare(volume, Qt::CaseInsensitive) == 0);
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
