#include "host/drawing/IGraphWidget.h"

#include "host/toolkit/ThemeColor.h"
#include "toolkit/drawing/GraphShape.h"

#include <QColor>
#include <QMouseEvent>
#include <QPainter>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <limits>

namespace TC {
namespace {

constexpr double kReach = 5.0; ///< pixels from a drawing that still hit it
constexpr double kShortest = 3.0; ///< pixels that a drawing of two points spans at least
constexpr double kHandleSize = 6.0; ///< pixels of the squares at the points of the selected drawing
constexpr double kFarthest = 1e6; ///< pixels from the origin that a point may lie
constexpr int kNothing = -1;

QPointF nowhere() {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    return {nan, nan};
}

/// Whether a conversion of the chart, which may count in whole pixels, can take it.
bool isOnScreen(const QPointF &pixel) {
    return std::fabs(pixel.x()) < kFarthest && std::fabs(pixel.y()) < kFarthest;
}

} // namespace

struct IGraphWidget::Private {
    enum class Action { None, Make, MovePoint, MoveAll };

    QPointF toLogical(const QPointF &pixel) const { return mToLogical ? mToLogical(pixel) : nowhere(); }
    QPointF toPixel(const QPointF &point) const { return mToPixel ? mToPixel(point) : nowhere(); }
    QRectF area() const { return QRectF(mRect.left(), mRect.top(), mRect.width() - 1, mRect.height() - 1); }
    QVector<QPointF> pixelsOf(int graph) const;
    QVector<QLineF> outlineOf(int graph) const;
    int pointAt(int graph, const QPointF &pixel) const;
    int graphAt(const QPointF &pixel) const;
    QPointF held(const QPointF &pixel) const;

    bool beginGraph(const QPointF &pixel);
    bool grab(const QPointF &pixel);
    void moveTo(const QPointF &pixel);
    void takeValues();
    bool isTooShort() const;
    void remove(int graph);
    void draw(QPainter &painter, int graph) const;

    Conversion mToLogical;
    Conversion mToPixel;
    QRect mRect;
    EVmGraphType mTool = EVmGraphType::None;
    QString mColor; ///< of the next drawings; empty is the theme's
    QVector<GraphShape> mGraphs;
    int mSelected = kNothing;

    // While the selected drawing is made or moved, its pixels lead and its values follow.
    Action mAction = Action::None;
    int mPoint = 0; ///< the point that moves
    bool mMoved = false; ///< the pixels have left what the values say
    QPointF mGrabbed; ///< where the mouse was pressed
    QVector<QPointF> mBefore; ///< pixels at that time
    QVector<QPointF> mPixels;
};

QVector<QPointF> IGraphWidget::Private::pixelsOf(int graph) const {
    if (graph == mSelected && mAction != Action::None) {
        return mPixels;
    }
    QVector<QPointF> pixels;
    for (const QPointF &point : mGraphs[graph].mPoints) {
        pixels.append(toPixel(point));
    }
    return pixels;
}

QVector<QLineF> IGraphWidget::Private::outlineOf(int graph) const {
    return GraphShape::outline(mGraphs[graph].mType, pixelsOf(graph), area());
}

/// The point of a drawing that lies at a pixel.
int IGraphWidget::Private::pointAt(int graph, const QPointF &pixel) const {
    const QVector<QPointF> pixels = pixelsOf(graph);
    for (int i = 0; i < pixels.size(); ++i) {
        if (std::hypot(pixels[i].x() - pixel.x(), pixels[i].y() - pixel.y()) <= kReach) {
            return i;
        }
    }
    return kNothing;
}

/// The newest drawing at a pixel.
int IGraphWidget::Private::graphAt(const QPointF &pixel) const {
    for (int i = mGraphs.size() - 1; i >= 0; --i) {
        if (distanceTo(outlineOf(i), pixel) <= kReach) {
            return i;
        }
    }
    return kNothing;
}

/// The pixel of the drawings' rectangle next to one.
QPointF IGraphWidget::Private::held(const QPointF &pixel) const {
    const QRectF rect = area();
    return {std::max(rect.left(), std::min(rect.right(), pixel.x())),
            std::max(rect.top(), std::min(rect.bottom(), pixel.y()))};
}

bool IGraphWidget::Private::beginGraph(const QPointF &pixel) {
    const QPointF point = toLogical(pixel);
    if (!isUsable(point) || mGraphs.size() >= kMostGraphs) {
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

bool IGraphWidget::Private::grab(const QPointF &pixel) {
    mSelected = graphAt(pixel);
    if (mSelected == kNothing) {
        return false;
    }
    mPixels = mBefore = pixelsOf(mSelected);
    mPoint = pointAt(mSelected, pixel);
    mAction = mPoint == kNothing ? Action::MoveAll : Action::MovePoint;
    mMoved = false;
    mGrabbed = pixel;
    return true;
}

void IGraphWidget::Private::moveTo(const QPointF &pixel) {
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
void IGraphWidget::Private::takeValues() {
    QVector<QPointF> points = mGraphs[mSelected].mPoints;
    for (int i = 0; i < points.size(); ++i) {
        if (mAction == Action::MoveAll || i == mPoint) {
            points[i] = isOnScreen(mPixels[i]) ? toLogical(mPixels[i]) : nowhere();
        }
    }
    if (std::all_of(points.cbegin(), points.cend(), isUsable)) {
        mGraphs[mSelected].mPoints = points;
    }
}

bool IGraphWidget::Private::isTooShort() const {
    const QVector<QPointF> &points = mGraphs[mSelected].mPoints;
    const bool single = points.size() == 1;
    return !single && (QLineF(mPixels.first(), mPixels.last()).length() < kShortest || points[0] == points[1]);
}

void IGraphWidget::Private::remove(int graph) {
    mGraphs.remove(graph);
    mSelected = kNothing;
    mAction = Action::None;
}

void IGraphWidget::Private::draw(QPainter &painter, int graph) const {
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

IGraphWidget::IGraphWidget() : mLayer(std::make_unique<Private>()) {}

IGraphWidget::~IGraphWidget() = default;

void IGraphWidget::initConvFunc(Conversion toLogical, Conversion toPixel) {
    mLayer->mToLogical = std::move(toLogical);
    mLayer->mToPixel = std::move(toPixel);
}

void IGraphWidget::setGraphRect(const QRect &rect) {
    mLayer->mRect = rect;
}

void IGraphWidget::recalcAxisByValue() {
    // Pixels are kept of the drawing under way alone; all others are worked out when they are needed.
    if (mLayer->mAction == Private::Action::None) {
        return;
    }
    const QVector<QPointF> &points = mLayer->mGraphs[mLayer->mSelected].mPoints;
    const QPointF moved = mLayer->mPixels.first() - mLayer->mBefore.first();
    for (int i = 0; i < points.size(); ++i) {
        mLayer->mPixels[i] = mLayer->toPixel(points[i]);
        mLayer->mBefore[i] = mLayer->mPixels[i] - moved;
    }
}

void IGraphWidget::recalcValueByAxis() {
    if (mLayer->mAction != Private::Action::None && mLayer->mMoved) {
        mLayer->takeValues();
    }
}

bool IGraphWidget::onMousePress(QMouseEvent *event, QWidget *widget) {
    const QRect &rect = mLayer->mRect;
    if (!event || event->button() != Qt::LeftButton || rect.isEmpty() || !rect.contains(event->pos())) {
        return false;
    }
    onMouseRelease(nullptr); // one whose release was lost
    const int before = mLayer->mSelected;
    const bool tool = mLayer->mTool != EVmGraphType::None;
    const bool taken = tool ? mLayer->beginGraph(event->pos()) : mLayer->grab(event->pos());
    if (widget && (taken || mLayer->mSelected != before)) {
        widget->update();
    }
    return taken;
}

bool IGraphWidget::onMouseMove(QMouseEvent *event, QWidget *widget) {
    if (!event || mLayer->mAction == Private::Action::None) {
        return false;
    }
    mLayer->moveTo(event->pos());
    if (widget) {
        widget->update();
    }
    return true;
}

bool IGraphWidget::onMouseRelease(QMouseEvent *event) {
    if (mLayer->mAction == Private::Action::None) {
        return false;
    }
    if (event) {
        mLayer->moveTo(event->pos());
    }
    const bool made = mLayer->mAction == Private::Action::Make;
    mLayer->mAction = Private::Action::None;
    if (made && mLayer->isTooShort()) {
        mLayer->remove(mLayer->mSelected);
    } else if (made) {
        mLayer->mTool = EVmGraphType::None;
        bson::BSONObj graph = mLayer->mGraphs[mLayer->mSelected].toDocument();
        onGraphFinished(&graph); // last, since the receiver may do anything
    }
    return true;
}

void IGraphWidget::drawGraph(QPainter &painter) {
    if (mLayer->mRect.isEmpty() || mLayer->mGraphs.isEmpty()) {
        return;
    }
    painter.save();
    painter.setClipRect(mLayer->mRect, Qt::IntersectClip);
    for (int i = 0; i < mLayer->mGraphs.size(); ++i) {
        mLayer->draw(painter, i);
    }
    painter.restore();
}

void IGraphWidget::setGraphType(EVmGraphType type) {
    mLayer->mTool = GraphShape::pointCount(type) > 0 ? type : EVmGraphType::None;
}

void IGraphWidget::setCurrGraphColor(const QString &color) {
    if (!GraphShape::isColor(color)) {
        return;
    }
    mLayer->mColor = color;
    if (mLayer->mSelected != kNothing) {
        mLayer->mGraphs[mLayer->mSelected].mColor = color;
    }
}

bool IGraphWidget::deleteCurrGraph() {
    if (mLayer->mSelected == kNothing) {
        return false;
    }
    mLayer->remove(mLayer->mSelected);
    return true;
}

bson::BSONObj IGraphWidget::getParam() const {
    return graphsToDocument(mLayer->mGraphs);
}

void IGraphWidget::setParam(const bson::BSONObj &param) {
    if (graphsFromDocument(param, mLayer->mGraphs)) {
        mLayer->mSelected = kNothing;
        mLayer->mAction = Private::Action::None;
    }
}

} // namespace TC
