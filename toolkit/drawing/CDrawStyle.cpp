// Value ranges, and what a drawing touches.

#include "host/drawing/CDrawStyle.h"

#include "toolkit/drawing/DrawSizes.h"
#include "toolkit/drawing/SeriesLine.h"

namespace TC {
namespace {

/// Gathers the extremes of values.
struct Extremes {
    double max = -kUnsetValue;
    double min = kUnsetValue;
    bool found = false;

    void take(double value) {
        max = std::max(max, value);
        min = std::min(min, value);
        found = true;
    }
};

/// Whether the value of a point is a place on the value axis.
bool isOnValueAxis(int style) {
    return !(style >= kFirstVertLineStyle && style <= kLastVertLineStyle) && style != kTextExStyle;
}

bool isStickStyle(int style) {
    return style == kColorStickStyle || style == kVolStickStyle || style == kWideVolStickStyle ||
           style == kStackVolStickStyle;
}

/// The values that a point takes up: also the other end of a bar, and what a column is stacked on.
void takePoint(Extremes &extremes, const SeriesLine &points, const StackBase &base, int i, float scale) {
    if (points.style() == kIconStyle && points.value(i) == 0.0) {
        return; // no image there
    }
    extremes.take((base.at(i) + points.value(i)) * scale);
    if (points.style() == kStickKlineStyle && points.hasSecond(i)) {
        extremes.take(points.second(i) * scale);
    }
}

/// Takes in `count` points of a line from `first` on.
void takeLine(Extremes &extremes, const se::RPCFormulaResultCache &series, int line, int first, int count,
              bool validOnly, float scale) {
    const SeriesLine points(series, line);
    const StackBase base(series, line);
    const int begin = std::max(first, 0);
    const int end = static_cast<int>(std::min<qint64>(qint64(first) + std::max(count, 0), points.size()));
    for (int i = begin; i < end; ++i) {
        if (validOnly ? points.has(i) : points.hasValue(i)) {
            takePoint(extremes, points, base, i, scale);
        }
    }
}

bool answer(const Extremes &extremes, double &max, double &min) {
    if (!extremes.found || !isPlaceable(extremes.max) || !isPlaceable(extremes.min)) {
        return false;
    }
    max = extremes.max;
    min = extremes.min;
    return true;
}

/// Pixels that a drawing reaches to either side of the column of a point; -1 for the whole rectangle, -2 when
/// the style draws nothing.
constexpr int kWholeRect = -1;
constexpr int kNothing = -2;

int reachOf(int style, const QRect &rect, int last) {
    const double step = stepOfAxis(rect, last);
    switch (style) {
    case 0:
    case 4:
    case 5:
    case 6:
    case 8:
    case 27:
    case kBoolLineStyle:
    case kSegmentLineStyle:
        return 0;
    case 14:
    case 15:
    case 16:
    case 17:
    case 18:
    case 19:
    case kVolStickStyle:
        return 0;
    case kDotStyle:
        return dotDiameter(step) / 2;
    case kColorStickStyle:
    case kKLineStyle:
    case kStickKlineStyle:
    case kStackVolStickStyle:
        return stickWidth(step, kStickShare) / 2;
    case kWideVolStickStyle:
        return stickWidth(step, 1.0) / 2;
    case kTextStyle:
    case kIconStyle:
    case kNumberStyle:
    case kTextExStyle:
        return kWholeRect;
    default:
        return kNothing;
    }
}

} // namespace

CDrawStyle::CDrawStyle() = default;
CDrawStyle::~CDrawStyle() = default;

bool CDrawStyle::calcMaxMin(double &max, double &min, int first, int count, Series &series, const QRect &,
                            bool validOnly, bool fromZero, float scale, bool prices) {
    Extremes extremes;
    // Values beyond the described lines are no lines: an aligned overlay may hold some, all zero.
    const int held = static_cast<int>(series.result.mValues.size());
    const int lines = series.meta.mLineCount > 0 ? std::min(held, series.meta.mLineCount) : held;
    for (int line = 0; line < lines; ++line) {
        const SeriesLine points(series, line);
        if (points.isOnSharedAxis() && isOnValueAxis(points.style()) &&
            !(prices && isStickStyle(points.style()))) {
            takeLine(extremes, series, line, first, count, validOnly, scale);
        }
    }
    if (extremes.found && fromZero) {
        extremes.take(0.0);
    }
    return answer(extremes, max, min);
}

bool CDrawStyle::calcMaxMin(double &max, double &min, int first, int count, const Series &series, int line,
                            const QRect &) {
    Extremes extremes;
    takeLine(extremes, series, line, first, count, true, 1.0f);
    return answer(extremes, max, min);
}

QRect CDrawStyle::touchedRect(const QRect &rect, const Series &series, int line, int start, int end, int last) {
    const SeriesLine points(series, line);
    const int reach = points.isHidden() ? kNothing : reachOf(points.style(), rect, last);
    IndexSpan span = heldSpan(start, end, points.size(), last);
    if (reach == kNothing || rect.isEmpty() || (span.isEmpty() && points.style() != kTextExStyle)) {
        return {};
    }
    if (reach == kWholeRect) {
        return rect;
    }
    if (points.style() == kSegmentLineStyle) {
        span.first = firstBridged(points, span.first);
    }
    const int left = columnOfIndex(rect, last, span.first) - reach;
    const int right = columnOfIndex(rect, last, span.last) + reach;
    return rect & QRect(QPoint(left, rect.top()), QPoint(right, rect.bottom()));
}

} // namespace TC
