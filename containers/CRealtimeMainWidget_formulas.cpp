// Where a formula goes: whether it replaces the main chart, joins it, or has a pane of its own.

#include "containers/CRealtimeMainWidget.h"
#include "containers/DownloadProgress.h"
#include "containers/Repaint.h"
#include "host/services/CConfigService.h"
#include "host/services/CFormulaOperateManager.h"
#include "host/windows/CIndexModelWidget.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <algorithm>

namespace TC {

namespace {

/// CFormulaDetail::mType.
enum EFormulaType : int { eSubPane = 0, eAttached = 1, eReplacing = 2 };
constexpr int kTypeUnknown = -1; ///< of the host: counts as eSubPane

/// First argument of updateIndex: what has happened to a formula.
enum EFormulaOperation : int { eShown = 0, eApplied = 1, eConfirmed = 2, eModified = 3, eDeleted = 4 };

constexpr corvane::ERunMode kOrdinary = corvane::ERunMode::Ordinary;
constexpr int kAdd = 1; ///< of CRealtimeWidget::updateIndex

CFormulaDetailPtr detailOf(const QString &name) {
    return CSingletonT<CFormulaOperateManager>::instance().getFormula(name);
}

bool isReplacing(const QString &name) {
    const CFormulaDetailPtr detail = detailOf(name);
    return detail && detail->mType == eReplacing;
}

void writeShowVwap(bool show) {
    UserConfigInterface &config = SingletonManager::getIndexUserConfig();
    UserConfigRecord record = config.read();
    record.mShowVwap = show;
    config.write(record);
}

} // namespace

void CRealtimeMainWidget::updateIndex(const QString &name, int op, EFormulaLanguage language,
                                      corvane::ERunMode mode) {
    switch (op) {
    case eShown:
        handleDoubleClickedFormula(name);
        break;
    case eApplied:
        handleApplyFormula(name, language, mode);
        break;
    case eConfirmed:
        handleConfirmFormula(name);
        break;
    case eModified:
        handleModifyFormula(name, language);
        break;
    case eDeleted:
        handleDeleteFormula(name);
        if (mIndexModelWidget) {
            mIndexModelWidget->delIndexTemplate(name);
        }
        break;
    default:
        break;
    }
}

void CRealtimeMainWidget::handleDoubleClickedFormula(const QString &name) {
    const CFormulaDetailPtr detail = detailOf(name);
    if (!detail) {
        return;
    }
    if (detail->mType == eReplacing) {
        replaceMainChart(name);
        mMainWidget->request(kOrdinary);
    } else if (detail->mType == eAttached) {
        if (toggleAttached(name)) {
            mMainWidget->request(kOrdinary);
        }
        removeFromSubPanes(name);
    } else if (detail->mType == eSubPane) {
        showSubFormula(name);
    }
}

void CRealtimeMainWidget::handleApplyFormula(const QString &name, EFormulaLanguage /*language*/,
                                             corvane::ERunMode mode) {
    const CFormulaDetailPtr detail = detailOf(name);
    if (!detail) {
        return;
    }
    if (detail->mType == eReplacing) {
        replaceMainChart(name);
        mMainWidget->request(mode);
    } else if (detail->mType == eAttached) {
        applyAttached(name, mode);
        removeFromSubPanes(name);
    } else if (detail->mType == eSubPane) {
        applySubFormula(name, mode);
    }
}

void CRealtimeMainWidget::handleConfirmFormula(const QString &name) {
    const CFormulaDetailPtr detail = detailOf(name);
    if (!detail) {
        return;
    }
    if (detail->mType == eReplacing) {
        replaceMainChart(name);
        mMainWidget->request(kOrdinary);
    } else if (detail->mType == eAttached && mMainWidget->findIndex(name)) {
        mMainWidget->delIndex(name);
        mMainWidget->addIndex(name);
        mMainWidget->request(kOrdinary);
    } else if (detail->mType == eSubPane) {
        for (CRealtimeWidget *pane : qAsConst(mSubWidgets)) {
            if (pane->findIndex(name)) {
                showInPane(pane, name, kOrdinary);
            }
        }
    }
}

void CRealtimeMainWidget::handleModifyFormula(const QString &name, EFormulaLanguage /*language*/) {
    const CFormulaDetailPtr detail = detailOf(name);
    if (!detail || detail->mType < eSubPane || detail->mType > eReplacing) {
        return;
    }
    if (mMainWidget->findIndex(name)) {
        mMainWidget->delIndex(name);
        mMainWidget->addIndex(name);
        mMainWidget->request(kOrdinary);
    }
    for (CRealtimeWidget *pane : qAsConst(mSubWidgets)) {
        if (pane->findIndex(name)) {
            pane->updateIndex(name);
            pane->request(kOrdinary);
        }
    }
    updateWithChildren(this);
}

void CRealtimeMainWidget::handleDeleteFormula(const QString &name) {
    deleteMainFormula(name);
    removeFromSubPanes(name);
    updateWithChildren(this);
}

void CRealtimeMainWidget::deleteMainFormula(const QString &name) {
    if (mMainWidget->findIndex(name)) {
        mMainWidget->delIndex(name);
    }
}

void CRealtimeMainWidget::removeFromSubPanes(const QString &name) {
    for (CRealtimeWidget *pane : qAsConst(mSubWidgets)) {
        if (pane->findIndex(name)) {
            pane->delIndex(name);
        }
    }
}

// The main chart

/// The ordinary chart comes back when nothing else stands on the main pane; answers whether it did.
bool CRealtimeMainWidget::restoreOrdinaryChart() {
    if (!mMainWidget->getMainIndex().isEmpty()) {
        return false;
    }
    mMainWidget->addIndex(QStringLiteral("REALTIME"));
    mMainWidget->addIndex(QStringLiteral("REALTIMEVOL"));
    return true;
}

/// Removes what is attached to the main chart; the chart itself stays.
void CRealtimeMainWidget::clearMain() {
    for (const QString &name : mMainWidget->getIndexes()) {
        if (!mUiParam->isMainFormula(name) && !isReplacing(name)) {
            mMainWidget->delIndex(name);
        }
    }
}

/// Puts a formula in the place of the main chart, of which only one stands at a time.
void CRealtimeMainWidget::replaceMainChart(const QString &name) {
    for (const QString &former : mUiParam->getMainFormula()) {
        deleteMainFormula(former);
    }
    for (const QString &former : mMainWidget->getIndexes()) {
        if (isReplacing(former)) {
            mMainWidget->delIndex(former);
        }
    }
    mUiParam->mShowVolume = mUiParam->isMainFormula(name);
    mMainWidget->addIndex(name);
    if (mUiParam->mShowVolume) {
        mMainWidget->addIndex(QStringLiteral("REALTIMEVOL"));
    }
}

/// Attaches a formula in the place of the one attached before, or takes it off again. Answers whether the main pane
/// has something new to show.
bool CRealtimeMainWidget::toggleAttached(const QString &name) {
    if (mMainWidget->findIndex(name)) {
        mMainWidget->delIndex(name);
        return restoreOrdinaryChart();
    }
    clearMain();
    mMainWidget->addIndex(name);
    return true;
}

void CRealtimeMainWidget::applyAttached(const QString &name, corvane::ERunMode mode) {
    if (mMainWidget->findIndex(name)) {
        mMainWidget->delIndex(name);
        restoreOrdinaryChart();
    } else {
        clearMain();
    }
    mMainWidget->addIndex(name);
    mMainWidget->request(mode);
}

// Formula panes

void CRealtimeMainWidget::showInPane(CRealtimeWidget *pane, const QString &name, corvane::ERunMode mode) {
    updateIndexTemplate(pane, name);
    pane->updateIndex(name);
    pane->request(mode);
}

CRealtimeWidget *CRealtimeMainWidget::addPaneOf(const QString &name) {
    addIndexWidget();
    mSubWidgets.last()->addIndex(name);
    return mSubWidgets.last();
}

/// The formula pane that is selected, else the last one; null when there is none.
CRealtimeWidget *CRealtimeMainWidget::targetPane() const {
    CRealtimeWidget *selected = subPaneOf(mCurrentWidgetId);
    return selected || mSubWidgets.isEmpty() ? selected : mSubWidgets.last();
}

/// A formula that stood on the main pane leaves it. The ordinary chart is looked for before it goes: with nothing else
/// there, the formula itself counts as the chart.
void CRealtimeMainWidget::takeFromMain(const QString &name) {
    if (!mMainWidget->findIndex(name)) {
        return;
    }
    if (restoreOrdinaryChart()) {
        mMainWidget->request(kOrdinary);
    }
    mMainWidget->delIndex(name);
}

void CRealtimeMainWidget::showSubFormula(const QString &name) {
    takeFromMain(name);
    if (mSubWidgets.isEmpty()) {
        addPaneOf(name)->request(kOrdinary);
    } else if (mCurrentWidgetId == mMainWidget->getId()) {
        mSubWidgets.last()->updateIndex(name); // the template bar does not hear of it
        mSubWidgets.last()->request(kOrdinary);
    } else {
        showInPane(targetPane(), name, kOrdinary);
    }
}

void CRealtimeMainWidget::applySubFormula(const QString &name, corvane::ERunMode mode) {
    if (mMainWidget->findIndex(name)) {
        mMainWidget->delIndex(name);
        if (restoreOrdinaryChart()) {
            mMainWidget->request(mode);
        }
    }
    if (mSubWidgets.isEmpty()) {
        addPaneOf(name)->request(mode);
    } else {
        showInPane(targetPane(), name, mode);
    }
}

void CRealtimeMainWidget::updateIndexTemplate(CRealtimeWidget *pane, const QString &name) {
    if (mIndexModelWidget && pane && name != pane->gePretIndex()) {
        mIndexModelWidget->updateIndexTemplate(pane->gePretIndex());
    }
}

// Formulas under a key of the host

void CRealtimeMainWidget::createIndexWidget(const QString &key, int type, const QString &name) {
    CIndexWidgetInfo info;
    info.mName = name;
    info.mKey = key;
    info.mType = type;
    if (type == eReplacing) {
        replaceMainChart(name);
        info.mWidget = mMainWidget;
    } else if (type == eAttached) {
        const bool takenOff = mMainWidget->findIndex(name);
        if (toggleAttached(name) && takenOff) {
            mMainWidget->request(kOrdinary);
        }
        info.mWidget = takenOff ? nullptr : mMainWidget;
        removeFromSubPanes(name);
    } else if (type == eSubPane || type == kTypeUnknown) {
        info.mWidget = placeSubFormula(key, name);
    } else {
        return;
    }
    mIndexWidgetInfos.insert(key, info);
}

/// Answers the pane that shows the formula of a key.
CRealtimeWidget *CRealtimeMainWidget::placeSubFormula(const QString &key, const QString &name) {
    takeFromMain(name);
    const auto known = mIndexWidgetInfos.constFind(key);
    if (mSubWidgets.isEmpty() || known == mIndexWidgetInfos.constEnd()) {
        return addPaneOf(name);
    }
    if (mCurrentWidgetId == mMainWidget->getId()) {
        mSubWidgets.last()->updateIndex(name);
        return known->mWidget;
    }
    const auto shows = [&name](const CRealtimeWidget *pane) { return pane->gePretIndex() == name; };
    const auto found = std::find_if(mSubWidgets.begin(), mSubWidgets.end(), shows);
    if (found == mSubWidgets.end()) {
        return addPaneOf(name);
    }
    updateIndexTemplate(*found, name);
    (*found)->updateIndex(name);
    return *found;
}

void CRealtimeMainWidget::destoryWidget(const QString &key) {
    if (CRealtimeWidget *pane = mIndexWidgetInfos.value(key).mWidget) {
        pane->destorySubWidget();
    }
}

void CRealtimeMainWidget::minitermFormulaDataCallback(const QString &key, const FormulaMetaPtr &meta,
                                                      const FormulaResultPtr &result) {
    const CIndexWidgetInfo info = mIndexWidgetInfos.value(key);
    if (info.mWidget) {
        info.mWidget->minitermFormulaDataCallback(meta, result, info.mKey, info.mName,
                                                  info.mType != eReplacing ? 1 : 0);
    }
}

// The trade-data formula

void CRealtimeMainWidget::applyFormula() {
    const QString formula = mUiParam->getApplyMainFormula();
    const QString account = mUiParam->mFormulaAccount;
    const bool show = SingletonManager::getIndexUserConfig().read().mShowVwap;
    const bool there = mMainWidget->findIndex(formula);
    if (show && !there && !account.isEmpty()) {
        mMainWidget->addIndex(formula);
    } else if (!show && there) {
        mMainWidget->delIndex(formula);
    } else {
        return;
    }
    if (!account.isEmpty()) {
        mMainWidget->updateLinkageData(account, show);
    }
}

void CRealtimeMainWidget::updateFrormulaData(const QString &account) {
    const QString formula = mUiParam->getApplyMainFormula();
    if (account.isEmpty()) {
        mMainWidget->delIndex(formula);
        mMainWidget->updateLinkageData(mUiParam->mFormulaAccount, false);
        writeShowVwap(false);
        return;
    }
    if (!SingletonManager::getIndexUserConfig().read().mShowVwap || !mMainWidget->findIndex(formula)) {
        writeShowVwap(true);
        mMainWidget->updateIndex(kAdd, formula);
    }
    mMainWidget->updateLinkageData(account, true);
}

void CRealtimeMainWidget::addMultiVewFormulaAndLinkageData(bool addFormula) {
    const QString formula = mUiParam->getApplyMainFormula();
    if (addFormula && !mMainWidget->findIndex(formula)) {
        mMainWidget->addIndex(formula);
    }
    mMainWidget->updateLinkageData(mUiParam->mFormulaAccount, true);
}

void CRealtimeMainWidget::delMultiVewFormulaAndLinkageData(const QList<QString> &accounts) {
    deleteMainFormula(mUiParam->getApplyMainFormula());
    mMainWidget->updateLinkageData(accounts, false);
}

void CRealtimeMainWidget::updateLinkageData(const QList<QString> &accounts, bool show) {
    mMainWidget->updateLinkageData(accounts, show);
}

void CRealtimeMainWidget::updateLinkageData(const QString & /*account*/, bool show) {
    mMainWidget->updateLinkageData(mUiParam->mFormulaAccount, show);
}

} // namespace TC
