#include "containers/CrossLines.h"

#include "chartdata/CRealtimeData.h"
#include "chartview/CCrossLineWidget.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "chartview/CRealtimeTimeWidget.h"
#include "containers/CRealtimeWidget.h"
#include "containers/PaneArithmetic.h"
#include "containers/PaneRow.h"
#include "host/records/ExchangeZone.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <algorithm>
#include <utility>

namespace TC {

namespace {

bool hasMouse(const CRealtimeWidget *pane) {
    const QList<CRealtimeGraphWidget *> graphs = pane->getGraphWidgets();
    return std::any_of(graphs.begin(), graphs.end(),
                       [](const CRealtimeGraphWidget *graph) { return graph->isCrossActive(); });
}

void showOnTop(CCrossLineWidget *line) {
    line->show();
    line->raise();
}

} // namespace

CrossLines::CrossLines(const PaneRow &panes, boost::shared_ptr<CRealtimeUiParam> uiParam)
    : mPanes(panes), mUiParam(std::move(uiParam)) {}

CrossLines::~CrossLines() = default;

void CrossLines::setTimeScale(CRealtimeTimeWidget *timeScale) {
    mTimeScale = timeScale;
}

bool CrossLines::isShown() const {
    return mUiParam->mCrossShown;
}

void CrossLines::toggle() {
    mUiParam->mCrossShown = !mUiParam->mCrossShown;
    refresh();
    mMoved();
}

void CrossLines::show(bool shown) {
    if (shown && mUiParam->mCrossIndex < 0) {
        toEnd();
    } else if (shown != isShown()) {
        toggle();
    }
}

CrossLines::Place CrossLines::place() const {
    const int index = mUiParam->mCrossIndex;
    const QList<CRealtimeGraphWidget *> days = mPanes.main()->getGraphWidgets();
    if (!isShown() || index < 0 || days.isEmpty()) {
        return {};
    }
    const CRealtimeGraphWidget *graph = days.value(mTitleDay, days.first());
    const qint64 daysBack = qint64(days.first()->getData()->getTradeDate()) - graph->getData()->getTradeDate();
    const QDateTime clock = mUiParam->getDateTimeByIndex(index); // what the clocks of the exchange show
    const QDateTime time(clock.date(), clock.time(), Qt::OffsetFromUTC, GZ::kExchangeOffset);
    return {time.addSecs(-daysBack), graph->getData()->priceAtIndex(index)};
}

/// A view of a past day takes no count from results; its keys walk along the points that are there.
void CrossLines::countPastPoints() {
    if (!mUiParam->mGetTradeDateFunc) {
        return;
    }
    const boost::shared_ptr<CRealtimeData> data = mPanes.main()->getGraphWidgets().first()->getData();
    data->readData([&](const QMap<CFormulaKey, se::RPCFormulaResultCache> &series) {
        const auto found = series.find({mUiParam->getStock(), mUiParam->getBasicFormula()});
        if (found != series.end()) {
            mUiParam->setDataCount(static_cast<int>(found->result.mTimes.size()));
        }
    });
}

// As the view changes

void CrossLines::drop() {
    mUiParam->mCrossIndex = kNowhere;
    tellTitles(kNowhere);
    tellTimeScale(kNowhere, 0);
    refresh();
    mMoved();
}

void CrossLines::realign() {
    if (mUiParam->mCrossIndex < 0) {
        return;
    }
    const int index = qMin(mUiParam->mCrossIndex, mUiParam->mPointCount - 1); // the axis may be another
    if (!isMoved()) {
        drop();
        return;
    }
    moveByMouse(index, mUiParam->getXAxisByIndex(index));
    if (mUiParam->mCursorByKey && mUiParam->mCrossShown) {
        showByKey(mPanes.main()->getGraphWidgetMouseX());
    }
}

void CrossLines::joinPane() {
    if (mUiParam->mCursorByKey) {
        realign();
    }
}

/// The keyboard moves it, or the mouse, which is on a graph.
bool CrossLines::isMoved() const {
    const QVector<CRealtimeWidget *> panes = mPanes.all();
    return mUiParam->mCursorByKey || std::any_of(panes.cbegin(), panes.cend(), hasMouse);
}

void CrossLines::followNewest() {
    if (isMoved()) {
        realign();
        return;
    }
    int &index = mUiParam->mCrossIndex;
    index = qMin(index, qMax(mUiParam->mPointCount - 1, 0)); // there may be more data than minutes
    const int x = mUiParam->getXAxisByIndex(index);
    for (CRealtimeWidget *pane : mPanes.all()) {
        pane->updateIndexId(index);
        if (CCrossLineWidget *line = pane->getCrossLineWidget()) {
            line->setX(x);
        }
    }
    tellTimeScale(index, x);
    refreshTimeFlag();
    mMoved();
}

void CrossLines::tellTitles(int index) {
    for (CRealtimeWidget *pane : mPanes.all()) {
        pane->updateIndexId(index);
    }
}

void CrossLines::tellTimeScale(int index, int x) {
    if (mTimeScale) {
        mTimeScale->setCursor(index, x);
    }
}

void CrossLines::refresh() {
    for (CRealtimeWidget *pane : mPanes.all()) {
        if (CCrossLineWidget *line = pane->getCrossLineWidget()) {
            line->refresh();
        }
    }
    refreshTimeFlag();
}

void CrossLines::refreshTimeFlag() {
    if (mTimeScale) {
        mTimeScale->refreshFlag();
    }
}

// Keyboard

bool CrossLines::takeKey(int key) {
    switch (key) {
    case Qt::Key_Left:
        step(true);
        return true;
    case Qt::Key_Right:
        step(false);
        return true;
    case Qt::Key_Home:
        toHome();
        return true;
    case Qt::Key_End:
        toEnd();
        return true;
    default:
        return false;
    }
}

/// Index of the newest point; the data of the instrument before may be longer than the day.
int CrossLines::newestIndex() const {
    const int newest = mUiParam->dataCount() - 1;
    return mUiParam->mPointCount > 0 ? qMin(newest, mUiParam->mPointCount - 1) : newest;
}

void CrossLines::step(bool left) {
    countPastPoints();
    const int newest = newestIndex();
    const int last = mUiParam->dataCount() >= 1 ? newest : mUiParam->mPointCount - 1;
    int &index = mUiParam->mCrossIndex;
    if (!mUiParam->mCrossShown) {
        mUiParam->mCrossShown = true;
        index = left ? newest : 0;
    } else if (left) {
        index = qMax(index - 1, 0);
    } else if (mUiParam->dataCount() >= 1 || index < last) {
        index = qMin(index + 1, last);
    }
    if (mTitleDay != kNowhere) {
        setTitleDay(mPanes.main()->getGrapWidgetCount() >= 2 ? mTitleDay : 0);
    }
    for (CRealtimeWidget *pane : mPanes.all()) {
        pane->updateIndexId(index);
        pane->setMouseIn(pane == mPanes.main());
    }
    mUiParam->mCrossX = mUiParam->getXAxisByIndex(index);
    tellTimeScale(index, mUiParam->mCrossX);
    mUiParam->mCursorByKey = true;
    showByKey(mPanes.main()->getGraphWidgetMouseX());
    refreshTimeFlag();
    mMoved();
    mMovedByKey();
}

void CrossLines::toHome() {
    countPastPoints();
    showAt(0);
}

void CrossLines::toEnd() {
    countPastPoints();
    showAt(newestIndex());
}

void CrossLines::showAt(int index) {
    mUiParam->mCrossShown = true;
    mUiParam->mCrossIndex = index;
    mUiParam->mCrossX = mUiParam->getXAxisByIndex(index);
    tellTitles(index);
    tellTimeScale(index, mUiParam->mCrossX);
    mUiParam->mCursorByKey = true;
    showByKey(mUiParam->mCrossX);
    refreshTimeFlag();
    mMoved();
    mMovedByKey();
}

/// The vertical line at a column; the horizontal one in the main pane, where it stays without a value.
void CrossLines::showByKey(int x) {
    CRealtimeWidget *main = mPanes.main();
    if (CCrossLineWidget *line = main->getCrossLineWidget()) {
        line->setData(main->dataOfKeyboard());
        const int y = main->getGraphWidgetMouseY();
        if (y > kNowhere) {
            line->setY(y);
        }
        line->setX(x);
        showOnTop(line);
    }
    for (CRealtimeWidget *pane : mPanes.subs()) {
        if (CCrossLineWidget *line = pane->getCrossLineWidget()) {
            line->setPosition(x, kNowhere);
            showOnTop(line);
        }
    }
}

// Mouse

void CrossLines::moveByMouse(int index, int x) {
    mUiParam->mCrossIndex = index;
    if (mUiParam->mCrossShown || index == kNowhere) {
        for (CRealtimeWidget *pane : mPanes.all()) {
            pane->updateIndexId(index);
            pane->setMouseIn(false);
        }
    }
    tellTimeScale(index, x);
    const int y = mPanes.main()->getGraphWidgetMouseY();
    const int mainX = mPanes.main()->getGraphWidgetMouseX();
    const int subX = placeSubLines(mainX);
    if (CCrossLineWidget *line = mPanes.main()->getCrossLineWidget()) {
        line->setPosition(mainX == kNowhere ? subX : mainX, y);
        showOnTop(line);
    }
    refreshTimeFlag();
    refreshSelections();
    mMoved();
}

/// A selection grows with the mouse.
void CrossLines::refreshSelections() {
    for (const CRealtimeWidget *pane : mPanes.all()) {
        for (CRealtimeGraphWidget *graph : pane->getGraphWidgets()) {
            if (graph->isSelecting()) {
                graph->update();
            }
        }
    }
}

/// The vertical line runs through all formula panes, the horizontal one only through the pane under the mouse. Answers
/// the column of that pane, or -1.
int CrossLines::placeSubLines(int mainX) {
    const QVector<CRealtimeWidget *> &subs = mPanes.subs();
    const auto pointed = std::find_if(subs.cbegin(), subs.cend(), hasMouse);
    const int x = pointed == subs.cend() ? kNowhere : (*pointed)->getSubGraphWidgetMouseX();
    for (auto pane = subs.cbegin(); pane != subs.cend(); ++pane) {
        if (CCrossLineWidget *line = (*pane)->getCrossLineWidget()) {
            line->setPosition(x == kNowhere ? mainX : x,
                              pane == pointed ? (*pane)->getSubGraphWidgetMouseY() : kNowhere);
            showOnTop(line);
        }
    }
    return x;
}

void CrossLines::followGraph(QWidget *graph) {
    if (!graph) {
        return;
    }
    auto *day = static_cast<CRealtimeGraphWidget *>(graph); // looked up only: it may be no graph
    const int id = mPanes.main()->getGrapWidgetID(day);
    if (id != -1) {
        mTitleDay = id;
    } else {
        for (const CRealtimeWidget *pane : mPanes.subs()) {
            const int subId = pane->getGrapWidgetID(day);
            mTitleDay = subId != -1 ? subId : mTitleDay;
        }
    }
    if (mTitleDay != kNowhere && mUiParam->mCrossShown) {
        setTitleDay(mTitleDay);
    }
}

void CrossLines::setTitleDay(int day) {
    for (CRealtimeWidget *pane : mPanes.all()) {
        pane->setTitleData(day);
    }
}

} // namespace TC
