#pragma once

#include <QPointF>

class QWidget;

namespace TC {

struct GraphSubject;

/// Where the user's drawings stand: (axis index, value) to a pixel of the graph, and back. On the trading client the
/// index of a drawing is a time, in milliseconds since the epoch. Numbers of any size, and none, give a pixel.
class DrawingSpace {
public:
    DrawingSpace(const QWidget &graph, const GraphSubject &subject) : mGraph(graph), mSubject(subject) {}

    QPointF toLogical(const QPointF &pixel) const;
    QPointF toPixel(const QPointF &logical) const;

private:
    const QWidget &mGraph;
    const GraphSubject &mSubject;
};

} // namespace TC
