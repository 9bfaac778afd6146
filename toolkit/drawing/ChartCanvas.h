#pragma once

#include "host/drawing/DirectPixels.h"
#include "toolkit/drawing/SeriesGeometry.h"

#include <QColor>
#include <QPainter>

namespace TC {

/// A painter over a rectangle that draws on whole device pixels: sharp at every device pixel ratio.
///
/// A pixel of the painter is a block of device pixels; the width of strokes counts in these. Changes the pen of
/// the painter, and while it lives its antialiasing.
class ChartCanvas {
public:
    /// `painter` may be null or not active; the canvas is then not usable, nor is one over an empty rectangle.
    ChartCanvas(QPainter *painter, const QRect &rect);
    ~ChartCanvas();
    ChartCanvas(const ChartCanvas &) = delete;
    ChartCanvas &operator=(const ChartCanvas &) = delete;

    /// From now on fills and strokes by hand where the painter allows it, whose clip then stays as it is. Strokes leave
    /// neither the rectangle nor its clip to be set.
    void drawByHand() { mPixels = mPainter ? DirectPixels(*mPainter) : DirectPixels(); }
    bool isByHand() const { return !mPixels.isNull(); }

    bool isUsable() const { return mPainter != nullptr; }
    QPainter *painter() const { return mPainter; }
    const QRect &rect() const { return mRect; }
    const DeviceGrid &grid() const { return mGrid; }

    /// The rectangle in device pixels; of one larger than can be painted, a part that holds all that can.
    QRect deviceRect() const { return {mLeft, mTop, mRight - mLeft, mBottom - mTop}; }

    /// Nearest device pixel to a column and a row.
    QPoint device(int column, double row) const { return {mGrid.deviceX(column), mGrid.deviceY(row)}; }
    /// Whether a row lies inside the rectangle.
    bool holdsRow(double row) const { return row >= mRect.top() && row <= mRect.bottom(); }
    /// First device pixel of a row, and the one after its last, both held to the rectangle.
    int rowBegin(double row) const { return std::clamp(mGrid.deviceY(row), mTop, mBottom); }
    int rowEnd(double row) const { return std::clamp(mGrid.deviceY(row) + mRowPixels, mTop, mBottom); }

    /// Fills `width` columns from `left` on, from device row `begin` to before `end`.
    void fill(int left, int width, int begin, int end, QRgb color);
    /// A disc whose upper left corner is a device pixel, held to the rectangle.
    void fillDisc(const QPoint &corner, const QVarLengthArray<DiscRow, 32> &rows, QRgb color);
    /// A polyline through device pixels, `width` device pixels thick; one point is drawn as a block. It is
    /// held to the rectangle by the clip alone.
    void stroke(const QPoint *points, int count, int width, QRgb color);
    /// Separate straight strokes, the same otherwise.
    void strokes(const Strokes &lines, int width, QRgb color);

private:
    void fillDevice(int left, int top, int right, int bottom, QRgb color);
    void drawMoved(const Strokes &lines, int right, int down);

    QPainter *mPainter;
    QRect mRect;
    DeviceGrid mGrid;
    int mLeft = 0; ///< edges of the rectangle in device pixels, the right and lower ones not included
    int mRight = 0;
    int mTop = 0;
    int mBottom = 0;
    int mRowPixels = 1; ///< device pixels of one row
    bool mAntialiased = false;
    DirectPixels mPixels;
};

/// Keeps a painter inside a rectangle while it lives, where that is needed, and leaves its state as it was.
class ClipScope {
public:
    ClipScope(QPainter *painter, const QRect &rect, bool needed);
    ~ClipScope();
    ClipScope(const ClipScope &) = delete;
    ClipScope &operator=(const ClipScope &) = delete;

private:
    QPainter *mPainter;
};

} // namespace TC
