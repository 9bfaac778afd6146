#include "containers/CRealtimeMainWidget.h"

#include "chartdata/RequestLog.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "containers/FormulaTypes.h"
#include "containers/MainViewEvents.h"
#include "containers/MainViewParts.h"
#include "containers/MarketWord.h"
#include "containers/Repaint.h"
#include "host/services/CConfigService.h"
#include "host/services/CStockManager.h"
#include "host/services/IdGenerator.h"
#include "host/services/StockTypeCenter.h"
#include "host/toolkit/Events.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QKeyEvent>
#include <QResizeEvent>
#include <boost/format.hpp>
#include <boost/make_shared.hpp>

#include <algorithm>
#include <array>
#include <utility>

namespace TC {

namespace {

constexpr int kMinimumWidth = 150; ///< pixels
constexpr int kPortfolioKind = 2;
constexpr corvane::ERunMode kOrdinary = corvane::ERunMode::Ordinary;

/// Formulas of new panes, by position.
constexpr std::array<const char *, 9> kDefaultIndexes = {"KDJ", "MACD", "VOL", "CCI", "RSI",
                                                         "OBV", "PSY",  "AD",  "CR"};

/// First argument of updateIndex: what has happened to a formula.
enum EFormulaOperation : int { eShown = 0, eApplied = 1, eConfirmed = 2, eModified = 3, eDeleted = 4 };

} // namespace

CRealtimeMainWidget::CRealtimeMainWidget(QWidget *parent, EIndexViewType viewType)
    : CBaseWidget(parent), mUiParam(boost::make_shared<CRealtimeUiParam>(viewType)) {
    setObjectName(QStringLiteral("realtime_main_widget"));
    setMinimumWidth(kMinimumWidth);
    mParts = std::make_unique<MainViewParts>(*this, mUiParam, viewType);
    setFocusPolicy(Qt::StrongFocus);
}

CRealtimeMainWidget::~CRealtimeMainWidget() {
    mParts->close();
}

// Instrument

void CRealtimeMainWidget::setStock(const QString &key, bool useUnderlying) {
    CStockManager &stocks = CSingletonT<CStockManager>::instance();
    const bool kindChanges = (stocks.isPortfolio(key) && mUiParam->mStockKind != kPortfolioKind) ||
                             (stocks.isExist(key) && mUiParam->mStockKind != 0);
    if (kindChanges) {
        mParts->mChart.removeMainFormulas(mUiParam->getMainFormula());
    }
    mUiParam->setStock(key, useUnderlying);
    getRealTimeWidget()->setStock(key, useUnderlying);
    mParts->refreshTimeScale();
    mParts->mCrossLines.realign();
    if (kindChanges) {
        mParts->mChart.addMainFormulas();
    }
    mParts->mChart.applyNetValue();
    applyFormula();
}

void CRealtimeMainWidget::clearStock() {
    for (CRealtimeWidget *pane : mParts->mPanes.all()) {
        pane->clearStock();
    }
    mUiParam->clearStock();
}

QString CRealtimeMainWidget::getStock() const {
    return getDetailQsKey(mUiParam->getStockDetail());
}

QString CRealtimeMainWidget::getMarket() const {
    return getDetailQsMarket(mUiParam->getStockDetail());
}

void CRealtimeMainWidget::setSector(const QString &sector, const QString &name) {
    mUiParam->setSector(sector, name);
}

void CRealtimeMainWidget::setFormulaAccount(const QString &account) {
    mUiParam->setFormulaAccount(account);
}

void CRealtimeMainWidget::setCanOverlaySector(bool can) {
    mUiParam->mCanOverlaySector = can;
}

void CRealtimeMainWidget::resetUiParam() {
    mUiParam->mCrossShown = false;
    mUiParam->mMouseIn = false;
    mUiParam->mCrossIndex = -1;
    mParts->mCrossLines.refresh();
}

void CRealtimeMainWidget::setGetTradeDateFunc(boost::function<int()> func) {
    mUiParam->mGetTradeDateFunc = func;
    getRealTimeWidget()->setGetTradeDateFunc(std::move(func));
}

void CRealtimeMainWidget::setPortfolioType(EPortfolioAnalyzeGraphType type) {
    const QList<QString> former = mUiParam->getMainFormula();
    mUiParam->setPortfolioGraphType(static_cast<int>(type));
    mParts->mChart.removeMainFormulas(former);
    mParts->mChart.addMainFormulas();
}

void CRealtimeMainWidget::subPortfolioCallBack(const RPCUiPortfolioDetail &detail) {
    const std::size_t count = std::min(detail.mMarkets.size(), detail.mCodes.size());
    for (std::size_t i = 0; i < count; ++i) {
        const std::string market = shortMarketWord(detail.mMarkets[i]);
        if (isFuturesMarket(market)) {
            mUiParam->resetAxis(market, detail.mCodes[i]);
        }
    }
    mParts->refreshTimeScale();
    mParts->mCrossLines.realign();
}

QList<QString> CRealtimeMainWidget::getAddStockList() const {
    QList<QString> keys;
    for (const CInstrumentDetailPtr &detail : mUiParam->getAllAddStockList()) {
        keys.append(getDetailQsKey(detail));
    }
    return keys;
}

void CRealtimeMainWidget::addSuperposedStock(const CInstrumentDetailPtr &detail) {
    mUiParam->addStock(getDetailQsKey(detail), QString(), true);
    getRealTimeWidget()->setTitleAddStock();
}

// Requests

void CRealtimeMainWidget::request(bool sync) {
    if (sync) {
        for (CRealtimeWidget *pane : mParts->mPanes.all()) {
            pane->syncRequest(kOrdinary);
        }
        updateWithChildren(this);
        repaint();
        return;
    }
    mUiParam->mRequestId = genRequestID();
    getRealTimeWidget()->request(kOrdinary);
    for (CRealtimeWidget *pane : mParts->mPanes.subs()) {
        if (pane->hasGroupModelIndex() && !mUiParam->isShowGroupIndexGraph()) {
            pane->clear();
        }
        pane->request(kOrdinary);
    }
}

void CRealtimeMainWidget::unrequest() {
    getRealTimeWidget()->unrequest();
    for (CRealtimeWidget *pane : mParts->mPanes.subs()) {
        const CInstrumentDetailPtr detail = pane->getUiParam()->getStockDetail();
        if (!pane->hasGroupModelIndex() ||
            (detail && isIndexEx(getDetailMarket(detail), getDetailCode(detail)))) {
            pane->unrequest();
        }
    }
}

void CRealtimeMainWidget::clear(bool updateView) {
    logTraffic(this, "TC::CRealtimeMainWidget::clear", "CRealtimeMainWidget",
               boost::format("clear, mainID:%1%, stock: %2%,") % mUiParam->getMainPanelID() %
                   mUiParam->getStock().toStdString());
    mUiParam->clear();
    for (CRealtimeWidget *pane : mParts->mPanes.all()) {
        pane->clear();
    }
    if (updateView) {
        this->updateView();
    }
}

void CRealtimeMainWidget::beReplay(bool replay) {
    mParts->mReplay = replay;
    for (CRealtimeWidget *pane : mParts->mPanes.all()) {
        pane->beReplay(replay);
    }
}

void CRealtimeMainWidget::downloadData() {
    mParts->mDownload.start(*mUiParam);
}

void CRealtimeMainWidget::suppleProgress(int done, int total, const QString & /*market*/,
                                         const QString & /*code*/) {
    if (done != -1 && done < total) {
        request(false);
    }
}

// Panes

CRealtimeWidget *CRealtimeMainWidget::getRealTimeWidget() const {
    return mParts->mPanes.main();
}

QVector<CRealtimeWidget *> CRealtimeMainWidget::getSubIndexWidgets() const {
    return mParts->mPanes.subs();
}

QVector<QList<CRealtimeGraphWidget *>> CRealtimeMainWidget::dayRows() const {
    QVector<QList<CRealtimeGraphWidget *>> rows;
    for (const CRealtimeWidget *pane : mParts->mPanes.all()) {
        rows.append(pane->getGraphWidgets());
    }
    return rows;
}

void CRealtimeMainWidget::addIndexWidget() {
    CRealtimeWidget *pane = mParts->mPanes.add(getNewIndexStretchFactor());
    pane->beReplay(mParts->mReplay);
    highlightWidget(pane->getId());
    mParts->mCrossLines.joinPane();
    if (CAppConfig::isClientType(EClientType::Trading)) {
        deliverEvent(ePaneAsked, 0, 0, QString(), nullptr);
    }
}

void CRealtimeMainWidget::delIndexWidget(int id) {
    const QVector<CRealtimeWidget *> &subs = mParts->mPanes.subs();
    CRealtimeWidget *pane = mParts->mPanes.sub(id);
    const int position = pane ? subs.indexOf(pane) : subs.size();
    if (pane) {
        mParts->mPanes.remove(pane);
        mParts->mKeyed.forget(pane);
    }
    mParts->mSelected.selectAt(position);
}

void CRealtimeMainWidget::delAllIndexWidgets() {
    while (!mParts->mPanes.subs().isEmpty()) {
        CRealtimeWidget *pane = mParts->mPanes.subs().first();
        if (!pane->gePretIndex().isEmpty()) {
            mParts->mBar.givenUp(pane->gePretIndex());
        }
        mParts->mPanes.remove(pane);
    }
    highlightWidget(getRealTimeWidget()->getId());
}

void CRealtimeMainWidget::clearSubIndexes() {
    for (const CRealtimeWidget *pane : getSubIndexWidgets()) {
        delIndexWidget(pane->getId());
    }
}

void CRealtimeMainWidget::adjustIndexWidgetSize(int count) {
    const QVector<CRealtimeWidget *> &subs = mParts->mPanes.subs();
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
            mParts->mBar.givenUp(formula);
        }
        mParts->mPanes.remove(pane);
    }
}

int CRealtimeMainWidget::getNewIndexStretchFactor() const {
    return mParts->mPanes.newStretch();
}

std::vector<int> CRealtimeMainWidget::getStretchFactorList() const {
    return mParts->mPanes.stretches();
}

void CRealtimeMainWidget::highlightWidget(int id) {
    mParts->mSelected.select(id);
}

void CRealtimeMainWidget::setCreateNewWorkShow(bool show) {
    mParts->mPanes.setCreateNewWorkShow(show);
}

void CRealtimeMainWidget::setAutoIndex(bool automatic) {
    for (CRealtimeWidget *pane : mParts->mPanes.subs()) {
        pane->setAutoIndex(automatic);
    }
}

void CRealtimeMainWidget::setIsLoginInit(bool init) {
    for (CRealtimeWidget *pane : mParts->mPanes.subs()) {
        pane->setIsLoginInit(init);
    }
}

void CRealtimeMainWidget::setTitleData(int day) {
    for (CRealtimeWidget *pane : mParts->mPanes.all()) {
        pane->setTitleData(day);
    }
}

void CRealtimeMainWidget::updateView() {
    for (CRealtimeWidget *pane : mParts->mPanes.all()) {
        pane->updateView();
    }
    updateWithChildren(this);
}

void CRealtimeMainWidget::updateWidgetsView() {
    updateView();
    mParts->refreshTimeScale();
}

void CRealtimeMainWidget::themeChanged() {
    updateView();
}

void CRealtimeMainWidget::onUiResourceChanged() {
    themeChanged();
    CBaseWidget::onUiResourceChanged();
}

void CRealtimeMainWidget::viewVariable() {
    if (CRealtimeWidget *pane = mParts->mSelected.sub()) {
        pane->viewVariable();
    }
}

void CRealtimeMainWidget::resizeEvent(QResizeEvent *event) {
    CBaseWidget::resizeEvent(event);
    mParts->mSelected.place();
    mParts->refreshTimeScale();
    if (event->oldSize().width() != width()) {
        mParts->mCrossLines.realign();
    }
    mParts->mBar.placeButtons();
}

// Template bar

void CRealtimeMainWidget::setIndexModelVisible(bool visible) {
    mParts->mBar.setVisible(visible);
}

void CRealtimeMainWidget::showIndexModelWidget() {
    mParts->mBar.toggle();
}

void CRealtimeMainWidget::changeBtnStatus(bool status) {
    mParts->mBar.enableButtons(status);
}

void CRealtimeMainWidget::updateIndexTemplate() {
    mParts->mBar.refresh();
}

QVector<QString> CRealtimeMainWidget::getSelectIndex() const {
    return mParts->mBar.selectedFormulas();
}

QVector<QString> CRealtimeMainWidget::getSelectTempalte() const {
    return mParts->mBar.selectedTemplates();
}

void CRealtimeMainWidget::updateSelectIndex(const QVector<QString> &names) {
    mParts->mBar.selectFormulas(names);
}

void CRealtimeMainWidget::updateSelectTemplate(const QVector<QString> &names) {
    mParts->mBar.selectTemplates(names);
}

void CRealtimeMainWidget::updateIndexTemplate(CRealtimeWidget *pane, const QString &name) {
    mParts->mBar.replaced(pane, name);
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
        mParts->mBar.deleted(name);
        break;
    default:
        break;
    }
}

void CRealtimeMainWidget::handleDoubleClickedFormula(const QString &name) {
    mParts->mPlacement.show(name);
}

void CRealtimeMainWidget::handleApplyFormula(const QString &name, EFormulaLanguage /*language*/,
                                             corvane::ERunMode mode) {
    mParts->mPlacement.apply(name, mode);
}

void CRealtimeMainWidget::handleConfirmFormula(const QString &name) {
    mParts->mPlacement.confirm(name);
}

void CRealtimeMainWidget::handleModifyFormula(const QString &name, EFormulaLanguage /*language*/) {
    mParts->mPlacement.modify(name);
    updateWithChildren(this);
}

void CRealtimeMainWidget::handleDeleteFormula(const QString &name) {
    mParts->mPlacement.remove(name);
    updateWithChildren(this);
}

void CRealtimeMainWidget::deleteMainFormula(const QString &name) {
    mParts->mChart.remove(name);
}

void CRealtimeMainWidget::createIndexWidget(const QString &key, int type, const QString &name) {
    mParts->mKeyed.place(key, type, name);
}

void CRealtimeMainWidget::destoryWidget(const QString &key) {
    mParts->mKeyed.close(key);
}

void CRealtimeMainWidget::minitermFormulaDataCallback(const QString &key, const FormulaMetaPtr &meta,
                                                      const FormulaResultPtr &result) {
    mParts->mKeyed.push(key, meta, result);
}

void CRealtimeMainWidget::applyFormula() {
    mParts->mTradeFormula.apply();
}

void CRealtimeMainWidget::updateFrormulaData(const QString &account) {
    mParts->mTradeFormula.setAccount(account);
}

void CRealtimeMainWidget::addMultiVewFormulaAndLinkageData(bool addFormula) {
    mParts->mTradeFormula.show(addFormula);
}

void CRealtimeMainWidget::delMultiVewFormulaAndLinkageData(const QList<QString> &accounts) {
    mParts->mTradeFormula.remove();
    updateLinkageData(accounts, false);
}

void CRealtimeMainWidget::updateLinkageData(const QList<QString> &accounts, bool show) {
    getRealTimeWidget()->updateLinkageData(accounts, show);
}

void CRealtimeMainWidget::updateLinkageData(const QString & /*account*/, bool show) {
    getRealTimeWidget()->updateLinkageData(mUiParam->mFormulaAccount, show);
}

// Cross line and days

bool CRealtimeMainWidget::isShowCrossline() const {
    return mParts->mCrossLines.isShown();
}

void CRealtimeMainWidget::switchCrossline() {
    mParts->mCrossLines.toggle();
}

void CRealtimeMainWidget::moveCursor(bool left) {
    mParts->mCrossLines.step(left);
}

void CRealtimeMainWidget::moveToHome() {
    mParts->mCrossLines.toHome();
}

void CRealtimeMainWidget::moveToEnd() {
    mParts->mCrossLines.toEnd();
}

void CRealtimeMainWidget::scaleView(bool fewer) {
    for (CRealtimeWidget *pane : mParts->mPanes.all()) {
        pane->scaleView(fewer);
    }
    mParts->refreshTimeScale();
    mParts->mCrossLines.realign();
}

void CRealtimeMainWidget::keyPressEvent(QKeyEvent *event) {
    if (!CAppConfig::isClientType(EClientType::Trading) || !mParts->mCrossLines.takeKey(event->key())) {
        QWidget::keyPressEvent(event);
    }
}

void CRealtimeMainWidget::enterEvent(QEvent * /*event*/) {
    mUiParam->mMouseIn = true;
}

void CRealtimeMainWidget::leaveEvent(QEvent * /*event*/) {
    mUiParam->mMouseIn = false;
    mParts->mCrossLines.drop();
}

// Region statistics

void CRealtimeMainWidget::statisticSelectRegion(int start, const QString &text) {
    mParts->mRegion.select(start, text);
}

void CRealtimeMainWidget::statisticSelectRegion(QDateTime *dateTime) {
    if (dateTime) {
        mParts->mRegion.select(*dateTime);
    }
}

void CRealtimeMainWidget::setRegionLineHide() {
    mParts->mRegion.hideLines();
}

// Trades

void CRealtimeMainWidget::showLinkageSetting() {
    mParts->mTradeSettings.show();
}

void CRealtimeMainWidget::showLinkageDataFromKey() {
    showLinkageSetting();
}

void CRealtimeMainWidget::updateLinkageSetting() {
    mParts->mTradeSettings.takeChoice();
}

void CRealtimeMainWidget::updateLinkageDatas() {
    mParts->mTradeSettings.refresh();
}

void CRealtimeMainWidget::closeLinkageSetting() {
    mParts->mTradeSettings.close();
}

QMap<QString, bool> CRealtimeMainWidget::getLinkageDialogSetting() const {
    return mParts->mTradeSettings.setting();
}

void CRealtimeMainWidget::presetLinkageDialogSetting(const QMap<QString, bool> &setting) {
    mParts->mTradeSettings.preset(setting);
}

void CRealtimeMainWidget::loadLinkageDialogSetting(const QMap<QString, bool> &setting) {
    mParts->mTradeSettings.load(setting);
}

void CRealtimeMainWidget::showLinkageDatas(void *graph, const QString &kind, int x, int y) {
    if (graph) {
        mParts->mRecords.show(*static_cast<CRealtimeGraphWidget *>(graph)->getData(), kind, x, y);
    }
}

// Events

bool CRealtimeMainWidget::handleEvent(int event, int first, int second, QString text, void *payload) {
    if (!mParts || !getRealTimeWidget()) {
        return true; // it is coming or going, and what its parts tell on the way concerns nobody
    }
    const std::optional<bool> handled =
        handleMainViewEvent(*this, *mParts, {event, first, second, text, payload});
    return handled ? *handled : CBaseWidget::handleEvent(event, first, second, text, payload);
}

} // namespace TC
