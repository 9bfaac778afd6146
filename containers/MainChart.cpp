#include "containers/MainChart.h"

#include "containers/CRealtimeWidget.h"
#include "containers/FormulaTypes.h"
#include "containers/PaneRow.h"
#include "host/services/ServiceContext.h"
#include "host/services/StockTypeCenter.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <utility>

namespace TC {

namespace {

constexpr int kNetValueType = 100013; ///< funds that publish an indicative net value

QString netValueFormula() {
    return QStringLiteral("IOPV");
}

} // namespace

MainChart::MainChart(const PaneRow &panes, boost::shared_ptr<CRealtimeUiParam> uiParam)
    : mPanes(panes), mUiParam(std::move(uiParam)) {}

const ServiceContext &MainChart::services() const {
    return mUiParam->services();
}

bool MainChart::has(const QString &formula) const {
    return mPanes.main()->findIndex(formula);
}

void MainChart::add(const QString &formula) {
    mPanes.main()->addIndex(formula);
}

void MainChart::remove(const QString &formula) {
    if (has(formula)) {
        mPanes.main()->delIndex(formula);
    }
}

// The kind of instrument

void MainChart::addMainFormulas() {
    for (const QString &name : mUiParam->getMainFormula()) {
        add(name);
    }
}

void MainChart::removeMainFormulas(const QList<QString> &names) {
    for (const QString &name : names) {
        mPanes.main()->delIndex(name);
    }
}

void MainChart::applyNetValue() {
    const CInstrumentDetailPtr detail = mUiParam->getStockDetail();
    const bool wanted = detail && mUiParam->service<kvservice::StockTypeCenter>().isOfType(
                                      kNetValueType, getDetailMarket(detail), getDetailCode(detail));
    if (!wanted) {
        remove(netValueFormula());
    } else if (!has(netValueFormula())) {
        add(netValueFormula());
    }
}

// The user's formulas

void MainChart::replaceBy(const QString &formula) {
    for (const QString &former : mUiParam->getMainFormula()) {
        remove(former);
    }
    for (const QString &former : mPanes.main()->getIndexes()) {
        if (formulaType(former, mUiParam->services()) == eReplacingFormula) {
            mPanes.main()->delIndex(former);
        }
    }
    mUiParam->mShowVolume = mUiParam->isMainFormula(formula);
    add(formula);
    if (mUiParam->mShowVolume) {
        add(QStringLiteral("REALTIMEVOL"));
    }
}

bool MainChart::restoreOrdinary() {
    if (!mPanes.main()->getMainIndex().isEmpty()) {
        return false;
    }
    add(QStringLiteral("REALTIME"));
    add(QStringLiteral("REALTIMEVOL"));
    return true;
}

void MainChart::attach(const QString &formula) {
    for (const QString &former : mPanes.main()->getIndexes()) {
        if (!mUiParam->isMainFormula(former) &&
            formulaType(former, mUiParam->services()) != eReplacingFormula) {
            mPanes.main()->delIndex(former);
        }
    }
    add(formula);
}

bool MainChart::toggleAttached(const QString &formula) {
    if (has(formula)) {
        remove(formula);
        return restoreOrdinary();
    }
    attach(formula);
    return true;
}

void MainChart::attachAnew(const QString &formula) {
    if (!has(formula)) {
        attach(formula);
        return;
    }
    remove(formula);
    restoreOrdinary();
    add(formula);
}

} // namespace TC
