#include "chartdata/PanePixmap.h"

#include "chartdata/SparePixels.h"

#include <QTransform>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace TC {
namespace {

constexpr double kLargestSide = 16384.0; // device pixels
constexpr double kLargestArea = 67108864.0; // device pixels

constexpr int kFewRects = 32; ///< of a region that is worth a closer look

/// Of all pictures; it outlives every one of them.
SparePixels &spares() {
    static auto &all = *new SparePixels;
    return all;
}

/// Whether a region has all pixels of some rows in the columns of a rectangle.
bool isFilled(const QRegion &region, const QRect &columns, int top, int bottom) {
    int rows = 0;
    for (const QRect &rect : region) {
        if (rect.top() >= top && rect.bottom() <= bottom && rect.left() <= columns.left() &&
            rect.right() >= columns.right()) {
            rows += rect.height();
        }
    }
    return rows == bottom - top + 1;
}

} // namespace

QSize panePixmapSize(const QSize &size, double ratio) {
    const double width = std::ceil(size.width() * ratio);
    const double height = std::ceil(size.height() * ratio);
    const bool fits = width <= kLargestSide && height <= kLargestSide && width * height <= kLargestArea;
    return size.isEmpty() || !fits ? QSize() : QSize(static_cast<int>(width), static_cast<int>(height));
}

QPixmap panePixmap(const QSize &size, double ratio) {
    const QSize pixels = panePixmapSize(size, ratio);
    if (pixels.isEmpty()) {
        return QPixmap();
    }
    QPixmap pixmap(pixels);
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

QImage paneImage(const QSize &size, double ratio, bool isOpaque) {
    const QSize pixels = panePixmapSize(size, ratio);
    if (pixels.isEmpty()) {
        return QImage();
    }
    const QImage::Format format = isOpaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied;
    const int rowBytes = pixels.width() * static_cast<int>(sizeof(QRgb));
    void *memory =
        spares().take(static_cast<std::size_t>(rowBytes) * static_cast<std::size_t>(pixels.height()));
    if (!memory) {
        return QImage();
    }
    QImage image(
        static_cast<uchar *>(memory), pixels.width(), pixels.height(), rowBytes, format,
        [](void *given) { spares().giveBack(given); }, memory);
    image.setDevicePixelRatio(ratio);
    return image;
}

void blitPane(QPainter &painter, const QRect &rect, const QPixmap &pixmap, const QSize &pane) {
    if (rect.size() == pane) {
        painter.drawPixmap(rect.topLeft(), pixmap); // also at fractional ratios
    } else {
        painter.drawPixmap(rect, pixmap);
    }
}

void blitPane(QPainter &painter, const QRect &rect, const QImage &image, const QSize &pane) {
    const bool isWhole = rect.size() == pane;
    if (isWhole && DirectPixels(painter).copy(image, rect.topLeft())) {
        return;
    }
    PixelPart::clip(painter);
    isWhole ? painter.drawImage(rect.topLeft(), image) : painter.drawImage(rect, image);
}

double evenRatio(const QPainter &painter) {
    const QTransform transform = painter.deviceTransform();
    const bool even = transform.type() <= QTransform::TxScale && transform.m11() == transform.m22();
    return even ? std::clamp(transform.m11(), 1.0, 8.0) : 0.0;
}

QVector<QRect> partsOf(const QRegion &region) {
    QVector<QRect> parts;
    if (region.rectCount() > kFewRects) {
        std::copy(region.begin(), region.end(), std::back_inserter(parts));
        return parts;
    }
    parts.reserve(region.rectCount());
    for (const QRect &rect : region) {
        const auto above = std::find_if(parts.rbegin(), parts.rend(), [&](const QRect &part) {
            return part.left() == rect.left() && part.right() == rect.right() &&
                   isFilled(region, rect, part.bottom() + 1, rect.top() - 1);
        });
        if (above != parts.rend()) {
            above->setBottom(rect.bottom());
        } else {
            parts.append(rect);
        }
    }
    return parts;
}

} // namespace TC
