#include "host/drawing/DirectPixels.h"

#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QRegion>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

namespace TC {
namespace {

thread_local const PixelPart *tInnermostPart = nullptr;

bool isWhole(double number) {
    return number == std::floor(number) && std::abs(number) < 1e6;
}

bool isWhole(const QTransform &transform) {
    return transform.type() <= QTransform::TxScale && transform.m11() > 0.0 && transform.m22() > 0.0 &&
           isWhole(transform.m11()) && isWhole(transform.m22()) && isWhole(transform.dx()) &&
           isWhole(transform.dy());
}

/// Whether device pixels are exact numbers in the coordinates of a painter: at other scales its lines lie as those are
/// rounded.
bool isExact(int scale) {
    return (scale & (scale - 1)) == 0;
}

/// The image that a painter draws in: its own, or that of the window it is painting.
QImage *imageOf(const QPainter &painter) {
    const int kind = painter.device()->devType();
    QPaintDevice *drawn = painter.paintEngine()->paintDevice();
    const bool known = (kind == QInternal::Image || kind == QInternal::Widget) && drawn &&
                       drawn->devType() == QInternal::Image;
    return known ? static_cast<QImage *>(drawn) : nullptr;
}

/// The device pixels of a clip that is one rectangle; null for any other.
QRect clipOf(const QPainter &painter, const QRect &image) {
    if (!painter.hasClipping()) {
        return image;
    }
    const QRegion clip = painter.clipRegion();
    return clip.rectCount() == 1 ? painter.deviceTransform().mapRect(clip.boundingRect()) : QRect();
}

/// Where rows of pixels begin, and how far it is from one to the next.
template <class Pixel> struct PixelRows {
    Pixel *first;
    std::ptrdiff_t step;
};

/// Copies rows of `Block` to twice as many pixels: two blocks, one at either end, are a row.
template <int Block> void copyBlocks(PixelRows<QRgb> to, PixelRows<const QRgb> from, int count, int width) {
    QRgb left[Block];
    QRgb right[Block];
    const int second = width - Block;
    for (; count > 0; --count, to.first += to.step, from.first += from.step) {
        std::memcpy(left, from.first, sizeof left);
        std::memcpy(right, from.first + second, sizeof right);
        std::memcpy(to.first, left, sizeof left);
        std::memcpy(to.first + second, right, sizeof right);
    }
}

constexpr int kShortRow = 16;

/// Copies rows. Those of a segment or a column are so short that to call a function for each would be most of the work.
void copyRows(PixelRows<QRgb> to, PixelRows<const QRgb> from, int count, int width) {
    if (width > kShortRow) {
        const std::size_t bytes = sizeof(QRgb) * static_cast<std::size_t>(width);
        for (; count > 0; --count, to.first += to.step, from.first += from.step) {
            std::memcpy(to.first, from.first, bytes);
        }
    } else if (width > 8) {
        copyBlocks<8>(to, from, count, width);
    } else if (width > 4) {
        copyBlocks<4>(to, from, count, width);
    } else if (width > 2) {
        copyBlocks<2>(to, from, count, width);
    } else if (width == 2) {
        copyBlocks<1>(to, from, count, width);
    } else if (width == 1) {
        for (; count > 0; --count, to.first += to.step, from.first += from.step) {
            *to.first = *from.first;
        }
    }
}

/// What a window leaves of a rectangle to the one who paints; null where that is no rectangle.
QRect leftOf(const QRect &rect, const QRegion &window) {
    if (window.isEmpty()) {
        return rect;
    }
    for (const QRect &free : window) {
        if (free.contains(rect)) {
            return rect;
        }
    }
    const QRegion left = window & rect;
    return left.rectCount() == 1 ? left.boundingRect() : QRect();
}

} // namespace

DirectPixels::DirectPixels(const QPainter &painter) {
    if (const PixelPart *part = PixelPart::of(painter)) {
        *this = part->pixels();
    } else if (open(painter)) {
        holdTo(clipOf(painter, mImage), painter);
    }
}

DirectPixels::DirectPixels(const QPainter &painter, const QRect &part) {
    if (open(painter)) {
        holdTo(toDevice(part), painter);
    }
}

/// Finds the pixels, without the clip. False where there are none.
bool DirectPixels::open(const QPainter &painter) {
    QImage *image = imageOf(painter);
    if (!image || !image->isDetached() || painter.compositionMode() != QPainter::CompositionMode_SourceOver ||
        painter.opacity() != 1.0) {
        return false;
    }
    const QTransform &transform = painter.deviceTransform();
    const bool known =
        image->format() == QImage::Format_RGB32 || image->format() == QImage::Format_ARGB32_Premultiplied;
    if (!known || !isWhole(transform)) {
        return false;
    }
    mBits = reinterpret_cast<QRgb *>(image->bits());
    mStride = image->bytesPerLine() / static_cast<int>(sizeof(QRgb));
    mScaleX = static_cast<int>(transform.m11());
    mScaleY = static_cast<int>(transform.m22());
    mShiftX = static_cast<int>(transform.dx());
    mShiftY = static_cast<int>(transform.dy());
    mImage = image->rect();
    return true;
}

/// Sets the clip; without a pixel in it there is nothing to draw by hand.
void DirectPixels::holdTo(const QRect &device, const QPainter &painter) {
    mClip = leftOf(device & mImage, painter.paintEngine()->systemClip());
    if (mClip.isEmpty()) {
        mBits = nullptr;
    }
}

QRect DirectPixels::toDevice(const QRect &rect) const {
    return {rect.left() * mScaleX + mShiftX, rect.top() * mScaleY + mShiftY, rect.width() * mScaleX,
            rect.height() * mScaleY};
}

void DirectPixels::fill(QPainter &painter, const QRect &rect, const QColor &color) const {
    const QRect device = toDevice(rect);
    if (!fill(device.left(), device.top(), device.right() + 1, device.bottom() + 1, color.rgba())) {
        PixelPart::clip(painter);
        painter.fillRect(rect, color);
    }
}

void DirectPixels::fillInside(int left, int top, int right, int bottom, QRgb color) const {
    left = std::max(left, mClip.left());
    top = std::max(top, mClip.top());
    const int width = std::min(right, mClip.right() + 1) - left;
    bottom = std::min(bottom, mClip.bottom() + 1);
    fillRows(left, top, width, bottom - 1, 1, color);
}

/// Every so many rows, the last one included, all inside the clip.
void DirectPixels::fillRows(int left, int top, int width, int bottom, int every, QRgb color) const {
    PixelRows<QRgb> rows{mBits + std::ptrdiff_t(top) * mStride + left, std::ptrdiff_t(mStride) * every};
    const int count = bottom < top ? 0 : (bottom - top) / every + 1;
    if (width <= kShortRow) {
        QRgb pattern[kShortRow];
        std::fill_n(pattern, kShortRow, color);
        return copyRows(rows, {pattern, 0}, count, width);
    }
    for (int i = 0; i < count; ++i, rows.first += rows.step) {
        std::fill_n(rows.first, width, color);
    }
}

bool DirectPixels::fillDots(int column, int height, const QColor &color) const {
    const QRgb ink = color.rgba();
    if (!mBits || qAlpha(ink) != kOpaque) {
        return false;
    }
    const QRect device = toDevice({column, 0, 1, height});
    const int left = std::max(device.left(), mClip.left());
    const int width = std::min(device.right(), mClip.right()) + 1 - left;
    const int bottom = std::min(device.bottom(), mClip.bottom());
    const int period = 2 * mScaleY;
    for (int down = 0; down < mScaleY; ++down) { // of a dot
        const int above = std::max(mClip.top() - device.top() - down, 0);
        const int top = device.top() + down + (above + period - 1) / period * period;
        fillRows(left, top, width, bottom, period, ink);
    }
    return true;
}

bool DirectPixels::strokes(const QLineF *lines, int count, int width, QRgb color) const {
    if (!canStroke(color)) {
        return false;
    }
    const QRectF inside(0, 0, mImage.width() - width, mImage.height() - width);
    const auto isInside = [&inside](const QPointF &point) {
        return point.x() >= 0.0 && point.x() <= inside.right() && point.y() >= 0.0 &&
               point.y() <= inside.bottom();
    };
    if (!std::all_of(lines, lines + count,
                     [&](const QLineF &line) { return isInside(line.p1()) && isInside(line.p2()); })) {
        return false;
    }
    for (const QLineF *line = lines; line != lines + count; ++line) {
        stroke(line->p1().toPoint(), line->p2().toPoint(), width, color);
    }
    return true;
}

bool DirectPixels::polyline(const QPoint *points, int count, int width, QRgb color) const {
    const auto isInside = [right = mImage.width() - width, bottom = mImage.height() - width](const QPoint &at) {
        return at.x() >= 0 && at.x() <= right && at.y() >= 0 && at.y() <= bottom;
    };
    if (!canStroke(color) || !std::all_of(points, points + count, isInside)) {
        return false;
    }
    for (int i = 1; i < count; ++i) {
        stroke(points[i - 1], points[i], width, color);
    }
    return true;
}

bool DirectPixels::canStroke(QRgb color) const {
    return mBits && qAlpha(color) == kOpaque && isExact(mScaleX) && isExact(mScaleY);
}

void DirectPixels::stroke(const QPoint &from, const QPoint &to, int width, QRgb color) const {
    for (int down = 0; down < width; ++down) {
        for (int right = 0; right < width; ++right) {
            const QPoint by(right, down);
            drawLine(from + by, to + by, color);
        }
    }
}

/// One pixel in every step of the longer direction. Places between two pixels are reckoned and rounded as the painter
/// does it, in steps of 1 / 65536.
void DirectPixels::drawLine(const QPoint &from, const QPoint &to, QRgb color) const {
    const bool isSteep = std::abs(to.x() - from.x()) < std::abs(to.y() - from.y());
    int begin = isSteep ? from.y() : from.x();
    int end = isSteep ? to.y() : to.x();
    int cross = isSteep ? from.x() : from.y();
    int crossEnd = isSteep ? to.x() : to.y();
    if (begin > end) {
        std::swap(begin, end);
        std::swap(cross, crossEnd);
    }
    constexpr int kOne = 1 << 16;
    const int step = end > begin ? static_cast<int>(qint64(crossEnd - cross) * kOne / (end - begin)) : 0;
    int place = cross * kOne - (step >> 1) + (step > 0 ? step : step >> 1);
    const int first = std::max(begin, isSteep ? mClip.top() : mClip.left());
    const int last = std::min(end, isSteep ? mClip.bottom() : mClip.right());
    const int lowest = isSteep ? mClip.left() : mClip.top();
    const int highest = isSteep ? mClip.right() : mClip.bottom();
    place += step * (first - begin);
    const std::ptrdiff_t along = isSteep ? mStride : 1;
    const std::ptrdiff_t across = isSteep ? 1 : mStride;
    QRgb *pixel = mBits + first * along;
    const auto isClear = [&](int at) { return (at >> 16) >= lowest && (at >> 16) <= highest; };
    if (first <= last && isClear(place) && isClear(place + step * (last - first))) {
        for (int left = last - first; left >= 0; --left, place += step, pixel += along) {
            pixel[(place >> 16) * across] = color;
        }
        return;
    }
    for (int at = first; at <= last; ++at, place += step, pixel += along) {
        const int row = place >> 16;
        if (row >= lowest && row <= highest) {
            pixel[row * across] = color;
        }
    }
}

bool DirectPixels::copy(const QImage &picture, const QPoint &topLeft) const {
    if (!mBits || picture.format() != QImage::Format_RGB32 || mScaleX != mScaleY ||
        picture.devicePixelRatio() != mScaleX) {
        return false;
    }
    const QPoint corner(topLeft.x() * mScaleX + mShiftX, topLeft.y() * mScaleY + mShiftY);
    const QRect to = QRect(corner, picture.size()) & mClip;
    const int stride = picture.bytesPerLine() / static_cast<int>(sizeof(QRgb));
    const QRgb *from = reinterpret_cast<const QRgb *>(picture.constBits()) +
                       std::ptrdiff_t(to.top() - corner.y()) * stride + (to.left() - corner.x());
    copyRows({mBits + std::ptrdiff_t(to.top()) * mStride + to.left(), mStride}, {from, stride}, to.height(),
             to.width());
    return true;
}

PixelPart::PixelPart(QPainter &painter, const QRect &part, EClip clip)
    : mPainter(painter), mPart(part), mPixels(painter, part), mOuter(tInnermostPart) {
    if (clip == EClip::AtOnce || mPixels.isNull()) {
        clipPainter();
    }
    tInnermostPart = this;
}

PixelPart::~PixelPart() {
    tInnermostPart = mOuter;
}

void PixelPart::clip(QPainter &painter) {
    if (const PixelPart *part = of(painter)) {
        part->clipPainter();
    }
}

void PixelPart::clipPainter() const {
    if (!mIsClipped) {
        mPainter.setClipRect(mPart);
        mIsClipped = true;
    }
}

const PixelPart *PixelPart::of(const QPainter &painter) {
    const PixelPart *part = tInnermostPart;
    while (part && &part->mPainter != &painter) {
        part = part->mOuter;
    }
    return part;
}

} // namespace TC
