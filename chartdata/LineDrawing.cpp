#include "chartdata/LineDrawing.h"

#include "chartdata/ChartScene.h"
#include "host/drawing/DrawStyles.h"

#include <QPainter>

namespace TC {
namespace {

constexpr int kMode = 1;
constexpr int kCandlePeriod = 60;

/// The pen of a line of full height.
Qt::PenStyle vertLinePen(int style) {
    switch (style) {
    case eVertDotStyle:
    case eSecondVertDotStyle:
        return Qt::DotLine;
    case eVertDashDotStyle:
        return Qt::DashDotLine;
    case eVertDashDotDotStyle:
        return Qt::DashDotDotLine;
    default:
        return Qt::SolidLine;
    }
}

/// What the helpers take of a line.
struct Drawn {
    QPainter *painter;
    const QRect &rect;
    const se::RPCFormulaResultCache &series;
    const CDrawStyle::Range &range;
    int line;
    int start;
    int end;
    int last;
};

/// Draws a line of a style that is one; false for any other.
bool drawStroke(const Drawn &d, const SceneLine &line) {
    using Draw = CDrawStyle;
    switch (line.style) {
    case eLineStyle:
    case ePlainLineStyle:
        Draw::drawSimpleLine(d.painter, d.rect, d.series, d.range, d.line, d.start, d.end, d.last,
                             Qt::SolidLine, kMode, true, false, 1.0f, line.gradient, true);
        return true;
    case eDottedLineStyle:
    case eSecondDottedLineStyle:
    case eThirdDottedLineStyle:
    case eDashDotLineStyle:
        Draw::drawSimpleLine(d.painter, d.rect, d.series, d.range, d.line, d.start, d.end, d.last,
                             line.style == eDashDotLineStyle ? Qt::DashDotLine : Qt::DotLine, kMode, false,
                             false, 1.0f, false, false);
        return true;
    case eVertLineStyle:
    case eVertDotStyle:
    case eSecondVertDotStyle:
    case eVertDashDotStyle:
    case eVertDashDotDotStyle:
    case eSecondVertLineStyle:
        Draw::drawVertLine(d.painter, d.rect, d.series, d.range, d.line, d.start, d.end, d.last,
                           vertLinePen(line.style), kMode);
        return true;
    case eBoolLineStyle:
        Draw::drawBoolLine(d.painter, d.rect, d.series, d.range, d.line, d.start, d.end, d.last, Qt::SolidLine,
                           kMode);
        return true;
    case eSegmentLineStyle:
        Draw::drawSegmentLine(d.painter, d.rect, d.series, d.range, d.line, d.start, d.end, d.last, kMode,
                              false);
        return true;
    default:
        return false;
    }
}

/// Draws a line of points, sticks or texts; a style that is none of them draws nothing.
void drawMarks(const Drawn &d, const SceneLine &line, const ChartLook &look) {
    using Draw = CDrawStyle;
    switch (line.style) {
    case eDotStyle:
        return Draw::drawCircleDot(d.painter, d.rect, d.series, d.range, d.line, d.start, d.end, d.last, kMode,
                                   true, true);
    case eColorStickStyle:
        return Draw::drawColorStick(d.painter, d.rect, d.series, d.range, d.line, d.start, d.end, d.last,
                                    Qt::SolidLine, kMode, true, line.volume, true);
    case eVolStickStyle:
    case eWideVolStickStyle: {
        const bool wide = line.style == eWideVolStickStyle;
        return Draw::drawVolStick(d.painter, d.rect, d.series, d.range, d.line, d.start, d.end, d.last, kMode,
                                  false, true, wide ? 1.0 : 0.0, !wide);
    }
    case eKLineStyle:
        return Draw::drawKLine(d.painter, d.rect, d.series, d.range, d.line, d.start, d.end, d.last, kMode,
                               kCandlePeriod, false, 1.0f, line.digits);
    case eTextStyle:
        return Draw::drawText(d.painter, d.rect, d.series, d.range, d.line, d.start, d.end, d.last, kMode);
    case eTextExStyle:
        return Draw::drawTextEx(d.painter, d.rect, d.series, d.range, d.line, d.last, kMode);
    case eIconStyle:
        return Draw::drawIcon(d.painter, d.rect, d.series, d.range, d.line, d.start, d.end, d.last, look.arrow,
                              kMode);
    case eNumberStyle:
        return Draw::drawNumber(d.painter, d.rect, d.series, d.range, d.line, d.start, d.end, d.last, kMode,
                                false);
    case eStickKlineStyle:
        return Draw::drawStickKline(d.painter, d.rect, d.series, d.range, d.line, d.start, d.end, d.last, kMode,
                                    false);
    case eStackVolStickStyle:
        return Draw::drawStackVolstick(d.painter, d.rect, d.series, d.range, d.line, d.start, d.end, d.last,
                                       kMode, true, true);
    default:
        return;
    }
}

} // namespace

void drawLine(QPainter &painter, const SceneSeries &series, const SceneLine &line, const ChartLook &look) {
    const Drawn drawn{&painter,  series.target, *series.series, line.range,
                      line.line, series.start,  series.end,     series.last};
    if (!drawStroke(drawn, line)) {
        drawMarks(drawn, line, look);
    }
}

} // namespace TC
