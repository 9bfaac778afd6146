#pragma once

#include "chartdata/MarkBook.h"
#include "host/records/Enumerations.h"

#include <QPixmap>
#include <QRect>
#include <QRegion>
#include <QSize>

class QPainter;

namespace TC {

class CRealtimeUiParam;
class ShownDay;
class ValueLookup;
struct LinkageScope;

/// The user's trades over the chart of a main pane, as a transparent picture, and what of them lies under the mouse.
///
/// What is not in the picture is not found. There is a picture only while the host shows trades at all; a view of
/// several days shows none.
class TradeLayer {
public:
    TradeLayer(CRealtimeUiParam &view, EIndexDisplayType displayType, const ShownDay &day,
               const ValueLookup &lookup)
        : mView(view), mDisplayType(displayType), mDay(day), mLookup(lookup) {}

    /// An empty picture for a pane of that size, at `ratio` device pixels per pixel.
    void make(const QSize &pane, double ratio);
    /// Draws it for a rectangle of a pane; false when the view shows no trades.
    bool draw(const QRect &rect, const QSize &pane, double ratio);
    /// Paints it over a pane. With a part only that is painted, and the painter has no clip afterwards.
    void paint(QPainter &painter, const QRect &pane, const QRegion *part);
    /// Draws the marks and curves themselves into the price part of a pane, and enters them.
    void drawMarks(QPainter &painter, const QRect &rect);

    bool hitOrder(int x, int y) const;
    bool hitDeal(int x, int y) const;
    bool hitTask(int x, int y) const;
    bool getOrdersAt(int x, int y, QList<boost::shared_ptr<kvservice::COrderDetail>> &orders) const;
    bool getDealsAt(int x, int y, QList<boost::shared_ptr<kvservice::CDealDetail>> &deals) const;
    bool getTasksAt(int x, int y, QList<boost::shared_ptr<kvservice::CTaskDetail>> &tasks) const;

private:
    bool isWanted() const;
    bool findReference(LinkageScope &scope) const;

    CRealtimeUiParam &mView;
    const EIndexDisplayType mDisplayType;
    const ShownDay &mDay;
    const ValueLookup &mLookup;
    QPixmap mPixmap;
    MarkBook mBook;
};

} // namespace TC
