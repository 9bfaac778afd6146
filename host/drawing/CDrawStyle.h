#pragma once

#include "host/Export.h"
#include "host/records/CFormulaKey.h"
#include "host/records/CInstrumentDetail.h"
#include "host/records/RPCFormulaResult.h"
#include "host/services/ServiceContext.h"

#include <QList>
#include <QPair>
#include <QRect>
#include <QString>
#include <Qt>

class QPainter;
class QPixmap;

namespace TC {

class CArrowColorSimpleText;

/// The drawing helpers, one per kind of line.
///
/// All of them take the painter; the target rectangle, whose width stands for the axis indices 0 to `last` and
/// whose height stands for the range; the series; the range as (maximum, minimum); the line; the first and the
/// last index to draw; and the last index of the axis. Point `i` lies at column
/// `rect.left() + trunc(rect.width() / last * i)`, held to the right edge; the maximum lies on the first row of
/// the rectangle and the minimum on its last. A point that is not flagged valid, not finite, unset, or outside
/// the vectors is a gap: nothing is drawn for it and no line crosses it. Indices are held to the series and to
/// the axis, whatever is passed. A range of no height puts every value in the middle row; over a range that is
/// unset or not finite, nothing is drawn but what has no place on it. Nothing is drawn outside the rectangle. A
/// line on an axis of kind se::eLineHidden is not drawn. A painter that is null or not active is left alone.
///
/// The colour of a point is its element of RPCFormulaResult::mExtra1, unless se::kLineFixedColor is set, else the
/// line's element of RPCFormulaMetaResult::mLineColors, else that of the theme for the style.
///
/// Everything lies on whole device pixels, without antialiasing, at any device pixel ratio. Points `a` to `b` and
/// then `b` to `c` give the same pixels as `a` to `c` at once. Any thread. The pen and the font of the painter are
/// not kept. A painter with a rectangular clip draws lines twice as fast. Arguments that a style does not mention
/// have no effect.
class TIMESHARE_EXPORT CDrawStyle {
public:
    using Range = QPair<double, double>;
    using Series = se::RPCFormulaResultCache;

    CDrawStyle();
    ~CDrawStyle();

    /// Extremes of all lines of a series over `count` points from `first`. True when a value was found, and
    /// only then `max` and `min` change. `validOnly` leaves out points that are not flagged valid; `fromZero`
    /// takes 0 in; `scale` multiplies; `prices` leaves out the lines of stick styles. Lines that are hidden or
    /// have their own axis do not count, nor do those whose values are no places on the axis (lines of full
    /// height, texts at fixed places). A bar counts with both ends, a stacked column with what it stands on, an
    /// image at 0 not at all. The rectangle is not read.
    static bool calcMaxMin(double &max, double &min, int first, int count, Series &series, const QRect &rect,
                           bool validOnly, bool fromZero, float scale, bool prices);
    /// The same for the valid points of one line, hidden or not, of any style.
    static bool calcMaxMin(double &max, double &min, int first, int count, const Series &series, int line,
                           const QRect &rect);

    /// Polyline through the points, `width` pixels thick; the part that leads to a point has its colour, and a
    /// point without one before or after it is a dot of that thickness. With `gradient` the area beneath it is filled with the theme's
    /// gradient, which runs from the upper edge of the rectangle to the lower one.
    static void drawSimpleLine(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                               int line, int start, int end, int last, Qt::PenStyle pen, int mode, bool flag1,
                               bool flag2, float width, bool gradient, bool flag3);
    /// A dot at each point inside the rectangle.
    static void drawCircleDot(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                              int line, int start, int end, int last, int mode, bool flag1, bool flag2);
    /// A stick from the zero row, or from the bottom of a volume, to each point that is not 0, coloured by rise
    /// and fall: that of the value against 0, or for a volume that of the second value, which stands for the
    /// change of the price in that minute; a volume without one has a colour of its own.
    static void drawColorStick(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                               int line, int start, int end, int last, Qt::PenStyle pen, int mode, bool flag,
                               bool volume, bool lastFlag);
    /// A column of the given share of a minute's width from the bottom to each point that is not 0; 0.0 is one
    /// pixel wide. `hollow` draws only the outline of columns of more than two pixels.
    static void drawVolStick(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                             int line, int start, int end, int last, int mode, bool flag1, bool flag2,
                             double widthFactor, bool hollow);
    /// Candles: the line is the close, the three lines after it open, high and low. A missing open price is the
    /// close before, a missing high or low that of open and close. A rise is hollow. Open and close that agree in
    /// `digits` decimals are neither rise nor fall. `width` is that of the wick, in pixels.
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
    /// The number of each point (its second value, else its value), centred over it, with up to four decimals.
    static void drawNumber(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                           int line, int start, int end, int last, int mode, bool flag);
    /// A bar between the value and the second value of each point that has both; a rise when the value is larger.
    static void drawStickKline(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                               int line, int start, int end, int last, int mode, bool flag);
    /// A polyline over the points whose value is positive, in the rise colour, and over the others, in the fall
    /// colour.
    static void drawBoolLine(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                             int line, int start, int end, int last, Qt::PenStyle pen, int mode);
    /// Straight segments between consecutive valid points, gaps bridged.
    static void drawSegmentLine(QPainter *painter, const QRect &rect, const Series &series, const Range &range,
                                int line, int start, int end, int last, int mode, bool flag);
    /// Columns stacked on those of the visible lines of the same style before it.
    static void drawStackVolstick(QPainter *painter, const QRect &rect, const Series &series,
                                  const Range &range, int line, int start, int end, int last, int mode,
                                  bool flag, bool lastFlag);

    /// The part of `rect`, of its full height, that a drawing of points `start` to `end` of a line by the style of
    /// its description can touch; null when nothing is drawn. Styles with text, images or fixed places answer the
    /// whole rectangle.
    static QRect touchedRect(const QRect &rect, const Series &series, int line, int start, int end, int last);
    /// The same over a range, without the rows above and beneath what is drawn, where the style tells them; null as well
    /// when all its points are gaps. `toBottom` is told of a line with a gradient and of the sticks of a volume.
    static QRect touchedRect(const QRect &rect, const Series &series, const Range &range, int line, int start,
                             int end, int last, bool toBottom);

    /// Whether a line of a style, without a gradient, lets nothing through that is beneath it: none of texts or images, in a
    /// theme without translucent colours of lines. Drawn over itself it stays as it is.
    static bool isOpaque(int style);

    /// Appends a series to a title: the name of the overlay when it belongs to one, then each line that is drawn as
    /// "name:value" in its colour at that index, with an arrow for its move since the point before. A text stands in
    /// place of the value of a point that has one. An index below 0 is the last point; "--" stands where there is no
    /// value. Decimals are those of the formula's record, else of a volume or of the price step.
    static void getTitleText(CArrowColorSimpleText &title, const CFormulaKey &key, const Series &series,
                             int index, const CInstrumentDetailPtr &instrument,
                             const QList<CInstrumentDetailPtr> &addStocks,
                             const ServiceContext &services = ServiceContext::processWide());
};

} // namespace TC
