#include "containers/RegionStatistics.h"

#include "chartview/CRealtimeGraphWidget.h"
#include "containers/CRealtimeMainWidget.h"
#include "containers/PaneRow.h"
#include "host/toolkit/Text.h"
#include "statistics/CRealtimeStatisticDialog.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <utility>

namespace TC {

namespace {

/// Fields of a stretch's text.
enum EField : int { eEndIndex = 0, eStartTime = 1, eEndTime = 2 };

QString field(const QString &text, EField which) {
    return text.section(QLatin1Char(','), which, which);
}

QString stretchText(int end, const QDateTime &from, const QDateTime &to) {
    return QStringLiteral("%1,%2,%3").arg(end).arg(GZ::secondsOf(from)).arg(GZ::secondsOf(to));
}

} // namespace

RegionStatistics::RegionStatistics(QWidget *view, const PaneRow &panes,
                                   boost::shared_ptr<const CRealtimeUiParam> uiParam)
    : mView(view), mPanes(panes), mUiParam(std::move(uiParam)) {}

RegionStatistics::~RegionStatistics() {
    deleteDialog();
}

void RegionStatistics::deleteDialog() {
    delete std::exchange(mDialog, nullptr);
}

void RegionStatistics::select(int start, const QString &text) {
    mStart = start;
    mText = text;
    const int first = qMax(start, 0);
    const int last = field(text, eEndIndex).toInt();
    if (last < 0 || first > last) {
        hideLines();
        return;
    }
    show(first, last, text);
}

void RegionStatistics::show(int start, int end, const QString &text) {
    const QStringList values = mPanes.main()->statisticRange(start, end); // which may cut the end
    const CInstrumentDetailPtr detail = mUiParam->getStockDetail();
    const QString stock = getDetailQsKey(detail);
    if (!mDialog) {
        mDialog = new CRealtimeStatisticDialog(mView, mPanes.isReplay());
        mDialog->setStock(stock, true);
    }
    mDialog->setStock(stock, false);
    mDialog->setWindowTitle(getDetailQsName(detail) + CRealtimeMainWidget::tr(" 时段统计"));
    mDialog->setValues(end - start + 1, values);
    mDialog->setRange(field(text, eStartTime).toULongLong(), field(text, eEndTime).toULongLong());
    mDialog->show();
    tell(QDateTime::fromSecsSinceEpoch(field(text, eStartTime).toLongLong()),
         QDateTime::fromSecsSinceEpoch(field(text, eEndTime).toLongLong()));
}

void RegionStatistics::tell(const QDateTime &start, const QDateTime &end) {
    if (mTold != qMakePair(start, end)) {
        mTold = {start, end};
        mChanged(start, end);
    }
}

void RegionStatistics::select(const QDateTime &moment) {
    const int index = mUiParam->getIndexByTime(moment.time());
    select(index, stretchText(index, moment, moment));
}

void RegionStatistics::moveBound(ERegionBound bound, const RegionBoundTime &time) {
    if (bound == eReplayTime) {
        if (mDialog && mDialog->isVisible()) { // one that was closed stays so
            mDialog->followTime(time);
        }
        return;
    }
    int start = mStart;
    int end = field(mText, eEndIndex).toInt();
    (bound == eRegionStart ? start : end) = mUiParam->getIndexByTime(time);
    mPanes.main()->getCurrentGraphWidget()->setRegionLine(start, end);
    select(start, stretchText(end, mUiParam->getDateTimeByIndex(start), mUiParam->getDateTimeByIndex(end)));
}

void RegionStatistics::refresh() {
    if (mDialog && mDialog->isVisible()) {
        select(mStart, QString(mText));
    }
}

void RegionStatistics::hideDialog() {
    if (mDialog) {
        mDialog->hide();
    }
}

void RegionStatistics::hideLines() {
    for (const CRealtimeWidget *pane : mPanes.all()) {
        for (CRealtimeGraphWidget *graph : pane->getGraphWidgets()) {
            graph->setRegionLineHide();
        }
    }
    tell({}, {});
}

void RegionStatistics::end() {
    hideDialog();
    hideLines();
}

} // namespace TC
