#pragma once

/// \file
/// Where points of a series lie: columns, rows, runs, widths and dashes. Pure arithmetic.

#include "host/records/Enumerations.h"

#include <QLineF>
#include <QPair>
#include <QPointF>
#include <QRect>
#include <QVarLengthArray>
#include <Qt>

#include <algorithm>
#include <cmath>

namespace TC {

/// Whether a number can be placed: finite, and not the unset value.
inline bool isPlaceable(double value) {
    return std::isfinite(value) && value < kUnsetValue;
}

/// The whole number nearest to a coordinate, held to what an int has.
inline int nearestPixel(double coordinate) {
    return qRound(std::clamp(coordinate, -1e9, 1e9));
}

/// Indices `first` to `last`, both included; empty when `last` is the smaller.
struct IndexSpan {
    int first = 0;
    int last = -1;

    bool isEmpty() const { return last < first; }
};

/// The indices `start` to `end`, held to a series of `points` points and to an axis that ends at `last`.
inline IndexSpan heldSpan(int start, int end, int points, int last) {
    return {std::max(start, 0), std::min({end, points - 1, last})};
}

/// Pixels from one index to the next, `last` being the last one of the axis. An axis of one index is one step.
inline double stepOfAxis(const QRect &rect, int last) {
    return double(rect.width()) / std::max(last, 1);
}

/// Maps the indices of an axis, which ends at `last`, to columns of a rectangle: each to its share of the width, rounded
/// toward zero, held to the right edge.
class ColumnScale {
public:
    ColumnScale(const QRect &rect, int last)
        : mLeft(rect.left()), mLastOffset(rect.width() - 1), mStep(stepOfAxis(rect, last)) {}

    int columnOf(int index) const { return mLeft + static_cast<int>(std::min(mStep * index, mLastOffset)); }
    double step() const { return mStep; }

private:
    int mLeft;
    double mLastOffset;
    double mStep;
};

inline int columnOfIndex(const QRect &rect, int last, int index) {
    return ColumnScale(rect, last).columnOf(index);
}

/// Width in pixels of a stick that takes a share of a step: the next smaller odd number, so that it is centred
/// over its column, and at least 1.
inline int stickWidth(double step, double share) {
    const int pixels = static_cast<int>(std::min(step * share, 1e6));
    return std::max(pixels % 2 == 1 ? pixels : pixels - 1, 1);
}

/// Maps values to rows of a rectangle: the maximum lies on its first row, the minimum on its last.
class ValueScale {
public:
    /// `range` is maximum and minimum. One that is upside down or has no height puts every value in the middle.
    ValueScale(const QRect &rect, const QPair<double, double> &range)
        : mTop(rect.top()), mReach(kReach * rect.height()), mMiddle((rect.height() - 1) / 2.0),
          mMaximum(range.first), mUsable(isPlaceable(range.first) && isPlaceable(range.second) &&
                                         isPlaceable(range.first - range.second)) {
        const double height = range.first - range.second;
        mRowsPerValue = height > 0.0 ? (rect.height() - 1) / height : 0.0;
        mFlat = !(mRowsPerValue > 0.0) || !std::isfinite(mRowsPerValue);
    }

    /// False when a bound is unset or not finite: then nothing can be placed.
    bool isUsable() const { return mUsable; }

    /// Row of a value as a fraction; a value outside the range lies above or beneath the rectangle, by eight
    /// times its height at most.
    double rowOf(double value) const {
        const double row = mFlat ? mMiddle : (mMaximum - value) * mRowsPerValue;
        return mTop + std::clamp(row, -mReach, mReach);
    }

private:
    static constexpr double kReach = 8.0;

    double mTop;
    double mReach;
    double mMiddle;
    double mMaximum;
    double mRowsPerValue = 0.0;
    bool mUsable;
    bool mFlat = true;
};

/// The grid of device pixels beneath a painter's coordinates: device = scale * coordinate + shift.
struct DeviceGrid {
    double scaleX = 1.0;
    double scaleY = 1.0;
    double shiftX = 0.0;
    double shiftY = 0.0;

    /// Nearest device pixel to a coordinate.
    int deviceX(double x) const { return nearestPixel(scaleX * x + shiftX); }
    int deviceY(double y) const { return nearestPixel(scaleY * y + shiftY); }
    /// Coordinate of a device pixel.
    double coordinateX(double device) const { return (device - shiftX) / scaleX; }
    double coordinateY(double device) const { return (device - shiftY) / scaleY; }
    QPointF coordinate(const QPointF &device) const {
        return {coordinateX(device.x()), coordinateY(device.y())};
    }
    /// Device pixels that a stroke of a width in pixels takes, at least 1.
    int strokeWidth(double width) const { return std::max(nearestPixel(std::min(scaleX * width, 64.0)), 1); }
};

/// Lengths of ink and of gap in turn, in pixels; empty for a solid stroke.
using DashPattern = QVarLengthArray<int, 8>;

/// Pattern of a pen style, each length multiplied.
DashPattern dashPattern(Qt::PenStyle pen, int unit);

/// Length of a stroke in steps of its longer direction, which is how a dashed stroke counts.
inline double dashLength(const QPointF &from, const QPointF &to) {
    return std::max(std::abs(to.x() - from.x()), std::abs(to.y() - from.y()));
}

using Strokes = QVarLengthArray<QLineF, 256>;

/// Cuts a stroke into the inked pieces of a pattern, of which `phase` is over before it begins. A piece ends
/// `width` short of where the gap begins, which is the room that the brush takes. A stroke of no length, and one of
/// more than a million pixels, gives none.
void appendDashes(const QPointF &from, const QPointF &to, const DashPattern &pattern, double phase, int width,
                  Strokes &dashes);

/// Half-open range of offsets that a row of a disc spans.
struct DiscRow {
    int first;
    int end;
};

/// Pixels of a disc of a diameter, row by row.
QVarLengthArray<DiscRow, 32> discRows(int diameter);

/// First row beneath a polyline in each column from `firstColumn` to `lastColumn`; `points` ascend in x. Of several rows in a
/// column the first point's counts.
void rowsOfPolyline(const QPoint *points, int count, int firstColumn, int lastColumn, int *rows);

} // namespace TC
