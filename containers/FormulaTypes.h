#pragma once

#include "host/records/CFormulaDetail.h"
#include "host/services/CFormulaOperateManager.h"
#include "host/services/ServiceContext.h"

#include <QString>

namespace TC {

/// EFormulaType of a formula; -1 when the catalogue lacks it.
inline int formulaType(const QString &name, const ServiceContext &services) {
    const CFormulaDetailPtr detail = services.get<CFormulaOperateManager>().getFormula(name);
    return detail ? detail->mType : -1;
}

} // namespace TC
