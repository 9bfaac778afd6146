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
///
/// A host has to know its formulas by name. Without more they stand in no menu and cannot be edited.
class TIMESHARE_EXPORT CFormulaOperateManager {
public:
    virtual ~CFormulaOperateManager() = default;

    /// The formula of that name in any letter case, or null. A record never changes: after an edit there is a new one.
    virtual CFormulaDetailPtr getFormula(const QString &name) = 0;
    /// The root folder of the catalogue; never null. Empty without an answer of the host's.
    virtual CFormulaCatalogDetailPtr getRootCatalog();
    /// Prepares the compiled form of a formula, told by its file and its name, before it is requested.
    virtual bool genLuaFormula(const QString &, const QString &) { return true; }
    /// Folder of the script models, without a trailing separator.
    virtual QString pythonDir() { return {}; }

    /// The parameters of a formula, numbers and texts in the order of its text; empty for an unknown one.
    virtual CFormulaParameters parameters(const QString &) { return {}; }
    /// Sets parameters of a formula by their names and keeps them; one that is not named stays as it is. Answers why not,
    /// in words for the user, and then nothing has changed; an empty text when it is done.
    virtual QString setParameters(const QString &name, const CFormulaParameters &parameters);

    /// The text of a formula; an empty one for an unknown name.
    virtual CFormulaSource source(const QString &) { return {}; }
    /// The text that a new formula of a name starts from.
    virtual QString newFormulaText(const QString &) { return {}; }
    /// What is wrong with a formula's text, if anything.
    virtual CFormulaFault checkFormula(const QString &text);
    /// Keeps a text as the user's own, and makes it the formula that its text names: `name` in any letter case, or a
    /// new one that no other formula has. A faulty text is not kept. `name` is empty for a new formula, and is the
    /// formula's name afterwards.
    virtual CFormulaFault saveFormula(QString &name, const QString &text);
    /// Takes the user's text of a formula away, so that the built-in one stands again. Answers why not, or an empty
    /// text.
    virtual QString restoreFormula(const QString &name);
};

/// Name of a formula with its parameters behind it, "MACD(12,26,9)"; the name alone when there is no record.
inline QString formulaHead(const QString &name, CFormulaOperateManager &catalogue) {
    const CFormulaDetailPtr formula = catalogue.getFormula(name);
    return formula ? formula->mName + formulaParamText(*formula) : name;
}
inline QString formulaHead(const QString &name) {
    return formulaHead(name, CSingletonT<CFormulaOperateManager>::instance());
}

/// Folder of the script models, without a trailing separator.
inline QString getPythonDir() {
    return CSingletonT<CFormulaOperateManager>::instance().pythonDir();
}

} // namespace TC
