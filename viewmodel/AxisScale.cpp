#include "viewmodel/AxisScale.h"

#include "viewmodel/TradingSessions.h"

#include <utility>

namespace TC {
namespace {

QVector<AxisTick> ticksOf(const IndexBaseData::MaxMinMap &ranges, const AxisLayout &layout) {
    const int count = axisTickCount(layout.height, layout.fontHeight);
    if (layout.displayType != EIndexDisplayType::Main) {
        return subPaneTicks(layout.height, count, ranges.value(layout.key));
    }
    AxisRange price;
    const auto found = ranges.constFind(layout.key);
    if (found != ranges.constEnd()) {
        price = *found;
    } else {
        price.first = price.second = layout.lastClose();
    }
    const AxisRange volume = layout.volume ? ranges.value(layout.volumeKey) : AxisRange();
    QVector<AxisTick> ticks = mainPaneTicks(layout.height, count, layout.volume, price, volume);
    if (ticks.isEmpty()) {
        ticks.append({layout.onlyValue(), layout.height / 2});
    }
    return ticks;
}

} // namespace

AxisShown planAxis(const IndexBaseData::MaxMinMap &ranges, const AxisLayout &layout) {
    AxisShown shown{ranges, ticksOf(ranges, layout), timeLineIndexes(layout.sessions)};
    for (int &line : shown.timeLines) {
        line = pixelOfIndex(layout.dayWidth, layout.pointCount, line);
    }
    return shown;
}

void AxisScale::show(AxisShown shown) {
    const std::lock_guard<std::mutex> hold(mLock);
    std::swap(mShown, shown); // the former goes after the lock
}

AxisShown AxisScale::shown() const {
    const std::lock_guard<std::mutex> hold(mLock);
    return mShown;
}

} // namespace TC
