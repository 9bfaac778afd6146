#include "toolkit/drawing/ChartCanvas.h"

#include <QPen>

namespace TC {
namespace {

constexpr int kFarthestPixel = 32767;

/// The device grid of a painter; one that turns or shears has none, and its own coordinates stand for it.
DeviceGrid gridOf(const QPainter &painter) {
    const QTransform &transform = painter.deviceTransform();
    DeviceGrid grid;
    if (transform.type() <= QTransform::TxScale && transform.m11() > 0.0 && transform.m22() > 0.0) {
        grid = {transform.m11(), transform.m22(), transform.dx(), transform.dy()};
    }
    return grid;
}

/// Edge of a rectangle in device pixels, held to what can be painted at all.
int edge(int device) {
    return std::clamp(device, -kFarthestPixel, kFarthestPixel);
}

} // namespace

ChartCanvas::ChartCanvas(QPainter *painter, const QRect &rect)
    : mPainter(painter && painter->isActive() && !rect.isEmpty() ? painter : nullptr), mRect(rect) {
    if (!mPainter) {
        return;
    }
    mGrid = gridOf(*mPainter);
    mLeft = edge(mGrid.deviceX(mRect.left()));
    mRight = edge(mGrid.deviceX(mRect.left() + double(mRect.width())));
    mTop = edge(mGrid.deviceY(mRect.top()));
    mBottom = edge(mGrid.deviceY(mRect.top() + double(mRect.height())));
    mRowPixels = std::max(nearestPixel(std::min(mGrid.scaleY, 64.0)), 1);
    mAntialiased = mPainter->testRenderHint(QPainter::Antialiasing);
    if (mAntialiased) {
        mPainter->setRenderHint(QPainter::Antialiasing, false);
    }
}

ChartCanvas::~ChartCanvas() {
    if (mAntialiased) {
        mPainter->setRenderHint(QPainter::Antialiasing, true);
    }
}

/// Fills device pixels, the right and lower edges not included, inside the rectangle.
void ChartCanvas::fillDevice(int left, int top, int right, int bottom, QRgb color) {
    left = std::max(left, mLeft);
    top = std::max(top, mTop);
    right = std::min(right, mRight);
    bottom = std::min(bottom, mBottom);
    if (right <= left || bottom <= top || mPixels.fill(left, top, right, bottom, color)) {
        return;
    }
    PixelPart::clip(*mPainter);
    const QPointF topLeft = mGrid.coordinate(QPointF(left, top));
    const QPointF bottomRight = mGrid.coordinate(QPointF(right, bottom));
    mPainter->fillRect(QRectF(topLeft, bottomRight), QColor::fromRgba(color));
}

void ChartCanvas::fill(int left, int width, int begin, int end, QRgb color) {
    fillDevice(mGrid.deviceX(left), begin, mGrid.deviceX(double(left) + width), end, color);
}

void ChartCanvas::fillDisc(const QPoint &corner, const QVarLengthArray<DiscRow, 32> &rows, QRgb color) {
    int begin = 0; // of rows of the same width, which are filled at once
    for (int row = 0; row < rows.size(); ++row) {
        if (row + 1 == rows.size() || rows[row + 1].first != rows[begin].first) {
            fillDevice(corner.x() + rows[begin].first, corner.y() + begin, corner.x() + rows[begin].end,
                       corner.y() + row + 1, color);
            begin = row + 1;
        }
    }
}

void ChartCanvas::stroke(const QPoint *points, int count, int width, QRgb color) {
    if (count == 1) {
        const QPoint &at = points[0];
        fillDevice(at.x(), at.y(), at.x() + width, at.y() + width, color);
        return;
    }
    if (mPixels.polyline(points, count, width, color)) {
        return;
    }
    // Separate lines, since the pixels of a polyline depend on where it begins.
    Strokes lines(std::max(count - 1, 0));
    for (int i = 0; i < lines.size(); ++i) {
        lines[i].setPoints(points[i], points[i + 1]);
    }
    strokes(lines, width, color);
}

/// One-pixel lines are many times faster than thick ones, so a thick stroke is drawn as several: one for each pixel
/// of a square brush, which makes rising and falling parts equally thick.
void ChartCanvas::strokes(const Strokes &lines, int width, QRgb color) {
    if (mPixels.strokes(lines.constData(), lines.size(), width, color)) {
        return;
    }
    PixelPart::clip(*mPainter);
    mPainter->setPen(QPen(QColor::fromRgba(color), 0));
    for (int down = 0; down < width; ++down) {
        for (int right = 0; right < width; ++right) {
            drawMoved(lines, right, down);
        }
    }
}

/// Draws lines moved by whole device pixels.
void ChartCanvas::drawMoved(const Strokes &lines, int right, int down) {
    const QPointF by(right, down);
    Strokes placed(lines.size());
    for (int i = 0; i < lines.size(); ++i) {
        placed[i].setPoints(mGrid.coordinate(lines[i].p1() + by), mGrid.coordinate(lines[i].p2() + by));
    }
    mPainter->drawLines(placed.constData(), placed.size());
}

ClipScope::ClipScope(QPainter *painter, const QRect &rect, bool needed) : mPainter(needed ? painter : nullptr) {
    if (mPainter) {
        PixelPart::clip(*mPainter);
        mPainter->save();
        mPainter->setClipRect(rect, mPainter->hasClipping() ? Qt::IntersectClip : Qt::ReplaceClip);
    }
}

ClipScope::~ClipScope() {
    if (mPainter) {
        mPainter->restore();
    }
}

} // namespace TC
