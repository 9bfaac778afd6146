// The panes of a view: which there are, how the height is shared, and the frame over the selected one.

#include "chartview/CRealtimeTimeWidget.h"
#include "containers/CRealtimeMainWidget.h"
#include "containers/DownloadProgress.h"
#include "host/services/CConfigService.h"
#include "host/toolkit/CDragWidgetList.h"
#include "host/toolkit/CHighlightWidget.h"
#include "host/windows/CIndexModelWidget.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QResizeEvent>

#include <algorithm>
#include <array>

namespace TC {

namespace {

constexpr int kPaneAdded = 3023;
constexpr int kMainPaneId = 0;
constexpr int kClosedPaneHeight = 16; ///< of a pane beside a maximised one: its title
constexpr int kClosedPaneRoom = 17; ///< with its splitter
constexpr int kMaximisedMargin = 22;

/// Formulas of new panes, by position.
constexpr std::array<const char *, 9> kDefaultIndexes = {"KDJ", "MACD", "VOL", "CCI", "RSI",
                                                         "OBV", "PSY",  "AD",  "CR"};

} // namespace

CRealtimeWidget *CRealtimeMainWidget::subPaneOf(int id) const {
    const auto found = std::find_if(mSubWidgets.begin(), mSubWidgets.end(),
                                    [id](const CRealtimeWidget *pane) { return pane->getId() == id; });
    return found == mSubWidgets.end() ? nullptr : *found;
}

void CRealtimeMainWidget::addIndexWidget() {
    auto *pane = new CRealtimeWidget(mNextWidgetId++, mUiParam, EIndexDisplayType::Sub, mViewType, this);
    pane->setCreateNewWorkShow(mCreateNewWorkShow);
    pane->beReplay(mReplay);
    followPane(pane);
    mSubWidgets.append(pane);
    mWidgetList->addStretchWidget(pane, getNewIndexStretchFactor(), GZ::CWidgetList::eAnchorBoth, true);
    highlightWidget(pane->getId());
    if (mUiParam->mCursorByKey) {
        realignCrossLine(); // runs through the new pane too
    }
    if (CAppConfig::isClientType(EClientType::Trading)) {
        deliverEvent(kPaneAdded, 0, 0, QString(), nullptr);
    }
}

int CRealtimeMainWidget::getNewIndexStretchFactor() const {
    const GZ::CWidgetListItem *first = mWidgetList->getItem(0);
    return first ? first->mStretch / 2 : 1;
}

std::vector<int> CRealtimeMainWidget::getStretchFactorList() const {
    std::vector<int> factors;
    for (int i = 0; i < mWidgetList->count(); ++i) {
        const GZ::CWidgetListItem *item = mWidgetList->getItem(i);
        factors.push_back(mWidgetList->isDragEnable() ? item->mStretch : item->mOldStretch);
    }
    return factors;
}

void CRealtimeMainWidget::removePane(CRealtimeWidget *pane) {
    pane->hide();
    pane->clear();
    mWidgetList->popWidgetAt(mWidgetList->indexOf(pane));
    pane->deleteLater();
}

void CRealtimeMainWidget::delIndexWidget(int id) {
    CRealtimeWidget *pane = subPaneOf(id);
    const int position = pane ? mSubWidgets.indexOf(pane) : mSubWidgets.size();
    if (pane) {
        if (mWidgetList->containItem(pane)) {
            removePane(pane);
        }
        mSubWidgets.removeAt(position);
        const auto info =
            std::find_if(mIndexWidgetInfos.begin(), mIndexWidgetInfos.end(),
                         [pane](const CIndexWidgetInfo &one) { return one.mWidget.data() == pane; });
        if (info != mIndexWidgetInfos.end()) {
            mIndexWidgetInfos.erase(info);
        }
    }
    highlightWidget(mSubWidgets.isEmpty() ? kMainPaneId
                                          : mSubWidgets[qMin(position, mSubWidgets.size() - 1)]->getId());
}

void CRealtimeMainWidget::delAllIndexWidgets() {
    for (CRealtimeWidget *pane : qAsConst(mSubWidgets)) {
        if (!mWidgetList->containItem(pane)) {
            continue;
        }
        if (mIndexModelWidget && !pane->gePretIndex().isEmpty()) {
            mIndexModelWidget->updateIndexTemplate(pane->gePretIndex());
        }
        removePane(pane);
    }
    mSubWidgets.clear();
    highlightWidget(kMainPaneId);
}

void CRealtimeMainWidget::clearSubIndexes() {
    QVector<int> ids;
    for (const CRealtimeWidget *pane : qAsConst(mSubWidgets)) {
        ids.append(pane->getId());
    }
    for (const int id : ids) {
        delIndexWidget(id);
    }
}

void CRealtimeMainWidget::adjustIndexWidgetSize(int count) {
    const int wanted = qBound(0, count - 1, static_cast<int>(kDefaultIndexes.size()));
    while (mSubWidgets.size() < wanted) {
        addIndexWidget();
        CRealtimeWidget *pane = mSubWidgets.last();
        pane->updateIndex(QLatin1String(kDefaultIndexes[static_cast<std::size_t>(mSubWidgets.size()) - 1]));
        request(false);
    }
    while (mSubWidgets.size() > wanted) {
        removeLastPane();
    }
}

void CRealtimeMainWidget::removeLastPane() {
    CRealtimeWidget *pane = mSubWidgets.takeLast();
    if (!mWidgetList->containItem(pane)) {
        return;
    }
    const QString formula = pane->getIndexes().value(0);
    if (mIndexModelWidget && !formula.isEmpty()) {
        mIndexModelWidget->updateIndexTemplate(formula);
    }
    removePane(pane);
}

void CRealtimeMainWidget::highlightWidget(int id) {
    if (mViewType == EIndexViewType::Plain) {
        return;
    }
    mCurrentWidgetId = id;
    if (mSubWidgets.isEmpty()) {
        mHighlightWidget->hide();
        return;
    }
    if (id == mMainWidget->getId()) {
        placeHighlight(mMainWidget);
        return;
    }
    for (CRealtimeWidget *pane : qAsConst(mSubWidgets)) {
        pane->setSelected(pane->getId() == id);
    }
    if (const CRealtimeWidget *pane = subPaneOf(id)) {
        placeHighlight(pane);
    }
}

void CRealtimeMainWidget::placeHighlight(const CRealtimeWidget *pane) {
    mHighlightWidget->setGeometry(QRect(pane->mapTo(this, QPoint(0, 0)), pane->size()));
    mHighlightWidget->setLRMargin(mUiParam->mLeftAxisWidth, mUiParam->mRightAxisWidth);
    mHighlightWidget->show();
    mHighlightWidget->raise();
}

void CRealtimeMainWidget::resizeEvent(QResizeEvent *event) {
    CBaseWidget::resizeEvent(event);
    if (mCurrentWidgetId == kMainPaneId) {
        placeHighlight(mMainWidget);
    } else if (const CRealtimeWidget *pane = subPaneOf(mCurrentWidgetId)) {
        placeHighlight(pane);
    }
    refreshTimeScale();
    if (event->oldSize().width() != width()) {
        realignCrossLine();
    }
    if (mIndexModelWidget) {
        mIndexModelWidget->resizeLayout();
    }
}

// Maximising

void CRealtimeMainWidget::toggleMaximised(int id) {
    if (mSubWidgets.size() < 2) {
        return;
    }
    if (!mWidgetList->isDragEnable()) {
        restoreMaximised();
    } else if (CRealtimeWidget *pane = subPaneOf(id)) {
        maximise(pane);
    }
}

void CRealtimeMainWidget::restoreMaximised() {
    for (CRealtimeWidget *pane : allPanes()) {
        mWidgetList->resetOldStretch(pane);
    }
    mWidgetList->updateWidgetLength();
    mWidgetList->setDragEnable(true);
}

/// Gives a pane the room of the other formula panes, of which the titles stay; the main pane keeps its height.
void CRealtimeMainWidget::maximise(CRealtimeWidget *pane) {
    const int mainHeight = mMainWidget->height();
    const int room = kClosedPaneRoom - mSubWidgets.size() * kClosedPaneRoom - mainHeight + height();
    mWidgetList->changeStretch(mMainWidget, mainHeight);
    for (CRealtimeWidget *one : qAsConst(mSubWidgets)) {
        if (one == pane) {
            mWidgetList->changeStretch(one, room - kMaximisedMargin);
        } else {
            one->resize(width(), kClosedPaneHeight);
            mWidgetList->changeStretch(one, 0);
        }
    }
    mWidgetList->updateWidgetLength();
    pane->update();
    mWidgetList->setDragEnable(false);
}

} // namespace TC
