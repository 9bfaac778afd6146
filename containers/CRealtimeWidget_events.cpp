// Days that come and go, where the cross line stands, events.

#include "containers/CRealtimeWidget.h"

#include "chartdata/CRealtimeData.h"
#include "chartview/CCrossLineWidget.h"
#include "chartview/CGraphAxisWidget.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "containers/Repaint.h"
#include "host/drawing/CIndexTitleWidget.h"
#include "host/services/CStockManager.h"
#include "host/toolkit/CPushButton.h"
#include "host/toolkit/CWidgetList.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <utility>

namespace TC {

namespace {

constexpr int kMaxDays = 6;
constexpr int kNowhere = -1;
constexpr int kSubTitleHeight =
    16; ///< pixels above the graphs of a sub pane, where the cross line is concerned

enum EEvent : int {
    eButtonClicked = GZ::CPushButton::kClicked,
    eGraphSelected = 191,
    eMaximiseAsked = 206,
    eAxisChanged = 207,
    eFormulaAsked = 208,
    eOverlayAsked = 209,
    eCloseAsked = 3020,
    eDataChanged = 3029,
    ePressed = 3032,
    eGraphResized = 3033,
    eRangeOutgrown = 3151,
    eDaysAsked = 3228,
    eSettingsAsked = 3230,
};

/// What event 3228 asks for.
enum EDays : int { eOneDayMore = 0, eOneDayFewer = 1, eOneDay = 2 };

constexpr int kRunButton = 1024;
constexpr int kClosedByHost = 1; ///< in event 3020

} // namespace

// Days

void CRealtimeWidget::scaleView(bool shrink) {
    const int count = mGraphList->count();
    if (shrink && count < 2) {
        if (count == 1) {
            setTitleData(0);
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
        addOlderGraph();
    }
    updateAxis(shrink);
    updateLength();
}

void CRealtimeWidget::addOlderGraph() {
    const boost::shared_ptr<CRealtimeData> data = makeData();
    CRealtimeGraphWidget *graph = insertGraph(++mLastGraphId, data, mGraphList);
    mGraphIds.insert(graph, mLastGraphId);
    data->setTradeDate(CSingletonT<CStockManager>::instance().getShiftTradeDate(market(), baseDate(),
                                                                                1 - mUiParam->mDayCount));
    for (const QString &formula : mMainData->getFormulas()) {
        data->addFormula(formula);
    }
    graph->show();
    graph->request(corvane::ERunMode::Ordinary);
}

void CRealtimeWidget::removeOldestGraph() {
    auto *graph = qobject_cast<CRealtimeGraphWidget *>(mGraphList->popWidgetAt(0));
    if (!graph) {
        return;
    }
    if (mGraphIds.remove(graph) > 0) {
        --mLastGraphId;
    }
    if (mCurrentGraph == graph) {
        mCurrentGraph = nullptr;
    }
    if (mTitleWidget->getIndexData() == graph->getData()) {
        setTitleData(0);
    }
    if (mCrossLineWidget) {
        mCrossLineWidget->setData(mMainData); // it may have been that of the graph
    }
    graph->hide();
    graph->deleteLater();
}

void CRealtimeWidget::clearScaleView() {
    if (mDisplayType == EIndexDisplayType::Main) {
        mUiParam->mDayCount = 1;
        mUiParam->resize(rect());
    }
    mLeftAxisWidget->recompute();
    while (mGraphList->count() > 1) {
        removeOldestGraph();
    }
    updateAxis(true);
    updateLength();
}

// Where the cross line stands

int CRealtimeWidget::graphUnderMouse() const {
    int position = kNowhere;
    for (int i = 0; i < mGraphList->count(); ++i) {
        const CRealtimeGraphWidget *graph = getGraphWidget(i);
        if (graph && graph->isCrossActive()) {
            position = i;
        }
    }
    return position;
}

int CRealtimeWidget::columnAtCrossIndex(int position) const {
    const CRealtimeGraphWidget *graph = getGraphWidget(position);
    return mUiParam->getXAxisByIndex(mUiParam->mCrossIndex) + graph->width() * position;
}

int CRealtimeWidget::rowAtCrossIndex(CRealtimeData &data) const {
    return data.yAtIndex(mUiParam->mCrossIndex, mMainGraphWidget->rect()) + titleHeight();
}

int CRealtimeWidget::getGraphWidgetMouseX() const {
    const int position = graphUnderMouse();
    if (position != kNowhere) {
        return columnAtCrossIndex(position);
    }
    const int last = mGraphList->count() - 1;
    return mUiParam->mCursorByKey
               ? mUiParam->getXAxisByIndex(mUiParam->mCrossIndex) + getGraphWidget(0)->width() * last
               : kNowhere;
}

int CRealtimeWidget::getGraphWidgetMouseY() const {
    const int position = graphUnderMouse();
    if (mUiParam->mCursorByKey) {
        const CRealtimeGraphWidget *graph =
            getGraphWidget(position != kNowhere ? position : mGraphList->count() - 1);
        return rowAtCrossIndex(*graph->getData());
    }
    return position != kNowhere ? getGraphWidget(position)->getMouseY() + titleHeight() : kNowhere;
}

int CRealtimeWidget::getSubGraphWidgetMouseX() const {
    const int position = graphUnderMouse();
    return position != kNowhere ? columnAtCrossIndex(position) : kNowhere;
}

int CRealtimeWidget::getSubGraphWidgetMouseY() const {
    const int position = graphUnderMouse();
    return position != kNowhere && !mUiParam->mCursorByKey
               ? getGraphWidget(position)->getMouseY() + kSubTitleHeight
               : kNowhere;
}

boost::shared_ptr<CRealtimeData> CRealtimeWidget::getMouseInWidgetData() const {
    if (mUiParam->mCursorByKey) {
        for (int i = 0; i < mGraphList->count(); ++i) {
            const CRealtimeGraphWidget *graph = getGraphWidget(i);
            if (graph && graph->isCrossActive()) {
                return graph->getData();
            }
        }
    }
    return {};
}

boost::shared_ptr<CRealtimeData> CRealtimeWidget::dataOfKeyboard() const {
    const boost::shared_ptr<CRealtimeData> pointed = getMouseInWidgetData();
    return pointed ? pointed : mMainData;
}

// Events

void CRealtimeWidget::destorySubWidget() {
    deliverEvent(eCloseAsked, mId, kClosedByHost, firstFormula(), nullptr);
}

bool CRealtimeWidget::handleEvent(int event, int sub, int param, QString text, void *data) {
    if (!mTitleWidget) {
        return true; // it is going, and what its parts tell on the way concerns nobody
    }
    switch (event) {
    case eButtonClicked:
        handleButton(sub, param);
        return true;
    case eGraphSelected:
        selectGraph(param);
        CBaseWidget::handleEvent(event, sub, param, text, data);
        return false;
    case eMaximiseAsked:
    case ePressed:
        deliverEvent(event, mId, 0, QString(), nullptr);
        return true;
    case eAxisChanged:
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
        refreshTitle(data);
        repaintChanged();
        return true;
    case eRangeOutgrown:
        updateAxis(false);
        repaintChanged();
        CBaseWidget::handleEvent(event, sub, param, text, data);
        return false;
    case eDaysAsked:
        deliverEvent(event, mId, param, QString(), nullptr);
        return true;
    case eGraphResized: // it may have been by its title, with the pane as it was
        placeCrossLine();
        return CBaseWidget::handleEvent(event, sub, param, text, data);
    default:
        return CBaseWidget::handleEvent(event, sub, param, text, data);
    }
}

void CRealtimeWidget::handleButton(int button, int param) {
    switch (button) {
    case CIndexTitleWidget::eClose:
        deliverEvent(eCloseAsked, mId, param, firstFormula(), nullptr);
        break;
    case CIndexTitleWidget::eMenu:
        mMainGraphWidget->showTitleMenu(mTitleWidget->getGlobalPoint());
        break;
    case CIndexTitleWidget::eSettings:
        deliverEvent(eSettingsAsked, mId, 0, QString(), nullptr);
        break;
    case CIndexTitleWidget::eOneDay:
        deliverEvent(eDaysAsked, mId, eOneDay, QString(), nullptr);
        break;
    case CIndexTitleWidget::eFewerDays:
        deliverEvent(eDaysAsked, mId, eOneDayFewer, QString(), nullptr);
        break;
    case CIndexTitleWidget::eMoreDays:
        deliverEvent(eDaysAsked, mId, eOneDayMore, QString(), nullptr);
        break;
    case kRunButton:
        mAutoIndex = true;
        request(mPendingRunMode);
        break;
    default:
        break;
    }
}

void CRealtimeWidget::selectGraph(int id) {
    for (auto entry = mGraphIds.constBegin(); entry != mGraphIds.constEnd(); ++entry) {
        if (entry.value() == id) {
            mCurrentGraph = entry.key();
        } else {
            entry.key()->setRegionLineHide();
        }
    }
}

/// The title follows the data that has changed; a cross line that stands beside the newest point follows it.
void CRealtimeWidget::refreshTitle(const void *sender) {
    if (mUiParam->mCrossShown) {
        const int last = mUiParam->dataCount() - 1;
        if (mUiParam->mCrossIndex + 1 == last) {
            mUiParam->mCrossIndex = last;
            mTitleWidget->updateIndexId(last);
            emit crossLineMoved();
        }
    } else {
        for (const CRealtimeGraphWidget *graph : getGraphWidgets()) {
            if (static_cast<IndexBaseData *>(graph->getData().get()) == sender) {
                mTitleWidget->setIndexData(graph->getData());
            }
        }
    }
    mTitleWidget->updateView();
}

/// The horizontal line of the keyboard stays at its value, which may have another row now.
void CRealtimeWidget::refreshCrossLine() {
    if (!mCrossLineWidget) {
        return;
    }
    if (mDisplayType == EIndexDisplayType::Main && mUiParam->mCrossShown && mUiParam->mCursorByKey &&
        mCrossLineWidget->data()) {
        mCrossLineWidget->setY(qMax(rowAtCrossIndex(*mCrossLineWidget->data()), 0));
    }
    mCrossLineWidget->refresh();
}

void CRealtimeWidget::repaintChanged() {
    for (CRealtimeGraphWidget *graph : getGraphWidgets()) {
        graph->updateChanged();
    }
    refreshCrossLine();
    const int points = mUiParam->dataCount();
    if (std::exchange(mShownPoints, points) != points) {
        emit pointCountChanged();
    }
}

} // namespace TC
