#pragma once

#include "host/Export.h"
#include "host/records/CFormulaCatalogDetail.h"
#include "host/records/CFormulaDetail.h"
#include "host/records/CFormulaParameter.h"
#include "host/records/CFormulaSource.h"
#include "host/services/CSingletonT.h"

#include <QString>

namespace TC {

/// The formula catalogue: its tree, the records, parameters and texts of the formulas.
class TIMESHARE_EXPORT CFormulaOperateManager {
public:
    virtual ~CFormulaOperateManager() = default;

    /// The formula of that name in any letter case, or null. A record never changes: after an edit there is a new one.
    virtual CFormulaDetailPtr getFormula(const QString &name) = 0;
    /// The root folder of the catalogue; never null.
    virtual CFormulaCatalogDetailPtr getRootCatalog() = 0;
    /// Prepares the compiled form of a formula before it is requested.
    virtual bool genLuaFormula(const QString &fileName, const QString &name) = 0;
    /// Folder of the script models, without a trailing separator.
    virtual QString pythonDir() = 0;

    /// The parameters of a formula, numbers and texts in the order of its text; empty for an unknown one.
    virtual CFormulaParameters parameters(const QString &name) = 0;
    /// Sets parameters by their names and keeps them; one that is not named stays as it is. Answers why not, in words
    /// for the user, and then nothing has changed; an empty text when it is done.
    virtual QString setParameters(const QString &name, const CFormulaParameters &parameters) = 0;

    /// The text of a formula; an empty one for an unknown name.
    virtual CFormulaSource source(const QString &name) = 0;
    /// The text that a new formula of a name starts from.
    virtual QString newFormulaText(const QString &name) = 0;
    /// What is wrong with a formula's text, if anything.
    virtual CFormulaFault checkFormula(const QString &text) = 0;
    /// Keeps a text as the user's own, and makes it the formula that its text names: `name` in any letter case, or a
    /// new one that no other formula has. A faulty text is not kept. `name` is empty for a new formula, and is the
    /// formula's name afterwards.
    virtual CFormulaFault saveFormula(QString &name, const QString &text) = 0;
    /// Takes the user's text of a formula away, so that the built-in one stands again. Answers why not, or an empty
    /// text.
    virtual QString restoreFormula(const QString &name) = 0;
};

/// Name of a formula with its parameters behind it, "MACD(12,26,9)"; the name alone when there is no record.
inline QString formulaHead(const QString &name) {
    const CFormulaDetailPtr formula = CSingletonT<CFormulaOperateManager>::instance().getFormula(name);
    return formula ? formula->mName + formulaParamText(*formula) : name;
}

/// Folder of the script models, without a trailing separator.
inline QString getPythonDir() {
    return CSingletonT<CFormulaOperateManager>::instance().pythonDir();
}

} // namespace TC
