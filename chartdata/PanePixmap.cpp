#include "chartdata/PanePixmap.h"

#include <QTransform>

#include <algorithm>
#include <cmath>

namespace TC {
namespace {

constexpr double kLargestSide = 16384.0; // device pixels
constexpr double kLargestArea = 67108864.0; // device pixels

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

double evenRatio(const QPainter &painter) {
    const QTransform transform = painter.deviceTransform();
    const bool even = transform.type() <= QTransform::TxScale && transform.m11() == transform.m22();
    return even ? std::clamp(transform.m11(), 1.0, 8.0) : 0.0;
}

} // namespace TC
