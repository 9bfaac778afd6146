// Requests, results that are pushed, the instrument, its overlays and formulas.

#include "containers/CRealtimeWidget.h"

#include "chartdata/CRealtimeData.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "containers/PaneArithmetic.h"
#include "host/drawing/CIndexTitleWidget.h"
#include "host/services/CIndexManager.h"
#include "host/services/CStockManager.h"
#include "host/services/CStrategyTradeManager.h"
#include "host/toolkit/CWidgetList.h"
#include "viewmodel/CRealtimeUiParam.h"

namespace TC {

namespace {

/// What updateOverlay is told to do.
enum EOverlay : int { eTakeAll = 0, eWithAxis = 1, eAskAnew = 2, eWithoutAxis = 11 };
/// What updateIndex is told to do.
enum EFormulaOperation : int { eTakeFormula = 0, ePutFormula = 1 };

constexpr int kNoSectorIndex = -1; ///< level of the overlaid sector index
constexpr int kNoIndex = -1;
constexpr int kNewestDay = 0;

CStockManager &stocks() {
    return CSingletonT<CStockManager>::instance();
}

/// A record that stands for a portfolio.
CInstrumentDetailPtr portfolioDetail(const QString &key) {
    const CInstrumentDetailPtr model = stocks().getDefaultDetail();
    auto detail = model ? std::make_shared<CInstrumentDetail>(*model) : std::make_shared<CInstrumentDetail>();
    detail->mMarket = "TZZH";
    detail->mCode = key.toStdString();
    detail->mName = detail->mCode;
    return detail;
}

} // namespace

// Days

QString CRealtimeWidget::market() const {
    return getDetailQsMarket(mUiParam->getStockDetail());
}

int CRealtimeWidget::baseDate() const {
    return mUiParam->mGetTradeDateFunc ? mUiParam->mGetTradeDateFunc() : stocks().getLastTradingDay(market());
}

template <class Action> void CRealtimeWidget::forEachDay(int date, Action action) {
    const QList<CRealtimeGraphWidget *> graphs = getGraphWidgets();
    for (int i = 0; i < graphs.size(); ++i) {
        graphs[i]->getData()->setTradeDate(stocks().getShiftTradeDate(market(), date, -i));
        action(*graphs[i]);
    }
}

// Requests

void CRealtimeWidget::request(corvane::ERunMode mode) {
    if (isHeld()) {
        mPendingRunMode = mode;
        mIsLoginInit = false;
        slotDisplayTimeOut();
        return;
    }
    showRunning();
    if (runGroupModel([this, mode] { mMainGraphWidget->request(mode); })) {
        return;
    }
    forEachDay(requestDate(baseDate()), [mode](CRealtimeGraphWidget &graph) { graph.request(mode); });
    updateAxis(true);
}

void CRealtimeWidget::syncRequest(corvane::ERunMode mode) {
    if (!mUiParam->mGetTradeDateFunc) {
        return;
    }
    forEachDay(baseDate(), [mode](CRealtimeGraphWidget &graph) { graph.syncRequest(mode); });
    updateAxis(true);
}

void CRealtimeWidget::unrequest() {
    for (CRealtimeGraphWidget *graph : getGraphWidgets()) {
        graph->unrequest();
    }
}

void CRealtimeWidget::clear() {
    mTitleWidget->clear();
    for (const CRealtimeGraphWidget *graph : getGraphWidgets()) {
        graph->getData()->clearData();
    }
}

bool CRealtimeWidget::isHeld() const {
    return mDisplayType == EIndexDisplayType::Sub && (mIsLoginInit || !mAutoIndex);
}

void CRealtimeWidget::showRunning() {
    if (mDisplayType != EIndexDisplayType::Sub) {
        return;
    }
    mShowRunButton = false;
    mTitleWidget->setShowSimpleTitle(false);
    resizeLayout();
}

void CRealtimeWidget::showRunButton() {
    mShowRunButton = true;
    mTitleWidget->setShowSimpleTitle(true);
    mTitleWidget->setSimpleTite(firstFormula());
    resizeLayout();
}

template <class Action> bool CRealtimeWidget::runGroupModel(Action runMainGraph) {
    if (!mMainGraphWidget->hasGroupModelIndex()) {
        return false;
    }
    const bool isDue = mUiParam->isShowGroupIndexGraph() && !mMainData->hasData();
    if (isDue || mMainGraphWidget->hasPythonIndex()) {
        runMainGraph();
    } else {
        updateView();
    }
    return true;
}

bool CRealtimeWidget::isStrategyRunning() const {
    CStrategyInfo strategy;
    return mMainGraphWidget->hasPythonIndex() &&
           CSingletonT<CStrategyTradeManager>::instance().getStrategyByName(firstFormula(), strategy) &&
           strategy.mRunning;
}

void CRealtimeWidget::slotDisplayTimeOut() {
    if (mDisplayType != EIndexDisplayType::Sub) {
        return;
    }
    if (!mMainGraphWidget->hasGroupModelIndex() && !mMainGraphWidget->hasPythonIndex()) {
        mAutoIndex = true;
        request(mPendingRunMode);
    } else if (isStrategyRunning() && mAutoIndex) {
        request(mPendingRunMode);
    } else {
        showRunButton();
    }
}

void CRealtimeWidget::minitermFormulaDataCallback(const FormulaMetaPtr &meta, const FormulaResultPtr &result,
                                                  const QString &stock, const QString &formula, int dataType) {
    if (isHeld()) {
        mPendingRunMode = corvane::ERunMode::Ordinary;
        mIsLoginInit = false;
        if (!mMainGraphWidget->hasGroupModelIndex() && !mMainGraphWidget->hasPythonIndex()) {
            mAutoIndex = true;
        } else if (!isStrategyRunning() || !mAutoIndex) {
            showRunButton();
            return;
        }
    }
    showRunning();
    const auto take = [&](CRealtimeGraphWidget &graph) {
        graph.minitermFormulaDataCallback(meta, result, stock, formula, dataType);
    };
    if (runGroupModel([this, take] { take(*mMainGraphWidget); })) {
        return;
    }
    forEachDay(baseDate(), take);
    updateAxis(true);
}

bool CRealtimeWidget::hasData() const {
    return mMainData->hasData();
}

bool CRealtimeWidget::hasPythonIndex() const {
    return mMainData->hasPythonIndex();
}

bool CRealtimeWidget::hasGroupModelIndex() const {
    return mMainData->hasGroupModelIndex();
}

// Instrument

void CRealtimeWidget::setStock(const QString &stockKey, bool flag) {
    if (const CInstrumentDetailPtr detail = stocks().getInstrumentDetail(stockKey)) {
        mMainGraphWidget->setStock(stockKey, flag);
        mTitleWidget->setStock(detail, flag);
        if (mUiParam->mAddSwBkzsLevel != kNoSectorIndex) {
            setTitleAddStock();
        }
    } else if (stocks().isPortfolio(stockKey)) {
        mTitleWidget->setStock(portfolioDetail(stockKey), flag);
    } else if (const CIndexDetail *index = CSingletonT<CIndexManager>::instance().getIndex(stockKey)) {
        mTitleWidget->setStock(indexDetail2Detail(*index), flag);
    }
    mMainData->setFillGaps(flag);
}

void CRealtimeWidget::clearStock() {
    mTitleWidget->clearStock();
}

void CRealtimeWidget::setTitleData(int day) {
    if (const CRealtimeGraphWidget *graph = getGraphWidget(mGraphList->count() - day - 1)) {
        mTitleWidget->setIndexData(graph->getData());
    }
}

void CRealtimeWidget::setTitleAddStock() {
    mTitleWidget->setAddStockList(mUiParam->getAllAddStockList());
}

void CRealtimeWidget::updateOverlay(int op, const QString &stockKey) {
    switch (op) {
    case eWithAxis:
    case eWithoutAxis:
        if (stockKey.isEmpty()) {
            return;
        }
        mUiParam->addStock(stockKey, QString(), op == eWithAxis);
        break;
    case eAskAnew:
        for (const CRealtimeGraphWidget *graph : getGraphWidgets()) {
            graph->getData()->clearData();
        }
        break;
    case eTakeAll:
        for (CRealtimeGraphWidget *graph : getGraphWidgets()) {
            graph->updateOverlay();
        }
        mUiParam->delAllStock();
        mTitleWidget->clearAddStockList();
        return;
    default:
        return;
    }
    unrequest();
    request(corvane::ERunMode::Ordinary);
    setTitleAddStock();
}

void CRealtimeWidget::updateLinkageData(const QList<QString> &accounts, bool add) {
    mMainGraphWidget->updateLinkageData(accounts, add);
}

void CRealtimeWidget::updateLinkageData(const QString &accounts, bool add) {
    mMainGraphWidget->updateLinkageData(accounts, add);
}

QStringList CRealtimeWidget::statisticRange(int &start, int &end) const {
    return mMainData->statisticRange(start, end);
}

// Formulas

QString CRealtimeWidget::firstFormula() const {
    return mMainGraphWidget->getIndexes().value(0);
}

void CRealtimeWidget::addIndex(const QString &name) {
    for (CRealtimeGraphWidget *graph : getGraphWidgets()) {
        graph->addIndex(name);
    }
    mTitleWidget->setShowIndex(name);
    mPreIndex = name;
}

void CRealtimeWidget::delIndex(const QString &name) {
    for (CRealtimeGraphWidget *graph : getGraphWidgets()) {
        graph->delIndex(name);
    }
    mTitleWidget->updateView();
    mPreIndex.clear();
}

void CRealtimeWidget::delAllIndex() {
    for (CRealtimeGraphWidget *graph : getGraphWidgets()) {
        graph->delAllIndex();
    }
}

void CRealtimeWidget::updateIndex(const QString &name) {
    for (CRealtimeGraphWidget *graph : getGraphWidgets()) {
        graph->updateIndex(name);
    }
    mTitleWidget->setShowIndex(name);
    mPreIndex = name;
}

void CRealtimeWidget::updateIndex(int op, const QString &name) {
    if (op != ePutFormula && op != eTakeFormula) {
        return;
    }
    for (CRealtimeGraphWidget *graph : getGraphWidgets()) {
        if (op == ePutFormula) {
            graph->updateIndex(name);
        } else {
            graph->delIndex(name);
        }
    }
    request(corvane::ERunMode::Ordinary);
}

void CRealtimeWidget::updateIndexId(int id) {
    if (id == kNoIndex) {
        setTitleData(kNewestDay);
    }
    mTitleWidget->updateIndexId(id);
}

bool CRealtimeWidget::findIndex(const QString &name) const {
    return mMainGraphWidget->findIndex(name);
}

QList<QString> CRealtimeWidget::getIndexes() const {
    return mMainGraphWidget->getIndexes();
}

QString CRealtimeWidget::getMainIndex() const {
    return mMainData->getMainGraph();
}

QString CRealtimeWidget::gePretIndex() const {
    return mPreIndex;
}

} // namespace TC
