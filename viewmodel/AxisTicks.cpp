#include "viewmodel/AxisTicks.h"

#include "viewmodel/HalfHours.h"

namespace TC {
namespace {

constexpr double kRowsPerTick = 3.2;

int rowOf(int height, int tick, int count) {
    return static_cast<int>(static_cast<qint64>(height) * tick / count);
}

double valueOf(const AxisRange &range, int tick, int count) {
    return range.first - (range.first - range.second) * tick / count;
}

} // namespace

int axisTickCount(int height, int fontHeight) {
    return fontHeight > 0 ? static_cast<int>(height / (fontHeight * kRowsPerTick)) : 0;
}

QVector<AxisTick> subPaneTicks(int height, int count, const AxisRange &range) {
    QVector<AxisTick> ticks;
    if (count < 1) {
        return ticks;
    }
    ticks.reserve(count + 1);
    for (int i = 0; i <= count; ++i) {
        ticks.append({valueOf(range, i, count), rowOf(height, i, count)});
    }
    return ticks;
}

QVector<AxisTick> mainPaneTicks(int height, int count, bool volume, const AxisRange &price,
                                const AxisRange &volumeRange) {
    int prices = 0;
    if (volume) {
        const int rest = count % 3;
        count += rest == 1 ? -1 : rest == 2 ? 1 : 0;
        prices = 2 * count / 3;
    } else {
        count -= count % 2;
        prices = count;
    }
    QVector<AxisTick> ticks;
    if (count < 2) {
        return ticks;
    }
    ticks.reserve(count);
    for (int i = 0; i < count; ++i) {
        const double value =
            i < prices ? valueOf(price, i, prices) : valueOf(volumeRange, i - prices, count - prices);
        ticks.append({value, rowOf(height, i, count)});
    }
    return ticks;
}

QVector<int> timeLineIndexes(const Sessions &sessions) {
    QVector<int> indexes;
    for (const HalfHour &stop : halfHours(sessions)) {
        if (stop.place != EHalfHour::EndOfDay) {
            indexes.append(stop.index);
        }
    }
    return indexes;
}

} // namespace TC
