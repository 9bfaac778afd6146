#include "chartdata/MarkStamps.h"

#include "host/toolkit/Text.h"

#include <cmath>

namespace TC {
namespace {

constexpr int kMostPixels = 8; ///< device pixels per pixel that a picture is made for
constexpr int kQuarter = 900; ///< seconds; zones change at its ends

int wholeRatio(const QPainter &painter) {
    const QTransform transform = painter.deviceTransform();
    const double ratio = transform.m11();
    const bool whole = transform.type() <= QTransform::TxScale && ratio == transform.m22() &&
                       ratio == std::floor(ratio) && ratio >= 1.0 && ratio <= kMostPixels;
    return whole ? static_cast<int>(ratio) : 0;
}

} // namespace

MarkStamps::MarkStamps(QPainter &painter) : mPainter(painter), mRatio(wholeRatio(painter)) {}

QImage MarkStamps::blank(const QSize &size) const {
    QImage picture(size * mRatio, QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(mRatio);
    picture.fill(Qt::transparent);
    return picture;
}

void MarkStamps::begin(QPainter &painter, QImage &picture, const QRect &bounds) const {
    painter.begin(&picture);
    painter.setFont(mPainter.font());
    painter.setRenderHints(mPainter.renderHints());
    painter.translate(-bounds.topLeft());
}

/// Leaves out the margins where nothing was drawn, in whole pixels: copying is paid by area.
MarkStamps::Stamp MarkStamps::cutOut(const QImage &picture, const QRect &bounds) const {
    QRect drawn;
    for (int y = 0; y < picture.height(); ++y) {
        const auto *pixels = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
        for (int x = 0; x < picture.width(); ++x) {
            if (pixels[x] != 0) {
                drawn |= QRect(x / mRatio, y / mRatio, 1, 1);
            }
        }
    }
    if (drawn.isEmpty()) {
        return {};
    }
    return {picture.copy(QRect(drawn.topLeft() * mRatio, drawn.size() * mRatio)),
            bounds.topLeft() + drawn.topLeft()};
}

QTime ClockTimes::operator()(int seconds) {
    const int quarter = seconds / kQuarter - (seconds % kQuarter < 0 ? 1 : 0);
    const auto found = mQuarters.find(quarter);
    const QTime start = found != mQuarters.end()
                            ? found->second
                            : mQuarters[quarter] = GZ::secondToQDateTime(qint64(quarter) * kQuarter).time();
    return start.addSecs(static_cast<int>(seconds - qint64(quarter) * kQuarter));
}

} // namespace TC
