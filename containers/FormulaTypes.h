#pragma once

#include "host/records/CFormulaDetail.h"
#include "host/services/CFormulaOperateManager.h"

#include <QString>

namespace TC {

/// Null when the catalogue lacks it.
inline CFormulaDetailPtr formulaDetail(const QString &name) {
    return CSingletonT<CFormulaOperateManager>::instance().getFormula(name);
}

inline bool isFormulaOfType(const QString &name, EFormulaType type) {
    const CFormulaDetailPtr detail = formulaDetail(name);
    return detail && detail->mType == type;
}

} // namespace TC
