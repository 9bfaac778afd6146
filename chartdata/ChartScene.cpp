#include "chartdata/ChartScene.h"

#include "chartdata/ContentDigest.h"
#include "chartdata/LineDrawing.h"
#include "host/drawing/DirectPixels.h"
#include "host/toolkit/VectorPainter.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace TC {
namespace {

void add(ContentDigest &digest, const SceneLine &line) {
    const auto &[index, style, range, gradient, volume, digits] = line;
    digest.add(index);
    digest.add(style);
    digest.add(range.first);
    digest.add(range.second);
    digest.add(gradient);
    digest.add(volume);
    digest.add(digits);
}

void add(ContentDigest &digest, const SceneSeries &entry) {
    const auto &[key, order, series, filled, inVolumeBand, target, start, end, last, lines] = entry;
    static_cast<void>(key); // not seen
    static_cast<void>(order);
    static_cast<void>(filled); // the same as the series
    static_cast<void>(inVolumeBand); // those are left out
    digest.add(*series);
    for (const int number : {target.x(), target.y(), target.width(), target.height(), start, end, last}) {
        digest.add(number);
    }
    for (const SceneLine &line : lines) {
        add(digest, line);
    }
}

bool isSameLine(const SceneLine &a, const SceneLine &b) {
    const auto &[index, style, range, gradient, volume, digits] = a;
    return index == b.line && style == b.style && range == b.range && gradient == b.gradient &&
           volume == b.volume && digits == b.digits;
}

bool isSameSeries(const SceneSeries &a, const SceneSeries &b) {
    const auto &[key, order, series, filled, inVolumeBand, target, start, end, last, lines] = a;
    static_cast<void>(key); // the series tells it
    static_cast<void>(order);
    static_cast<void>(end); // grows
    return series == b.series && !filled && !b.filled && inVolumeBand == b.inVolumeBand && target == b.target &&
           start == b.start && last == b.last &&
           std::equal(lines.begin(), lines.end(), b.lines.begin(), b.lines.end(), isSameLine);
}

bool isOpaque(const SceneSeries &series) {
    return std::all_of(series.lines.begin(), series.lines.end(), [](const SceneLine &line) {
        return !line.gradient && CDrawStyle::isOpaque(line.style);
    });
}

/// Whether a series has one line, an opaque one, and no other is drawn where it is.
bool isAlone(const SceneSeries &series, const SceneLines &lines) {
    const auto isBeside = [&series](const SceneSeries &other) {
        return &other != &series && other.target == series.target;
    };
    return series.lines.size() == 1 && isOpaque(series) && std::none_of(lines.begin(), lines.end(), isBeside);
}

/// One column with a dot in every other row.
QImage dottedColumn(int height, double ratio, const QColor &color) {
    const int dot = static_cast<int>(std::ceil(ratio));
    QImage column(dot, static_cast<int>(std::ceil(height * ratio)), QImage::Format_ARGB32_Premultiplied);
    column.setDevicePixelRatio(ratio);
    const QRgb on = qPremultiply(color.rgba());
    auto *pixels = reinterpret_cast<QRgb *>(column.bits()); // whose rows follow each other without a gap
    for (int y = 0; y < column.height(); ++y, pixels += dot) {
        std::fill(pixels, pixels + dot, static_cast<int>(y / ratio) % 2 == 0 ? on : QRgb(0));
    }
    return column;
}

/// The same as a dashed line.
void drawDashedColumn(QPainter &painter, int x, int height, const QColor &color) {
    QPen pen(color, 1.0, Qt::CustomDashLine, Qt::FlatCap);
    pen.setDashPattern({1.0, 1.0});
    painter.setPen(pen);
    painter.drawLine(QPointF(x + 0.5, 0.0), QPointF(x + 0.5, height));
}

} // namespace

quint64 priceBandDigest(const ChartScene &scene) {
    const auto &[pane, ratio, look, theme, columns, rows, hasVolumeBand, end, lines] = scene;
    if (!hasVolumeBand) {
        return 0;
    }
    ContentDigest digest;
    digest.add(pane.width());
    digest.add(pane.height());
    digest.add(ratio);
    static_cast<void>(look); // the theme tells it
    digest.add(theme);
    for (const QVector<int> *grid : {&columns, &rows}) {
        digest.add(grid->constData(), static_cast<std::size_t>(grid->size()) * sizeof(int));
    }
    digest.add(end);
    for (const SceneSeries &series : lines) {
        if (!series.inVolumeBand) {
            add(digest, series);
        }
    }
    return digest.value();
}

bool hasGrown(const ChartScene &from, const ChartScene &to) {
    const auto &[pane, ratio, look, theme, columns, rows, hasVolumeBand, end, lines] = from;
    static_cast<void>(look); // the theme tells it
    return pane == to.pane && ratio == to.ratio && theme == to.theme && columns == to.columns &&
           rows == to.rows && hasVolumeBand == to.hasVolumeBand && end <= to.end &&
           std::equal(lines.begin(), lines.end(), to.lines.begin(), to.lines.end(), isSameSeries);
}

bool isOpaque(const SceneLines &lines, const QRect &part) {
    return std::all_of(lines.begin(), lines.end(), [&part](const SceneSeries &series) {
        return !series.target.intersects(part) || isOpaque(series);
    });
}

void beginAt(SceneLines &lines, int start) {
    for (SceneSeries &series : lines) {
        series.start = start;
    }
}

void reachInto(SceneLines &lines, int left) {
    for (SceneSeries &series : lines) {
        if (isAlone(series, lines)) {
            continue;
        }
        const auto reaches = [&](const SceneLine &line) {
            return CDrawStyle::touchedRect(series.target, *series.series, line.line, series.start, series.start,
                                           series.last)
                       .right() >= left;
        };
        series.start = std::min(series.start, static_cast<int>(series.series->result.mTimes.size()) - 1);
        while (series.start > 0 && std::any_of(series.lines.begin(), series.lines.end(), reaches)) {
            --series.start;
        }
        series.start = std::max(series.start, 0);
    }
}

void drawGrid(QPainter &painter, const ChartScene &scene, const QRect &part) {
    const int width = scene.pane.width();
    const int height = scene.pane.height();
    const ChartLook &look = scene.look;
    const QRect seen = part.adjusted(-1, -1, 1, 1); // its edges may lie between pixels of the device
    const DirectPixels pixels(painter);
    const auto fill = [&](const QRect &line, const QColor &color) {
        if (line.intersects(seen)) {
            pixels.fill(painter, line, color);
        }
    };
    fill({0, 0, width, 1}, look.border);
    fill({0, height - 1, width, 1}, look.border);
    fill({0, 0, 1, height}, look.border);
    fill({width - 1, 0, 1, height}, look.border);
    QImage column; // dashes of one pixel and gaps of one: copied, since dashed pens are slow
    for (const int x : scene.columns) {
        if (x < seen.left() || x > seen.right()) {
            continue;
        }
        if (GZ::drawsVectors(painter)) {
            drawDashedColumn(painter, x, height, look.grid);
            continue;
        }
        if (pixels.fillDots(x, height, look.grid)) {
            continue;
        }
        if (column.isNull()) {
            column = dottedColumn(height, scene.ratio, look.grid);
        }
        PixelPart::clip(painter);
        painter.drawImage(x, 0, column);
    }
    for (const int y : scene.rows) {
        if (y >= seen.top() && y <= seen.bottom()) {
            fill({0, y, width, 1}, look.grid);
        }
    }
}

void drawLines(QPainter &painter, const SceneLines &lines, const ChartLook &look, const QRect &part) {
    for (const SceneSeries &series : lines) {
        if (!series.target.intersects(part)) {
            continue;
        }
        for (const SceneLine &line : series.lines) {
            drawLine(painter, series, line, look);
        }
    }
}

QRegion Touched::pixels(const QRect &pane) const {
    const QRect parts[] = {price & pane, volume & pane};
    if (parts[0].isEmpty() || parts[1].isEmpty()) {
        return QRegion(parts[0].isEmpty() ? parts[1] : parts[0]);
    }
    if (parts[0].bottom() + 1 >= parts[1].top()) {
        return QRegion(parts[0]) | QRegion(parts[1]);
    }
    QRegion pixels; // as they stand: to unite two regions takes longer than to draw a tick
    pixels.setRects(parts, 2);
    return pixels;
}

void Touched::add(const Touched &other) {
    const auto unite = [](QRect &rect, const QRect &with) {
        if (!with.isNull()) { // most are
            rect |= with;
        }
    };
    unite(columns, other.columns);
    unite(price, other.price);
    unite(volume, other.volume);
}

void Touched::widen(const QRect &pane) {
    if (!isEmpty()) {
        columns = columns.adjusted(-1, 0, 1, 0) & pane;
    }
    for (QRect *pixels : {&price, &volume}) {
        if (!pixels->isEmpty()) {
            *pixels = pixels->adjusted(-1, -1, 1, 1) & pane;
        }
    }
}

Touched touchedBy(const SceneSeries &series) {
    Touched touched;
    QRect &band = series.inVolumeBand ? touched.volume : touched.price;
    for (const SceneLine &line : series.lines) {
        const QRect pixels =
            CDrawStyle::touchedRect(series.target, *series.series, line.range, line.line, series.start,
                                    series.end, series.last, line.gradient || line.volume);
        band |= pixels;
        touched.columns |=
            pixels.isNull() ? CDrawStyle::touchedRect(series.target, *series.series, line.line, series.start,
                                                      series.end, series.last)
                            : QRect(pixels.left(), series.target.top(), pixels.width(), series.target.height());
    }
    return touched;
}

Touched whereLinesMeet(Touched touched, const SceneLines &lines) {
    for (const SceneSeries &series : lines) {
        if (isAlone(series, lines)) {
            (series.inVolumeBand ? touched.volume : touched.price) = QRect();
        }
    }
    return touched;
}

} // namespace TC
