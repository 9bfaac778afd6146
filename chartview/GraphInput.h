#pragma once

#include <QString>

class QMouseEvent;

namespace TC {

class CRealtimeGraphWidget;
class GraphPointer;
class RegionLines;
class TradeTip;
struct GraphSubject;

/// What the mouse does on a graph: it goes to the drawing tools first, then to the pointer's gestures, and tells the view.
/// A host may take the graph away when it hears of an event.
class GraphInput {
public:
    struct Parts {
        const GraphSubject &subject;
        GraphPointer &pointer;
        RegionLines &regionLines;
        TradeTip &tip;
    };

    GraphInput(CRealtimeGraphWidget &graph, const Parts &parts) : mGraph(graph), mParts(parts) {}

    void press(QMouseEvent &event);
    void move(QMouseEvent &event);
    /// False when the graph has gone.
    bool release(QMouseEvent &event);
    void doubleClick(const QMouseEvent &event);
    void enter();
    /// Ends whatever the mouse has under way. False when the graph has gone.
    bool leave();
    /// A tip is due: looks for the trades under the mouse.
    void searchTrades();

private:
    void growGesture(const QMouseEvent &event);
    /// Takes the cross line to a column; switched off, it is told to be at no index. False when the graph has gone by the
    /// time that all have heard of it.
    bool moveCrossLine(int x, bool on);
    void deliverLeftSelection();
    /// Kind of the trade at a point, as hosts are told it; empty when there is none or trades are not shown.
    QString markAt(int x, int y) const;

    CRealtimeGraphWidget &mGraph;
    const Parts mParts;
};

} // namespace TC
