// The cross line over all panes, moved by mouse or keyboard, and the flag of the time scale.

#include "chartview/CCrossLineWidget.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "chartview/CRealtimeTimeWidget.h"
#include "containers/CRealtimeMainWidget.h"
#include "containers/DownloadProgress.h"
#include "host/services/CConfigService.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QKeyEvent>

#include <algorithm>

namespace TC {

namespace {

constexpr int kNowhere = -1;

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

void CRealtimeMainWidget::keyPressEvent(QKeyEvent *event) {
    if (CAppConfig::isClientType(EClientType::Trading)) {
        switch (event->key()) {
        case Qt::Key_Left:
            moveCursor(true);
            return;
        case Qt::Key_Right:
            moveCursor(false);
            return;
        case Qt::Key_Home:
            moveToHome();
            return;
        case Qt::Key_End:
            moveToEnd();
            return;
        default:
            break;
        }
    }
    QWidget::keyPressEvent(event);
}

void CRealtimeMainWidget::enterEvent(QEvent * /*event*/) {
    mUiParam->mMouseIn = true;
}

void CRealtimeMainWidget::leaveEvent(QEvent * /*event*/) {
    mUiParam->mMouseIn = false;
    dropCrossLine();
}

void CRealtimeMainWidget::dropCrossLine() {
    mUiParam->mCrossIndex = -1;
    for (CRealtimeWidget *pane : allPanes()) {
        pane->updateIndexId(-1);
    }
    tellTimeScale(-1, 0);
    refreshCrossLine();
}

/// Columns or days have changed under the cross line: it goes to where its place in the day lies now. One that the mouse
/// has put on a day which is no more goes with that day.
void CRealtimeMainWidget::realignCrossLine() {
    if (mUiParam->mCrossIndex < 0) {
        return;
    }
    const int index = qMin(mUiParam->mCrossIndex, mUiParam->mPointCount - 1); // the axis may be another
    if (!isCrossLineMoved()) {
        dropCrossLine();
        return;
    }
    updateIndexId(index, mUiParam->getXAxisByIndex(index));
    if (mUiParam->mCursorByKey && mUiParam->mCrossShown) {
        showKeyboardCrossLines();
    }
}

/// The keyboard moves the cross line, or the mouse, which is on a graph.
bool CRealtimeMainWidget::isCrossLineMoved() const {
    const QVector<CRealtimeWidget *> panes = allPanes();
    return mUiParam->mCursorByKey || std::any_of(panes.cbegin(), panes.cend(), hasMouse);
}

/// A pane has taken the cross line to the newest point; all others follow.
void CRealtimeMainWidget::followNewestPoint() {
    if (isCrossLineMoved()) {
        realignCrossLine();
        return;
    }
    int &index = mUiParam->mCrossIndex;
    index = qMin(index, qMax(mUiParam->mPointCount - 1, 0)); // there may be more data than minutes
    const int x = mUiParam->getXAxisByIndex(index);
    for (CRealtimeWidget *pane : allPanes()) {
        pane->updateIndexId(index);
        if (CCrossLineWidget *line = pane->getCrossLineWidget()) {
            line->setX(x);
        }
    }
    tellTimeScale(index, x);
    refreshTimeFlag();
}

bool CRealtimeMainWidget::isShowCrossline() const {
    return mUiParam->mCrossShown;
}

void CRealtimeMainWidget::switchCrossline() {
    mUiParam->mCrossShown = !mUiParam->mCrossShown;
    refreshCrossLine();
}

void CRealtimeMainWidget::tellTimeScale(int index, int x) {
    if (mTimeWidget) {
        mTimeWidget->setCursor(index, x);
    }
}

void CRealtimeMainWidget::refreshCrossLine() {
    for (CRealtimeWidget *pane : allPanes()) {
        if (CCrossLineWidget *line = pane->getCrossLineWidget()) {
            line->refresh();
        }
    }
    refreshTimeFlag();
}

void CRealtimeMainWidget::refreshTimeFlag() {
    if (mTimeWidget) {
        mTimeWidget->refreshFlag();
    }
}

// Keyboard

/// Index of the newest point; the data of the instrument before may be longer than the day.
int CRealtimeMainWidget::newestIndex() const {
    const int newest = mUiParam->dataCount() - 1;
    return mUiParam->mPointCount > 0 ? qMin(newest, mUiParam->mPointCount - 1) : newest;
}

void CRealtimeMainWidget::moveCursor(bool left) {
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
        setTitleData(mMainWidget->getGrapWidgetCount() >= 2 ? mTitleDay : 0);
    }
    for (CRealtimeWidget *pane : allPanes()) {
        pane->updateIndexId(index);
        pane->setMouseIn(pane == mMainWidget);
    }
    mUiParam->mCrossX = mUiParam->getXAxisByIndex(index);
    tellTimeScale(index, mUiParam->mCrossX);
    mUiParam->mCursorByKey = true;
    showKeyboardCrossLines();
    refreshTimeFlag();
}

void CRealtimeMainWidget::showKeyboardCrossLines() {
    const int y = mMainWidget->getGraphWidgetMouseY();
    const int x = mMainWidget->getGraphWidgetMouseX();
    if (CCrossLineWidget *line = mMainWidget->getCrossLineWidget()) {
        line->setData(mMainWidget->dataOfKeyboard());
        if (y > kNowhere) {
            line->setY(y);
        }
        line->setX(x);
        showOnTop(line);
    }
    for (CRealtimeWidget *pane : qAsConst(mSubWidgets)) {
        if (CCrossLineWidget *line = pane->getCrossLineWidget()) {
            line->setPosition(x, kNowhere);
            showOnTop(line);
        }
    }
}

void CRealtimeMainWidget::moveToHome() {
    showCrossLinesAt(0);
}

void CRealtimeMainWidget::moveToEnd() {
    showCrossLinesAt(newestIndex());
}

void CRealtimeMainWidget::showCrossLinesAt(int index) {
    mUiParam->mCrossShown = true;
    mUiParam->mCrossIndex = index;
    const int x = mUiParam->getXAxisByIndex(index);
    mUiParam->mCrossX = x;
    for (CRealtimeWidget *pane : allPanes()) {
        pane->updateIndexId(index);
    }
    for (CRealtimeWidget *pane : qAsConst(mSubWidgets)) {
        if (CCrossLineWidget *line = pane->getCrossLineWidget()) {
            line->setPosition(x, kNowhere);
            showOnTop(line);
        }
    }
    tellTimeScale(index, x);
    mUiParam->mCursorByKey = true;
    if (CCrossLineWidget *line = mMainWidget->getCrossLineWidget()) {
        line->setData(mMainWidget->dataOfKeyboard());
        line->setX(x);
        const int y = mMainWidget->getGraphWidgetMouseY();
        if (y >= 0) {
            line->setY(y);
        }
        showOnTop(line);
    }
    refreshTimeFlag();
}

// Mouse

void CRealtimeMainWidget::updateIndexId(int index, int x) {
    mUiParam->mCrossIndex = index;
    if (mUiParam->mCrossShown || index == -1) {
        for (CRealtimeWidget *pane : allPanes()) {
            pane->updateIndexId(index);
            pane->setMouseIn(false);
        }
    }
    tellTimeScale(index, x);
    const int y = mMainWidget->getGraphWidgetMouseY();
    const int mainX = mMainWidget->getGraphWidgetMouseX();
    const int subX = placeSubCrossLines(mainX);
    if (CCrossLineWidget *line = mMainWidget->getCrossLineWidget()) {
        line->setPosition(mainX == kNowhere ? subX : mainX, y);
        showOnTop(line);
    }
    refreshTimeFlag();
    refreshSelections();
}

/// A selection grows with the mouse.
void CRealtimeMainWidget::refreshSelections() {
    for (const CRealtimeWidget *pane : allPanes()) {
        for (CRealtimeGraphWidget *graph : pane->getGraphWidgets()) {
            if (graph->isSelecting()) {
                graph->update();
            }
        }
    }
}

/// The vertical line runs through all formula panes, the horizontal one only through the pane under the mouse. Answers
/// the column of that pane, or -1.
int CRealtimeMainWidget::placeSubCrossLines(int mainX) {
    const auto pointed = std::find_if(mSubWidgets.cbegin(), mSubWidgets.cend(), hasMouse);
    const int x = pointed == mSubWidgets.cend() ? kNowhere : (*pointed)->getSubGraphWidgetMouseX();
    for (auto pane = mSubWidgets.cbegin(); pane != mSubWidgets.cend(); ++pane) {
        if (CCrossLineWidget *line = (*pane)->getCrossLineWidget()) {
            line->setPosition(x == kNowhere ? mainX : x,
                              pane == pointed ? (*pane)->getSubGraphWidgetMouseY() : kNowhere);
            showOnTop(line);
        }
    }
    return x;
}

} // namespace TC
