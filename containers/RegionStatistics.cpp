#include "containers/RegionStatistics.h"

#include "chartview/CRealtimeGraphWidget.h"
#include "containers/CRealtimeWidget.h"
#include "containers/PaneRow.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <utility>

namespace TC {

namespace {

/// First field of a stretch's text: its last index.
int endOf(const QString &text) {
    return text.section(QLatin1Char(','), 0, 0).toInt();
}

QString textOf(int end, const QDateTime &from, const QDateTime &to) {
    return QStringLiteral("%1,%2,%3").arg(end).arg(from.toTime_t()).arg(to.toTime_t());
}

} // namespace

RegionStatistics::RegionStatistics(const PaneRow &panes, boost::shared_ptr<const CRealtimeUiParam> uiParam)
    : mPanes(panes), mUiParam(std::move(uiParam)) {}

void RegionStatistics::select(int start, const QString &text) {
    mStart = start;
    mText = text;
    const int end = endOf(text);
    if (end < 0 || qMax(start, 0) > end) {
        hideLines();
    }
}

void RegionStatistics::select(const QDateTime &moment) {
    const int index = mUiParam->getIndexByTime(moment.time());
    select(index, textOf(index, moment, moment));
}

void RegionStatistics::moveBound(ERegionBound bound, const RegionBoundTime &time) {
    int start = mStart;
    int end = endOf(mText);
    (bound == eRegionStart ? start : end) = mUiParam->getIndexByTime(time);
    mPanes.main()->getCurrentGraphWidget()->setRegionLine(start, end);
    select(start, textOf(end, mUiParam->getDateTimeByIndex(start), mUiParam->getDateTimeByIndex(end)));
}

void RegionStatistics::hideLines() {
    mPanes.main()->getCurrentGraphWidget()->setRegionLineHide();
}

} // namespace TC
