#include "toolkit/drawing/GraphShape.h"

#include <QColor>

#include <algorithm>
#include <cmath>
#include <limits>

namespace TC {
namespace {

constexpr double kInfinite = std::numeric_limits<double>::infinity();
constexpr int kVersion = 1;

/// Appends the part of the line through two points that lies inside the rectangle, for parameters between `from`
/// and `to`, where 0 is the first point and 1 the second (method of Liang and Barsky).
void appendClipped(const QPointF &first, const QPointF &second, double from, double to, const QRectF &rect,
                   QVector<QLineF> &segments) {
    const double dx = second.x() - first.x();
    const double dy = second.y() - first.y();
    const double slopes[] = {-dx, dx, -dy, dy};
    const double rooms[] = {first.x() - rect.left(), rect.right() - first.x(), first.y() - rect.top(),
                            rect.bottom() - first.y()};
    for (int side = 0; side < 4; ++side) {
        if (slopes[side] == 0.0) {
            if (rooms[side] < 0.0) {
                return;
            }
        } else if (slopes[side] < 0.0) {
            from = std::max(from, rooms[side] / slopes[side]);
        } else {
            to = std::min(to, rooms[side] / slopes[side]);
        }
    }
    const QPointF start(first.x() + from * dx, first.y() + from * dy);
    const QPointF end(first.x() + to * dx, first.y() + to * dy);
    if (from <= to && isFinitePoint(start) && isFinitePoint(end)) {
        segments.append(QLineF(start, end));
    }
}

double distanceTo(const QLineF &segment, const QPointF &point) {
    const QPointF along = segment.p2() - segment.p1();
    const double square = QPointF::dotProduct(along, along);
    const double share = square > 0.0 ? QPointF::dotProduct(point - segment.p1(), along) / square : 0.0;
    const QPointF foot = segment.p1() + along * std::clamp(share, 0.0, 1.0);
    return std::hypot(point.x() - foot.x(), point.y() - foot.y());
}

/// The elements of a list as a document holds it.
QVector<bson::BSONObj> elements(const bson::BSONObj &list) {
    const int count = list.nFields();
    if (count > kMostGraphs) {
        throw bson::BSONError("too many elements");
    }
    QVector<bson::BSONObj> result;
    for (int i = 0; i < count; ++i) {
        result.append(list.getObject(std::to_string(i)));
    }
    return result;
}

} // namespace

bool isFinitePoint(const QPointF &point) {
    return std::fabs(point.x()) < kUnsetValue && std::fabs(point.y()) < kUnsetValue;
}

double distanceTo(const QVector<QLineF> &segments, const QPointF &point) {
    double nearest = kInfinite;
    for (const QLineF &segment : segments) {
        nearest = std::min(nearest, distanceTo(segment, point));
    }
    return nearest;
}

bool GraphShape::isColor(const QString &color) {
    return color.size() == 7 && color.startsWith(QLatin1Char('#')) && QColor(color).isValid();
}

int GraphShape::pointCount(EVmGraphType type) {
    switch (type) {
    case EVmGraphType::Segment:
    case EVmGraphType::Line:
    case EVmGraphType::Ray:
    case EVmGraphType::Rectangle:
        return 2;
    case EVmGraphType::HorizontalLine:
    case EVmGraphType::VerticalLine:
        return 1;
    case EVmGraphType::None:
        break;
    }
    return 0;
}

QVector<QLineF> GraphShape::outline(EVmGraphType type, const QVector<QPointF> &pixels, const QRectF &rect) {
    QVector<QLineF> segments;
    const bool usable = std::all_of(pixels.cbegin(), pixels.cend(), isFinitePoint);
    if (!usable || rect.isEmpty() || pixels.size() != pointCount(type) || pixels.isEmpty()) {
        return segments;
    }
    const QPointF first = pixels.first();
    const QPointF second = pixels.last();
    switch (type) {
    case EVmGraphType::Segment:
        appendClipped(first, second, 0.0, 1.0, rect, segments);
        break;
    case EVmGraphType::Line:
        if (first != second) {
            appendClipped(first, second, -kInfinite, kInfinite, rect, segments);
        }
        break;
    case EVmGraphType::Ray:
        if (first != second) {
            appendClipped(first, second, 0.0, kInfinite, rect, segments);
        }
        break;
    case EVmGraphType::HorizontalLine:
        appendClipped({rect.left(), first.y()}, {rect.right(), first.y()}, 0.0, 1.0, rect, segments);
        break;
    case EVmGraphType::VerticalLine:
        appendClipped({first.x(), rect.top()}, {first.x(), rect.bottom()}, 0.0, 1.0, rect, segments);
        break;
    case EVmGraphType::Rectangle: {
        const QPointF corners[] = {first, {second.x(), first.y()}, second, {first.x(), second.y()}};
        for (int i = 0; i < 4; ++i) {
            appendClipped(corners[i], corners[(i + 1) % 4], 0.0, 1.0, rect, segments);
        }
        break;
    }
    case EVmGraphType::None:
        break;
    }
    return segments;
}

bson::BSONObj GraphShape::toDocument() const {
    bson::BSONObjBuilder points;
    for (int i = 0; i < mPoints.size(); ++i) {
        bson::BSONObjBuilder point;
        point.append("index", mPoints[i].x()).append("value", mPoints[i].y());
        points.append(std::to_string(i), point.obj());
    }
    bson::BSONObjBuilder graph;
    graph.append("type", static_cast<int>(mType)).append("color", mColor.toStdString());
    graph.appendArray("points", points.obj());
    return graph.obj();
}

GraphShape GraphShape::fromDocument(const bson::BSONObj &document) {
    GraphShape graph;
    const double type = document.getNumber("type");
    for (int known = 1; known <= static_cast<int>(EVmGraphType::Rectangle); ++known) {
        if (type == known) {
            graph.mType = static_cast<EVmGraphType>(known);
        }
    }
    graph.mColor = QString::fromStdString(document.getString("color"));
    for (const bson::BSONObj &point : elements(document.getObject("points"))) {
        graph.mPoints.append(QPointF(point.getNumber("index"), point.getNumber("value")));
    }
    const bool usable = std::all_of(graph.mPoints.cbegin(), graph.mPoints.cend(), isFinitePoint);
    if (graph.mPoints.isEmpty() || graph.mPoints.size() != pointCount(graph.mType) || !usable ||
        !(graph.mColor.isEmpty() || isColor(graph.mColor))) {
        throw bson::BSONError("not a drawing");
    }
    return graph;
}

bson::BSONObj graphsToDocument(const QVector<GraphShape> &graphs) {
    bson::BSONObjBuilder list;
    for (int i = 0; i < graphs.size(); ++i) {
        list.append(std::to_string(i), graphs[i].toDocument());
    }
    bson::BSONObjBuilder document;
    document.append("version", kVersion).appendArray("graphs", list.obj());
    return document.obj();
}

bool graphsFromDocument(const bson::BSONObj &document, QVector<GraphShape> &graphs) {
    try {
        if (document.getNumber("version") != kVersion) {
            return false;
        }
        QVector<GraphShape> read;
        for (const bson::BSONObj &graph : elements(document.getObject("graphs"))) {
            read.append(GraphShape::fromDocument(graph));
        }
        graphs = read;
        return true;
    } catch (const bson::BSONError &) {
        return false;
    }
}

} // namespace TC
