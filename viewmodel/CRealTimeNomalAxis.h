#pragma once

#include "host/Export.h"
#include "viewmodel/CRealtimeBaseFormulaAxis.h"

namespace TC {

/// An ordinary instrument of the catalogue.
class TIMESHARE_EXPORT CRealTimeNomalAxis : public CRealtimeBaseFormulaAxis {
public:
    CRealTimeNomalAxis();
    QList<QString> getMainFormula() const override;
    QString getBasicFormula() const override;
    QString getVolFormula() const override;
    bool showContextMenu() const override;
    bool fillRequestParam(CFormulaParam &param, const QString &key,
                          boost::shared_ptr<CFormulaDetail> formula) override;
};

} // namespace TC
