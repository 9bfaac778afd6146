// Styles that are lines: through the points, from edge to edge, and the gradient beneath.

#include "host/drawing/CDrawStyle.h"

#include "toolkit/drawing/ChartCanvas.h"
#include "toolkit/drawing/DrawLook.h"
#include "toolkit/drawing/DrawSizes.h"
#include "toolkit/drawing/GradientFill.h"

namespace TC {
namespace {

/// Drawings of more points are worth a clip of their own: with one, lines are drawn twice as fast.
constexpr int kFewPoints = 8;

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
    int last;

    QPointF at(int i) const {
        return canvas.device(columnOfIndex(canvas.rect(), last, i), scale.rowOf(points.value(i)));
    }
    bool holds(int i) const { return canvas.holdsRow(scale.rowOf(points.value(i))); }
};

/// Length of a line from where its run begins to a point: how far a dash pattern has come there.
double lengthBefore(const LineDrawing &drawing, int index) {
    double length = 0.0;
    QPointF point = drawing.at(index);
    for (int i = index - 1; drawing.points.has(i); --i) {
        const QPointF before = drawing.at(i);
        length += dashLength(before, point);
        point = before;
    }
    return length;
}

/// Whether no line leads to a point nor on from it, whatever part of the series is drawn.
bool isAlone(const LineDrawing &drawing, int index, bool bridgesGaps) {
    const int reach = bridgesGaps ? drawing.points.size() : 1;
    for (int i = std::max(index - reach, 0); i <= std::min(index + reach, drawing.last); ++i) {
        if (i != index && drawing.points.has(i)) {
            return false;
        }
    }
    return true;
}

/// Strokes in one colour; answers how far the dash pattern has come at the end.
double strokePart(ChartCanvas &canvas, const QPointF *points, int count, const LineLook &look, QRgb color,
                  double phase) {
    const int width = canvas.grid().strokeWidth(look.width);
    if (look.pen == Qt::SolidLine || count == 1) {
        canvas.stroke(points, count, width, color);
        return phase;
    }
    const DashPattern pattern = dashPattern(look.pen, width);
    Strokes dashes;
    for (int i = 1; i < count; ++i) {
        appendDashes(points[i - 1], points[i], pattern, phase, width, dashes);
        phase += dashLength(points[i - 1], points[i]);
    }
    canvas.strokes(dashes, width, color);
    return phase;
}

/// Consecutive points that one line connects. The part that leads to a point has the colour of that point.
class Run {
public:
    void append(const QPointF &point, QRgb color) {
        mPoints.append(point);
        mColors.append(color);
    }
    int size() const { return mPoints.size(); }
    void clear() {
        mPoints.clear();
        mColors.clear();
    }
    void fill(const ChartCanvas &canvas, bool withFirst, const DrawLook &theme) const {
        fillBeneath(canvas, mPoints.constData(), mPoints.size(), withFirst, theme.gradientTop,
                    theme.gradientBottom);
    }
    void stroke(ChartCanvas &canvas, const LineLook &look, double phase) const {
        const int count = mPoints.size();
        int begin = 0;
        for (int i = count > 1 ? 1 : 0; i < count; ++i) {
            if (i == count - 1 || mColors[i + 1] != mColors[i]) {
                phase = strokePart(canvas, &mPoints[begin], i - begin + 1, look, mColors[i], phase);
                begin = i;
            }
        }
    }

private:
    QVarLengthArray<QPointF, 256> mPoints;
    QVarLengthArray<QRgb, 256> mColors;
};

bool needsClip(const LineDrawing &drawing, const IndexSpan &span) {
    bool needed = span.last - span.first >= kFewPoints;
    for (int i = span.first; i <= span.last && !needed; ++i) {
        needed = drawing.points.has(i) && !drawing.holds(i);
    }
    return needed;
}

/// Draws the points of a span, run by run.
template <class ColorOf>
void drawRuns(const LineDrawing &drawing, const IndexSpan &span, const LineLook &look, ColorOf colorOf) {
    const ClipScope clip(drawing.canvas.painter(), drawing.canvas.rect(), needsClip(drawing, span));
    Run run;
    int first = span.first;
    const auto finish = [&] {
        if (run.size() > 1 && look.gradient) {
            run.fill(drawing.canvas, !drawing.points.has(first - 1), DrawLook::current());
        }
        if (run.size() > 1 || (run.size() == 1 && isAlone(drawing, first, look.bridgesGaps))) {
            run.stroke(drawing.canvas, look, look.pen == Qt::SolidLine ? 0.0 : lengthBefore(drawing, first));
        }
        run.clear();
    };
    for (int i = span.first; i <= span.last; ++i) {
        if (drawing.points.has(i)) {
            first = run.size() == 0 ? i : first;
            run.append(drawing.at(i), colorOf(i));
        } else if (!look.bridgesGaps) {
            finish();
        }
    }
    finish();
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
    drawRuns({canvas, points, scale, last}, span, look, [&](int i) { return colorOf(points, i); });
}

/// A line from the upper to the lower edge.
void drawFullHeight(ChartCanvas &canvas, int column, const DashPattern &pattern, QRgb color) {
    const QRect area = canvas.deviceRect();
    const int end = area.top() + area.height();
    if (pattern.isEmpty()) {
        canvas.fill(column, 1, area.top(), end, color);
        return;
    }
    int row = area.top();
    for (int part = 0; row < end; part = (part + 1) % pattern.size()) {
        const int next = std::min(row + pattern[part], end);
        if (part % 2 == 0) {
            canvas.fill(column, 1, row, next, color);
        }
        row = next;
    }
}

} // namespace

void CDrawStyle::drawSimpleLine(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                                int line, int start, int end, int last, Qt::PenStyle pen, int, bool, bool,
                                float width, bool gradient, bool) {
    const QRgb ofTheme = DrawLook::current().ofLine(line);
    drawLine(painter, rect, series, range, line, start, end, last, LineLook{pen, width, false, gradient},
             [ofTheme](const SeriesLine &points, int i) { return points.color(i, ofTheme); });
}

void CDrawStyle::drawBoolLine(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                              int line, int start, int end, int last, Qt::PenStyle pen, int) {
    const DrawLook &look = DrawLook::current();
    drawLine(painter, rect, series, range, line, start, end, last, LineLook{pen},
             [&look](const SeriesLine &points, int i) {
                 return points.color(i, points.value(i) > 0.0 ? look.rise : look.fall);
             });
}

void CDrawStyle::drawSegmentLine(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                                 int line, int start, int end, int last, int, bool) {
    const QRgb ofTheme = DrawLook::current().ofLine(line);
    drawLine(painter, rect, series, range, line, start, end, last, LineLook{Qt::SolidLine, 1.0, true},
             [ofTheme](const SeriesLine &points, int i) { return points.color(i, ofTheme); });
}

void CDrawStyle::drawVertLine(QPainter *painter, const QRect &rect, const Series &series, const Range &,
                              int line, int start, int end, int last, Qt::PenStyle pen, int) {
    const SeriesLine points(series, line);
    const IndexSpan span = heldSpan(start, end, points.size(), last);
    ChartCanvas canvas(painter, rect);
    if (points.isHidden() || !canvas.isUsable() || pen == Qt::NoPen) {
        return;
    }
    const QRgb ofTheme = DrawLook::current().ofLine(line);
    const DashPattern pattern = dashPattern(pen, canvas.grid().strokeWidth(1.0));
    for (int i = span.first; i <= span.last; ++i) {
        if (points.has(i) && points.value(i) != 0.0) {
            drawFullHeight(canvas, columnOfIndex(rect, last, i), pattern, points.color(i, ofTheme));
        }
    }
}

} // namespace TC
