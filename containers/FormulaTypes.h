#pragma once

#include "host/records/CFormulaDetail.h"
#include "host/services/CFormulaOperateManager.h"

#include <QString>

namespace TC {

/// EFormulaType of a formula; -1 when the catalogue lacks it.
inline int formulaType(const QString &name) {
    const CFormulaDetailPtr detail = CSingletonT<CFormulaOperateManager>::instance().getFormula(name);
    return detail ? detail->mType : -1;
}

} // namespace TC
