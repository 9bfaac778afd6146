// What reaches a view from its panes, its graphs and the host, and what it does with it.

#include "chartview/CRealtimeGraphWidget.h"
#include "containers/CRealtimeMainWidget.h"
#include "containers/DownloadProgress.h"
#include "host/services/CStockManager.h"
#include "host/toolkit/CWidgetList.h"
#include "host/windows/CIndexModelWidget.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QPointer>
#include <QStringList>

namespace TC {

namespace {

enum EEvent : int {
    eGraphActivated = GZ::CWidgetList::kActivated,
    eStatisticAsked = 191,
    ePaneDoubleClicked = 206,
    ePaneClosed = 3020,
    eOrdinaryChartAsked = 3021,
    ePaneAsked = 3023,
    eCrossLineMoved = 3031,
    ePanePressed = 3032,
    eGraphResized = 3033,
    eTemplateChosen = 3039,
    eScaleChanged = 3151,
    eLinkageAsked = 3160,
    eLinkageChosen = 3161,
    eLinkageClosed = 3162,
    eLinkageDatasChanged = 3163,
    eMarkDoubleClicked = 3164,
    eViewUpdateAsked = 3225,
    eDaysAsked = 3228,
    ePaneButtonPressed = 3230,
    eTemplateSaveAsked = 3233,
    eRegionBoundMoved = 3239,
    eRegionEnded = 3240,
};

/// Second argument of eDaysAsked.
enum EDays : int { eOneDayMore = 0, eOneDayFewer = 1, eBackToOneDay = 2 };
/// First argument of eRegionBoundMoved.
enum ERegionBound : int { eRegionStart = 0, eRegionEnd = 1 };

constexpr qint64 kMinutePeriod = 60000; ///< milliseconds
constexpr int kMinuteHistory = 3001; ///< kind of a download

/// First field of a region's text: the last index of the region.
int endOfRegion(const QString &text) {
    return text.section(QLatin1Char(','), 0, 0).toInt();
}

QString regionText(int end, const QDateTime &from, const QDateTime &to) {
    return QStringLiteral("%1,%2,%3").arg(end).arg(from.toTime_t()).arg(to.toTime_t());
}

} // namespace

bool CRealtimeMainWidget::handleEvent(int event, int first, int second, QString text, void *payload) {
    if (!mMainWidget) {
        return true; // it is going, and what its parts tell on the way concerns nobody
    }
    switch (event) {
    case eGraphActivated:
        followGraph(static_cast<QWidget **>(payload));
        deliverEvent(event, first, second, text, payload);
        return false;
    case eCrossLineMoved:
        updateIndexId(second, first);
        return true;
    case ePanePressed:
        highlightWidget(first);
        return true;
    case eGraphResized:
        highlightWidget(mCurrentWidgetId);
        return true;
    case ePaneDoubleClicked:
        toggleMaximised(first);
        return true;
    case ePaneAsked:
        addIndexWidget();
        return true;
    case ePaneClosed:
        closePane(first, second, text, payload);
        return true;
    case ePaneButtonPressed:
        deliverEvent(event, first, second, text, payload);
        return true;
    case eDaysAsked:
        scaleDays(second);
        return true;
    default:
        return handleCommand(event, first, second, text, payload);
    }
}

/// The events that ask for formulas, statistics and trades.
bool CRealtimeMainWidget::handleCommand(int event, int first, int second, const QString &text, void *payload) {
    switch (event) {
    case eOrdinaryChartAsked:
        handleDoubleClickedFormula(QStringLiteral("REALTIME"));
        return true;
    case eTemplateChosen:
        showFormulas(text, second == 1);
        return true;
    case eTemplateSaveAsked:
        saveTemplate();
        return true;
    case eViewUpdateAsked:
        updateWidgetsView();
        return true;
    case eStatisticAsked:
        statisticSelectRegion(first, text);
        return true;
    case eRegionBoundMoved:
        moveRegionBound(first, static_cast<const QTime *>(payload));
        return true;
    case eRegionEnded:
        setRegionLineHide();
        return true;
    case eScaleChanged: // statistics that are shown would follow
        return true;
    case eLinkageAsked:
        showLinkageSetting();
        return true;
    case eLinkageChosen:
        updateLinkageSetting();
        return true;
    case eLinkageClosed:
        closeLinkageSetting();
        return true;
    case eMarkDoubleClicked:
        showLinkageDatas(payload, text, first, second);
        return true;
    case eLinkageDatasChanged:
        updateLinkageDatas();
        return true;
    default:
        return CBaseWidget::handleEvent(event, first, second, text, payload);
    }
}

/// The title follows the day of a graph that was activated.
void CRealtimeMainWidget::followGraph(QWidget *const *activated) {
    if (!activated || !*activated) {
        return;
    }
    auto *graph = static_cast<CRealtimeGraphWidget *>(*activated); // looked up only: it may be no graph
    const int id = mMainWidget->getGrapWidgetID(graph);
    if (id != -1) {
        mTitleDay = id;
    } else {
        for (const CRealtimeWidget *pane : qAsConst(mSubWidgets)) {
            const int subId = pane->getGrapWidgetID(graph);
            mTitleDay = subId != -1 ? subId : mTitleDay;
        }
    }
    if (mTitleDay != -1 && mUiParam->mCrossShown) {
        setTitleData(mTitleDay);
    }
}

void CRealtimeMainWidget::closePane(int id, int second, const QString &formula, void *payload) {
    delIndexWidget(id);
    const QPointer<CRealtimeMainWidget> alive(this); // the host may close the view
    deliverEvent(ePaneClosed, id, second, formula, payload);
    if (alive && mIndexModelWidget) {
        mIndexModelWidget->updateIndexTemplate(formula);
    }
}

// Template bar

void CRealtimeMainWidget::showFormulas(const QString &name, bool isTemplate) {
    if (!mIndexModelWidget) {
        return;
    }
    if (!isTemplate) {
        addIndexWidget();
        handleDoubleClickedFormula(name);
        return;
    }
    delAllIndexWidgets();
    for (const QString &formula : mIndexModelWidget->getTemplateIndex()) {
        addIndexWidget();
        handleDoubleClickedFormula(formula);
    }
}

void CRealtimeMainWidget::saveTemplate() {
    if (!mIndexModelWidget) {
        return;
    }
    QVector<QString> formulas;
    for (const CRealtimeWidget *pane : qAsConst(mSubWidgets)) {
        formulas += pane->getIndexes().toVector();
    }
    mIndexModelWidget->showSaveModelDialog(formulas);
}

// Days

void CRealtimeMainWidget::scaleDays(int how) {
    if (how != eBackToOneDay) {
        scaleView(how == eOneDayFewer);
        return;
    }
    for (CRealtimeWidget *pane : allPanes()) {
        pane->clearScaleView();
    }
    refreshTimeScale();
    realignCrossLine();
    downloadData();
}

void CRealtimeMainWidget::scaleView(bool fewer) {
    for (CRealtimeWidget *pane : allPanes()) {
        pane->scaleView(fewer);
    }
    refreshTimeScale();
    realignCrossLine();
}

void CRealtimeMainWidget::downloadData() {
    CStockManager &stocks = CSingletonT<CStockManager>::instance();
    const CInstrumentDetailPtr detail = mUiParam->getStockDetail();
    int date = mUiParam->mGetTradeDateFunc ? mUiParam->mGetTradeDateFunc()
               : detail                    ? stocks.getLastTradingDay(getDetailQsMarket(detail))
                                           : 0;
    const QPair<qint64, qint64> range = stocks.getStartEndTime(detail, date);
    CHistoryDataParam param;
    param.mMarkets.append(getDetailQsMarket(detail));
    param.mPeriod = kMinutePeriod;
    param.mStart = range.first;
    param.mEnd = range.second;
    param.mKind = kMinuteHistory;
    param.mCodes.append(getDetailQsCode(detail));
    CSingletonT<CFormulaManager>::instance().suppleDataFromServer(QStringLiteral("suppledata"), param,
                                                                  mDownloadProgress->callback());
}

void CRealtimeMainWidget::suppleProgress(int done, int total, const QString & /*market*/,
                                         const QString & /*code*/) {
    if (done != -1 && done < total) {
        request(false);
    }
}

// Region statistics

void CRealtimeMainWidget::statisticSelectRegion(int start, const QString &text) {
    mRegionStart = start;
    mRegionText = text;
    const int end = endOfRegion(text);
    if (end < 0 || qMax(start, 0) > end) {
        setRegionLineHide();
    }
}

void CRealtimeMainWidget::statisticSelectRegion(QDateTime *dateTime) {
    if (dateTime) {
        const int index = mUiParam->getIndexByTime(dateTime->time());
        statisticSelectRegion(index, regionText(index, *dateTime, *dateTime));
    }
}

void CRealtimeMainWidget::setRegionLineHide() {
    mMainWidget->getCurrentGraphWidget()->setRegionLineHide();
}

/// Takes another first or last time of the region; the replay's own time, and null, change nothing.
void CRealtimeMainWidget::moveRegionBound(int bound, const QTime *time) {
    if (!time || (bound != eRegionStart && bound != eRegionEnd)) {
        return;
    }
    int start = mRegionStart;
    int end = endOfRegion(mRegionText);
    (bound == eRegionStart ? start : end) = mUiParam->getIndexByTime(*time);
    mMainWidget->getCurrentGraphWidget()->setRegionLine(start, end);
    statisticSelectRegion(
        start, regionText(end, mUiParam->getDateTimeByIndex(start), mUiParam->getDateTimeByIndex(end)));
}

} // namespace TC
