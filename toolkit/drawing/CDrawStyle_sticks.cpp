// Styles that are upright bars: sticks, volume columns, candles.

#include "host/drawing/CDrawStyle.h"

#include "toolkit/drawing/ChartCanvas.h"
#include "toolkit/drawing/DrawLook.h"
#include "toolkit/drawing/DrawSizes.h"

namespace TC {
namespace {

/// What the drawing of upright bars works with.
class Bars {
public:
    Bars(QPainter *painter, const QRect &rect, const CDrawStyle::Range &range, const SeriesLine &points,
         int start, int end, int last)
        : mCanvas(painter, rect), mScale(rect, range), mPoints(points),
          mSpan(heldSpan(start, end, points.size(), last)), mLast(last) {
        if (points.isHidden() || !mScale.isUsable() || !mCanvas.isUsable()) {
            mSpan = IndexSpan();
        }
    }

    ChartCanvas &canvas() { return mCanvas; }
    int column(int i) const { return columnOfIndex(mCanvas.rect(), mLast, i); }
    double row(double value) const { return mScale.rowOf(value); }
    double step() const { return stepOfAxis(mCanvas.rect(), mLast); }
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
    IndexSpan mSpan;
    int mLast;
};

/// The four prices of a candle.
struct Candle {
    double open;
    double high;
    double low;
    double close;
};

/// A candle of the lines from `close` on. Without an open price the close before stands for it, and a high or low
/// that is not there is that of open and close.
Candle candleAt(const SeriesLine &close, const SeriesLine &open, const SeriesLine &high, const SeriesLine &low,
                int i) {
    Candle candle{};
    candle.close = close.value(i);
    candle.open = open.has(i) ? open.value(i) : close.has(i - 1) ? close.value(i - 1) : candle.close;
    candle.high = std::max({high.has(i) ? high.value(i) : candle.close, candle.open, candle.close});
    candle.low = std::min({low.has(i) ? low.value(i) : candle.close, candle.open, candle.close});
    return candle;
}

/// Difference of two prices, 0 when they agree in the decimals shown.
double priceChange(double from, double to, int digits) {
    const double change = to - from;
    return std::abs(change) < 0.5 * std::pow(10.0, -digits) ? 0.0 : change;
}

/// A rising candle is hollow where there is room for it.
void drawCandle(Bars &bars, int i, const Candle &candle, int width, int wick, double change, QRgb color) {
    const double upper = bars.row(std::max(candle.open, candle.close));
    const double lower = bars.row(std::min(candle.open, candle.close));
    if (change > 0.0 && width > 2) {
        bars.fill(i, wick, bars.row(candle.high), upper, color);
        bars.fill(i, wick, lower, bars.row(candle.low), color);
        bars.frame(i, width, upper, lower, color);
    } else {
        bars.fill(i, wick, bars.row(candle.high), bars.row(candle.low), color);
        bars.fill(i, width, upper, lower, color);
    }
}

} // namespace

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
        if (std::abs(value) <= kValueTolerance) {
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
        if (std::abs(points.value(i)) <= kValueTolerance) {
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
        const Candle candle = candleAt(close, open, high, low, i);
        const double change = priceChange(candle.open, candle.close, digits);
        drawCandle(bars, i, candle, body, wick, change, close.color(i, look.ofSign(change)));
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
        if (std::abs(points.value(i)) <= kValueTolerance) {
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

} // namespace TC
