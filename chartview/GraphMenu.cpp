#include "chartview/GraphMenu.h"

#include "chartdata/CRealtimeData.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "chartview/FormulaMenu.h"
#include "chartview/GraphSubject.h"
#include "chartview/MinuteSpan.h"
#include "chartview/ShownAccounts.h"
#include "host/services/CConfigService.h"
#include "host/services/CFormulaOperateManager.h"
#include "host/services/CLinkageManager.h"
#include "host/services/CSectorManager.h"
#include "host/services/CStockManager.h"
#include "host/services/StockTypeCenter.h"
#include "host/toolkit/CParameterAction.h"
#include "host/toolkit/Text.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <QStringList>

#include <algorithm>

namespace TC {
namespace {

using Graph = CRealtimeGraphWidget;
using kvservice::StockTypeCenter;

bool isTradingClient(const CRealtimeUiParam &uiParam) {
    return uiParam.service<CConfigService>().isClientType(EClientType::Trading);
}

QAction *checked(QAction *action, bool on) {
    action->setCheckable(true);
    action->setChecked(on);
    return action;
}

/// Text of a region from one index to another, as hosts and statistics read it.
QString regionText(const CRealtimeUiParam &uiParam, int start, int end) {
    return QStringLiteral("%1,%2,%3")
        .arg(end)
        .arg(GZ::secondsOf(uiParam.getDateTimeByIndex(start)))
        .arg(GZ::secondsOf(uiParam.getDateTimeByIndex(end)));
}

/// Puts the progress of every run of a group model on the clipboard, one document a line.
void copyRunProgress(const CRealtimeData &source, CFormulaManager &formulas) {
    QStringList texts;
    for (const QString &id : source.reqIds()) {
        bson::BSONObj progress;
        formulas.groupRunProgress(id.toStdString(), progress);
        texts.append(QString::fromStdString(progress.jsonString()));
    }
    QGuiApplication::clipboard()->setText(texts.join(QLatin1Char('\n')));
}

} // namespace

template <class Slot> QAction *GraphMenu::add(QMenu &menu, const QString &text, Slot slot) const {
    QAction *action = menu.addAction(text);
    QObject::connect(action, &QAction::triggered, &mGraph, slot);
    return action;
}

void GraphMenu::addPaired(QMenu &menu) const {
    if (mSubject.paired) {
        add(menu, tr("AH股叠加"), &Graph::slotOverlayAHStock);
        add(menu, tr("取消AH股叠加"), &Graph::slotDelAllStock);
        return;
    }
    QMenu *sectors = menu.addMenu(tr("叠加板块指数"));
    add(*sectors, tr("取消叠加品种"), &Graph::slotDelAllStock);
    addSectorLevels(*sectors, false);
}

/// The classification levels whose sector index can be overlaid.
void GraphMenu::addSectorLevels(QMenu &menu, bool checkable) const {
    const QString texts[] = {tr("申万一级"), tr("申万二级"), tr("申万三级")};
    int level = 0;
    for (const QString &text : texts) {
        QAction *action = add(menu, text, &Graph::slotAddBkzsCode);
        action->setData(++level);
        if (checkable) {
            checked(action, mSubject.uiParam->mAddSwBkzsLevel == level);
        }
    }
}

void GraphMenu::addMain(QMenu &menu) const {
    if (mSubject.replay) {
        add(menu, tr("显示行情回放控制面板"), &Graph::slotShowControlDialog);
        menu.addSeparator();
    }
    add(menu, tr("添加指标"), &Graph::slotAddIndexWidget);
    if (mSubject.data->getMainGraph() != QLatin1String("REALTIMEVOL")) {
        add(menu, tr("恢复主图"), &Graph::slotRestoreGraph);
    }
    addOverlays(menu);
    addShownFormulas(menu);
    if (!isTradingClient(*mSubject.uiParam)) {
        menu.addSeparator();
        add(menu, tr("所属板块分析"), &Graph::slotContrastSector);
    }
    if (hasFixedPriceDeal()) {
        menu.addSeparator();
        add(menu, tr("显示盘后固定价格成交"), &Graph::slotShowAfterTradeFixedPriceDeal);
    }
    menu.addSeparator();
    addInstruments(menu);
    const CUserConfig *user = mSubject.uiParam->service<CConfigService>().userConfig();
    if (user && user->hasFormulaEditorAuth()) {
        addEditing(menu);
    }
    addSwitches(menu);
}

/// Every formula of the catalogue that can stand over the chart.
void GraphMenu::addOverlays(QMenu &menu) const {
    const FormulaMenu formulas(
        mSubject.displayType, [this](const QString &name) { return mGraph.findIndex(name); },
        [this](QAction *action) {
            QObject::connect(action, &QAction::triggered, &mGraph, &Graph::slotAddIndex);
        },
        mSubject.uiParam->services());
    if (QMenu *overlays = formulas.makeOverlayMenu(&menu)) {
        menu.addSeparator();
        menu.addMenu(overlays);
    }
}

/// The formulas that stand over the chart, to be taken off.
void GraphMenu::addShownFormulas(QMenu &menu) const {
    QMenu *shown = nullptr;
    for (const QString &name : mSubject.data->getFormulas()) {
        const CFormulaDetailPtr formula = mSubject.uiParam->service<CFormulaOperateManager>().getFormula(name);
        if (mSubject.uiParam->isMainFormula(name) || !formula || formula->mType != eAttachedFormula) {
            continue;
        }
        shown = shown ? shown : menu.addMenu(tr("取消叠加指标"));
        checked(add(*shown, formula->mName, &Graph::slotDelIndex), true);
    }
}

bool GraphMenu::hasFixedPriceDeal() const {
    if (mSubject.uiParam->mViewType != EIndexViewType::Template || mSubject.replay ||
        mSubject.uiParam->service<CConfigService>().isBrokerQuoteMode()) {
        return false;
    }
    const CInstrumentDetailPtr detail =
        mSubject.uiParam->service<CStockManager>().getInstrumentDetail(mSubject.stock);
    const CUserConfig *user = mSubject.uiParam->service<CConfigService>().userConfig();
    auto &types = mSubject.uiParam->service<StockTypeCenter>();
    return detail && (types.isOfType(277, "SH", detail->mCode) ||
                      (user && user->isBoardNewRules() && types.isOfType(10006, "SZ", detail->mCode)));
}

/// Whether the instrument has a convertible bond, or is one, as far as its type tells.
bool GraphMenu::isConvertible() const {
    const CInstrumentDetailPtr detail = mSubject.uiParam->getStockDetail();
    auto &types = mSubject.uiParam->service<StockTypeCenter>();
    const auto isOfType = [&detail, &types](int type) {
        return types.isOfType(type, getDetailMarket(detail), getDetailCode(detail));
    };
    return isOfType(100001) || isOfType(135) || isOfType(10019);
}

void GraphMenu::addInstruments(QMenu &menu) const {
    const CRealtimeUiParam &uiParam = *mSubject.uiParam;
    if (!uiParam.mCanOverlaySector) {
        addSectorLevels(*menu.addMenu(tr("叠加板块指数")), true);
        if (isConvertible()) {
            checked(add(menu, tr("自动叠加转债正股品种"), &Graph::slotAddConvertibleCode),
                    (uiParam.mAddStockFlags & eConvertibleOverlay) != 0);
        }
    }
    add(menu, tr("叠加品种"), &Graph::slotOverlayStock);
    add(menu, tr("叠加无坐标品种"), &Graph::slotOverlayNoAxisStock);
    add(menu, tr("取消叠加品种"), &Graph::slotDelAllStock);
}

void GraphMenu::addEditing(QMenu &menu) const {
    menu.addSeparator();
    add(menu, tr("修改指标参数"), &Graph::slotModifyModelParam);
    add(menu, tr("编辑指标"), &Graph::slotEditFormula);
}

void GraphMenu::addSwitches(QMenu &menu) const {
    const CRealtimeUiParam &uiParam = *mSubject.uiParam;
    const UserConfigRecord settings = mSubject.uiParam->service<CConfigService>().indexUserConfig().read();
    checked(add(menu, tr("显示成交量"), &Graph::slotShowVolume), uiParam.mShowVolume);
    checked(add(menu, tr("显示渐变色"), &Graph::slotShowGradient), settings.mShowGradient != 0);
    if (uiParam.mCanOverlaySector) {
        checked(add(menu, tr("叠加板块指数"), &Graph::slotOverlaySector), settings.mOverlaySector);
    }
    add(menu, tr("加入自选股"), &Graph::slotAddSelfStock);
    if (uiParam.mPanelInfo) {
        checked(add(menu, tr("自动切换周期"), &Graph::slotAutoChangePeriod),
                uiParam.mPanelInfo->mAutoChangePeriod);
    }
}

void GraphMenu::addRegion(QMenu &menu, const MinuteSpan &region) const {
    const CRealtimeUiParam &uiParam = *mSubject.uiParam;
    const int start = region.start();
    const QString text = regionText(uiParam, start, region.end());
    const auto addEntry = [&](const QString &caption, const QString &parameter, auto slot) {
        auto *action = new GZ::CParameterAction(caption, start, parameter, &menu);
        QObject::connect(action, &GZ::CParameterAction::triggered, &mGraph, slot);
        menu.addAction(action);
    };
    addEntry(tr("时段统计"), text, &Graph::slotStatistic);
    if (mSubject.replay) {
        addEntry(tr("生成千档区域范围"), text, &Graph::slotSetReplayTimeRegin);
    } else {
        addEntry(tr("显示行情回放界面"), text + QLatin1Char(',') + uiParam.getStock(),
                 &Graph::slotSetReplayTimeRegin);
    }
}

void GraphMenu::addSub(QMenu &menu) const {
    const CInstrumentDetailPtr detail = mSubject.uiParam->getStockDetail();
    add(menu, tr("添加指标"), &Graph::slotAddIndexWidget);
    if (QMenu *formulas = makeReplaceMenu(&menu)) {
        menu.addSeparator();
        menu.addMenu(formulas);
    }
    const CUserConfig *user = mSubject.uiParam->service<CConfigService>().userConfig();
    if (user && user->hasFormulaEditorAuth()) {
        addEditing(menu);
    }
    if (mSubject.data->hasGroupModelIndex() && mSubject.uiParam->service<kvservice::StockTypeCenter>().isIndex(
                                                   getDetailMarket(detail), getDetailCode(detail))) {
        menu.addSeparator();
        add(menu, tr("刷新"), &Graph::slotRefresh);
    }
    menu.addSeparator();
    add(menu, tr("关闭指标"), &Graph::slotCloseFormula);
    add(menu, tr("复制"), &Graph::slotCopy);
    QObject::connect(menu.addAction(tr("复制运行进度")), &QAction::triggered, &mGraph,
                     [source = mSubject.data.get(), uiParam = mSubject.uiParam] {
                         copyRunProgress(*source, uiParam->service<CFormulaManager>());
                     });
}

QMenu *GraphMenu::makeReplaceMenu(QWidget *parent) const {
    const FormulaMenu formulas(
        mSubject.displayType, [this](const QString &name) { return mGraph.findIndex(name); },
        [this](QAction *action) {
            QObject::connect(action, &QAction::triggered, &mGraph, &Graph::slotUpdateIndex);
        },
        mSubject.uiParam->services());
    return formulas.makeReplaceMenu(parent, getDetailQsMarket(mSubject.uiParam->getStockDetail()));
}

void GraphMenu::addExport(QMenu &menu) const {
    if (!isTradingClient(*mSubject.uiParam) && !mSubject.data->getFormulas().isEmpty() &&
        !mSubject.uiParam->service<CConfigService>().hideModel()) {
        add(menu, tr("导出公式"), &Graph::slotExportFormula);
    }
}

GraphMenuAccounts GraphMenu::addClosing(QMenu &menu) const {
    if (mSubject.createNewWork && !isTradingClient(*mSubject.uiParam)) {
        add(menu, tr("新建工作组"), &Graph::slotCreateNewWork);
    }
    GraphMenuAccounts accounts;
    if (mSubject.uiParam->service<CLinkageManager>().isEnabled()) {
        accounts = addAccounts(*menu.addMenu(tr("显示交易数据")));
    }
    const UserConfigRecord settings = mSubject.uiParam->service<CConfigService>().indexUserConfig().read();
    checked(add(menu, mSubject.uiParam->getApplyMainFormula(), &Graph::slotAddVWAPFormula), settings.mShowVwap);
    checked(add(menu, tr("过滤重复股票"), &Graph::slotFilterStock), settings.mFilterStock != 0);
    if (mSubject.history &&
        !getPairedStock(mSubject.stock, mSubject.uiParam->service<CSectorManager>()).isEmpty()) {
        menu.addSeparator();
        add(menu, tr("AH股叠加"), &Graph::slotOverlayAHStock);
    }
    menu.addSeparator();
    add(menu, tr("复制请求信息"), &Graph::slotCopyRequestInfo);
    add(menu, tr("下载数据"), &Graph::slotDownloadDatas);
    return accounts;
}

GraphMenuAccounts GraphMenu::addAccounts(QMenu &menu) const {
    const ShownAccounts shown(*mSubject.uiParam);
    QAction *all = add(menu, tr("全选"), &Graph::slotSelectAllAccount);
    menu.addSeparator();
    GraphMenuAccounts accounts;
    for (const QString &account : shown.offered()) {
        accounts.actions.append(
            checked(add(menu, account, &Graph::slotSelectShowAccount), shown.list().contains(account)));
    }
    accounts.allShown = std::all_of(accounts.actions.begin(), accounts.actions.end(),
                                    [](const QAction *action) { return action->isChecked(); });
    checked(all, accounts.allShown);
    if (!isTradingClient(*mSubject.uiParam)) {
        menu.addSeparator();
        add(menu, tr("显示详细交易数据"), &Graph::slotShowLinkageData);
    }
    return accounts;
}

} // namespace TC
