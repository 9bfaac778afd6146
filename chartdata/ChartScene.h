#pragma once

#include "chartdata/ChartLook.h"
#include "host/drawing/CDrawStyle.h"
#include "host/records/CFormulaKey.h"
#include "host/records/RPCFormulaResult.h"

#include <QRect>
#include <QRegion>
#include <QSize>
#include <QVector>

#include <boost/container/small_vector.hpp>

#include <memory>
#include <vector>

class QPainter;

/// \file
/// The one description of a drawing. What a chart is drawn from stands in a scene and nowhere else; that two scenes give
/// the same price band is told by the same members. A new member does not compile before both have it.

namespace TC {

/// One line of a series.
struct SceneLine {
    int line = 0;
    int style = 0; ///< of host/drawing/DrawStyles.h
    CDrawStyle::Range range;
    bool gradient = false; ///< the area beneath a solid line is filled
    bool volume = false; ///< coloured sticks are those of a volume
    int digits = 0; ///< decimals by which the ends of a candle differ
};

/// Of a series, kept in place: the newest points are described anew with every tick.
constexpr std::size_t kFewLines = 3;

/// The lines of one series from one index to another.
struct SceneSeries {
    CFormulaKey key;
    int order = 0; ///< among the series of the pane that are shown
    const se::RPCFormulaResultCache *series = nullptr; ///< of the pane, or the following
    std::shared_ptr<const se::RPCFormulaResultCache> filled; ///< a copy without gaps, where one is drawn
    bool inVolumeBand = false;
    QRect target;
    int start = 0;
    int end = 0;
    int last = 0; ///< index of the axis
    boost::container::small_vector<SceneLine, kFewLines> lines;
};
using SceneLines = std::vector<SceneSeries>; ///< in the order of drawing
constexpr int kEverySeries = -1; ///< in place of an order

/// A whole chart.
struct ChartScene {
    QSize pane;
    double ratio = 1.0; ///< device pixels per pixel of the pane
    ChartLook look;
    int theme = -1; ///< generation of the theme that the look is of
    QVector<int> columns; ///< of the grid
    QVector<int> rows;
    bool hasVolumeBand = false; ///< that can be drawn by itself
    int end = -1; ///< last index; below 0 there are no lines
    SceneLines lines;
};

/// Tells price bands apart: 64 bits that, for all practical purposes, differ whenever what they are drawn from does. A
/// minute's volume, or a volume that outgrows its range, leaves that band as it is. 0 without a volume band.
quint64 priceBandDigest(const ChartScene &scene);

/// Whether a scene is another one with more points or as many, and nothing else: neither has gaps filled, nor a line that
/// is drawn otherwise. Of series that it tells by their addresses; what is in them is not looked at.
bool hasGrown(const ChartScene &from, const ChartScene &to);
/// Whether the lines that are seen in a part of the pane may be drawn over themselves: none lets through what is beneath it.
bool isOpaque(const SceneLines &lines, const QRect &part);
/// Has lines begin at an index.
void beginAt(SceneLines &lines, int start);
/// Has lines begin as far back as to draw all that reaches the column `left`, of which those where they begin now do, or lies
/// right of it. An opaque line that is alone in its band stays as it is.
void reachInto(SceneLines &lines, int left);

/// Frame and grid lines, one pixel of the pane wide at every ratio; all that is seen in a part of the pane.
void drawGrid(QPainter &painter, const ChartScene &scene, const QRect &part);
/// The lines that are seen in a part of the pane.
void drawLines(QPainter &painter, const SceneLines &lines, const ChartLook &look, const QRect &part);

/// What a drawing of lines can touch.
struct Touched {
    QRect columns; ///< in the height of the bands that they lie in
    QRect price; ///< pixels above the volume band
    QRect volume; ///< pixels of that band

    bool isEmpty() const { return columns.isEmpty(); }
    /// Whether all of a rectangle is among the pixels of one band.
    bool holds(const QRect &rect) const { return price.contains(rect) || volume.contains(rect); }
    QRegion pixels(const QRect &pane) const;
    void add(const Touched &other);
    /// By a pixel on the sides, and the rows by one above and beneath, inside a pane.
    void widen(const QRect &pane);
};
Touched touchedBy(const SceneSeries &series);
/// Without the pixels of a band in which there is but one line, an opaque one.
Touched whereLinesMeet(Touched touched, const SceneLines &lines);

} // namespace TC
