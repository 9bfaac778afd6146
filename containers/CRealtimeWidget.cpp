#include "containers/CRealtimeWidget.h"

#include "chartdata/CRealtimeData.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "containers/DayGraphs.h"
#include "containers/ModelRun.h"
#include "containers/PaneArithmetic.h"
#include "containers/PaneTitle.h"
#include "containers/Repaint.h"
#include "host/drawing/CIndexTitleWidget.h"
#include "host/services/CStockManager.h"
#include "host/toolkit/EventPayloads.h"
#include "host/toolkit/Events.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QTimer>

#include <utility>

namespace TC {

namespace {

constexpr int kNoSectorIndex = -1; ///< level of the overlaid sector index

} // namespace

CRealtimeWidget::CRealtimeWidget(int id, boost::shared_ptr<CRealtimeUiParam> uiParam,
                                 EIndexDisplayType displayType, EIndexViewType viewType, QWidget *parent)
    : PaneView(id, std::move(uiParam), displayType, viewType, parent), mId(id) {
    setObjectName(QStringLiteral("real_time_widget"));
    mModel = std::make_unique<ModelRun>(this, *mDays, *mTitle, mUiParam, mDisplayType);
}

CRealtimeWidget::~CRealtimeWidget() = default;

void CRealtimeWidget::resizeEvent(QResizeEvent *event) {
    PaneView::resizeEvent(event);
    mModel->placeButton();
}

// Requests

void CRealtimeWidget::request(corvane::ERunMode mode) {
    if (mModel->isHeld()) {
        mModel->hold(mode);
        slotDisplayTimeOut();
        return;
    }
    mModel->showRunning();
    switch (mModel->groupRun()) {
    case ModelRun::EGroup::MainGraph:
        mDays->main()->request(mode);
        break;
    case ModelRun::EGroup::Repaint:
        updateView();
        break;
    case ModelRun::EGroup::None:
        mDays->forEachDay(requestDate(mDays->newestDate()),
                          [mode](CRealtimeGraphWidget &graph) { graph.request(mode); });
        updateAxis(true);
        break;
    }
}

void CRealtimeWidget::slotDisplayTimeOut() {
    if (mDisplayType == EIndexDisplayType::Sub && mModel->release()) {
        request(mModel->heldMode());
    }
}

void CRealtimeWidget::minitermFormulaDataCallback(const FormulaMetaPtr &meta, const FormulaResultPtr &result,
                                                  const QString &stock, const QString &formula, int dataType) {
    if (mModel->isHeld()) {
        mModel->hold(corvane::ERunMode::Ordinary);
        if (!mModel->release()) {
            return;
        }
    }
    mModel->showRunning();
    const auto take = [&](CRealtimeGraphWidget &graph) {
        graph.minitermFormulaDataCallback(meta, result, stock, formula, dataType);
    };
    switch (mModel->groupRun()) {
    case ModelRun::EGroup::MainGraph:
        take(*mDays->main());
        break;
    case ModelRun::EGroup::Repaint:
        updateView();
        break;
    case ModelRun::EGroup::None:
        mDays->forEachDay(mDays->newestDate(), take);
        updateAxis(true);
        break;
    }
}

void CRealtimeWidget::syncRequest(corvane::ERunMode mode) {
    if (mUiParam->mGetTradeDateFunc) {
        mDays->forEachDay(mDays->newestDate(),
                          [mode](CRealtimeGraphWidget &graph) { graph.syncRequest(mode); });
        updateAxis(true);
    }
}

void CRealtimeWidget::unrequest() {
    for (CRealtimeGraphWidget *graph : getGraphWidgets()) {
        graph->unrequest();
    }
}

void CRealtimeWidget::clear() {
    mTitle->widget()->clear();
    clearData();
}

void CRealtimeWidget::clearData() {
    for (const CRealtimeGraphWidget *graph : getGraphWidgets()) {
        graph->getData()->clearData();
    }
}

void CRealtimeWidget::setAutoIndex(bool automatic) {
    mModel->setAutomatic(automatic);
}

void CRealtimeWidget::setIsLoginInit(bool init) {
    mModel->setLoginInit(init);
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

QStringList CRealtimeWidget::statisticRange(int &start, int &end) const {
    return mMainData->statisticRange(start, end);
}

// Instrument and overlays

void CRealtimeWidget::setStock(const QString &stockKey, bool flag) {
    const bool isInstrument = mUiParam->service<CStockManager>().getInstrumentDetail(stockKey) != nullptr;
    if (isInstrument) {
        mDays->main()->setStock(stockKey, flag);
    }
    mTitle->setStock(stockKey, flag);
    if (isInstrument && mUiParam->mAddSwBkzsLevel != kNoSectorIndex) {
        setTitleAddStock();
    }
    mMainData->setFillGaps(flag);
}

void CRealtimeWidget::clearStock() {
    mTitle->widget()->clearStock();
}

void CRealtimeWidget::updateOverlay(int op, const QString &stockKey) {
    switch (op) {
    case eOverlayWithAxis:
    case eOverlayWithoutAxis:
        if (stockKey.isEmpty()) {
            return;
        }
        mUiParam->addStock(stockKey, QString(), op == eOverlayWithAxis);
        break;
    case eRenewOverlays:
        clearData();
        break;
    case eTakeAllOverlays:
        for (CRealtimeGraphWidget *graph : getGraphWidgets()) {
            graph->updateOverlay();
        }
        mUiParam->delAllStock();
        mTitle->widget()->clearAddStockList();
        return;
    default:
        return;
    }
    unrequest();
    request(corvane::ERunMode::Ordinary);
    setTitleAddStock();
}

void CRealtimeWidget::updateLinkageData(const QList<QString> &accounts, bool add) {
    mDays->main()->updateLinkageData(accounts, add);
}

void CRealtimeWidget::updateLinkageData(const QString &accounts, bool add) {
    mDays->main()->updateLinkageData(accounts, add);
}

// Formulas

QString CRealtimeWidget::firstFormula() const {
    return getIndexes().value(0);
}

void CRealtimeWidget::addIndex(const QString &name) {
    for (CRealtimeGraphWidget *graph : getGraphWidgets()) {
        graph->addIndex(name);
    }
    mTitle->widget()->setShowIndex(name);
    mPreIndex = name;
}

void CRealtimeWidget::delIndex(const QString &name) {
    for (CRealtimeGraphWidget *graph : getGraphWidgets()) {
        graph->delIndex(name);
    }
    mTitle->widget()->updateView();
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
    mTitle->widget()->setShowIndex(name);
    mPreIndex = name;
}

void CRealtimeWidget::updateIndex(int op, const QString &name) {
    if (op != ePutFormulaOn && op != eTakeFormulaOff) {
        return;
    }
    for (CRealtimeGraphWidget *graph : getGraphWidgets()) {
        if (op == ePutFormulaOn) {
            graph->updateIndex(name);
        } else {
            graph->delIndex(name);
        }
    }
    request(corvane::ERunMode::Ordinary);
}

bool CRealtimeWidget::findIndex(const QString &name) const {
    return mDays->main()->findIndex(name);
}

QList<QString> CRealtimeWidget::getIndexes() const {
    return mDays->main()->getIndexes();
}

QString CRealtimeWidget::getMainIndex() const {
    return mMainData->getMainGraph();
}

QString CRealtimeWidget::gePretIndex() const {
    return mPreIndex;
}

// Commands of the newest day

void CRealtimeWidget::beHistory(bool history) {
    mDays->main()->beHistory(history);
}

void CRealtimeWidget::beReplay(bool replay) {
    mDays->main()->beReplay(replay);
}

void CRealtimeWidget::setCreateNewWorkShow(bool show) {
    mDays->main()->setCreateNewWorkShow(show);
}

void CRealtimeWidget::setMouseIn(bool in) {
    mDays->main()->setMouseIn(in);
}

void CRealtimeWidget::setPairParamFunc(boost::function<void(QString)> func) {
    mDays->main()->setPairParamFunc(std::move(func));
}

void CRealtimeWidget::showContrastSector() {
    mDays->main()->showContrastSector();
}

void CRealtimeWidget::superposedStock() {
    mDays->main()->superposedStock();
}

void CRealtimeWidget::viewVariable() {
    mDays->main()->viewVariable();
}

// Events

int CRealtimeWidget::getId() const {
    return mId;
}

void CRealtimeWidget::destorySubWidget() {
    deliverEvent(ePaneCloseAsked, mId, eClosedByHost, firstFormula(), nullptr);
}

bool CRealtimeWidget::handleEvent(int event, int sub, int param, QString text, void *data) {
    switch (event) {
    case eButtonClicked:
        handleButton(sub, param);
        return true;
    case eStatisticAsked:
        mDays->select(param);
        return false;
    case eSubPaneDoubleClicked:
    case ePanePressed:
        deliverEvent(event, mId, 0, QString(), nullptr);
        return true;
    case eViewChanged:
        updateAxis(false);
        updateView();
        updateWithChildren(this);
        return true;
    case eFormulaAsked:
        updateIndex(param, text);
        updateWithChildren(this);
        return true;
    case eOverlayAsked:
        updateOverlay(param, text);
        updateWithChildren(this);
        return true;
    case eDataChanged:
        if (mTitle->refresh(*mDays, data)) {
            Q_EMIT crossLineMoved();
        }
        repaintChanged();
        Q_EMIT dataChanged();
        return true;
    case eRangeOutgrown:
        updateAxis(false);
        repaintChanged();
        Q_EMIT dataChanged();
        return false;
    case eDaysAsked:
        deliverEvent(event, mId, param, QString(), nullptr);
        return true;
    case eGraphResized: // it may have been by its title, with the pane as it was
        placeCrossLine();
        return false;
    case eRegionBoundMoved:
        if (const auto moved = MovedBound::of(event, sub, data); moved && moved->bound == eReplayTime) {
            keepReplayTime(moved->time);
            return true;
        }
        return false;
    default:
        return PaneView::handleEvent(event, sub, param, text, data);
    }
}

void CRealtimeWidget::keepReplayTime(const RegionBoundTime &time) {
    if (!mReplayTime) {
        QTimer::singleShot(0, this, &CRealtimeWidget::tellReplayTime);
    }
    mReplayTime = time;
}

void CRealtimeWidget::tellReplayTime() {
    RegionBoundTime time = *mReplayTime;
    mReplayTime.reset();
    deliverEvent(eRegionBoundMoved, eReplayTime, 0, QString(), &time);
}

void CRealtimeWidget::handleButton(int button, int param) {
    switch (button) {
    case CIndexTitleWidget::eClose:
        deliverEvent(ePaneCloseAsked, mId, param, firstFormula(), nullptr);
        break;
    case CIndexTitleWidget::eMenu:
        mDays->main()->showTitleMenu(mTitle->widget()->getGlobalPoint());
        break;
    case CIndexTitleWidget::eSettings:
        deliverEvent(ePaneSettingsAsked, mId, 0, QString(), nullptr);
        break;
    case CIndexTitleWidget::eOneDay:
        deliverEvent(eDaysAsked, mId, eBackToOneDay, QString(), nullptr);
        break;
    case CIndexTitleWidget::eFewerDays:
        deliverEvent(eDaysAsked, mId, eOneDayFewer, QString(), nullptr);
        break;
    case CIndexTitleWidget::eMoreDays:
        deliverEvent(eDaysAsked, mId, eOneDayMore, QString(), nullptr);
        break;
    case eRunButton:
        mModel->start();
        request(mModel->heldMode());
        break;
    default:
        break;
    }
}

} // namespace TC
