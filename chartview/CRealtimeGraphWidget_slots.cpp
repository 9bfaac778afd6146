// What the entries of a graph's menus do.

#include "chartdata/CRealtimeData.h"
#include "chartdata/LinkageScope.h"
#include "chartdata/RequestLog.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "host/services/CConfigService.h"
#include "host/services/CFormulaOperateManager.h"
#include "host/services/CIndexMainWindowHelper.h"
#include "host/services/CLinkageManager.h"
#include "host/services/CSectorManager.h"
#include "host/services/CStrategyTradeManager.h"
#include "host/toolkit/CMessageBox.h"
#include "host/windows/CAddSelfStockDialog.h"
#include "host/windows/CFormulaEditorManager.h"
#include "host/windows/CModifyModelParamDialog.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QPointer>
#include <QStringList>
#include <boost/format.hpp>

#include <algorithm>

namespace TC {

namespace {

enum EEvent : int {
    eFormulaReplaced = 180,
    eViewChanged = 207,
    eFormulaAsked = 208,
    eOverlayAsked = 209,
    eCloseAsked = 3020,
    eOrdinaryChartAsked = 3021,
    ePaneAsked = 3023,
    eTitleChanged = 3029,
    eNewWorkAsked = 3159,
    eLinkageAsked = 3160,
    eFixedPriceAsked = 3226,
    eAutoPeriodAsked = 3254,
    eFilterChanged = 3262,
    eReplayControlAsked = 3267,
    eSelfStockAsked = 4001,
};

/// What event 209 asks for.
enum EOverlay : int { eTakeAll = 0, eWithAxis = 1, eRenew = 2 };
/// What event 208 asks for.
enum EFormula : int { eTakeOff = 0, ePutOn = 1 };

constexpr int kNoLevel = -1;
constexpr int kHostsChoice = -1; ///< second argument of event 3254

bool isAttached(const QString &formula) {
    const CFormulaDetailPtr detail = CSingletonT<CFormulaOperateManager>::instance().getFormula(formula);
    return detail && detail->mType == eAttachedFormula;
}

/// Changes the settings that outlive the program.
template <class Change> UserConfigRecord changeSettings(Change change) {
    UserConfigInterface &settings = SingletonManager::getIndexUserConfig();
    UserConfigRecord record = settings.read();
    change(record);
    settings.write(record);
    return record;
}

void copyToClipboard(const QString &text) {
    QGuiApplication::clipboard()->setText(text);
}

} // namespace

// Formulas

void CRealtimeGraphWidget::slotEditFormula() {
    const QList<QString> formulas = mData->getFormulas();
    QString name = formulas.value(0);
    if (mDisplayType == EIndexDisplayType::Main) {
        const auto found = std::find_if(formulas.begin(), formulas.end(), [this](const QString &formula) {
            return !mUiParam->isMainFormula(formula);
        });
        if (found == formulas.end()) {
            GZ::CMessageBox::warning(this, tr("Velmar指标终端"), tr("系统指标不可编辑!"));
            return;
        }
        name = *found;
    }
    CFormulaEditorManager::createWindow(name, 0, nullptr);
}

void CRealtimeGraphWidget::slotModifyModelParam() {
    const QList<QString> formulas = mData->getFormulas();
    if (formulas.isEmpty()) {
        return;
    }
    const QString name = formulas.last();
    const QPointer<CRealtimeGraphWidget> alive(this); // its day may go while the question is open
    if (CSingletonT<CStrategyTradeManager>::instance().isFomrulaRun(name) &&
        GZ::CMessageBox::question(this, tr("提示"),
                                  tr("该策略正在模型交易中运行,编辑策略不会影响运行情况,是否继续编辑?"),
                                  QMessageBox::Ok | QMessageBox::Cancel) == QMessageBox::Cancel) {
        return;
    }
    if (!alive || name.isEmpty()) {
        return;
    }
    if (mModifyParamDialog) {
        mModifyParamDialog->init(name);
    } else {
        mModifyParamDialog = new CModifyModelParamDialog(name, this);
    }
    mModifyParamDialog->show();
}

void CRealtimeGraphWidget::slotCloseFormula() {
    const QList<QString> formulas = mData->getFormulas();
    for (const QString &formula : formulas) {
        if (!mUiParam->isMainFormula(formula)) {
            mData->removeFormula(formula, true);
        }
    }
    const QPointer<CRealtimeGraphWidget> alive(this); // its pane may go
    deliverEvent(eCloseAsked, mId, 0, formulas.value(0), nullptr);
    if (alive) {
        deliverEvent(eTitleChanged, 0, 0, QString(), nullptr);
    }
}

void CRealtimeGraphWidget::slotAddIndexWidget() {
    deliverEvent(ePaneAsked, 0, 0, QString(), nullptr);
}

void CRealtimeGraphWidget::slotAddIndex() {
    const auto *entry = qobject_cast<QAction *>(sender());
    if (entry && mDisplayType == EIndexDisplayType::Main && isAttached(entry->text())) {
        deliverEvent(eFormulaAsked, 0, ePutOn, entry->text(), nullptr);
    }
}

void CRealtimeGraphWidget::slotDelIndex() {
    const auto *entry = qobject_cast<QAction *>(sender());
    if (entry && mDisplayType == EIndexDisplayType::Main) {
        deliverEvent(eFormulaAsked, 0, eTakeOff, entry->text(), nullptr);
    }
}

void CRealtimeGraphWidget::slotUpdateIndex() {
    if (const auto *entry = qobject_cast<QAction *>(sender())) {
        mData->replaceSubFormula(entry->text());
        request(corvane::ERunMode::Ordinary);
    }
    deliverEvent(eFormulaReplaced, 0, 0, QString(), nullptr);
}

void CRealtimeGraphWidget::slotRefresh() {
    request(corvane::ERunMode::Ordinary);
}

void CRealtimeGraphWidget::slotRestoreGraph() {
    deliverEvent(eOrdinaryChartAsked, 0, 0, QString(), nullptr);
}

void CRealtimeGraphWidget::slotCopy() {
    copyToClipboard(mData->getResultText());
}

void CRealtimeGraphWidget::slotExportFormula() {
    CSingletonT<CIndexMainWindowHelper>::instance().exportFormula(mData->getSubFormulas().value(0));
}

void CRealtimeGraphWidget::slotCopyRequestInfo() {
    const auto joined = [](const QStringList &parts) { return parts.join(QLatin1Char(';')); };
    copyToClipboard(QStringList{QStringLiteral("code:%1").arg(mUiParam->getStock()),
                                QStringLiteral("formulas:%1").arg(joined(mData->getFormulas())),
                                QStringLiteral("reqIDs:%1").arg(joined(mData->reqIds().toList()))}
                        .join(QLatin1Char('\n')));
}

// Overlays

void CRealtimeGraphWidget::slotOverlayStock() {
    openOverlayKeyboard(tr("叠加品种"), true);
}

void CRealtimeGraphWidget::slotOverlayNoAxisStock() {
    openOverlayKeyboard(tr("叠加无坐标品种"), false);
}

void CRealtimeGraphWidget::slotOverlaySector() {
    const bool on = changeSettings([](UserConfigRecord &settings) {
                        settings.mOverlaySector = !settings.mOverlaySector;
                    }).mOverlaySector;
    deliverEvent(eOverlayAsked, 0, on ? eWithAxis : eTakeAll, on ? mUiParam->mSector : QString(), nullptr);
}

void CRealtimeGraphWidget::slotDelAllStock() {
    deliverEvent(eOverlayAsked, 0, eTakeAll, QString(), nullptr);
}

void CRealtimeGraphWidget::slotOverlayAHStock() {
    if (!mUiParam->canAddStock()) {
        warnOfLimit();
        return;
    }
    const QString counterpart = getPairedStock(mStock);
    if (!counterpart.isEmpty()) {
        deliverEvent(eOverlayAsked, 0, eWithAxis, counterpart, nullptr);
    }
}

void CRealtimeGraphWidget::slotAddBkzsCode() {
    const auto *entry = qobject_cast<QAction *>(sender());
    if (!entry || mDisplayType != EIndexDisplayType::Main) {
        return;
    }
    if (mUiParam->mAddSwBkzsLevel >= 0) { // any level, the same or another, only cancels
        mUiParam->setAddSwBkzsLevel(kNoLevel);
        mUiParam->clearAddSwBkzsCode();
        deliverEvent(eOverlayAsked, 0, eRenew, QString(), nullptr);
        return;
    }
    const int level = entry->data().toInt();
    mUiParam->setAddSwBkzsLevel(level);
    mUiParam->updateAddSwBkzsCode();
    CSectorManager &sectors = CSingletonT<CSectorManager>::instance();
    const QString stock = mUiParam->getStock();
    const QString sector = sectors.getSWSectorByStock(stock, level);
    if (sectors.getBkzsCodeByName(sector).isEmpty()) {
        logTraffic(this, "TC::CRealtimeGraphWidget::slotAddBkzsCode", "CRealtimeGraphWidget",
                   boost::format("get bkzs code empty. mainID:%1%, curStock:%2%, swLevel:%3%, swSector:%4%") %
                       mUiParam->getMainPanelID() % stock.toStdString() % level % sector.toStdString());
        return;
    }
    deliverEvent(eOverlayAsked, 0, eRenew, QString(), nullptr);
}

void CRealtimeGraphWidget::slotAddConvertibleCode() {
    if (mDisplayType != EIndexDisplayType::Main) {
        return;
    }
    bool changed = true;
    if (mUiParam->mAddStockFlags & eConvertibleOverlay) {
        mUiParam->mAddStockFlags &= ~eConvertibleOverlay;
        mUiParam->clearAddConvertibleCode();
    } else {
        mUiParam->mAddStockFlags |= eConvertibleOverlay;
        mUiParam->updateAddConvertibleCode();
        changed =
            !CSingletonT<CSectorManager>::instance().getConvertibleCodeByStock(mUiParam->getStock()).isEmpty();
    }
    if (changed) {
        deliverEvent(eOverlayAsked, 0, eRenew, QString(), nullptr);
    }
}

// View

void CRealtimeGraphWidget::slotShowVolume() {
    mUiParam->mShowVolume = !mUiParam->mShowVolume;
    if (mDisplayType == EIndexDisplayType::Main) {
        deliverEvent(eViewChanged, 0, 0, QString(), nullptr);
    }
}

void CRealtimeGraphWidget::slotShowGradient() {
    changeSettings([](UserConfigRecord &settings) { settings.mShowGradient = settings.mShowGradient ? 0 : 1; });
    deliverEvent(eViewChanged, 0, 0, QString(), nullptr);
}

void CRealtimeGraphWidget::slotAutoChangePeriod() {
    deliverEvent(eAutoPeriodAsked, mId, kHostsChoice, QString(), nullptr);
}

void CRealtimeGraphWidget::slotShowAfterTradeFixedPriceDeal(bool /*checked*/) {
    deliverEvent(eFixedPriceAsked, 0, 0, QString(), nullptr);
}

// Host

void CRealtimeGraphWidget::slotCreateNewWork() {
    deliverEvent(eNewWorkAsked, 0, 0, QString(), nullptr);
}

void CRealtimeGraphWidget::slotContrastSector(bool /*checked*/) {
    CSingletonT<CIndexMainWindowHelper>::instance().showContrast(mUiParam->getStock());
}

void CRealtimeGraphWidget::slotShowControlDialog() {
    deliverEvent(eReplayControlAsked, 0, 0, QString(), nullptr);
}

void CRealtimeGraphWidget::slotDownloadDatas() {
    mData->showInstrumentChart();
}

bool CRealtimeGraphWidget::slotAddSelfStock() {
    const QString key = mUiParam->getStock();
    if (CAppConfig::isClientType(EClientType::Trading)) {
        deliverEvent(eSelfStockAsked, 0, 0, key, nullptr);
        return true;
    }
    if (key.isEmpty()) {
        return false;
    }
    const QPointer<CAddSelfStockDialog> dialog = new CAddSelfStockDialog({key}, this);
    dialog->exec();
    if (dialog) { // it goes with this graph
        dialog->deleteLater();
    }
    return true;
}

// Trades

void CRealtimeGraphWidget::slotShowLinkageData() {
    deliverEvent(eLinkageAsked, 0, 0, QString(), nullptr);
}

void CRealtimeGraphWidget::slotSelectAllAccount(bool /*checked*/) {
    auto *entry = qobject_cast<QAction *>(sender());
    if (!entry) {
        return;
    }
    const bool futures = isFuturesMarket(getDetailQsMarket(mUiParam->getStockDetail()));
    QList<QString> &shown = shownAccounts();
    for (const std::string &id : CSingletonT<CLinkageManager>::instance().getAccountIds(
             futures ? CLinkageManager::kFutureAccounts : CLinkageManager::kStockAccounts)) {
        const QString account = QString::fromStdString(id);
        if (mAllAccountsSelected) {
            shown.removeAll(account);
        } else if (!shown.contains(account)) {
            shown.append(account);
        }
    }
    for (QAction *action : qAsConst(mAccountActions)) {
        action->setChecked(!mAllAccountsSelected);
    }
    entry->setChecked(!mAllAccountsSelected);
    tellShownAccounts();
}

void CRealtimeGraphWidget::slotSelectShowAccount(bool /*checked*/) {
    const auto *entry = qobject_cast<QAction *>(sender());
    if (!entry) {
        return;
    }
    QList<QString> &shown = shownAccounts();
    if (!shown.removeOne(entry->text())) {
        shown.append(entry->text());
    }
    tellShownAccounts();
}

void CRealtimeGraphWidget::slotAddVWAPFormula() {
    const bool on =
        changeSettings([](UserConfigRecord &settings) { settings.mShowVwap = !settings.mShowVwap; }).mShowVwap;
    const auto *entry = qobject_cast<QAction *>(sender());
    if (entry && mDisplayType == EIndexDisplayType::Main && isAttached(entry->text())) {
        const QPointer<CRealtimeGraphWidget> alive(this);
        deliverEvent(eFormulaAsked, 0, on ? ePutOn : eTakeOff, entry->text(), nullptr);
        if (alive) {
            updateLinkageData(mUiParam->mFormulaAccount, on);
        }
    }
}

void CRealtimeGraphWidget::slotFilterStock() {
    UserConfigInterface &settings = SingletonManager::getIndexUserConfig();
    if (!settings.read().mShowVwap) {
        return;
    }
    const int on = changeSettings([](UserConfigRecord &record) {
                       record.mFilterStock = record.mFilterStock ? 0 : 1;
                   }).mFilterStock;
    deliverEvent(eFilterChanged, 0, on, QString(), nullptr);
}

} // namespace TC
