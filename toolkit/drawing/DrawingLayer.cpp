#include "toolkit/drawing/DrawingLayer.h"

#include "host/toolkit/ThemeColor.h"

#include <QColor>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <limits>

namespace TC {
namespace {

constexpr double kReach = 5.0; ///< pixels from a drawing that still hit it
constexpr double kShortest = 3.0; ///< pixels that a drawing of two points spans at least
constexpr double kHandleSize = 6.0; ///< pixels of the squares at the points of the selected drawing
constexpr double kFarthest = 1e6; ///< pixels from the origin that a point may lie
constexpr int kNoIndex = -1;

QPointF nowhere() {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    return {nan, nan};
}

/// Whether a conversion of the chart, which may count in whole pixels, can take it.
bool isOnScreen(const QPointF &pixel) {
    return std::fabs(pixel.x()) < kFarthest && std::fabs(pixel.y()) < kFarthest;
}

} // namespace

void DrawingLayer::setConversions(Conversion toLogical, Conversion toPixel) {
    mToLogical = std::move(toLogical);
    mToPixel = std::move(toPixel);
}

QPointF DrawingLayer::toLogical(const QPointF &pixel) const {
    return mToLogical ? mToLogical(pixel) : nowhere();
}

QPointF DrawingLayer::toPixel(const QPointF &point) const {
    return mToPixel ? mToPixel(point) : nowhere();
}

void DrawingLayer::setColor(const QString &color) {
    mColor = color;
    if (mSelected != kNoIndex) {
        mGraphs[mSelected].mColor = color;
    }
}

bool DrawingLayer::press(const QPointF &pixel) {
    return mTool != EVmGraphType::None ? beginGraph(pixel) : grab(pixel);
}

bool DrawingLayer::release(bson::BSONObj &made) {
    const bool isNew = mAction == Action::Make;
    mAction = Action::None;
    if (!isNew) {
        return false;
    }
    if (isTooShort()) {
        remove(mSelected);
        return false;
    }
    mTool = EVmGraphType::None;
    made = mGraphs[mSelected].toDocument();
    return true;
}

bool DrawingLayer::removeSelected() {
    if (mSelected == kNoIndex) {
        return false;
    }
    remove(mSelected);
    return true;
}

void DrawingLayer::recalcPixels() {
    if (!isBusy()) {
        return;
    }
    const QVector<QPointF> &points = mGraphs[mSelected].mPoints;
    const QPointF moved = mPixels.first() - mBefore.first();
    for (int i = 0; i < points.size(); ++i) {
        mPixels[i] = toPixel(points[i]);
        mBefore[i] = mPixels[i] - moved;
    }
}

void DrawingLayer::recalcValues() {
    if (isBusy() && mMoved) {
        takeValues();
    }
}

void DrawingLayer::setGraphs(const bson::BSONObj &document) {
    if (graphsFromDocument(document, mGraphs)) {
        mSelected = kNoIndex;
        mAction = Action::None;
    }
}

void DrawingLayer::draw(QPainter &painter) const {
    if (mRect.isEmpty() || mGraphs.isEmpty()) {
        return;
    }
    painter.save();
    painter.setClipRect(mRect, Qt::IntersectClip);
    for (int i = 0; i < mGraphs.size(); ++i) {
        drawOne(painter, i);
    }
    painter.restore();
}

QVector<QPointF> DrawingLayer::pixelsOf(int graph) const {
    if (graph == mSelected && mAction != Action::None) {
        return mPixels;
    }
    QVector<QPointF> pixels;
    for (const QPointF &point : mGraphs[graph].mPoints) {
        pixels.append(toPixel(point));
    }
    return pixels;
}

QVector<QLineF> DrawingLayer::outlineOf(int graph) const {
    return GraphShape::outline(mGraphs[graph].mType, pixelsOf(graph), area());
}

/// The point of a drawing that lies at a pixel.
int DrawingLayer::pointAt(int graph, const QPointF &pixel) const {
    const QVector<QPointF> pixels = pixelsOf(graph);
    for (int i = 0; i < pixels.size(); ++i) {
        if (std::hypot(pixels[i].x() - pixel.x(), pixels[i].y() - pixel.y()) <= kReach) {
            return i;
        }
    }
    return kNoIndex;
}

/// The newest drawing at a pixel.
int DrawingLayer::graphAt(const QPointF &pixel) const {
    for (int i = mGraphs.size() - 1; i >= 0; --i) {
        if (distanceTo(outlineOf(i), pixel) <= kReach) {
            return i;
        }
    }
    return kNoIndex;
}

/// The pixel of the drawings' rectangle next to one.
QPointF DrawingLayer::held(const QPointF &pixel) const {
    const QRectF rect = area();
    return {std::max(rect.left(), std::min(rect.right(), pixel.x())),
            std::max(rect.top(), std::min(rect.bottom(), pixel.y()))};
}

bool DrawingLayer::beginGraph(const QPointF &pixel) {
    const QPointF point = toLogical(pixel);
    if (!isFinitePoint(point) || mGraphs.size() >= kMostGraphs) {
        return false;
    }
    const int count = GraphShape::pointCount(mTool);
    mGraphs.append({mTool, QVector<QPointF>(count, point), mColor});
    mSelected = mGraphs.size() - 1;
    mAction = Action::Make;
    mPoint = count - 1;
    mMoved = false;
    mGrabbed = pixel;
    mPixels = mBefore = QVector<QPointF>(count, pixel);
    return true;
}

bool DrawingLayer::grab(const QPointF &pixel) {
    mSelected = graphAt(pixel);
    if (mSelected == kNoIndex) {
        return false;
    }
    mPixels = mBefore = pixelsOf(mSelected);
    mPoint = pointAt(mSelected, pixel);
    mAction = mPoint == kNoIndex ? Action::MoveAll : Action::MovePoint;
    mMoved = false;
    mGrabbed = pixel;
    return true;
}

void DrawingLayer::moveTo(const QPointF &pixel) {
    const QPointF place = held(pixel);
    mMoved = mMoved || place != mGrabbed;
    if (!mMoved) {
        return;
    }
    if (mAction == Action::MoveAll) {
        for (int i = 0; i < mPixels.size(); ++i) {
            mPixels[i] = mBefore[i] + place - mGrabbed;
        }
    } else {
        mPixels[mPoint] = place;
    }
    takeValues();
}

/// Values of the drawing under way from its pixels. Where the chart has no value for one, all stay as they are.
void DrawingLayer::takeValues() {
    QVector<QPointF> points = mGraphs[mSelected].mPoints;
    for (int i = 0; i < points.size(); ++i) {
        if (mAction == Action::MoveAll || i == mPoint) {
            points[i] = isOnScreen(mPixels[i]) ? toLogical(mPixels[i]) : nowhere();
        }
    }
    if (std::all_of(points.cbegin(), points.cend(), isFinitePoint)) {
        mGraphs[mSelected].mPoints = points;
    }
}

bool DrawingLayer::isTooShort() const {
    const QVector<QPointF> &points = mGraphs[mSelected].mPoints;
    const bool single = points.size() == 1;
    return !single && (QLineF(mPixels.first(), mPixels.last()).length() < kShortest || points[0] == points[1]);
}

void DrawingLayer::remove(int graph) {
    mGraphs.remove(graph);
    mSelected = kNoIndex;
    mAction = Action::None;
}

void DrawingLayer::drawOne(QPainter &painter, int graph) const {
    const QString own = mGraphs[graph].mColor;
    const QColor color = own.isEmpty() ? GZ::themeColor("ic_clr_graph_drawing") : QColor(own);
    painter.setPen(QPen(color, 1.0));
    for (const QLineF &segment : outlineOf(graph)) {
        const bool slanted = segment.dx() != 0.0 && segment.dy() != 0.0;
        painter.setRenderHint(QPainter::Antialiasing, slanted);
        painter.drawLine(segment);
    }
    if (graph != mSelected) {
        return;
    }
    const QRectF rect = area();
    for (const QPointF &pixel : pixelsOf(graph)) {
        if (rect.contains(pixel)) {
            painter.fillRect(
                QRectF(pixel.x() - kHandleSize / 2, pixel.y() - kHandleSize / 2, kHandleSize, kHandleSize),
                color);
        }
    }
}

} // namespace TC
