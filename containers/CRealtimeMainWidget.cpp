#include "containers/CRealtimeMainWidget.h"

#include "chartdata/RequestLog.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "containers/CrossLines.h"
#include "containers/FormulaPlacement.h"
#include "containers/HistoryDownload.h"
#include "containers/KeyedFormulas.h"
#include "containers/MainChart.h"
#include "containers/MainViewEvents.h"
#include "containers/MarketWord.h"
#include "containers/PaneRow.h"
#include "containers/RecordWindows.h"
#include "containers/RegionStatistics.h"
#include "containers/Repaint.h"
#include "containers/SavedView.h"
#include "containers/SelectedPane.h"
#include "containers/TemplateBar.h"
#include "containers/TradeFormula.h"
#include "containers/TradeSettings.h"
#include "host/services/CConfigService.h"
#include "host/services/CStockManager.h"
#include "host/services/ServiceContext.h"
#include "host/toolkit/Events.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QKeyEvent>
#include <boost/format.hpp>

#include <algorithm>
#include <array>
#include <utility>

namespace TC {

namespace {

constexpr int kMinimumWidth = 150; ///< pixels
constexpr int kPortfolioKind = 2;

/// Formulas of new panes, by position.
constexpr std::array<const char *, 9> kDefaultIndexes = {"KDJ", "MACD", "VOL", "CCI", "RSI",
                                                         "OBV", "PSY",  "AD",  "CR"};

/// First argument of updateIndex: what has happened to a formula.
enum EFormulaOperation : int { eShown = 0, eApplied = 1, eConfirmed = 2, eModified = 3, eDeleted = 4 };

} // namespace

CRealtimeMainWidget::CRealtimeMainWidget(QWidget *parent, EIndexViewType viewType,
                                         const ServiceContext &services)
    : MainView(parent, viewType, services), mChart(std::make_unique<MainChart>(*mPanes, mUiParam)),
      mPlacement(std::make_unique<FormulaPlacement>(*mPanes, *mSelected, *mChart, *mBar,
                                                    [this] {
                                                        addIndexWidget();
                                                        return mPanes->subs().last();
                                                    })),
      mKeyed(std::make_unique<KeyedFormulas>(*mPanes, *mSelected, *mChart, *mPlacement)),
      mTradeFormula(std::make_unique<TradeFormula>(*mPanes, *mChart, mUiParam)),
      mTradeSettings(std::make_unique<TradeSettings>(this, *mPanes, mUiParam)),
      mRecords(std::make_unique<RecordWindows>(this, mUiParam)),
      mRegion(std::make_unique<RegionStatistics>(this, *mPanes, mUiParam)),
      mDownload(std::make_unique<HistoryDownload>(
          [this](int done, int total) { suppleProgress(done, total, QString(), QString()); })),
      mSavedView(std::make_unique<SavedView>(*this, *mBar, *mTradeSettings)) {
    setObjectName(QStringLiteral("realtime_main_widget"));
    setMinimumWidth(kMinimumWidth);
    mRegion->setChanged(
        [this](const QDateTime &start, const QDateTime &end) { Q_EMIT regionChanged(start, end); });
    mChart->addMainFormulas();
    setFocusPolicy(Qt::StrongFocus);
    if (isWindow()) {
        setFocus(); // else the first tool of a title has the keys
    }
}

CRealtimeMainWidget::~CRealtimeMainWidget() {
    mRecords->deleteAll();
    mRegion->deleteDialog();
    deletePanes();
}

// Instrument

void CRealtimeMainWidget::setStock(const QString &key, bool useUnderlying) {
    CStockManager &stocks = mUiParam->service<CStockManager>();
    const bool kindChanges = (stocks.isPortfolio(key) && mUiParam->mStockKind != kPortfolioKind) ||
                             (stocks.isExist(key) && mUiParam->mStockKind != 0);
    if (key != mUiParam->getStock()) {
        mRegion->end();
    }
    if (kindChanges) {
        mChart->removeMainFormulas(mUiParam->getMainFormula());
    }
    mUiParam->setStock(key, useUnderlying);
    getRealTimeWidget()->setStock(key, useUnderlying);
    refreshTimeScale();
    mCrossLines->realign();
    if (kindChanges) {
        mChart->addMainFormulas();
    }
    mChart->applyNetValue();
    applyFormula();
    tellInstrument(key);
}

bool CRealtimeMainWidget::trySetStock(const QString &key, bool useUnderlying) {
    setStock(key, useUnderlying);
    return mUiParam->isValid();
}

void CRealtimeMainWidget::clearStock() {
    for (CRealtimeWidget *pane : mPanes->all()) {
        pane->clearStock();
    }
    mUiParam->clearStock();
    tellInstrument(QString());
}

void CRealtimeMainWidget::clear(bool updateView) {
    logTraffic(this, "TC::CRealtimeMainWidget::clear", "CRealtimeMainWidget",
               boost::format("clear, mainID:%1%, stock: %2%,") % mUiParam->getMainPanelID() %
                   mUiParam->getStock().toStdString());
    mUiParam->clear();
    for (CRealtimeWidget *pane : mPanes->all()) {
        pane->clear();
    }
    mRecords->hide();
    if (updateView) {
        this->updateView();
    }
}

void CRealtimeMainWidget::setPortfolioType(EPortfolioAnalyzeGraphType type) {
    const QList<QString> former = mUiParam->getMainFormula();
    mUiParam->setPortfolioGraphType(static_cast<int>(type));
    mChart->removeMainFormulas(former);
    mChart->addMainFormulas();
}

void CRealtimeMainWidget::subPortfolioCallBack(const RPCUiPortfolioDetail &detail) {
    const std::size_t count = std::min(detail.mMarkets.size(), detail.mCodes.size());
    for (std::size_t i = 0; i < count; ++i) {
        const std::string market = shortMarketWord(detail.mMarkets[i]);
        if (isFuturesMarket(market)) {
            mUiParam->resetAxis(market, detail.mCodes[i]);
        }
    }
    refreshTimeScale();
    mCrossLines->realign();
}

void CRealtimeMainWidget::downloadData() {
    mDownload->start(*mUiParam);
}

void CRealtimeMainWidget::suppleProgress(int done, int total, const QString & /*market*/,
                                         const QString & /*code*/) {
    if (done != -1 && done < total) {
        request(false);
    }
}

// Panes

void CRealtimeMainWidget::addIndexWidget() {
    CRealtimeWidget *pane = mPanes->add(getNewIndexStretchFactor());
    pane->beReplay(mPanes->isReplay());
    highlightWidget(pane->getId());
    mCrossLines->joinPane();
    if (mUiParam->service<CConfigService>().isClientType(EClientType::Trading)) {
        deliverEvent(ePaneAsked, 0, 0, QString(), nullptr);
    }
}

void CRealtimeMainWidget::delIndexWidget(int id) {
    const QVector<CRealtimeWidget *> &subs = mPanes->subs();
    CRealtimeWidget *pane = mPanes->sub(id);
    const int position = pane ? subs.indexOf(pane) : subs.size();
    if (pane) {
        mPanes->remove(pane);
        mKeyed->forget(pane);
    }
    mSelected->selectAt(position);
}

void CRealtimeMainWidget::delAllIndexWidgets() {
    while (!mPanes->subs().isEmpty()) {
        CRealtimeWidget *pane = mPanes->subs().first();
        if (!pane->gePretIndex().isEmpty()) {
            mBar->givenUp(pane->gePretIndex());
        }
        mPanes->remove(pane);
    }
    highlightWidget(getRealTimeWidget()->getId());
}

void CRealtimeMainWidget::clearSubIndexes() {
    for (const CRealtimeWidget *pane : getSubIndexWidgets()) {
        delIndexWidget(pane->getId());
    }
}

void CRealtimeMainWidget::adjustIndexWidgetSize(int count) {
    const QVector<CRealtimeWidget *> &subs = mPanes->subs();
    const int wanted = qBound(0, count - 1, static_cast<int>(kDefaultIndexes.size()));
    while (subs.size() < wanted) {
        const char *formula = kDefaultIndexes[static_cast<std::size_t>(subs.size())];
        addIndexWidget();
        subs.last()->updateIndex(QLatin1String(formula));
        request(false);
    }
    while (subs.size() > wanted) {
        CRealtimeWidget *pane = subs.last();
        const QString formula = pane->getIndexes().value(0);
        if (!formula.isEmpty()) {
            mBar->givenUp(formula);
        }
        mPanes->remove(pane);
    }
}

void CRealtimeMainWidget::scaleView(bool fewer) {
    const int days = mUiParam->mDayCount;
    for (CRealtimeWidget *pane : mPanes->all()) {
        pane->scaleView(fewer);
    }
    takeDays(days);
}

void CRealtimeMainWidget::backToOneDay() {
    const int days = mUiParam->mDayCount;
    for (CRealtimeWidget *pane : mPanes->all()) {
        pane->clearScaleView();
    }
    takeDays(days);
    downloadData();
}

/// The panes have taken another number of days, or the same again.
void CRealtimeMainWidget::takeDays(int former) {
    refreshTimeScale();
    mCrossLines->realign();
    if (mUiParam->mDayCount != former) {
        mRegion->end();
        Q_EMIT dayCountChanged(mUiParam->mDayCount);
    }
}

// The saved view

QString CRealtimeMainWidget::param() const {
    return mSavedView->text();
}

void CRealtimeMainWidget::setParam(const QString &text) {
    mSavedView->restore(text);
}

QVector<QString> CRealtimeMainWidget::getIndexParam() const {
    return mPanes->subFormulas();
}

void CRealtimeMainWidget::loadSettings(QVector<QString> &indexes, std::vector<int> &stretches) {
    clearSubIndexes();
    mPanes->setMainStretch(stretches.empty() ? PaneRow::kMainStretch : stretches.front());
    for (int i = 0; i < indexes.size(); ++i) {
        const auto position = static_cast<std::size_t>(i) + 1; // the main pane's comes first
        const int stretch = position < stretches.size() ? stretches[position] : PaneRow::kSubStretch;
        mPanes->add(stretch)->addIndex(indexes[i]);
    }
    mCrossLines->joinPane();
    getRealTimeWidget()->setStock(mUiParam->getStock(), false);
    refreshTimeScale();
}

// Formulas

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
        mBar->deleted(name);
        break;
    default:
        break;
    }
}

void CRealtimeMainWidget::handleDoubleClickedFormula(const QString &name) {
    mPlacement->show(name);
}

void CRealtimeMainWidget::handleApplyFormula(const QString &name, EFormulaLanguage /*language*/,
                                             corvane::ERunMode mode) {
    mPlacement->apply(name, mode);
}

void CRealtimeMainWidget::handleConfirmFormula(const QString &name) {
    mPlacement->confirm(name);
}

void CRealtimeMainWidget::handleModifyFormula(const QString &name, EFormulaLanguage /*language*/) {
    mPlacement->modify(name);
    updateWithChildren(this);
}

void CRealtimeMainWidget::handleDeleteFormula(const QString &name) {
    mPlacement->remove(name);
    updateWithChildren(this);
}

void CRealtimeMainWidget::deleteMainFormula(const QString &name) {
    mChart->remove(name);
}

void CRealtimeMainWidget::createIndexWidget(const QString &key, int type, const QString &name) {
    mKeyed->place(key, type, name);
}

void CRealtimeMainWidget::destoryWidget(const QString &key) {
    mKeyed->close(key);
}

void CRealtimeMainWidget::minitermFormulaDataCallback(const QString &key, const FormulaMetaPtr &meta,
                                                      const FormulaResultPtr &result) {
    mKeyed->push(key, meta, result);
}

void CRealtimeMainWidget::applyFormula() {
    mTradeFormula->apply();
}

void CRealtimeMainWidget::updateFrormulaData(const QString &account) {
    mTradeFormula->setAccount(account);
}

void CRealtimeMainWidget::addMultiVewFormulaAndLinkageData(bool addFormula) {
    mTradeFormula->show(addFormula);
}

void CRealtimeMainWidget::delMultiVewFormulaAndLinkageData(const QList<QString> &accounts) {
    mTradeFormula->remove();
    updateLinkageData(accounts, false);
}

void CRealtimeMainWidget::updateLinkageData(const QList<QString> &accounts, bool show) {
    getRealTimeWidget()->updateLinkageData(accounts, show);
}

void CRealtimeMainWidget::updateLinkageData(const QString & /*account*/, bool show) {
    getRealTimeWidget()->updateLinkageData(mUiParam->mFormulaAccount, show);
}

// Region statistics

void CRealtimeMainWidget::statisticSelectRegion(int start, const QString &text) {
    mRegion->select(start, text);
}

void CRealtimeMainWidget::statisticSelectRegion(QDateTime *dateTime) {
    if (dateTime) {
        mRegion->select(*dateTime);
    }
}

void CRealtimeMainWidget::hideStatisticDialog() {
    mRegion->hideDialog();
}

void CRealtimeMainWidget::setRegionLineHide() {
    mRegion->hideLines();
}

void CRealtimeMainWidget::keyPressEvent(QKeyEvent *event) {
    if (event->key() == Qt::Key_Escape) {
        mRegion->end();
    }
    MainView::keyPressEvent(event);
}

// Trades

void CRealtimeMainWidget::showLinkageSetting() {
    mTradeSettings->show();
}

void CRealtimeMainWidget::showLinkageDataFromKey() {
    showLinkageSetting();
}

void CRealtimeMainWidget::updateLinkageSetting() {
    mTradeSettings->takeChoice();
}

void CRealtimeMainWidget::updateLinkageDatas() {
    mTradeSettings->refresh();
}

void CRealtimeMainWidget::closeLinkageSetting() {
    mTradeSettings->close();
}

QMap<QString, bool> CRealtimeMainWidget::getLinkageDialogSetting() const {
    return mTradeSettings->setting();
}

void CRealtimeMainWidget::presetLinkageDialogSetting(const QMap<QString, bool> &setting) {
    for (auto entry = setting.constBegin(); entry != setting.constEnd(); ++entry) {
        mTradeSettings->preset(entry.key(), entry.value());
    }
}

void CRealtimeMainWidget::loadLinkageDialogSetting(const QMap<QString, bool> &setting) {
    mTradeSettings->load(setting);
}

void CRealtimeMainWidget::showLinkageDatas(void *graph, const QString &kind, int x, int y) {
    if (graph) {
        mRecords->show(*static_cast<CRealtimeGraphWidget *>(graph)->getData(), kind, x, y);
    }
}

// Events

bool CRealtimeMainWidget::handleEvent(int event, int first, int second, QString text, void *payload) {
    if (isWhole()) {
        const std::optional<bool> handled = Events::handle(*this, {event, first, second, text, payload});
        if (handled) {
            return *handled;
        }
    }
    return MainView::handleEvent(event, first, second, text, payload);
}

} // namespace TC
