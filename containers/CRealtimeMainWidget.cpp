#include "containers/CRealtimeMainWidget.h"

#include "chartdata/RequestLog.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "chartview/CRealtimeTimeWidget.h"
#include "containers/DownloadProgress.h"
#include "containers/MarketWord.h"
#include "containers/Repaint.h"
#include "host/services/CConfigService.h"
#include "host/services/CStockManager.h"
#include "host/services/IdGenerator.h"
#include "host/services/StockTypeCenter.h"
#include "host/toolkit/CDragWidgetList.h"
#include "host/toolkit/CHighlightWidget.h"
#include "host/windows/CIndexModelWidget.h"
#include "linkage/CRealtimeLinkageSettingDialog.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QVBoxLayout>
#include <boost/format.hpp>
#include <boost/make_shared.hpp>

#include <utility>

namespace TC {

namespace {

constexpr int kMinimumWidth = 150;
constexpr int kTimeScaleHeight = 20;
constexpr int kMainStretch = 2;
constexpr int kNetValueType = 100013; ///< funds that publish an indicative net value
constexpr int kPortfolioKind = 2;
constexpr corvane::ERunMode kOrdinary = corvane::ERunMode::Ordinary;

QString netValueFormula() {
    return QStringLiteral("IOPV");
}

} // namespace

CRealtimeMainWidget::CRealtimeMainWidget(QWidget *parent, EIndexViewType viewType)
    : CBaseWidget(parent), mUiParam(boost::make_shared<CRealtimeUiParam>(viewType)), mViewType(viewType) {
    setObjectName(QStringLiteral("realtime_main_widget"));
    setMinimumWidth(kMinimumWidth);
    mDownloadProgress = std::make_unique<DownloadProgress>(
        [this](int done, int total) { suppleProgress(done, total, QString(), QString()); });
    createUi();
    setFocusPolicy(Qt::StrongFocus);
}

CRealtimeMainWidget::~CRealtimeMainWidget() {
    // Each pointer is taken away first: the widgets that are left may still hear of the mouse.
    deleteRecordDialogs();
    delete std::exchange(mMainWidget, nullptr);
    while (!mSubWidgets.isEmpty()) {
        delete mSubWidgets.takeFirst();
    }
    delete std::exchange(mTimeWidget, nullptr);
    delete std::exchange(mHighlightWidget, nullptr);
    delete std::exchange(mWidgetList, nullptr);
    delete std::exchange(mLinkageDialog, nullptr);
}

void CRealtimeMainWidget::createUi() {
    const CConfig *config = getConfig();
    const bool concise = config && config->conciseStyle();
    auto *layout = new QVBoxLayout;
    layout->setMargin(0);
    layout->setSpacing(0);
    mWidgetList = new GZ::CDragWidgetList(Qt::Vertical, this);
    mWidgetList->setMargin(0);
    mMainWidget = new CRealtimeWidget(mNextWidgetId++, mUiParam, EIndexDisplayType::Main, mViewType, this);
    followPane(mMainWidget);
    addMainFormulas();
    mWidgetList->addStretchWidget(mMainWidget, kMainStretch, GZ::CWidgetList::eAnchorBoth, false);
    layout->addWidget(mWidgetList, 1);
    if (mViewType != EIndexViewType::NoTimeScale) {
        mTimeWidget = new CRealtimeTimeWidget(mUiParam, this);
        mTimeWidget->setFixedHeight(kTimeScaleHeight);
        layout->addWidget(mTimeWidget);
    }
    mHighlightWidget = new GZ::CHighlightWidget(this);
    mHighlightWidget->hide();
    if (mViewType == EIndexViewType::Template && concise) {
        mIndexModelWidget = new CIndexModelWidget(this);
        mIndexModelWidget->setFixedHeight(mIndexModelWidget->getSize().height());
        mIndexModelWidget->hide();
        layout->addWidget(mIndexModelWidget);
    }
    mWidgetList->setSplitter(QStringLiteral("ic_clr_realtime_spliter_background"), 0);
    if (concise) {
        mWidgetList->setSplitter(QStringLiteral("ic_clr_concise_mainwindow_split_background"), 1);
    }
    setLayout(layout);
}

/// What one pane learns of the newest point concerns all of them.
void CRealtimeMainWidget::followPane(const CRealtimeWidget *pane) {
    connect(pane, &CRealtimeWidget::pointCountChanged, this, [this] {
        for (CRealtimeWidget *one : allPanes()) {
            one->repaintChanged();
        }
    });
    connect(pane, &CRealtimeWidget::crossLineMoved, this, &CRealtimeMainWidget::followNewestPoint);
}

QVector<CRealtimeWidget *> CRealtimeMainWidget::allPanes() const {
    QVector<CRealtimeWidget *> panes;
    panes.reserve(mSubWidgets.size() + 1);
    panes.append(mMainWidget);
    panes.append(mSubWidgets);
    return panes;
}

QVector<QList<CRealtimeGraphWidget *>> CRealtimeMainWidget::dayRows() const {
    QVector<QList<CRealtimeGraphWidget *>> rows;
    for (const CRealtimeWidget *pane : allPanes()) {
        rows.append(pane->getGraphWidgets());
    }
    return rows;
}

// Instrument

void CRealtimeMainWidget::setStock(const QString &key, bool useUnderlying) {
    CStockManager &stocks = CSingletonT<CStockManager>::instance();
    const bool kindChanges = (stocks.isPortfolio(key) && mUiParam->mStockKind != kPortfolioKind) ||
                             (stocks.isExist(key) && mUiParam->mStockKind != 0);
    if (kindChanges) {
        removeMainFormulas(mUiParam->getMainFormula());
    }
    mUiParam->setStock(key, useUnderlying);
    mMainWidget->setStock(key, useUnderlying);
    refreshTimeScale();
    realignCrossLine();
    if (kindChanges) {
        addMainFormulas();
    }
    applyNetValueFormula();
    applyFormula();
}

void CRealtimeMainWidget::addMainFormulas() {
    for (const QString &name : mUiParam->getMainFormula()) {
        mMainWidget->addIndex(name);
    }
}

void CRealtimeMainWidget::removeMainFormulas(const QList<QString> &names) {
    for (const QString &name : names) {
        mMainWidget->delIndex(name);
    }
}

/// Shows the indicative net value of a fund that publishes one, and of no other instrument.
void CRealtimeMainWidget::applyNetValueFormula() {
    const CInstrumentDetailPtr detail = mUiParam->getStockDetail();
    const bool wanted = detail && kvservice::StockTypeCenter::isTypedStock(
                                      kNetValueType, getDetailMarket(detail), getDetailCode(detail));
    const bool there = mMainWidget->findIndex(netValueFormula());
    if (wanted && !there) {
        mMainWidget->addIndex(netValueFormula());
    } else if (!wanted && there) {
        mMainWidget->delIndex(netValueFormula());
    }
}

void CRealtimeMainWidget::clearStock() {
    for (CRealtimeWidget *pane : allPanes()) {
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
    refreshCrossLine();
}

void CRealtimeMainWidget::setGetTradeDateFunc(boost::function<int()> func) {
    mUiParam->mGetTradeDateFunc = func;
    mMainWidget->setGetTradeDateFunc(std::move(func));
}

void CRealtimeMainWidget::setPairParamFunc(boost::function<void(QString)> func) {
    mMainWidget->setPairParamFunc(std::move(func));
}

void CRealtimeMainWidget::setPortfolioType(EPortfolioAnalyzeGraphType type) {
    const QList<QString> former = mUiParam->getMainFormula();
    mUiParam->setPortfolioGraphType(static_cast<int>(type));
    removeMainFormulas(former);
    addMainFormulas();
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
    realignCrossLine();
}

// Overlays

QList<QString> CRealtimeMainWidget::getAddStockList() const {
    QList<QString> keys;
    for (const CInstrumentDetailPtr &detail : mUiParam->getAllAddStockList()) {
        keys.append(getDetailQsKey(detail));
    }
    return keys;
}

void CRealtimeMainWidget::addSuperposedStock(const CInstrumentDetailPtr &detail) {
    mUiParam->addStock(getDetailQsKey(detail), QString(), true);
    mMainWidget->setTitleAddStock();
}

void CRealtimeMainWidget::delAllAddStock() {
    mMainWidget->updateOverlay(0, QString());
}

void CRealtimeMainWidget::showContrastSector() {
    mMainWidget->showContrastSector();
}

void CRealtimeMainWidget::superposedStock() {
    mMainWidget->superposedStock();
}

// Requests

void CRealtimeMainWidget::request(bool sync) {
    if (sync) {
        for (CRealtimeWidget *pane : allPanes()) {
            pane->syncRequest(kOrdinary);
        }
        updateWithChildren(this);
        repaint();
        return;
    }
    mUiParam->mRequestId = genRequestID();
    mMainWidget->request(kOrdinary);
    for (CRealtimeWidget *pane : mSubWidgets) {
        if (pane->hasGroupModelIndex() && !mUiParam->isShowGroupIndexGraph()) {
            pane->clear();
        }
        pane->request(kOrdinary);
    }
}

void CRealtimeMainWidget::unrequest() {
    mMainWidget->unrequest();
    for (CRealtimeWidget *pane : mSubWidgets) {
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
    for (CRealtimeWidget *pane : allPanes()) {
        pane->clear();
    }
    if (updateView) {
        this->updateView();
    }
}

void CRealtimeMainWidget::beReplay(bool replay) {
    mReplay = replay;
    for (CRealtimeWidget *pane : allPanes()) {
        pane->beReplay(replay);
    }
}

void CRealtimeMainWidget::beHistory(bool history) {
    mMainWidget->beHistory(history);
}

// View

void CRealtimeMainWidget::updateView() {
    for (CRealtimeWidget *pane : allPanes()) {
        pane->updateView();
    }
    updateWithChildren(this);
}

void CRealtimeMainWidget::updateWidgetsView() {
    updateView();
    refreshTimeScale();
}

void CRealtimeMainWidget::themeChanged() {
    updateView();
}

void CRealtimeMainWidget::onUiResourceChanged() {
    themeChanged();
    CBaseWidget::onUiResourceChanged();
}

void CRealtimeMainWidget::refreshTimeScale() {
    if (mTimeWidget) {
        mTimeWidget->updateScale();
    }
}

void CRealtimeMainWidget::setTitleData(int day) {
    for (CRealtimeWidget *pane : allPanes()) {
        pane->setTitleData(day);
    }
}

void CRealtimeMainWidget::setCreateNewWorkShow(bool show) {
    mCreateNewWorkShow = show;
    mMainWidget->setCreateNewWorkShow(show);
}

void CRealtimeMainWidget::setAutoIndex(bool automatic) {
    for (CRealtimeWidget *pane : mSubWidgets) {
        pane->setAutoIndex(automatic);
    }
}

void CRealtimeMainWidget::setIsLoginInit(bool init) {
    for (CRealtimeWidget *pane : mSubWidgets) {
        pane->setIsLoginInit(init);
    }
}

void CRealtimeMainWidget::setSelected(bool selected) {
    mMainWidget->setSelected(selected);
}

void CRealtimeMainWidget::setBtnToolVisible(bool visible) {
    mMainWidget->setBtnToolVisible(visible);
}

void CRealtimeMainWidget::setHolographicButtonShow(bool show) {
    mMainWidget->showHolographicButon(show);
}

void CRealtimeMainWidget::viewVariable() {
    if (CRealtimeWidget *pane = subPaneOf(mCurrentWidgetId)) {
        pane->viewVariable();
    }
}

void CRealtimeMainWidget::setWidgetFocus() {
    setFocus();
}

// The user's drawings

void CRealtimeMainWidget::setGraphType(EVmGraphType type) {
    mMainWidget->setGraphType(type);
}

void CRealtimeMainWidget::setCurrGraphColor(const QString &color) {
    mMainWidget->setCurrGraphColor(color);
}

bool CRealtimeMainWidget::deleteCurrGraph() {
    return mMainWidget->deleteCurrGraph();
}

void CRealtimeMainWidget::setParam(const bson::BSONObj &param) {
    mMainWidget->setParam(param);
}

bson::BSONObj CRealtimeMainWidget::getParam() const {
    return mMainWidget->getParam();
}

// Template bar

void CRealtimeMainWidget::setIndexModelVisible(bool visible) {
    if (mIndexModelWidget) {
        mIndexModelWidget->setIndexModelVisible(visible);
    }
}

void CRealtimeMainWidget::showIndexModelWidget() {
    if (mIndexModelWidget) {
        mIndexModelWidget->showIndexModelWidget();
    }
}

void CRealtimeMainWidget::changeBtnStatus(bool status) {
    if (mIndexModelWidget) {
        mIndexModelWidget->changeBtnStatus(status);
    }
}

void CRealtimeMainWidget::updateIndexTemplate() {
    if (mIndexModelWidget) {
        mIndexModelWidget->updateIndexTemplate();
    }
}

QVector<QString> CRealtimeMainWidget::getSelectIndex() const {
    return mIndexModelWidget ? mIndexModelWidget->getSelectIndex() : QVector<QString>();
}

QVector<QString> CRealtimeMainWidget::getSelectTempalte() const {
    return mIndexModelWidget ? mIndexModelWidget->getSelectTempalte() : QVector<QString>();
}

void CRealtimeMainWidget::updateSelectIndex(const QVector<QString> &names) {
    if (mIndexModelWidget) {
        mIndexModelWidget->updateSelectIndex(names);
    }
}

void CRealtimeMainWidget::updateSelectTemplate(const QVector<QString> &names) {
    if (mIndexModelWidget) {
        mIndexModelWidget->updateSelectTemplate(names);
    }
}

} // namespace TC
