#pragma once

/// \file
/// Drawings of the drawing helpers, for their tests. Most are 101 x 101 pixels over indices 0 to 10 and values 0 to
/// 100, so that point i lies at column 10 * i and value v on row 100 - v.

#include "host/drawing/CDrawStyle.h"
#include "host/toolkit/CUiResource.h"
#include "tests/support/Golden.h"
#include "tests/support/Series.h"

#include <QPainter>
#include <QPixmap>

#include <cmath>
#include <functional>
#include <limits>
#include <vector>

namespace tests {

using Draw = TC::CDrawStyle;
using Series = se::RPCFormulaResultCache;

inline const double kInfinity = std::numeric_limits<double>::infinity();
inline const double kNaN = std::numeric_limits<double>::quiet_NaN();
inline const double kGap = kNaN;

constexpr QRgb kBlack = qRgb(0, 0, 0);
constexpr QRgb kRed = qRgb(255, 0, 0);
constexpr QRgb kBlue = qRgb(0, 0, 255);
constexpr qint32 kPackedRed = 0x0000ff;
constexpr qint32 kPackedBlue = 0xff0000;

constexpr QRect kRect(0, 0, 101, 101);
inline const Draw::Range kRange(100.0, 0.0);
constexpr int kLast = 10;

/// A series of one style whose lines are red; a NaN is a point that is not valid.
inline Series seriesOf(int style, std::vector<std::vector<double>> lines) {
    Series series;
    const std::size_t count = lines.empty() ? 0 : lines.front().size();
    series.meta = *tests::makeMeta(int(lines.size()), std::vector<qint32>(lines.size(), style));
    series.meta.mLineColors.assign(lines.size(), kPackedRed);
    series.result = *tests::makeResult(tests::minuteTimes(tests::kDay, 570, int(count)), std::move(lines));
    series.result.mExtra2.clear();
    for (std::size_t i = 0; i < count; ++i) {
        series.result.mValid[i] = std::isnan(series.result.mValues[0][i]) ? 0 : 1;
    }
    return series;
}

inline QRgb theme(const char *key) {
    return GZ::CUiResource::instance().getColor(QLatin1String(key)).rgba();
}

inline QImage drawn(const std::function<void(QPainter *)> &draw, double ratio = 1.0,
                    QSize size = kRect.size()) {
    return tests::rendered(size, ratio, Qt::black, [&](QPainter &painter) { draw(&painter); });
}

inline void drawLine(QPainter *painter, const Series &series, int start, int end, const QRect &rect = kRect,
                     Qt::PenStyle pen = Qt::SolidLine, bool gradient = false) {
    Draw::drawSimpleLine(painter, rect, series, kRange, 0, start, end, kLast, pen, 1, true, false, 1.0f,
                         gradient, true);
}

inline void drawSticks(QPainter *painter, const Series &series, int start, int end, bool volume,
                       const Draw::Range &range = kRange) {
    Draw::drawColorStick(painter, kRect, series, range, 0, start, end, kLast, Qt::SolidLine, 1, true, volume,
                         true);
}

/// Pixels of a colour.
inline int countOf(const QImage &image, QRgb color) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += image.pixel(x, y) == color ? 1 : 0;
        }
    }
    return count;
}

/// The smallest rectangle of all pixels that are not black.
inline QRect inked(const QImage &image) {
    QRect result;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != kBlack) {
                result |= QRect(x, y, 1, 1);
            }
        }
    }
    return result;
}

inline bool isFilled(const QImage &image, const QRect &rect, QRgb color) {
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x) {
            if (image.pixel(x, y) != color) {
                return false;
            }
        }
    }
    return true;
}

} // namespace tests
