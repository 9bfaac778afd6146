#pragma once

#include "host/records/RPCFormulaResult.h"

#include <QPair>
#include <QRect>
#include <QString>
#include <Qt>

class QPainter;
class QPixmap;

namespace TC {

/// The drawing helpers, one per kind of line.
///
/// All of them take the painter; the target rectangle, whose width stands for the axis indices 0 to `last` and
/// whose height stands for the range; the series; the range as (maximum, minimum); the line; the first and the
/// last index to draw; and the last index of the axis. Point `i` lies at column
/// `rect.left() + trunc(rect.width() / last * i)`. A point that is not flagged valid, not finite, unset, or
/// outside the vectors is a gap: nothing is drawn for it and no line crosses it. Indices are held to the series,
/// whatever is passed. A range of no height puts every value in the middle row. Nothing is drawn outside the
/// rectangle. A line on an axis of kind se::eLineHidden is not drawn.
///
/// The colour of a point is its element of RPCFormulaResult::mExtra1, else the line's element of
/// RPCFormulaMetaResult::mLineColors, else the theme's colour for the line.
class CDrawStyle {
public:
    using Range = QPair<double, double>;
    using Series = se::RPCFormulaResultCache;

    CDrawStyle();
    ~CDrawStyle();

    /// Extremes of all lines of a series over `count` points from `first`. True when a value was found, and
    /// only then `max` and `min` change. `validOnly` leaves out points that are not flagged valid; `fromZero`
    /// takes 0 in; `scale` multiplies; `prices` leaves out the lines of stick styles. Lines that are hidden or
    /// have their own axis do not count. The rectangle is not read.
    static bool calcMaxMin(double &max, double &min, int first, int count, Series &series, const QRect &rect,
                           bool validOnly, bool fromZero, float scale, bool prices);
    /// The same for one line, hidden or not.
    static bool calcMaxMin(double &max, double &min, int first, int count, const Series &series, int line,
                           const QRect &rect);

    /// Polyline through the points. With `gradient` the area beneath it is filled with the theme's gradient.
    static void drawSimpleLine(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                               int line, int start, int end, int last, Qt::PenStyle pen, int mode, bool flag1,
                               bool flag2, float width, bool gradient, bool flag3);
    /// A dot at each point.
    static void drawCircleDot(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                              int line, int start, int end, int last, int mode, bool flag1, bool flag2);
    /// A stick from the zero row, or from the bottom of a volume, to each point, coloured by rise and fall:
    /// against zero, or for a volume against the price of the same minute where the second value of the point
    /// says so, else against the point before.
    static void drawColorStick(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                               int line, int start, int end, int last, Qt::PenStyle pen, int mode, bool flag,
                               bool volume, bool lastFlag);
    /// A column of the given share of a minute's width from the bottom to each point; 0.0 is one pixel wide.
    static void drawVolStick(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                             int line, int start, int end, int last, int mode, bool flag1, bool flag2,
                             double widthFactor, bool hollow);
    /// Candles: the line is the close, the three lines after it open, high and low.
    static void drawKLine(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                          int line, int start, int end, int last, int mode, int period, bool flag, float width,
                          int digits);
    /// The text of each point, centred over it.
    static void drawText(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                         int line, int start, int end, int last, int mode);
    /// The texts of the whole line, at fixed places: each at the column of its point, row by the share of the
    /// height (0.0 the top, 1.0 the bottom) that its value is.
    static void drawTextEx(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                           int line, int last, int mode);
    /// A line of full height at each point whose value is not zero.
    static void drawVertLine(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                             int line, int start, int end, int last, Qt::PenStyle pen, int mode);
    /// An image centred beneath each point whose value is not zero.
    static void drawIcon(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                         int line, int start, int end, int last, const QPixmap &image, int mode);
    /// The number of each point (its second value, else its value), centred over it.
    static void drawNumber(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                           int line, int start, int end, int last, int mode, bool flag);
    /// A bar between the value and the second value of each point.
    static void drawStickKline(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                               int line, int start, int end, int last, int mode, bool flag);
    /// A polyline over the points whose value is positive, in the rise colour, and over the others, in the fall
    /// colour.
    static void drawBoolLine(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                             int line, int start, int end, int last, Qt::PenStyle pen, int mode);
    /// Straight segments between consecutive valid points, gaps bridged.
    static void drawSegmentLine(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                                int line, int start, int end, int last, int mode, bool flag);
    /// Columns stacked on those of the lines of the same style before it.
    static void drawStackVolstick(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                                  int line, int start, int end, int last, int mode, bool flag, bool lastFlag);

    /// Columns that a drawing of points `start` to `end` of a line can touch, in pixels of `rect`; null when
    /// the style draws nothing. Styles with text, images or fixed places answer the whole rectangle.
    static QRect touchedRect(const QRect &rect, const Series &series, int line, int start, int end, int last);
};

} // namespace TC
