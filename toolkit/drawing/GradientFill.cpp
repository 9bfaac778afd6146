#include "toolkit/drawing/GradientFill.h"

#include "host/toolkit/VectorPainter.h"

#include <QImage>

#include <cstring>
#include <limits>
#include <vector>

namespace TC {
namespace {

constexpr int kLargestSide = 16384; // device pixels; more than any screen has
constexpr int kStripPixels = 64 * 1024; // what is prepared at once, so that it stays in the cache
constexpr double kOpaque = 255.0;

constexpr int kBlock = 4; // pixels
using Block = int __attribute__((vector_size(kBlock * sizeof(int))));

/// A colour between two, premultiplied; `share` 0.0 is the first.
QRgb mixed(QRgb first, QRgb second, double share) {
    const auto mix = [share](int from, int to) { return from + (to - from) * share; };
    const double alpha = mix(qAlpha(first), qAlpha(second));
    const auto part = [alpha](double color) { return static_cast<int>(color * alpha / kOpaque + 0.5); };
    return qRgba(part(mix(qRed(first), qRed(second))), part(mix(qGreen(first), qGreen(second))),
                 part(mix(qBlue(first), qBlue(second))), static_cast<int>(alpha + 0.5));
}

/// Colours of the rows of an area, made once for each height and pair of colours.
class RowColors {
public:
    const QRgb *of(QRgb top, QRgb bottom, int height) {
        if (top != mTop || bottom != mBottom || std::size_t(height) != mColors.size()) {
            mColors.resize(std::size_t(height));
            for (int row = 0; row < height; ++row) {
                mColors[std::size_t(row)] = mixed(top, bottom, double(row) / std::max(height - 1, 1));
            }
            mTop = top;
            mBottom = bottom;
        }
        return mColors.data();
    }

private:
    QRgb mTop = 0;
    QRgb mBottom = 0;
    std::vector<QRgb> mColors;
};

/// One row of the area: the colour where the row is beneath the line, and nothing elsewhere. In whole blocks, by
/// vector instructions: this is most of the work of a gradient.
void fillRow(QRgb *pixels, const int *rows, int blocks, int row, QRgb color) {
    const Block rowBlock = Block{} + row;
    const Block colorBlock = Block{} + static_cast<int>(color);
    for (int block = 0; block < blocks; ++block, pixels += kBlock, rows += kBlock) {
        Block firstRows;
        std::memcpy(&firstRows, rows, sizeof(Block));
        const Block filled = (rowBlock >= firstRows) & colorBlock; // a comparison gives all bits or none
        std::memcpy(pixels, &filled, sizeof(Block));
    }
}

/// Lays prepared device pixels over the canvas; `stride` is the length of a row of them.
void drawStrip(const ChartCanvas &canvas, const QRect &device, const QRgb *pixels, int stride) {
    const QImage image(reinterpret_cast<const uchar *>(pixels), device.width(), device.height(),
                       stride * static_cast<int>(sizeof(QRgb)), QImage::Format_ARGB32_Premultiplied);
    const QPointF topLeft = canvas.grid().coordinate(QPointF(device.topLeft()));
    const QPointF bottomRight = canvas.grid().coordinate(QPointF(device.bottomRight() + QPoint(1, 1)));
    PixelPart::clip(*canvas.painter());
    canvas.painter()->drawImage(QRectF(topLeft, bottomRight), image);
}

/// The same as a shape, for a painter that keeps shapes.
void fillPolygon(const ChartCanvas &canvas, const QPoint *points, int count, QRgb top, QRgb bottom) {
    const QRect area = canvas.deviceRect();
    QPolygonF shape;
    for (int i = 0; i < count; ++i) {
        shape.append(canvas.grid().coordinate(points[i]));
    }
    const double end = area.top() + area.height();
    shape.append(canvas.grid().coordinate({double(points[count - 1].x()), end}));
    shape.append(canvas.grid().coordinate({double(points[0].x()), end}));
    QLinearGradient gradient(canvas.grid().coordinate(area.topLeft()),
                             canvas.grid().coordinate({double(area.left()), end}));
    gradient.setColorAt(0.0, QColor::fromRgba(top));
    gradient.setColorAt(1.0, QColor::fromRgba(bottom));
    canvas.painter()->save();
    canvas.painter()->setPen(Qt::NoPen);
    canvas.painter()->setBrush(gradient);
    canvas.painter()->drawPolygon(shape);
    canvas.painter()->restore();
}

} // namespace

// Measured against a polygon and against columns with a gradient brush, which take ten and thirty times as long.
void fillBeneath(const ChartCanvas &canvas, const QPoint *points, int count, bool withFirst, QRgb top,
                 QRgb bottom) {
    const QRect area = canvas.deviceRect();
    if (GZ::drawsVectors(*canvas.painter())) {
        fillPolygon(canvas, points, count, top, bottom);
        return;
    }
    const int left = points[0].x() + (withFirst ? 0 : 1);
    const int width = points[count - 1].x() - left + 1;
    if (count < 2 || width <= 0 || width > kLargestSide || area.height() > kLargestSide) {
        return;
    }
    const int blocks = (width + kBlock - 1) / kBlock;
    const int stride = blocks * kBlock;
    QVarLengthArray<int, 2048> rows(stride);
    rowsOfPolyline(points, count, left, left + width - 1, rows.data());
    std::fill(rows.begin() + width, rows.end(), std::numeric_limits<int>::max());
    thread_local RowColors colorsOfRows;
    thread_local std::vector<QRgb> pixels;
    const QRgb *colors = colorsOfRows.of(top, bottom, area.height());
    const int end = area.top() + area.height();
    const int stripRows = std::max(kStripPixels / stride, 1);
    for (int strip = std::max(*std::min_element(rows.begin(), rows.end()), area.top()); strip < end;) {
        const int height = std::min(stripRows, end - strip);
        pixels.resize(std::max(pixels.size(), std::size_t(stride) * std::size_t(height)));
        for (int y = 0; y < height; ++y) {
            fillRow(pixels.data() + std::size_t(y) * std::size_t(stride), rows.constData(), blocks, strip + y,
                    colors[strip + y - area.top()]);
        }
        drawStrip(canvas, QRect(left, strip, width, height), pixels.data(), stride);
        strip += height;
    }
}

} // namespace TC
