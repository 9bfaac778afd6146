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

void MarkStamps::draw(const Key &key, const QPoint &at, const QRect &bounds, const Draw &drawMark) {
    if (mRatio == 0) {
        mPainter.save();
        mPainter.translate(at);
        drawMark(mPainter);
        mPainter.restore();
        return;
    }
    QImage &picture = mPictures[key];
    if (picture.isNull()) {
        picture = QImage(bounds.size() * mRatio, QImage::Format_ARGB32_Premultiplied);
        picture.setDevicePixelRatio(mRatio);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.setFont(mPainter.font());
        painter.setRenderHints(mPainter.renderHints());
        painter.translate(-bounds.topLeft());
        drawMark(painter);
    }
    mPainter.drawImage(at + bounds.topLeft(), picture);
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
