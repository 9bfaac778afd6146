// How a pane is built and laid out, and what it hands on to its parts.

#include "containers/CRealtimeWidget.h"

#include "chartdata/CRealtimeData.h"
#include "chartview/CCrossLineWidget.h"
#include "chartview/CGraphAxisWidget.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "containers/PaneArithmetic.h"
#include "host/drawing/CIndexTitleWidget.h"
#include "host/services/CConfigService.h"
#include "host/services/CStockManager.h"
#include "host/toolkit/CFrameSplitterLine.h"
#include "host/toolkit/CPushButton.h"
#include "host/toolkit/CWidgetList.h"
#include "viewmodel/CRealtimeUiParam.h"
#include "viewmodel/PaneMetrics.h"

#include <QVBoxLayout>

#include <boost/make_shared.hpp>

#include <utility>

namespace TC {

namespace {

constexpr int kRunButton = 1024; ///< id of the run button
constexpr QSize kRunButtonSize(50, 20); ///< pixels, as the other sizes below
constexpr int kRunButtonRow = 12;
constexpr int kConciseRunButtonRow = 22;
constexpr int kRunButtonGap = 5;
constexpr int kTitleRows = 1;
constexpr int kTitleTextWidth = 50;
constexpr int kMinutesOfDay = 0; ///< period of the title's series

bool isConcise() {
    const CConfig *config = getConfig();
    return config && config->conciseStyle();
}

} // namespace

CRealtimeWidget::CRealtimeWidget(int id, boost::shared_ptr<CRealtimeUiParam> uiParam,
                                 EIndexDisplayType displayType, EIndexViewType viewType, QWidget *parent)
    : CBaseWidget(parent), mUiParam(std::move(uiParam)), mDisplayType(displayType), mViewType(viewType),
      mId(id) {
    setObjectName(QStringLiteral("real_time_widget"));
    mMainData = boost::make_shared<CRealtimeData>(mUiParam, mDisplayType, this);
    createUi();
}

CRealtimeWidget::~CRealtimeWidget() {
    // The parts that are left move up, and tell of it.
    delete std::exchange(mTitleWidget, nullptr);
    delete std::exchange(mMainGraphWidget, nullptr);
    mMainData.reset();
    if (mUiParam->mLeftAxis == mLeftAxisWidget) {
        mUiParam->mLeftAxis = nullptr;
    }
    if (mUiParam->mRightAxis == mRightAxisWidget) {
        mUiParam->mRightAxis = nullptr;
    }
    mUiParam.reset();
}

// Building

void CRealtimeWidget::createUi() {
    mTitleWidget = new CIndexTitleWidget(mMainData, mDisplayType, mViewType, kTitleRows, kTitleTextWidth,
                                         kMinutesOfDay, boost::shared_ptr<CKLineUiParam>(), this);
    mTitleWidget->setRealtimeUiParam(mUiParam);
    createStrips();
    mGraphList = new GZ::CWidgetList(Qt::Horizontal, this);
    mGraphList->setMargin(0);
    mGraphList->setSpacing(0);
    mGraphList->setTellsActivation(true);
    mMainGraphWidget =
        new CRealtimeGraphWidget(mLastGraphId, mMainData, mUiParam, mDisplayType, mViewType, this, true);
    mGraphList->addStretchWidget(mMainGraphWidget, 1, GZ::CWidgetList::eAnchorBoth, true);
    mGraphIds.insert(mMainGraphWidget, mLastGraphId);
    if (mDisplayType == EIndexDisplayType::Sub) {
        createOlderGraphs();
        createRunButton();
    }
    mCrossLineWidget = new CCrossLineWidget(mUiParam, mMainData, this);
    mCrossLineWidget->hide();
    layOutParts();
}

void CRealtimeWidget::createStrips() {
    mLeftAxisWidget = new CGraphAxisWidget(mUiParam, mMainData, CGraphAxisWidget::eLeft, this);
    mRightAxisWidget = new CGraphAxisWidget(mUiParam, mMainData, CGraphAxisWidget::eRight, this);
    for (CGraphAxisWidget *strip : {mLeftAxisWidget, mRightAxisWidget}) {
        strip->setDisplayType(mDisplayType);
        strip->setFixedWidth(kAxisStripWidth);
    }
    mMainData->setAxisWidget(mLeftAxisWidget);
    if (mDisplayType == EIndexDisplayType::Main) {
        mUiParam->mLeftAxis = mLeftAxisWidget;
        mUiParam->mRightAxis = mRightAxisWidget;
        mUiParam->mLeftAxisWidth = kAxisStripWidth;
        mUiParam->mRightAxisWidth = kAxisStripWidth;
    }
}

void CRealtimeWidget::createOlderGraphs() {
    const int date = baseDate();
    mMainData->setTradeDate(date);
    for (int k = 1; k < mUiParam->mDayCount; ++k) {
        const boost::shared_ptr<CRealtimeData> data = makeData();
        data->setTradeDate(CSingletonT<CStockManager>::instance().getShiftTradeDate(market(), date, -k));
        insertGraph(mId, data, this);
    }
}

void CRealtimeWidget::createRunButton() {
    mRunButton = new GZ::CPushButton(QStringLiteral("img_btn_ok"), kRunButton, 3, 64, 3, 18, this);
    mRunButton->setText(tr("运行模型"));
    mRunButton->setFontKey(QStringLiteral("fnt_default_small_heavy"));
    mRunButton->setFixedSize(kRunButtonSize);
    mRunButton->hide();
}

void CRealtimeWidget::layOutParts() {
    using GZ::CWidgetList;
    auto *row = new CWidgetList(Qt::Horizontal, this);
    auto *root = new CWidgetList(Qt::Vertical, this);
    for (CWidgetList *list : {row, root}) {
        list->setMargin(0);
        list->setSpacing(0);
    }
    row->addFixedWidget(mLeftAxisWidget, CWidgetList::eAnchorBoth, true);
    row->addStretchWidget(mGraphList, 1, CWidgetList::eAnchorBoth, true);
    row->addFixedWidget(mRightAxisWidget, CWidgetList::eAnchorBoth, true);
    root->addFixedWidget(mTitleWidget, CWidgetList::eAnchorBoth, true);
    if (isConcise()) {
        auto *line =
            new GZ::CFrameSplitterLine(QStringLiteral("ic_clr_concise_mainwindow_split_background"), 1);
        root->addFixedWidget(line, CWidgetList::eAnchorBoth, false);
    }
    root->addStretchWidget(row, 1, CWidgetList::eAnchorBoth, true);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(root, 1);
    mCrossLineWidget->raise();
    if (mRunButton) {
        mRunButton->raise();
    }
}

boost::shared_ptr<CRealtimeData> CRealtimeWidget::makeData() {
    auto data = boost::make_shared<CRealtimeData>(mUiParam, mDisplayType, this);
    data->setAxisWidget(mLeftAxisWidget);
    return data;
}

CRealtimeGraphWidget *CRealtimeWidget::insertGraph(int id, const boost::shared_ptr<CRealtimeData> &data,
                                                   QWidget *parent) {
    auto *graph = new CRealtimeGraphWidget(id, data, mUiParam, mDisplayType, mViewType, parent, false);
    mGraphList->insertStretchWidget(0, graph, 1, GZ::CWidgetList::eAnchorBoth, true);
    return graph;
}

// Layout

void CRealtimeWidget::resizeEvent(QResizeEvent *event) {
    CBaseWidget::resizeEvent(event);
    if (mDisplayType == EIndexDisplayType::Main) {
        mUiParam->resize(rect());
    }
    mLeftAxisWidget->recompute();
    mRightAxisWidget->recompute();
    mTitleWidget->updateTitleHeight();
    placeCrossLine();
    resizeLayout();
    updateView();
    for (CRealtimeGraphWidget *graph : getGraphWidgets()) {
        graph->recalcAxisByValue(); // it was resized with the day width of before
    }
}

void CRealtimeWidget::placeCrossLine() {
    if (mCrossLineWidget) {
        mCrossLineWidget->setFixedExtent(width(), height());
        mCrossLineWidget->setGraphRect(mMainGraphWidget->rect(), titleHeight());
        refreshCrossLine();
    }
}

void CRealtimeWidget::resizeLayout() {
    if (!mRunButton) {
        return;
    }
    if (mShowRunButton) {
        const int x = static_cast<int>(mUiParam->mRightAxisWidth + mUiParam->mDayWidth);
        mRunButton->move(x, (isConcise() ? kConciseRunButtonRow : kRunButtonRow) + kRunButtonGap);
    }
    mRunButton->setVisible(mShowRunButton);
}

int CRealtimeWidget::titleHeight() const {
    return mTitleWidget->height();
}

// Parts

int CRealtimeWidget::getId() const {
    return mId;
}

boost::shared_ptr<CRealtimeUiParam> CRealtimeWidget::getUiParam() const {
    return mUiParam;
}

CCrossLineWidget *CRealtimeWidget::getCrossLineWidget() const {
    return mCrossLineWidget;
}

void CRealtimeWidget::setCrossLineWidget(CCrossLineWidget *crossLine) {
    mCrossLineWidget = crossLine;
}

CRealtimeGraphWidget *CRealtimeWidget::getCurrentGraphWidget() const {
    return mCurrentGraph ? mCurrentGraph : mMainGraphWidget;
}

int CRealtimeWidget::getGrapWidgetCount() const {
    return mGraphList->count();
}

int CRealtimeWidget::getGrapWidgetID(CRealtimeGraphWidget *graph) const {
    return mGraphIds.value(graph, -1);
}

CRealtimeGraphWidget *CRealtimeWidget::getGraphWidget(int index) const {
    return qobject_cast<CRealtimeGraphWidget *>(mGraphList->widgetAt(index));
}

QList<CRealtimeGraphWidget *> CRealtimeWidget::getGraphWidgets() const {
    QList<CRealtimeGraphWidget *> graphs;
    for (int i = 0; i < mGraphList->count(); ++i) {
        if (CRealtimeGraphWidget *graph = getGraphWidget(i)) {
            graphs.prepend(graph);
        }
    }
    return graphs;
}

// View

void CRealtimeWidget::updateAxis(bool overwrite) {
    const QList<CRealtimeGraphWidget *> graphs = getGraphWidgets();
    IndexBaseData::MaxMinMap ranges;
    for (const CRealtimeGraphWidget *graph : graphs) {
        mergeRanges(ranges, graph->getData()->getMaxMinMap());
    }
    mLeftAxisWidget->setMaxMinMap(ranges);
    mRightAxisWidget->setMaxMinMap(ranges);
    for (CRealtimeGraphWidget *graph : graphs) {
        graph->updateAxis(ranges, overwrite);
        graph->update();
    }
    setTitleAddStock();
}

void CRealtimeWidget::updateView() {
    for (CRealtimeGraphWidget *graph : getGraphWidgets()) {
        graph->updateView();
        graph->update();
    }
}

void CRealtimeWidget::updateLength() {
    mGraphList->updateWidgetLength();
}

void CRealtimeWidget::beHistory(bool history) {
    mMainGraphWidget->beHistory(history);
}

void CRealtimeWidget::beReplay(bool replay) {
    mMainGraphWidget->beReplay(replay);
}

void CRealtimeWidget::setCreateNewWorkShow(bool show) {
    mMainGraphWidget->setCreateNewWorkShow(show);
}

void CRealtimeWidget::setMouseIn(bool in) {
    mMainGraphWidget->setMouseIn(in);
}

void CRealtimeWidget::setPairParamFunc(boost::function<void(QString)> func) {
    mMainGraphWidget->setPairParamFunc(std::move(func));
}

void CRealtimeWidget::showContrastSector() {
    mMainGraphWidget->showContrastSector();
}

void CRealtimeWidget::superposedStock() {
    mMainGraphWidget->superposedStock();
}

void CRealtimeWidget::viewVariable() {
    mMainGraphWidget->viewVariable();
}

void CRealtimeWidget::setGetTradeDateFunc(boost::function<int()> func) {
    mTitleWidget->setGetTradeDateFunc(std::move(func));
}

void CRealtimeWidget::setBtnToolVisible(bool visible) {
    mTitleWidget->setBtnToolVisible(visible);
}

void CRealtimeWidget::setConciseStyle(bool concise) {
    mTitleWidget->setConciseStyle(concise);
}

void CRealtimeWidget::setSelected(bool selected) {
    mTitleWidget->setShowTitleBg(selected);
}

void CRealtimeWidget::showHolographicButon(bool show) {
    mRightAxisWidget->showHolographicButon(show);
}

void CRealtimeWidget::setAutoIndex(bool automatic) {
    if (mDisplayType == EIndexDisplayType::Sub) {
        mAutoIndex = automatic;
    }
}

void CRealtimeWidget::setIsLoginInit(bool init) {
    if (mDisplayType == EIndexDisplayType::Sub) {
        mIsLoginInit = init;
    }
}

// The user's drawings

void CRealtimeWidget::setGraphType(EVmGraphType type) {
    mMainGraphWidget->setGraphType(type);
}

void CRealtimeWidget::setCurrGraphColor(QString color) {
    mMainGraphWidget->setCurrGraphColor(color);
    mMainGraphWidget->update();
}

bool CRealtimeWidget::deleteCurrGraph() {
    const bool deleted = mMainGraphWidget->deleteCurrGraph();
    mMainGraphWidget->update();
    return deleted;
}

void CRealtimeWidget::setParam(const bson::BSONObj &param) {
    mMainGraphWidget->setParam(param);
}

bson::BSONObj CRealtimeWidget::getParam() const {
    return mMainGraphWidget->getParam();
}

} // namespace TC
