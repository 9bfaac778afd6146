#include "containers/PaneView.h"

#include "chartdata/CRealtimeData.h"
#include "chartview/CCrossLineWidget.h"
#include "chartview/CGraphAxisWidget.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "containers/ConciseStyle.h"
#include "containers/DayGraphs.h"
#include "containers/PaneArithmetic.h"
#include "containers/PaneCursor.h"
#include "containers/PaneTitle.h"
#include "host/drawing/CIndexTitleWidget.h"
#include "host/toolkit/CFrameSplitterLine.h"
#include "host/toolkit/CWidgetList.h"
#include "viewmodel/CRealtimeUiParam.h"
#include "viewmodel/PaneMetrics.h"

#include <QVBoxLayout>

#include <boost/make_shared.hpp>

#include <utility>

namespace TC {

namespace {

constexpr int kMaxDays = 6;
constexpr QSize kLikedSize(720, 360); ///< of the price chart
constexpr int kLeastWidth = 150; ///< pixels

} // namespace

PaneView::PaneView(int id, boost::shared_ptr<CRealtimeUiParam> uiParam, EIndexDisplayType displayType,
                   EIndexViewType viewType, QWidget *parent)
    : CBaseWidget(parent), mUiParam(std::move(uiParam)), mDisplayType(displayType) {
    mMainData = boost::make_shared<CRealtimeData>(mUiParam, mDisplayType, this);
    mTitle = std::make_unique<PaneTitle>(this, mMainData, mUiParam, mDisplayType, viewType);
    createStrips();
    mDays = std::make_unique<DayGraphs>(this, mMainData, mUiParam, mDisplayType, viewType, mLeftAxisWidget);
    if (mDisplayType == EIndexDisplayType::Sub) {
        mDays->joinDays(id);
    }
    mCursor = std::make_unique<PaneCursor>(*mDays, *mTitle, mUiParam);
    mCrossLineWidget = new CCrossLineWidget(mUiParam, mMainData, this);
    mCrossLineWidget->hide();
    layOutParts();
}

PaneView::~PaneView() {
    mTitle.reset(); // the parts that are left move up, and tell of it
    mDays.reset();
    if (mUiParam->mLeftAxis == mLeftAxisWidget) {
        mUiParam->mLeftAxis = nullptr;
    }
    if (mUiParam->mRightAxis == mRightAxisWidget) {
        mUiParam->mRightAxis = nullptr;
    }
}

/// While it goes, what its parts tell concerns nobody.
bool PaneView::handleEvent(int event, int first, int second, QString text, void *data) {
    return !mTitle || CBaseWidget::handleEvent(event, first, second, text, data);
}

QSize PaneView::sizeHint() const {
    return mDisplayType == EIndexDisplayType::Main ? kLikedSize
                                                   : QSize(kLikedSize.width(), kLikedSize.height() / 2);
}

QSize PaneView::minimumSizeHint() const {
    const int titles = mDisplayType == EIndexDisplayType::Main ? 2 : 1;
    return {kLeastWidth, titles * mTitle->height()};
}

void PaneView::createStrips() {
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

void PaneView::layOutParts() {
    using GZ::CWidgetList;
    auto *row = new CWidgetList(Qt::Horizontal, this);
    auto *root = new CWidgetList(Qt::Vertical, this);
    for (CWidgetList *list : {row, root}) {
        list->setMargin(0);
        list->setSpacing(0);
    }
    row->addFixedWidget(mLeftAxisWidget, CWidgetList::eAnchorBoth, true);
    row->addStretchWidget(mDays->list(), 1, CWidgetList::eAnchorBoth, true);
    row->addFixedWidget(mRightAxisWidget, CWidgetList::eAnchorBoth, true);
    root->addFixedWidget(mTitle->widget(), CWidgetList::eAnchorBoth, true);
    if (isConcise(mUiParam->services())) {
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
}

void PaneView::resizeEvent(QResizeEvent *event) {
    CBaseWidget::resizeEvent(event);
    if (mDisplayType == EIndexDisplayType::Main) {
        mUiParam->resize(rect());
    }
    mLeftAxisWidget->recompute();
    mRightAxisWidget->recompute();
    mTitle->widget()->updateTitleHeight();
    placeCrossLine();
    updateView();
    for (CRealtimeGraphWidget *graph : getGraphWidgets()) {
        graph->recalcAxisByValue(); // it was resized with the day width of before
    }
}

void PaneView::placeCrossLine() {
    if (mCrossLineWidget) {
        mCrossLineWidget->setFixedExtent(width(), height());
        mCrossLineWidget->setGraphRect(mDays->main()->rect(), mTitle->height());
        refreshCrossLine();
    }
}

/// The horizontal line of the keyboard stays at its value, which may have another row now.
void PaneView::refreshCrossLine() {
    if (!mCrossLineWidget) {
        return;
    }
    if (mDisplayType == EIndexDisplayType::Main && mUiParam->mCrossShown && mUiParam->mCursorByKey &&
        mCrossLineWidget->data()) {
        mCrossLineWidget->setY(qMax(mCursor->rowIn(*mCrossLineWidget->data()), 0));
    }
    mCrossLineWidget->refresh();
}

// Parts

boost::shared_ptr<CRealtimeUiParam> PaneView::getUiParam() const {
    return mUiParam;
}

CCrossLineWidget *PaneView::getCrossLineWidget() const {
    return mCrossLineWidget;
}

void PaneView::setCrossLineWidget(CCrossLineWidget *crossLine) {
    mCrossLineWidget = crossLine;
}

CRealtimeGraphWidget *PaneView::getCurrentGraphWidget() const {
    return mDays->selected();
}

int PaneView::getGrapWidgetCount() const {
    return mDays->count();
}

int PaneView::getGrapWidgetID(CRealtimeGraphWidget *graph) const {
    return mDays->idOf(graph);
}

CRealtimeGraphWidget *PaneView::getGraphWidget(int index) const {
    return mDays->at(index);
}

QList<CRealtimeGraphWidget *> PaneView::getGraphWidgets() const {
    return mDays->newestFirst();
}

// Days

void PaneView::scaleView(bool shrink) {
    const int count = mDays->count();
    if (shrink && count < 2) {
        if (count == 1) {
            setTitleData(kNewestDay);
        }
        return;
    }
    if (!shrink && count >= kMaxDays) {
        return;
    }
    if (mDisplayType == EIndexDisplayType::Main) {
        mUiParam->mDayCount = shrink ? count - 1 : count + 1;
        mUiParam->resize(rect());
    }
    mLeftAxisWidget->recompute();
    if (shrink) {
        removeOldestGraph();
    } else {
        mDays->addOlder();
    }
    updateAxis(shrink);
    updateLength();
}

void PaneView::clearScaleView() {
    if (mDisplayType == EIndexDisplayType::Main) {
        mUiParam->mDayCount = 1;
        mUiParam->resize(rect());
    }
    mLeftAxisWidget->recompute();
    while (mDays->count() > 1) {
        removeOldestGraph();
    }
    updateAxis(true);
    updateLength();
}

void PaneView::removeOldestGraph() {
    const CRealtimeGraphWidget *gone = mDays->removeOldest();
    mTitle->leave(*mDays, gone->getData());
    if (mCrossLineWidget) {
        mCrossLineWidget->setData(mMainData); // it may have been that of the graph
    }
}

// Scales and repaints

void PaneView::updateAxis(bool overwrite) {
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

void PaneView::updateView() {
    for (CRealtimeGraphWidget *graph : getGraphWidgets()) {
        graph->updateView();
        graph->update();
    }
}

void PaneView::updateLength() {
    mDays->shareWidth();
}

void PaneView::repaintChanged() {
    for (CRealtimeGraphWidget *graph : getGraphWidgets()) {
        graph->updateChanged();
    }
    refreshCrossLine();
    const int points = mUiParam->dataCount();
    if (std::exchange(mShownPoints, points) != points) {
        Q_EMIT pointCountChanged();
    }
}

// Title

void PaneView::setTitleData(int day) {
    mTitle->showDay(*mDays, day);
}

int PaneView::titleHeight() const {
    return mTitle->height();
}

void PaneView::setTitleAddStock() {
    mTitle->showOverlays();
}

void PaneView::updateIndexId(int id) {
    mTitle->showIndex(*mDays, id);
}

void PaneView::setGetTradeDateFunc(boost::function<int()> func) {
    mTitle->widget()->setGetTradeDateFunc(std::move(func));
}

void PaneView::setBtnToolVisible(bool visible) {
    mTitle->widget()->setBtnToolVisible(visible);
}

void PaneView::setConciseStyle(bool concise) {
    mTitle->widget()->setConciseStyle(concise);
}

void PaneView::setSelected(bool selected) {
    mTitle->widget()->setShowTitleBg(selected);
}

void PaneView::showHolographicButon(bool show) {
    mRightAxisWidget->showHolographicButon(show);
}

// The user's drawings

void PaneView::setGraphType(EVmGraphType type) {
    mDays->main()->setGraphType(type);
}

void PaneView::setCurrGraphColor(QString color) {
    mDays->main()->setCurrGraphColor(color);
    mDays->main()->update();
}

bool PaneView::deleteCurrGraph() {
    const bool deleted = mDays->main()->deleteCurrGraph();
    mDays->main()->update();
    return deleted;
}

void PaneView::setParam(const bson::BSONObj &param) {
    mDays->main()->setParam(param);
}

bson::BSONObj PaneView::getParam() const {
    return mDays->main()->getParam();
}

// Cross line

int PaneView::getGraphWidgetMouseX() const {
    return mCursor->column();
}

int PaneView::getGraphWidgetMouseY() const {
    return mCursor->row();
}

int PaneView::getSubGraphWidgetMouseX() const {
    return mCursor->subColumn();
}

int PaneView::getSubGraphWidgetMouseY() const {
    return mCursor->subRow();
}

boost::shared_ptr<CRealtimeData> PaneView::getMouseInWidgetData() const {
    return mCursor->dataUnderMouse();
}

boost::shared_ptr<CRealtimeData> PaneView::dataOfKeyboard() const {
    const boost::shared_ptr<CRealtimeData> pointed = getMouseInWidgetData();
    return pointed ? pointed : mMainData;
}

} // namespace TC
