#pragma once

#include "host/services/CFormulaOperateManager.h"

#include <QMap>

namespace terminal {

/// The formulas that the terminal offers, by name in any letter case. The records are made once and live as long as
/// the catalogue. Any thread.
class FormulaCatalogue : public TC::CFormulaOperateManager {
public:
    FormulaCatalogue();

    TC::CFormulaDetailPtr getFormula(const QString &name) override;
    /// Native formulas are ready as they are: true for those of the catalogue.
    bool genLuaFormula(const QString &fileName, const QString &name) override;
    QString pythonDir() override;
    TC::CFormulaCatalogDetailPtr getRootCatalog() override { return mRoot; }
    TC::CFormulaParameters parameters(const QString &name) override;
    QString setParameters(const QString &name, const TC::CFormulaParameters &parameters) override;
    TC::CFormulaSource source(const QString &name) override;
    QString newFormulaText(const QString &name) override;
    TC::CFormulaFault checkFormula(const QString &text) override;
    TC::CFormulaFault saveFormula(QString &name, const QString &text) override;
    QString restoreFormula(const QString &name) override;

private:
    void add(const QString &name, int type, const QMap<int, int> &precisions);

    QMap<QString, TC::CFormulaDetailPtr> mFormulas; ///< by upper-case name
    TC::CFormulaCatalogDetailPtr mRoot;
};

} // namespace terminal
