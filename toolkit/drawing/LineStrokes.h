#pragma once

#include "host/drawing/CDrawStyle.h"
#include "toolkit/drawing/ChartCanvas.h"
#include "toolkit/drawing/DrawSizes.h"

#include <QVarLengthArray>

namespace TC {

/// How a line through the points of a series looks.
struct LineLook {
    Qt::PenStyle pen = Qt::SolidLine;
    double width = 1.0;
    bool bridgesGaps = false;
    bool gradient = false;
};

/// What the drawing of one line works with.
struct LineDrawing {
    ChartCanvas &canvas;
    const SeriesLine &points;
    const ValueScale &scale;
    ColumnScale columns;
    int last;

    QPoint at(int i) const { return canvas.device(columns.columnOf(i), scale.rowOf(points.value(i))); }
    bool holds(int i) const { return canvas.holdsRow(scale.rowOf(points.value(i))); }
};

/// Consecutive points that one line connects. The part that leads to a point has the colour of that point.
class Run {
public:
    void append(const QPoint &point, QRgb color) {
        mPoints.append(point);
        mColors.append(color);
    }
    int size() const { return mPoints.size(); }
    /// Draws the run, whose first point has the index `first`, and forgets it.
    void finish(const LineDrawing &drawing, int first, const LineLook &look);

private:
    void stroke(ChartCanvas &canvas, const LineLook &look, double phase) const;

    QVarLengthArray<QPoint, 256> mPoints;
    QVarLengthArray<QRgb, 256> mColors;
};

/// Has lines drawn by hand that stay inside the rectangle. Whether the others need a clip: they leave it, or there are that
/// many points that it is quicker with one.
bool prepareStrokes(const LineDrawing &drawing, const IndexSpan &span);

/// Draws the points of a span, run by run.
template <class ColorOf>
void drawRuns(const LineDrawing &drawing, const IndexSpan &span, const LineLook &look, ColorOf colorOf) {
    const ClipScope clip(drawing.canvas.painter(), drawing.canvas.rect(), prepareStrokes(drawing, span));
    Run run;
    int first = span.first;
    for (int i = span.first; i <= span.last; ++i) {
        if (drawing.points.has(i)) {
            first = run.size() == 0 ? i : first;
            run.append(drawing.at(i), colorOf(i));
        } else if (!look.bridgesGaps) {
            run.finish(drawing, first, look);
        }
    }
    run.finish(drawing, first, look);
}

/// Draws a line with the look, in the colours of `colorOf(points, index)`.
template <class ColorOf>
void drawLine(QPainter *painter, const QRect &rect, const se::RPCFormulaResultCache &series,
              const CDrawStyle::Range &range, int line, int start, int end, int last, const LineLook &look,
              ColorOf colorOf) {
    const SeriesLine points(series, line);
    const ValueScale scale(rect, range);
    IndexSpan span = heldSpan(start, end, points.size(), last);
    if (points.isHidden() || span.isEmpty() || !scale.isUsable() || look.pen == Qt::NoPen) {
        return;
    }
    ChartCanvas canvas(painter, rect);
    if (!canvas.isUsable()) {
        return;
    }
    if (look.bridgesGaps) {
        span.first = firstBridged(points, span.first);
    }
    drawRuns({canvas, points, scale, ColumnScale(rect, last), last}, span, look,
             [&](int i) { return colorOf(points, i); });
}

/// A line from the upper to the lower edge.
void drawFullHeight(ChartCanvas &canvas, int column, const DashPattern &pattern, QRgb color);

} // namespace TC
