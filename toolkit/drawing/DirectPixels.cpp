#include "host/drawing/DirectPixels.h"

#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QRegion>

#include <algorithm>
#include <cmath>

namespace TC {
namespace {

bool isWhole(double number) {
    return number == std::floor(number);
}

bool isWhole(const QTransform &transform) {
    return transform.type() <= QTransform::TxScale && transform.m11() > 0.0 && transform.m22() > 0.0 &&
           isWhole(transform.m11()) && isWhole(transform.m22()) && isWhole(transform.dx()) &&
           isWhole(transform.dy());
}

bool isPlain(const QPainter &painter) {
    return painter.compositionMode() == QPainter::CompositionMode_SourceOver && painter.opacity() == 1.0 &&
           painter.paintEngine()->systemClip().isEmpty() && isWhole(painter.deviceTransform());
}

/// The device pixels of a clip that is one rectangle; null for any other.
QRect clipOf(const QPainter &painter, const QRect &image) {
    if (!painter.hasClipping()) {
        return image;
    }
    const QRegion clip = painter.clipRegion();
    return clip.rectCount() == 1 ? painter.deviceTransform().mapRect(clip.boundingRect()) & image : QRect();
}

} // namespace

DirectPixels::DirectPixels(const QPainter &painter) {
    if (painter.device()->devType() != QInternal::Image || !isPlain(painter)) {
        return;
    }
    auto *image = static_cast<QImage *>(painter.device());
    const bool known =
        image->format() == QImage::Format_RGB32 || image->format() == QImage::Format_ARGB32_Premultiplied;
    mClip = clipOf(painter, image->rect());
    if (known && !mClip.isEmpty()) {
        mBits = reinterpret_cast<QRgb *>(image->bits());
        mToDevice = painter.deviceTransform();
        mStride = image->bytesPerLine() / static_cast<int>(sizeof(QRgb));
    }
}

void DirectPixels::fill(QPainter &painter, const QRect &rect, const QColor &color) const {
    const QRect device = mBits ? mToDevice.mapRect(rect) : QRect();
    if (!fill(device.left(), device.top(), device.right() + 1, device.bottom() + 1, color.rgba())) {
        painter.fillRect(rect, color);
    }
}

void DirectPixels::fillInside(int left, int top, int right, int bottom, QRgb color) const {
    left = std::max(left, mClip.left());
    top = std::max(top, mClip.top());
    const int width = std::min(right, mClip.right() + 1) - left;
    bottom = std::min(bottom, mClip.bottom() + 1);
    QRgb *row = mBits + std::ptrdiff_t(top) * mStride + left;
    if (width == 1) { // most sticks, on which a loop would be most of the work
        for (int y = top; y < bottom; ++y, row += mStride) {
            *row = color;
        }
        return;
    }
    for (int y = top; y < bottom && width > 0; ++y, row += mStride) {
        std::fill_n(row, width, color);
    }
}

} // namespace TC
