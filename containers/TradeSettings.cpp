#include "containers/TradeSettings.h"

#include "chartdata/LinkageScope.h"
#include "containers/CRealtimeWidget.h"
#include "containers/PaneRow.h"
#include "containers/Repaint.h"
#include "linkage/CRealtimeLinkageSettingDialog.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <utility>

namespace TC {

TradeSettings::TradeSettings(QWidget *view, const PaneRow &panes, boost::shared_ptr<CRealtimeUiParam> uiParam)
    : mView(view), mPanes(panes), mUiParam(std::move(uiParam)) {}

TradeSettings::~TradeSettings() {
    delete std::exchange(mDialog, nullptr);
}

void TradeSettings::show() {
    mUiParam->mLinkageFlags |= eSelectedDataView;
    if (!mDialog) {
        mDialog = new CRealtimeLinkageSettingDialog(mView);
        mDialog->setParam(mSetting);
    }
    mDialog->show();
    mDialog->raise();
    takeChoice();
}

void TradeSettings::takeChoice() {
    if (!mDialog || !(mUiParam->mLinkageFlags & eSelectedDataView)) {
        return;
    }
    mUiParam->mLinkageShow = mDialog->showFlags();
    mUiParam->mLinkageAccounts = mDialog->getAccounts();
    mUiParam->mLinkageStrategys = mDialog->getStrategys();
    mUiParam->mLinkageStocks = mDialog->getStocks();
    refresh();
}

void TradeSettings::close() {
    mUiParam->mLinkageFlags &= ~eSelectedDataView;
    repaintMain();
}

void TradeSettings::refresh() {
    if (mUiParam->mLinkageFlags != eNoLinkage) {
        repaintMain();
    }
}

void TradeSettings::repaintMain() {
    mPanes.main()->updateView();
    updateWithChildren(mPanes.main());
}

QMap<QString, bool> TradeSettings::setting() const {
    return mDialog ? mDialog->param() : mSetting;
}

void TradeSettings::preset(const QString &name, bool checked) {
    mSetting[name] = checked;
}

void TradeSettings::load(const QMap<QString, bool> &setting) {
    if (mDialog) {
        mDialog->setParam(setting);
    }
}

} // namespace TC
