#include "toolkit/drawing/LineStrokes.h"

#include "toolkit/drawing/DrawLook.h"
#include "toolkit/drawing/GradientFill.h"

namespace TC {
namespace {

/// Drawings of more points are worth a clip of their own: with one, lines are drawn twice as fast.
constexpr int kFewPoints = 8;

/// Length of a line from where its run begins to a point: how far a dash pattern has come there.
double lengthBefore(const LineDrawing &drawing, int index) {
    double length = 0.0;
    QPoint point = drawing.at(index);
    for (int i = index - 1; drawing.points.has(i); --i) {
        const QPoint before = drawing.at(i);
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
double strokePart(ChartCanvas &canvas, const QPoint *points, int count, const LineLook &look, QRgb color,
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

} // namespace

void Run::stroke(ChartCanvas &canvas, const LineLook &look, double phase) const {
    const int count = mPoints.size();
    int begin = 0;
    for (int i = count > 1 ? 1 : 0; i < count; ++i) {
        if (i == count - 1 || mColors[i + 1] != mColors[i]) {
            phase = strokePart(canvas, &mPoints[begin], i - begin + 1, look, mColors[i], phase);
            begin = i;
        }
    }
}

void Run::finish(const LineDrawing &drawing, int first, const LineLook &look) {
    if (size() > 1 && look.gradient) {
        const DrawLook &theme = DrawLook::current();
        fillBeneath(drawing.canvas, mPoints.constData(), size(), !drawing.points.has(first - 1),
                    theme.gradientTop, theme.gradientBottom);
    }
    if (size() > 1 || (size() == 1 && isAlone(drawing, first, look.bridgesGaps))) {
        stroke(drawing.canvas, look, look.pen == Qt::SolidLine ? 0.0 : lengthBefore(drawing, first));
    }
    mPoints.clear();
    mColors.clear();
}

bool prepareStrokes(const LineDrawing &drawing, const IndexSpan &span) {
    for (int i = span.first; i <= span.last; ++i) {
        if (drawing.points.has(i) && !drawing.holds(i)) {
            return true;
        }
    }
    drawing.canvas.drawByHand();
    return !drawing.canvas.isByHand() && span.last - span.first >= kFewPoints;
}

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

} // namespace TC
