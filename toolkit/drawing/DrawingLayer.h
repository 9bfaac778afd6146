#pragma once

#include "toolkit/drawing/GraphShape.h"

#include <QRect>
#include <boost/function.hpp>

class QPainter;

namespace TC {

/// The drawings of the user over a graph, and the one that the mouse works on.
///
/// Invariant: a drawing keeps its points as (axis index, value); pixels are worked out when they are needed. While the
/// selected one is made or moved its pixels lead, and its values follow where the chart has a value for each.
class DrawingLayer {
public:
    using Conversion = boost::function<QPointF(const QPointF &)>;

    /// Pixel to (index, value), and back.
    void setConversions(Conversion toLogical, Conversion toPixel);
    /// The rectangle, in pixels, that drawings are clipped to.
    void setRect(const QRect &rect) { mRect = rect; }
    const QRect &rect() const { return mRect; }
    /// The tool of the next press; EVmGraphType::None is no tool.
    void setTool(EVmGraphType type) { mTool = type; }
    /// Colour of the selected drawing and of the next ones, "#rrggbb".
    void setColor(const QString &color);

    /// Index of the selected drawing, -1 for none.
    int selected() const { return mSelected; }
    /// Whether a drawing is made or moved.
    bool isBusy() const { return mAction != Action::None; }
    /// Makes a drawing when there is a tool, else grabs the one at a pixel; false when there is none.
    bool press(const QPointF &pixel);
    void moveTo(const QPointF &pixel);
    /// Ends what is under way. The document of a drawing that was made and is long enough goes to `made`, and true is
    /// answered.
    bool release(bson::BSONObj &made);
    /// Deletes the selected drawing; false when there is none.
    bool removeSelected();

    /// Pixels of the drawing under way from its values, and its values from its pixels.
    void recalcPixels();
    void recalcValues();

    void draw(QPainter &painter) const;

    const QVector<GraphShape> &graphs() const { return mGraphs; }
    /// Replaces all drawings by those of a document; one that is none changes nothing.
    void setGraphs(const bson::BSONObj &document);

private:
    enum class Action { None, Make, MovePoint, MoveAll };

    QPointF toLogical(const QPointF &pixel) const;
    QPointF toPixel(const QPointF &point) const;
    QRectF area() const { return QRectF(mRect.left(), mRect.top(), mRect.width() - 1, mRect.height() - 1); }
    QVector<QPointF> pixelsOf(int graph) const;
    QVector<QLineF> outlineOf(int graph) const;
    int pointAt(int graph, const QPointF &pixel) const;
    int graphAt(const QPointF &pixel) const;
    QPointF held(const QPointF &pixel) const;
    bool beginGraph(const QPointF &pixel);
    bool grab(const QPointF &pixel);
    void takeValues();
    bool isTooShort() const;
    void remove(int graph);
    void drawOne(QPainter &painter, int graph) const;

    Conversion mToLogical;
    Conversion mToPixel;
    QRect mRect;
    EVmGraphType mTool = EVmGraphType::None;
    QString mColor; ///< of the next drawings; empty is the theme's
    QVector<GraphShape> mGraphs;
    int mSelected = -1;

    Action mAction = Action::None;
    int mPoint = 0; ///< the point that moves
    bool mMoved = false; ///< the pixels have left what the values say
    QPointF mGrabbed; ///< where the mouse was pressed
    QVector<QPointF> mBefore; ///< pixels at that time
    QVector<QPointF> mPixels;
};

} // namespace TC
