#include "host/drawing/IGraphWidget.h"

#include "toolkit/drawing/DrawingLayer.h"

#include <QMouseEvent>
#include <QWidget>

#include <utility>

namespace TC {

IGraphWidget::IGraphWidget() : mLayer(std::make_unique<DrawingLayer>()) {}

IGraphWidget::~IGraphWidget() = default;

void IGraphWidget::initConvFunc(Conversion toLogical, Conversion toPixel) {
    mLayer->setConversions(std::move(toLogical), std::move(toPixel));
}

void IGraphWidget::setGraphRect(const QRect &rect) {
    mLayer->setRect(rect);
}

void IGraphWidget::recalcAxisByValue() {
    mLayer->recalcPixels();
}

void IGraphWidget::recalcValueByAxis() {
    mLayer->recalcValues();
}

bool IGraphWidget::onMousePress(QMouseEvent *event, QWidget *widget) {
    const QRect &rect = mLayer->rect();
    if (!event || event->button() != Qt::LeftButton || rect.isEmpty() || !rect.contains(event->pos())) {
        return false;
    }
    onMouseRelease(nullptr); // one whose release was lost
    const int before = mLayer->selected();
    const bool taken = mLayer->press(event->pos());
    if (widget && (taken || mLayer->selected() != before)) {
        widget->update();
    }
    return taken;
}

bool IGraphWidget::onMouseMove(QMouseEvent *event, QWidget *widget) {
    if (!event || !mLayer->isBusy()) {
        return false;
    }
    mLayer->moveTo(event->pos());
    if (widget) {
        widget->update();
    }
    return true;
}

bool IGraphWidget::onMouseRelease(QMouseEvent *event) {
    if (!mLayer->isBusy()) {
        return false;
    }
    if (event) {
        mLayer->moveTo(event->pos());
    }
    bson::BSONObj graph;
    if (mLayer->release(graph)) {
        onGraphFinished(&graph); // last, since the receiver may do anything
    }
    return true;
}

void IGraphWidget::drawGraph(QPainter &painter) {
    mLayer->draw(painter);
}

void IGraphWidget::setGraphType(EVmGraphType type) {
    mLayer->setTool(GraphShape::pointCount(type) > 0 ? type : EVmGraphType::None);
}

void IGraphWidget::setCurrGraphColor(const QString &color) {
    if (GraphShape::isColor(color)) {
        mLayer->setColor(color);
    }
}

bool IGraphWidget::deleteCurrGraph() {
    return mLayer->removeSelected();
}

bson::BSONObj IGraphWidget::getParam() const {
    return graphsToDocument(mLayer->graphs());
}

void IGraphWidget::setParam(const bson::BSONObj &param) {
    mLayer->setGraphs(param);
}

} // namespace TC
