#pragma once

#include "host/records/CFormulaDetail.h"
#include "host/services/CSingletonT.h"

#include <QString>

namespace TC {

/// The formula catalogue.
class CFormulaOperateManager {
public:
    virtual ~CFormulaOperateManager() = default;

    /// The formula of that name in any letter case, or null.
    virtual CFormulaDetailPtr getFormula(const QString &name) = 0;
    /// Prepares the compiled form of a formula before it is requested.
    virtual bool genLuaFormula(const QString &fileName, const QString &name) = 0;
    /// Folder of the script models, without a trailing separator.
    virtual QString pythonDir() = 0;
};

/// Folder of the script models, without a trailing separator.
inline QString getPythonDir() {
    return CSingletonT<CFormulaOperateManager>::instance().pythonDir();
}

} // namespace TC
