#include "chartdata/MarkStamps.h"

#include "host/toolkit/VectorPainter.h"

#include <cmath>

namespace TC {
namespace {

constexpr double kMostPixels = 8.0; ///< device pixels per pixel that a picture is made for
constexpr double kFarPixels = 1e6; ///< beyond every device

bool isWhole(double value) {
    return value == std::floor(value);
}

/// Distance in pixels of the device, rounded up.
int pixelsOf(int distance, double ratio) {
    return static_cast<int>(std::ceil(distance * ratio));
}

} // namespace

MarkStamps::MarkStamps(QPainter &painter) : mPainter(painter), mToDevice(painter.deviceTransform()) {
    const double ratio = mToDevice.m11();
    mCopies = !GZ::drawsVectors(painter) && mToDevice.type() <= QTransform::TxScale &&
              ratio == mToDevice.m22() && ratio >= 1.0 && ratio <= kMostPixels && isWhole(ratio * kPhases) &&
              isWhole(mToDevice.dx() * kPhases) && isWhole(mToDevice.dy() * kPhases);
    if (mCopies) {
        mPainter.save();
        mPainter.setWorldTransform(mToDevice.inverted() * mPainter.worldTransform());
    }
}

MarkStamps::~MarkStamps() {
    if (mCopies) {
        mPainter.restore();
    }
}

/// Where a point of the painter lies on the device; false when that is far away.
bool MarkStamps::spotOf(const QPoint &at, Spot &spot) const {
    const double x = at.x() * mToDevice.m11() + mToDevice.dx();
    const double y = at.y() * mToDevice.m22() + mToDevice.dy();
    if (std::abs(x) > kFarPixels || std::abs(y) > kFarPixels) {
        return false;
    }
    spot.pixel = QPoint(static_cast<int>(std::floor(x)), static_cast<int>(std::floor(y)));
    spot.phaseX = static_cast<int>((x - spot.pixel.x()) * kPhases);
    spot.phaseY = static_cast<int>((y - spot.pixel.y()) * kPhases);
    return true;
}

/// Room for a mark at any phase.
QImage MarkStamps::blank(const QRect &bounds) const {
    const double ratio = mToDevice.m11();
    QImage picture(pixelsOf(bounds.width(), ratio) + 2, pixelsOf(bounds.height(), ratio) + 2,
                   QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    return picture;
}

/// Where the pixel of a mark lies in its picture.
QPoint MarkStamps::originIn(const QRect &bounds) const {
    const double ratio = mToDevice.m11();
    return QPoint(pixelsOf(-bounds.left(), ratio), pixelsOf(-bounds.top(), ratio));
}

void MarkStamps::begin(QPainter &painter, QImage &picture, const QRect &bounds, const Spot &spot) const {
    const double ratio = mToDevice.m11();
    const QPointF origin = originIn(bounds) + QPointF(spot.phaseX, spot.phaseY) / kPhases;
    painter.begin(&picture);
    painter.setFont(mPainter.font());
    painter.setRenderHints(mPainter.renderHints());
    painter.setTransform(QTransform(ratio, 0, 0, ratio, origin.x(), origin.y()));
}

/// Leaves out the margins where nothing was drawn: copying is paid by area.
MarkStamps::Stamp MarkStamps::cutOut(const QImage &picture, const QRect &bounds) const {
    QRect drawn;
    for (int y = 0; y < picture.height(); ++y) {
        const auto *pixels = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
        for (int x = 0; x < picture.width(); ++x) {
            if (pixels[x] != 0) {
                drawn |= QRect(x, y, 1, 1);
            }
        }
    }
    if (drawn.isEmpty()) {
        return {};
    }
    return {picture.copy(drawn), drawn.topLeft() - originIn(bounds)};
}

} // namespace TC
