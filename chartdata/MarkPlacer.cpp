#include "chartdata/MarkPlacer.h"

#include "chartdata/LinkageGeometry.h"
#include "viewmodel/CRealtimeUiParam.h"
#include "viewmodel/TradingSessions.h"

namespace TC {

MarkPlacer::MarkPlacer(const CRealtimeUiParam &axis, const ValueRange &range, int height, double close)
    : mAxis(axis), mRange(range), mHeight(height), mClose(close) {}

int MarkPlacer::indexOf(const QTime &time) {
    return placeOf(time).index;
}

int MarkPlacer::columnOf(int index) const {
    return mAxis.getXAxisByIndex(index);
}

int MarkPlacer::rowOf(double value) const {
    return rowOfValue(value, mRange, mHeight);
}

bool MarkPlacer::place(const QTime &time, double price, double recordClose, QPoint &at) {
    if (!isUsable(price) || !isUsable(recordClose)) {
        return false;
    }
    // The chart's own close leaves a price as it is; the division would cost its last digit.
    const double value = recordClose == mClose ? price : relativeValue(price, recordClose, mClose);
    if (!isUsable(value)) {
        return false;
    }
    at = QPoint(placeOf(time).column, rowOf(value));
    return true;
}

bool MarkPlacer::isAmongPrices(const QPoint &at) const {
    return !mAxis.mShowVolume || at.y() <= mHeight;
}

const MarkPlacer::Place &MarkPlacer::placeOf(const QTime &time) {
    const auto [place, isNew] = mPlaces.try_emplace(axisMinute(time));
    if (isNew) {
        const int index = mAxis.getIndexByTime(place->first);
        place->second = {index, columnOf(index)};
    }
    return place->second;
}

} // namespace TC
