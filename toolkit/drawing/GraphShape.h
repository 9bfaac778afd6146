#pragma once

#include "host/records/BSONObj.h"
#include "host/records/Enumerations.h"

#include <QLineF>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QVector>

namespace TC {

/// One drawing of the user.
struct GraphShape {
    EVmGraphType mType = EVmGraphType::None;
    QVector<QPointF> mPoints; ///< (axis index, value), pointCount of them
    QString mColor; ///< "#rrggbb"; empty is the theme's

    /// The document of a drawing: "type" (the number of EVmGraphType), "color", and the list "points" of objects
    /// with "index" and "value".
    bson::BSONObj toDocument() const;
    /// Reads one. Throws bson::BSONError on a document that is none.
    static GraphShape fromDocument(const bson::BSONObj &document);

    /// Whether a text is a colour as "#rrggbb".
    static bool isColor(const QString &color);
    /// Points that a kind consists of, 0 for a number that is no kind.
    static int pointCount(EVmGraphType type);
    /// What of a drawing with these points lies inside a rectangle, as straight segments; empty when a point is
    /// not finite. Both drawing and hitting go by it.
    static QVector<QLineF> outline(EVmGraphType type, const QVector<QPointF> &pixels, const QRectF &rect);
};

/// Whether a point is finite and no coordinate is unset.
bool isFinitePoint(const QPointF &point);

/// Distance of a point from the nearest of the segments; infinite when there are none.
double distanceTo(const QVector<QLineF> &segments, const QPointF &point);

/// Several drawings as one document, the list "graphs" and "version" 1, and back.
bson::BSONObj graphsToDocument(const QVector<GraphShape> &graphs);
/// False, and nothing changed, when the document was not written by graphsToDocument.
bool graphsFromDocument(const bson::BSONObj &document, QVector<GraphShape> &graphs);

/// A layer has no more drawings than this.
constexpr int kMostGraphs = 2000;

} // namespace TC
