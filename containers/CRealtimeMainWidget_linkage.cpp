// The user's trades on the chart, as the settings dialog has them.

#include "chartdata/LinkageScope.h"
#include "containers/CRealtimeMainWidget.h"
#include "containers/Repaint.h"
#include "linkage/CRealtimeLinkageSettingDialog.h"
#include "viewmodel/CRealtimeUiParam.h"

namespace TC {

void CRealtimeMainWidget::showLinkageSetting() {
    mUiParam->mLinkageFlags |= eSelectedDataView;
    if (!mLinkageDialog) {
        mLinkageDialog = new CRealtimeLinkageSettingDialog(this);
        mLinkageDialog->setParam(mLinkageSetting);
    }
    mLinkageDialog->show();
    mLinkageDialog->raise();
    updateLinkageSetting();
}

void CRealtimeMainWidget::showLinkageDataFromKey() {
    showLinkageSetting();
}

void CRealtimeMainWidget::updateLinkageSetting() {
    if (!mLinkageDialog || !(mUiParam->mLinkageFlags & eSelectedDataView)) {
        return;
    }
    mUiParam->mLinkageShow = mLinkageDialog->showFlags();
    mUiParam->mLinkageAccounts = mLinkageDialog->getAccounts();
    mUiParam->mLinkageStrategys = mLinkageDialog->getStrategys();
    mUiParam->mLinkageStocks = mLinkageDialog->getStocks();
    updateLinkageDatas();
}

void CRealtimeMainWidget::updateLinkageDatas() {
    if (mUiParam->mLinkageFlags != eNoLinkage) {
        mMainWidget->updateView();
        updateWithChildren(mMainWidget);
    }
}

void CRealtimeMainWidget::closeLinkageSetting() {
    mUiParam->mLinkageFlags &= ~eSelectedDataView;
    mMainWidget->updateView();
    updateWithChildren(mMainWidget);
}

QMap<QString, bool> CRealtimeMainWidget::getLinkageDialogSetting() const {
    return mLinkageDialog ? mLinkageDialog->param() : mLinkageSetting;
}

void CRealtimeMainWidget::presetLinkageDialogSetting(const QMap<QString, bool> &setting) {
    for (auto entry = setting.begin(); entry != setting.end(); ++entry) {
        mLinkageSetting[entry.key()] = entry.value();
    }
}

void CRealtimeMainWidget::loadLinkageDialogSetting(const QMap<QString, bool> &setting) {
    if (mLinkageDialog) {
        mLinkageDialog->setParam(setting);
    }
}

} // namespace TC
