#include "toolkit/drawing/SeriesExtremes.h"

#include "toolkit/drawing/DrawSizes.h"

namespace TC {
namespace {

/// The values that a point takes up: also the other end of a bar, and what a column is stacked on.
void takePoint(SeriesExtremes &extremes, const SeriesLine &points, const StackBase &base, int i, float scale) {
    if (points.style() == eIconStyle && points.value(i) == 0.0) {
        return; // no image there
    }
    extremes.take((base.at(i) + points.value(i)) * scale);
    if (points.style() == eStickKlineStyle && points.hasSecond(i)) {
        extremes.take(points.second(i) * scale);
    }
}

} // namespace

void SeriesExtremes::takeLine(const se::RPCFormulaResultCache &series, int line, int first, int count,
                              bool validOnly, float scale) {
    takeLine(SeriesLine(series, line), series, line, first, count, validOnly, scale);
}

void SeriesExtremes::takeLine(const SeriesLine &points, const se::RPCFormulaResultCache &series, int line,
                              int first, int count, bool validOnly, float scale) {
    const StackBase base(series, line, points.style());
    const int begin = std::max(first, 0);
    const int end = static_cast<int>(std::min<qint64>(qint64(first) + std::max(count, 0), points.size()));
    for (int i = begin; i < end; ++i) {
        if (validOnly ? points.has(i) : points.hasValue(i)) {
            takePoint(*this, points, base, i, scale);
        }
    }
}

bool SeriesExtremes::tell(double &max, double &min) const {
    if (!mFound || !isPlaceable(mMax) || !isPlaceable(mMin)) {
        return false;
    }
    max = mMax;
    min = mMin;
    return true;
}

} // namespace TC
