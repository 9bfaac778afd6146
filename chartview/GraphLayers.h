#pragma once

#include "host/toolkit/ThemeCache.h"

#include <QColor>
#include <QCoreApplication>
#include <QList>
#include <QString>

class QPaintEvent;
class QPainter;
class QWidget;

namespace TC {

class DrawingSpace;
class GraphPointer;
class IGraphWidget;
class RegionLines;
class TradeTip;
struct GraphSubject;

/// What a graph paints, bottom to top: ground, chart, notice, selections, region lines, the user's drawings, tip, the
/// host's enhancement. An invalid view has its ground alone.
class GraphLayers {
    Q_DECLARE_TR_FUNCTIONS(TC::GraphLayers)
public:
    /// What the layers are painted from.
    struct Sources {
        const GraphSubject &subject;
        const GraphPointer &pointer;
        const RegionLines &regionLines;
        const TradeTip &tip;
        const DrawingSpace &space;
        IGraphWidget &drawings;
    };

    explicit GraphLayers(const Sources &sources) : mSources(sources) {}

    /// Paints the region of an event on a graph.
    void paint(const QWidget &graph, const QPaintEvent &event, QPainter &painter);
    /// Whether a formula is a group model is looked up anew at the next paint.
    void forgetFormulas() { mFormulasKnown = false; }

private:
    /// What is taken from the theme.
    struct Look {
        QColor background;
        QColor leftBorder;
        QColor rightBorder;
        static Look ofTheme();
    };

    /// Whether the formulas are a group model without a script model, in a view that does not show it.
    bool isGroupModelHidden();
    void paintGroupModelNotice(QPainter &painter, const QWidget &graph) const;
    void paintSelections(QPainter &painter, const Look &look) const;
    void paintRegionLines(QPainter &painter, int height) const;
    void paintEnhancement(QPainter &painter, const QWidget &graph) const;

    const Sources mSources;
    GZ::ThemeCache<Look> mLook;
    QList<QString> mFormulas; ///< that the flag below belongs to
    bool mFormulasKnown = false;
    bool mGroupModelOnly = false; ///< a group model among them, and no script model
};

} // namespace TC
