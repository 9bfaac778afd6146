#include "host/services/CFormulaOperateManager.h"

#include <QCoreApplication>

#include <boost/make_shared.hpp>

namespace TC {
namespace {

QString refusalToEdit() {
    return QCoreApplication::translate("TC::CFormulaOperateManager", "公式不能修改");
}

} // namespace

CFormulaCatalogDetailPtr CFormulaOperateManager::getRootCatalog() {
    return boost::make_shared<CFormulaCatalogDetail>();
}

QString CFormulaOperateManager::setParameters(const QString &, const CFormulaParameters &) {
    return refusalToEdit();
}

CFormulaFault CFormulaOperateManager::checkFormula(const QString &) {
    return {0, refusalToEdit()};
}

CFormulaFault CFormulaOperateManager::saveFormula(QString &, const QString &) {
    return {0, refusalToEdit()};
}

QString CFormulaOperateManager::restoreFormula(const QString &) {
    return refusalToEdit();
}

} // namespace TC
