#include "terminal/formula/FormulaCatalogue.h"

#include <QCoreApplication>
#include <QStandardPaths>

#include <boost/make_shared.hpp>

namespace terminal {
namespace {

constexpr int kReplacesMainChart = 2;

QString fixedText() {
    return QCoreApplication::translate("FormulaCatalogue", "内置指标不能修改");
}

} // namespace

FormulaCatalogue::FormulaCatalogue() : mRoot(boost::make_shared<TC::CFormulaCatalogDetail>()) {
    // Prices take their decimals from the price step of the instrument, volumes have none.
    add(QStringLiteral("REALTIME"), kReplacesMainChart, {});
    add(QStringLiteral("REALTIMEVOL"), kReplacesMainChart, {{0, 0}});
}

void FormulaCatalogue::add(const QString &name, int type, const QMap<int, int> &precisions) {
    const auto detail = boost::make_shared<TC::CFormulaDetail>();
    detail->mName = name;
    detail->mFileName = name;
    detail->mType = type;
    detail->mPrecisions = precisions;
    detail->mVisible = false;
    mFormulas.insert(name, detail);
    mRoot->addChild(boost::make_shared<TC::CFormulaCatalogDetail>(name, TC::CFormulaCatalogDetail::eFormula));
}

TC::CFormulaDetailPtr FormulaCatalogue::getFormula(const QString &name) {
    return mFormulas.value(name.toUpper());
}

bool FormulaCatalogue::genLuaFormula(const QString &fileName, const QString &name) {
    const TC::CFormulaDetailPtr detail = getFormula(name);
    return detail && detail->mFileName == fileName;
}

QString FormulaCatalogue::pythonDir() {
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QStringLiteral("/scripts");
}

TC::CFormulaParameters FormulaCatalogue::parameters(const QString &) {
    return {};
}

QString FormulaCatalogue::setParameters(const QString &, const TC::CFormulaParameters &) {
    return fixedText();
}

TC::CFormulaSource FormulaCatalogue::source(const QString &) {
    return {};
}

QString FormulaCatalogue::newFormulaText(const QString &) {
    return {};
}

TC::CFormulaFault FormulaCatalogue::checkFormula(const QString &) {
    return {0, fixedText()};
}

TC::CFormulaFault FormulaCatalogue::saveFormula(QString &, const QString &) {
    return {0, fixedText()};
}

QString FormulaCatalogue::restoreFormula(const QString &) {
    return fixedText();
}

} // namespace terminal
