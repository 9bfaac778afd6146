#include "toolkit/drawing/LineReach.h"

#include "toolkit/drawing/DrawSizes.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace TC {
namespace {

/// Pixels that a drawing reaches to either side of the column of a point; -1 for the whole rectangle, -2 when
/// the style draws nothing.
constexpr int kWholeRect = -1;
constexpr int kNoReach = -2;

/// A path through the points.
bool isPath(int style) {
    switch (style) {
    case eLineStyle:
    case eDottedLineStyle:
    case eDashDotLineStyle:
    case eSecondDottedLineStyle:
    case eThirdDottedLineStyle:
    case ePlainLineStyle:
    case eBoolLineStyle:
    case eSegmentLineStyle:
        return true;
    default:
        return false;
    }
}

int reachOf(int style, const QRect &rect, int last) {
    const double step = stepOfAxis(rect, last);
    if (isPath(style)) {
        return 0;
    }
    switch (style) {
    case eVertLineStyle:
    case eVertDotStyle:
    case eSecondVertDotStyle:
    case eVertDashDotStyle:
    case eVertDashDotDotStyle:
    case eSecondVertLineStyle:
    case eVolStickStyle:
        return 0;
    case eDotStyle:
        return dotDiameter(step) / 2;
    case eColorStickStyle:
    case eKLineStyle:
    case eStickKlineStyle:
    case eStackVolStickStyle:
        return stickWidth(step, kStickShare) / 2;
    case eWideVolStickStyle:
        return stickWidth(step, 1.0) / 2;
    case eTextStyle:
    case eIconStyle:
    case eNumberStyle:
    case eTextExStyle:
        return kWholeRect;
    default:
        return kNoReach;
    }
}

/// The points that a drawing of a span goes by; with bridged gaps it begins before them.
IndexSpan drawnSpan(const SeriesLine &points, int start, int end, int last) {
    IndexSpan span = heldSpan(start, end, points.size(), last);
    if (points.style() == eSegmentLineStyle && !span.isEmpty()) {
        span.first = firstBridged(points, span.first);
    }
    return span;
}

/// The rows of a line, as fractions.
struct Rows {
    double first = std::numeric_limits<double>::max();
    double last = std::numeric_limits<double>::lowest();

    void take(double row) {
        first = std::min(first, row);
        last = std::max(last, row);
    }
};

/// The columns of a drawn span.
QRect columnsOf(const QRect &rect, const SeriesLine &points, const IndexSpan &span, int last) {
    const int reach = points.isHidden() ? kNoReach : reachOf(points.style(), rect, last);
    if (reach == kNoReach || rect.isEmpty() || (span.isEmpty() && points.style() != eTextExStyle)) {
        return {};
    }
    if (reach == kWholeRect) {
        return rect;
    }
    const ColumnScale columns(rect, last);
    const int left = columns.columnOf(span.first) - reach;
    const int right = columns.columnOf(span.last) + reach;
    return rect & QRect(QPoint(left, rect.top()), QPoint(right, rect.bottom()));
}

bool isPathOrDots(int style) {
    return isPath(style) || style == eDotStyle;
}

bool isStick(int style) {
    return style == eColorStickStyle || style == eVolStickStyle || style == eWideVolStickStyle;
}

} // namespace

QRect touchedColumns(const QRect &rect, const SeriesLine &points, int start, int end, int last) {
    return columnsOf(rect, points, drawnSpan(points, start, end, last), last);
}

QRect touchedPixels(const QRect &rect, const SeriesLine &points, const ValueScale &scale, int start, int end,
                    int last, bool toBottom) {
    const IndexSpan span = drawnSpan(points, start, end, last);
    const QRect columns = columnsOf(rect, points, span, last);
    const int style = points.style();
    if (columns.isEmpty() || !scale.isUsable() || !(isPathOrDots(style) || isStick(style))) {
        return columns;
    }
    Rows rows;
    for (int i = span.first; i <= span.last; ++i) {
        if (points.has(i)) {
            rows.take(scale.rowOf(points.value(i)));
        }
    }
    if (rows.last < rows.first) {
        return {}; // gaps alone
    }
    if (toBottom || style == eVolStickStyle || style == eWideVolStickStyle) {
        rows.take(rect.bottom());
    } else if (isStick(style)) {
        rows.take(scale.rowOf(0.0));
    }
    const int spare = style == eDotStyle ? dotDiameter(stepOfAxis(rect, last)) + 1 : 1;
    const int top = static_cast<int>(std::floor(rows.first)) - spare;
    const int bottom = static_cast<int>(std::ceil(rows.last)) + spare;
    return columns & QRect(QPoint(columns.left(), top), QPoint(columns.right(), bottom));
}

} // namespace TC
