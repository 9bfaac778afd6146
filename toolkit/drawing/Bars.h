#pragma once

#include "host/drawing/CDrawStyle.h"
#include "toolkit/drawing/ChartCanvas.h"
#include "toolkit/drawing/SeriesLine.h"

#include <algorithm>

namespace TC {

/// Draws upright bars over the columns of the points of a line: sticks, columns, candles. Nothing is drawn of a line
/// that is hidden or over a range that is no scale.
class Bars {
public:
    Bars(QPainter *painter, const QRect &rect, const CDrawStyle::Range &range, const SeriesLine &points,
         int start, int end, int last)
        : mCanvas(painter, rect), mScale(rect, range), mPoints(points), mColumns(rect, last),
          mSpan(heldSpan(start, end, points.size(), last)) {
        if (points.isHidden() || !mScale.isUsable() || !mCanvas.isUsable()) {
            mSpan = IndexSpan();
        }
        mCanvas.drawByHand();
    }

    ChartCanvas &canvas() { return mCanvas; }
    int column(int i) const { return mColumns.columnOf(i); }
    double row(double value) const { return mScale.rowOf(value); }
    double step() const { return mColumns.step(); }
    double bottom() const { return mCanvas.rect().bottom(); }

    template <class Draw> void forEach(Draw draw) const {
        for (int i = mSpan.first; i <= mSpan.last; ++i) {
            if (mPoints.has(i)) {
                draw(i);
            }
        }
    }

    /// A bar over the column of a point, from row to row, both included.
    void fill(int i, int width, double rowA, double rowB, QRgb color) {
        mCanvas.fill(column(i) - width / 2, width, mCanvas.rowBegin(std::min(rowA, rowB)),
                     mCanvas.rowEnd(std::max(rowA, rowB)), color);
    }

    /// The same, only its outline.
    void frame(int i, int width, double rowA, double rowB, QRgb color) {
        const int left = column(i) - width / 2;
        const double upper = std::min(rowA, rowB);
        const double lower = std::max(rowA, rowB);
        const int begin = mCanvas.rowBegin(upper);
        const int end = mCanvas.rowEnd(lower);
        mCanvas.fill(left, 1, begin, end, color);
        mCanvas.fill(left + width - 1, 1, begin, end, color);
        mCanvas.fill(left, width, begin, mCanvas.rowEnd(upper), color);
        mCanvas.fill(left, width, mCanvas.rowBegin(lower), end, color);
    }

private:
    ChartCanvas mCanvas;
    ValueScale mScale;
    const SeriesLine &mPoints;
    ColumnScale mColumns;
    IndexSpan mSpan;
};

} // namespace TC
