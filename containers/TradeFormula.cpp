#include "containers/TradeFormula.h"

#include "containers/CRealtimeWidget.h"
#include "containers/MainChart.h"
#include "containers/PaneRow.h"
#include "host/services/CConfigService.h"
#include "host/toolkit/Events.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <utility>

namespace TC {

namespace {

bool isVwapShown(const CRealtimeUiParam &uiParam) {
    return uiParam.service<CConfigService>().indexUserConfig().read().mShowVwap;
}

void writeShowVwap(const CRealtimeUiParam &uiParam, bool show) {
    UserConfigInterface &config = uiParam.service<CConfigService>().indexUserConfig();
    UserConfigRecord record = config.read();
    record.mShowVwap = show;
    config.write(record);
}

} // namespace

TradeFormula::TradeFormula(const PaneRow &panes, MainChart &chart,
                           boost::shared_ptr<const CRealtimeUiParam> uiParam)
    : mPanes(panes), mChart(chart), mUiParam(std::move(uiParam)) {}

void TradeFormula::apply() {
    const QString formula = mUiParam->getApplyMainFormula();
    const QString account = mUiParam->mFormulaAccount;
    const bool show = isVwapShown(*mUiParam);
    const bool there = mChart.has(formula);
    if (show && !there && !account.isEmpty()) {
        mChart.add(formula);
    } else if (!show && there) {
        mChart.remove(formula);
    } else {
        return;
    }
    if (!account.isEmpty()) {
        mPanes.main()->updateLinkageData(account, show);
    }
}

void TradeFormula::setAccount(const QString &account) {
    const QString formula = mUiParam->getApplyMainFormula();
    if (account.isEmpty()) {
        mPanes.main()->delIndex(formula);
        mPanes.main()->updateLinkageData(mUiParam->mFormulaAccount, false);
        writeShowVwap(*mUiParam, false);
        return;
    }
    if (!isVwapShown(*mUiParam) || !mChart.has(formula)) {
        writeShowVwap(*mUiParam, true);
        mPanes.main()->updateIndex(ePutFormulaOn, formula);
    }
    mPanes.main()->updateLinkageData(account, true);
}

void TradeFormula::show(bool withFormula) {
    const QString formula = mUiParam->getApplyMainFormula();
    if (withFormula && !mChart.has(formula)) {
        mChart.add(formula);
    }
    mPanes.main()->updateLinkageData(mUiParam->mFormulaAccount, true);
}

void TradeFormula::remove() {
    mChart.remove(mUiParam->getApplyMainFormula());
}

} // namespace TC
