#include "terminal/formula/FormulaCatalogue.h"

#include <QStandardPaths>

#include <boost/make_shared.hpp>

namespace terminal {
namespace {

constexpr int kReplacesMainChart = 2;

} // namespace

FormulaCatalogue::FormulaCatalogue() {
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
    mFormulas.insert(name, detail);
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

} // namespace terminal
