#include "host/drawing/CDrawStyle.h"

#include "host/records/ValueComparison.h"
#include "host/services/CFormulaOperateManager.h"
#include "host/services/ServiceContext.h"
#include "host/toolkit/Text.h"
#include "toolkit/drawing/Bars.h"
#include "toolkit/drawing/Candle.h"
#include "toolkit/drawing/ChartCanvas.h"
#include "toolkit/drawing/DrawLook.h"
#include "toolkit/drawing/DrawSizes.h"
#include "toolkit/drawing/LineReach.h"
#include "toolkit/drawing/LineStrokes.h"
#include "toolkit/drawing/SeriesExtremes.h"
#include "toolkit/drawing/SeriesTitle.h"
#include "toolkit/drawing/TextWriter.h"

#include <QPixmap>

#include <algorithm>
#include <cmath>

namespace TC {
namespace {

constexpr int kMarkDistance = 2; ///< pixels between a point and the text or image at it
constexpr int kMostDecimals = 4;

/// Whether the value of a point is a place on the value axis.
bool isOnValueAxis(int style) {
    return !(style >= eVertLineStyle && style <= eSecondVertLineStyle) && style != eTextExStyle;
}

bool isStickStyle(int style) {
    return style == eColorStickStyle || style == eVolStickStyle || style == eWideVolStickStyle ||
           style == eStackVolStickStyle;
}

/// Calls `draw(index, column, row)` for the drawn points of a span whose row lies inside the rectangle.
template <class Draw>
void forEachPlaced(const ChartCanvas &canvas, const SeriesLine &points, const ValueScale &scale, int start,
                   int end, int last, Draw draw) {
    const IndexSpan span = heldSpan(start, end, points.size(), last);
    if (points.isHidden() || !scale.isUsable() || !canvas.isUsable()) {
        return;
    }
    const ColumnScale columns(canvas.rect(), last);
    for (int i = span.first; i <= span.last; ++i) {
        const double row = points.has(i) ? scale.rowOf(points.value(i)) : -1.0;
        if (points.has(i) && canvas.holdsRow(row)) {
            draw(i, columns.columnOf(i), row);
        }
    }
}

/// A number with as many decimals as it needs, up to four.
QString numberText(double number) {
    QString text = GZ::formatDoubleNumber(number, kMostDecimals, 0, false, QString());
    while (text.contains(QLatin1Char('.')) && text.endsWith(QLatin1Char('0'))) {
        text.chop(1);
    }
    if (text.endsWith(QLatin1Char('.'))) {
        text.chop(1);
    }
    return text;
}

/// Writes `textOf(points, index)` over each point.
template <class TextOf>
void drawTexts(QPainter *painter, const QRect &rect, const CDrawStyle::Series &series,
               const CDrawStyle::Range &range, int line, int start, int end, int last, TextOf textOf) {
    const SeriesLine points(series, line);
    const QRgb ofTheme = DrawLook::current().ofLine(line);
    const ChartCanvas canvas(painter, rect);
    if (!canvas.isUsable() || points.isHidden()) {
        return;
    }
    TextWriter writer(painter, rect);
    forEachPlaced(canvas, points, ValueScale(rect, range), start, end, last,
                  [&](int i, int column, double row) {
                      const QString text = textOf(points, i);
                      if (!text.isEmpty()) {
                          writer.write(text, column, row - kMarkDistance, points.color(i, ofTheme));
                      }
                  });
}

} // namespace

CDrawStyle::CDrawStyle() = default;
CDrawStyle::~CDrawStyle() = default;

bool CDrawStyle::calcMaxMin(double &max, double &min, int first, int count, Series &series, const QRect &,
                            bool validOnly, bool fromZero, float scale, bool prices) {
    SeriesExtremes extremes;
    // Values beyond the described lines are no lines: an aligned overlay may hold some, all zero.
    const int held = static_cast<int>(series.result.mValues.size());
    const int lines = series.meta.mLineCount > 0 ? std::min(held, series.meta.mLineCount) : held;
    for (int line = 0; line < lines; ++line) {
        const SeriesLine points(series, line);
        if (points.isOnSharedAxis() && isOnValueAxis(points.style()) &&
            !(prices && isStickStyle(points.style()))) {
            extremes.takeLine(points, series, line, first, count, validOnly, scale);
        }
    }
    if (extremes.isFound() && fromZero) {
        extremes.take(0.0);
    }
    return extremes.tell(max, min);
}

bool CDrawStyle::calcMaxMin(double &max, double &min, int first, int count, const Series &series, int line,
                            const QRect &) {
    SeriesExtremes extremes;
    extremes.takeLine(series, line, first, count, true, 1.0f);
    return extremes.tell(max, min);
}

QRect CDrawStyle::touchedRect(const QRect &rect, const Series &series, int line, int start, int end, int last) {
    return touchedColumns(rect, SeriesLine(series, line), start, end, last);
}

QRect CDrawStyle::touchedRect(const QRect &rect, const Series &series, const Range &range, int line, int start,
                              int end, int last, bool toBottom) {
    return touchedPixels(rect, SeriesLine(series, line), ValueScale(rect, range), start, end, last, toBottom);
}

bool CDrawStyle::isOpaque(int style) {
    const bool isWritten =
        style == eTextStyle || style == eTextExStyle || style == eIconStyle || style == eNumberStyle;
    return !isWritten && DrawLook::current().isOpaque;
}

// Lines through the points, and from edge to edge.

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

// Upright bars: sticks, columns, candles.

void CDrawStyle::drawColorStick(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                                int line, int start, int end, int last, Qt::PenStyle, int, bool, bool volume,
                                bool) {
    const SeriesLine points(series, line);
    const DrawLook &look = DrawLook::current();
    Bars bars(painter, rect, range, points, start, end, last);
    const int width = stickWidth(bars.step(), kStickShare);
    const double base = volume ? bars.bottom() : bars.row(0.0);
    bars.forEach([&](int i) {
        const double value = points.value(i);
        if (isZero(value)) {
            return; // no height
        }
        const double change = volume ? (points.hasSecond(i) ? points.second(i) : 0.0) : value;
        const QRgb ofTheme = volume && change == 0.0 ? look.stick : look.ofSign(change);
        bars.fill(i, width, bars.row(value), base, points.color(i, ofTheme));
    });
}

void CDrawStyle::drawVolStick(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                              int line, int start, int end, int last, int, bool, bool, double widthFactor,
                              bool hollow) {
    const SeriesLine points(series, line);
    const QRgb ofTheme = DrawLook::current().stick;
    Bars bars(painter, rect, range, points, start, end, last);
    const double share = std::isfinite(widthFactor) ? std::clamp(widthFactor, 0.0, 1.0) : 0.0;
    const int width = stickWidth(bars.step(), share);
    bars.forEach([&](int i) {
        if (isZero(points.value(i))) {
            return; // no height
        }
        const QRgb color = points.color(i, ofTheme);
        if (hollow && width > 2) {
            bars.frame(i, width, bars.row(points.value(i)), bars.bottom(), color);
        } else {
            bars.fill(i, width, bars.row(points.value(i)), bars.bottom(), color);
        }
    });
}

void CDrawStyle::drawKLine(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                           int line, int start, int end, int last, int, int, bool, float width, int digits) {
    const SeriesLine close(series, line);
    const SeriesLine open(series, line + 1);
    const SeriesLine high(series, line + 2);
    const SeriesLine low(series, line + 3);
    const DrawLook &look = DrawLook::current();
    Bars bars(painter, rect, range, close, start, end, last);
    const int body = stickWidth(bars.step(), kStickShare);
    const int wick = std::min(stickWidth(double(width), 1.0), body);
    bars.forEach([&](int i) {
        const Candle candle = Candle::at(close, open, high, low, i);
        const double change = candle.change(digits);
        candle.draw(bars, i, body, wick, change, close.color(i, look.ofSign(change)));
    });
}

void CDrawStyle::drawStickKline(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                                int line, int start, int end, int last, int, bool) {
    const SeriesLine points(series, line);
    const DrawLook &look = DrawLook::current();
    Bars bars(painter, rect, range, points, start, end, last);
    const int width = stickWidth(bars.step(), kStickShare);
    bars.forEach([&](int i) {
        if (points.hasSecond(i)) {
            const QRgb color = points.color(i, look.ofSign(points.value(i) - points.second(i)));
            bars.fill(i, width, bars.row(points.value(i)), bars.row(points.second(i)), color);
        }
    });
}

void CDrawStyle::drawStackVolstick(QPainter *painter, const QRect &rect, const Series &series,
                                   const Range &range, int line, int start, int end, int last, int, bool,
                                   bool) {
    const SeriesLine points(series, line);
    const StackBase below(series, line);
    const QRgb ofTheme = DrawLook::current().ofLine(line);
    Bars bars(painter, rect, range, points, start, end, last);
    const int width = stickWidth(bars.step(), kStickShare);
    bars.forEach([&](int i) {
        const double base = below.at(i);
        const double top = base + points.value(i);
        if (isZero(points.value(i))) {
            return; // no height
        }
        // The row where the column beneath ends belongs to that column.
        ChartCanvas &canvas = bars.canvas();
        const double lower = bars.row(std::min(base, top));
        const int lowerEdge = base == 0.0 ? canvas.rowEnd(lower) : canvas.rowBegin(lower);
        canvas.fill(bars.column(i) - width / 2, width, canvas.rowBegin(bars.row(std::max(base, top))),
                    lowerEdge, points.color(i, ofTheme));
    });
}

// Marks at the points: dots, texts, numbers, images.

void CDrawStyle::drawCircleDot(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                               int line, int start, int end, int last, int, bool, bool) {
    const SeriesLine points(series, line);
    const QRgb ofTheme = DrawLook::current().ofLine(line);
    ChartCanvas canvas(painter, rect);
    const int diameter = dotDiameter(stepOfAxis(rect, last));
    const auto disc = discRows(canvas.grid().strokeWidth(diameter));
    forEachPlaced(canvas, points, ValueScale(rect, range), start, end, last,
                  [&](int i, int column, double row) {
                      const QPoint corner = canvas.device(column - diameter / 2, row - diameter / 2);
                      canvas.fillDisc(corner, disc, points.color(i, ofTheme));
                  });
}

void CDrawStyle::drawText(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                          int line, int start, int end, int last, int) {
    drawTexts(painter, rect, series, range, line, start, end, last,
              [](const SeriesLine &points, int i) { return GZ::sToQs(points.text(i)); });
}

void CDrawStyle::drawNumber(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                            int line, int start, int end, int last, int, bool) {
    drawTexts(painter, rect, series, range, line, start, end, last, [](const SeriesLine &points, int i) {
        return numberText(points.hasSecond(i) ? points.second(i) : points.value(i));
    });
}

void CDrawStyle::drawTextEx(QPainter *painter, const QRect &rect, const Series &series, const Range &, int line,
                            int last, int) {
    const SeriesLine points(series, line);
    const QRgb ofTheme = DrawLook::current().ofLine(line);
    const ChartCanvas canvas(painter, rect);
    const IndexSpan span = heldSpan(0, last, points.size(), last);
    if (!canvas.isUsable() || points.isHidden() || span.isEmpty()) {
        return;
    }
    TextWriter writer(painter, rect);
    for (int i = span.first; i <= span.last; ++i) {
        if (points.has(i) && !points.text(i).empty()) {
            const double share = std::clamp(points.value(i), 0.0, 1.0);
            const double middle = rect.top() + share * (rect.height() - 1);
            writer.write(GZ::sToQs(points.text(i)), columnOfIndex(rect, last, i), middle + writer.height() / 2,
                         points.color(i, ofTheme));
        }
    }
}

void CDrawStyle::drawIcon(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                          int line, int start, int end, int last, const QPixmap &image, int) {
    const SeriesLine points(series, line);
    const ChartCanvas canvas(painter, rect);
    if (image.isNull() || !canvas.isUsable()) {
        return;
    }
    const ClipScope clip(painter, rect, true);
    const int width = static_cast<int>(image.width() / image.devicePixelRatio());
    forEachPlaced(
        canvas, points, ValueScale(rect, range), start, end, last, [&](int i, int column, double row) {
            if (points.value(i) != 0.0) {
                painter->drawPixmap(column - width / 2, static_cast<int>(row) + 1 + kMarkDistance, image);
            }
        });
}

void CDrawStyle::getTitleText(CArrowColorSimpleText &title, const CFormulaKey &key, const Series &series,
                              int index, const CInstrumentDetailPtr &instrument,
                              const QList<CInstrumentDetailPtr> &addStocks, const ServiceContext &services) {
    appendSeries(title, key, series, index, instrument, addStocks,
                 services.get<CFormulaOperateManager>().getFormula(key.mFormula));
}

} // namespace TC
