#pragma once

#include "host/Export.h"
#include "host/drawing/IGraphController.h"
#include "host/records/BSONObj.h"
#include "host/records/Enumerations.h"

#include <QPointF>
#include <QRect>
#include <QString>
#include <boost/function.hpp>

#include <memory>

class QMouseEvent;
class QPainter;
class QWidget;

namespace TC {

class DrawingLayer;

/// The user's drawing layer of a graph: lines, rays, rectangles. A drawing keeps its points as (axis index,
/// value), and follows the chart through the conversions of initConvFunc.
class TIMESHARE_EXPORT IGraphWidget : public IGraphController {
public:
    using Conversion = boost::function<QPointF(const QPointF &)>;

    IGraphWidget();
    ~IGraphWidget() override;
    IGraphWidget(const IGraphWidget &) = delete;
    IGraphWidget &operator=(const IGraphWidget &) = delete;

    /// Pixel to (index, value), and back.
    void initConvFunc(Conversion toLogical, Conversion toPixel);
    /// The rectangle, in pixels, that drawings are clipped to.
    void setGraphRect(const QRect &rect);
    /// Pixels of all drawings from their values, after the scale changed; values from pixels, after a drag.
    void recalcAxisByValue();
    void recalcValueByAxis();

    /// Offer an event to the layer; true when a tool took it. A left press inside the rectangle makes a drawing
    /// when a tool is chosen, and else grabs the drawing that it hits; a press that hits none lets go of the
    /// selected one and is not taken.
    bool onMousePress(QMouseEvent *event, QWidget *widget);
    bool onMouseMove(QMouseEvent *event, QWidget *widget);
    /// Ends what is under way; null ends it without a position.
    bool onMouseRelease(QMouseEvent *event);

    void drawGraph(QPainter &painter);
    /// The tool of the next press, until a drawing is finished; EVmGraphType::None is no tool.
    void setGraphType(EVmGraphType type);
    /// Colour of the selected drawing and of the next ones, as "#rrggbb". An invalid one changes nothing.
    void setCurrGraphColor(const QString &color);
    /// Deletes the selected drawing; false when there is none.
    bool deleteCurrGraph();

    /// All drawings as a document, and back: "version" 1 and the list "graphs" of objects with "type" (the
    /// number of EVmGraphType), "color" ("#rrggbb", empty for the theme's) and the list "points" of objects with
    /// "index" and "value". A document that is not one of this layer leaves what is there.
    bson::BSONObj getParam() const;
    void setParam(const bson::BSONObj &param);

private:
    std::unique_ptr<DrawingLayer> mLayer;
};

} // namespace TC
