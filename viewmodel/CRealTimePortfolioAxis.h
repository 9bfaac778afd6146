#pragma once

#include "host/Export.h"
#include "viewmodel/CRealtimeBaseFormulaAxis.h"

namespace TC {

/// A portfolio, under one of its analyses.
class TIMESHARE_EXPORT CRealTimePortfolioAxis : public CRealtimeBaseFormulaAxis {
public:
    CRealTimePortfolioAxis();
    QList<QString> getMainFormula() const override;
    QString getBasicFormula() const override;
    QString getVolFormula() const override;
    /// Chooses the analysis, see EPortfolioAnalyzeGraphType. The basic and the volume formula stay.
    void setPortfolioGraphType(int type) override;
    bool showContextMenu() const override;
    bool fillRequestParam(CFormulaParam &param, const QString &key,
                          boost::shared_ptr<CFormulaDetail> formula) override;

private:
    qint32 mGraphType = 0;
};

} // namespace TC
