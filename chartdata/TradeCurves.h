#pragma once

#include "chartdata/LinkageGeometry.h"
#include "chartdata/LinkageScope.h"

#include <QColor>
#include <QRect>

#include <map>

class QPainter;

namespace TC {

class CRealtimeUiParam;

/// One drawing of the curves of the user's amounts, profit and balance over the day, each on a scale of its own. The
/// view parameters are told their values by axis index.
class TradeCurves {
public:
    /// `height` is that of the price chart in rows.
    TradeCurves(QPainter &painter, CRealtimeUiParam &view, int height)
        : mPainter(painter), mView(view), mHeight(height) {}

    void drawAmounts(const LinkageScope &scope);
    void drawProfit(const LinkageScope &scope);
    void drawBalance(const LinkageScope &scope);

private:
    void drawTotals(const TimedAmounts &totals, int now);
    void drawNet(const TimedAmounts &totals, int now);
    void drawByMinute(const TimedValues &values, const CurveScale &scale, const QColor &color);
    int nowColumn() const;
    TimedValues byIndex(const TimedValues &byMinute) const;
    template <class Value> TradingOrder<Value> inTradingOrder(const std::map<int, Value> &byMinute) const;

    QPainter &mPainter;
    CRealtimeUiParam &mView;
    const int mHeight;
};

} // namespace TC
