#include "viewmodel/CRealTimePortfolioAxis.h"

#include "host/records/Enumerations.h"

namespace TC {

CRealTimePortfolioAxis::CRealTimePortfolioAxis() {
    CRealTimePortfolioAxis::setPortfolioGraphType(int(EPortfolioAnalyzeGraphType::VolumePrice));
}

QList<QString> CRealTimePortfolioAxis::getMainFormula() const {
    return CRealtimeBaseFormulaAxis::getMainFormula();
}

QString CRealTimePortfolioAxis::getBasicFormula() const {
    return QStringLiteral("量价分析");
}

QString CRealTimePortfolioAxis::getVolFormula() const {
    return QStringLiteral("量价分析-量");
}

void CRealTimePortfolioAxis::setPortfolioGraphType(int type) {
    mGraphType = type;
    switch (EPortfolioAnalyzeGraphType(type)) {
    case EPortfolioAnalyzeGraphType::VolumePrice:
        mMainFormulas = {CRealTimePortfolioAxis::getBasicFormula(), CRealTimePortfolioAxis::getVolFormula()};
        break;
    case EPortfolioAnalyzeGraphType::Deviation:
        mMainFormulas = {QStringLiteral("偏离度分析")};
        break;
    default:
        mMainFormulas = {QStringLiteral("预计下单")};
        break;
    }
}

bool CRealTimePortfolioAxis::showContextMenu() const {
    return false;
}

bool CRealTimePortfolioAxis::fillRequestParam(CFormulaParam &param, const QString &key,
                                              boost::shared_ptr<CFormulaDetail>) {
    const QString marketWord = QStringLiteral("TZZH");
    param.mMarket = marketWord;
    param.mCode = key.split(marketWord, Qt::KeepEmptyParts, Qt::CaseSensitive).last();
    return true;
}

} // namespace TC
