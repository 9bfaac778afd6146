#pragma once

#include "chartdata/ChartPicture.h"
#include "chartdata/TradeLayer.h"

#include <QRect>
#include <QRegion>

class QPainter;

namespace TC {

/// Both pictures of a pane, the chart and the user's trades over it: of one size and one ratio, drawn only while drawing
/// is enabled, and drawn anew as soon as it is again.
class PaneDrawing {
public:
    PaneDrawing(ChartPicture &picture, TradeLayer &trades) : mPicture(picture), mTrades(trades) {}

    void setEnabled(bool enabled);
    bool isEnabled() const { return mIsEnabled; }
    void setRect(const QRect &rect);
    void setRatio(double ratio);
    /// Draws both, where drawing is enabled.
    void redraw();
    /// Draws what the chart has been told of point by point, and the trades.
    void follow();
    void redrawTrades();
    /// Draws the trades for a rectangle, enabled or not.
    void drawTrades(const QRect &rect);
    /// Draws what does not fit a painter: another ratio, or a chart that is stale.
    void refresh(const QPainter &painter);
    /// Paints both, the whole or a part. With a part the painter has no clip afterwards.
    void paint(QPainter &painter, const QRect &rect, const QRegion *part);

private:
    void make();

    ChartPicture &mPicture;
    TradeLayer &mTrades;
    bool mIsEnabled = false;
};

} // namespace TC
