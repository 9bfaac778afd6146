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

} // namespace

void drawLine(QPainter &painter, const SceneSeries &drawn, const SceneLine &line, const ChartLook &look) {
    using Draw = CDrawStyle;
    QPainter *const p = &painter;
    const se::RPCFormulaResultCache &series = *drawn.series;
    const QRect &rect = drawn.target;
    const int i = line.line;
    const int start = drawn.start;
    const int end = drawn.end;
    const int last = drawn.last;
    const CDrawStyle::Range &range = line.range;
    switch (line.style) {
    case eLineStyle:
    case ePlainLineStyle:
        Draw::drawSimpleLine(p, rect, series, range, i, start, end, last, Qt::SolidLine, kMode, true, false,
                             1.0f, line.gradient, true);
        break;
    case eDotStyle:
        Draw::drawCircleDot(p, rect, series, range, i, start, end, last, kMode, true, true);
        break;
    case eColorStickStyle:
        Draw::drawColorStick(p, rect, series, range, i, start, end, last, Qt::SolidLine, kMode, true,
                             line.volume, true);
        break;
    case eDottedLineStyle:
    case eSecondDottedLineStyle:
    case eThirdDottedLineStyle:
    case eDashDotLineStyle:
        Draw::drawSimpleLine(p, rect, series, range, i, start, end, last,
                             line.style == eDashDotLineStyle ? Qt::DashDotLine : Qt::DotLine, kMode, false,
                             false, 1.0f, false, false);
        break;
    case eVolStickStyle:
        Draw::drawVolStick(p, rect, series, range, i, start, end, last, kMode, false, true, 0.0, true);
        break;
    case eKLineStyle:
        Draw::drawKLine(p, rect, series, range, i, start, end, last, kMode, kCandlePeriod, false, 1.0f,
                        line.digits);
        break;
    case eTextStyle:
        Draw::drawText(p, rect, series, range, i, start, end, last, kMode);
        break;
    case eVertLineStyle:
    case eVertDotStyle:
    case eSecondVertDotStyle:
    case eVertDashDotStyle:
    case eVertDashDotDotStyle:
    case eSecondVertLineStyle:
        Draw::drawVertLine(p, rect, series, range, i, start, end, last, vertLinePen(line.style), kMode);
        break;
    case eIconStyle:
        Draw::drawIcon(p, rect, series, range, i, start, end, last, look.arrow, kMode);
        break;
    case eNumberStyle:
        Draw::drawNumber(p, rect, series, range, i, start, end, last, kMode, false);
        break;
    case eTextExStyle:
        Draw::drawTextEx(p, rect, series, range, i, last, kMode);
        break;
    case eStickKlineStyle:
        Draw::drawStickKline(p, rect, series, range, i, start, end, last, kMode, false);
        break;
    case eBoolLineStyle:
        Draw::drawBoolLine(p, rect, series, range, i, start, end, last, Qt::SolidLine, kMode);
        break;
    case eWideVolStickStyle:
        Draw::drawVolStick(p, rect, series, range, i, start, end, last, kMode, false, true, 1.0, false);
        break;
    case eSegmentLineStyle:
        Draw::drawSegmentLine(p, rect, series, range, i, start, end, last, kMode, false);
        break;
    case eStackVolStickStyle:
        Draw::drawStackVolstick(p, rect, series, range, i, start, end, last, kMode, true, true);
        break;
    default:
        break; // the other numbers are no drawing
    }
}

} // namespace TC
