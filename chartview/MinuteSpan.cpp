#include "chartview/MinuteSpan.h"

#include "viewmodel/CRealtimeUiParam.h"
#include "viewmodel/TradingSessions.h"

namespace TC {

DayAxis DayAxis::of(const CRealtimeUiParam &uiParam) {
    return {uiParam.mDayWidth, uiParam.mPointCount};
}

int DayAxis::indexAt(int column) const {
    return indexOfPixel(width, pointCount, column);
}

int DayAxis::columnOf(int index) const {
    return pixelOfIndex(width, pointCount, index);
}

MinuteSpan MinuteSpan::ofColumns(int left, int right, const DayAxis &axis) {
    MinuteSpan span;
    span.mStart = {axis.indexAt(left), left};
    span.mEnd = {axis.indexAt(right), right};
    span.mAxis = axis;
    return span;
}

MinuteSpan MinuteSpan::ofIndices(int start, int end, const DayAxis &axis) {
    MinuteSpan span;
    span.mStart = {start, axis.columnOf(start)};
    span.mEnd = {end, axis.columnOf(end)};
    span.mAxis = axis;
    return span;
}

int MinuteSpan::columnOn(const Bound &bound, const DayAxis &axis) const {
    const bool isTaken = mAxis.pointCount > 0;
    const bool isSame = axis.width == mAxis.width && axis.pointCount == mAxis.pointCount;
    return isTaken && !isSame ? axis.columnOf(bound.index) : bound.column;
}

} // namespace TC
