#pragma once

#include "host/services/CFormulaOperateManager.h"

#include <QString>

namespace TC {

/// Where a formula is drawn: CFormulaDetail::mType.
enum EFormulaType : int {
    eUnknownFormula = -1, ///< in the host's words for a formula of its own; counts as eSubFormula
    eSubFormula = 0, ///< in a pane of its own
    eAttachedFormula = 1, ///< on the main chart
    eReplacingFormula = 2, ///< in place of the main chart
};

/// Null when the catalogue lacks it.
inline CFormulaDetailPtr formulaDetail(const QString &name) {
    return CSingletonT<CFormulaOperateManager>::instance().getFormula(name);
}

inline bool isFormulaOfType(const QString &name, EFormulaType type) {
    const CFormulaDetailPtr detail = formulaDetail(name);
    return detail && detail->mType == type;
}

} // namespace TC
