// Curves of the user's amounts, profit and balance over the day.

#include "chartdata/CRealtimeData.h"
#include "chartdata/LinkageGeometry.h"
#include "chartdata/LinkageScope.h"
#include "chartdata/ValueRange.h"
#include "host/services/CHostClock.h"
#include "host/toolkit/CUiResource.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QPainter>
#include <QPolygon>

namespace TC {
namespace {

const QColor kProfitColor(255, 255, 128, 192);
const QColor kBalanceColor(255, 128, 0, 192);

void drawCurve(QPainter &painter, const QPolygon &curve, const QColor &color) {
    painter.setPen(color);
    if (curve.size() > 1) {
        painter.drawPolyline(curve);
    }
}

/// The same, drawn flat on to `end` where that lies beyond the last point.
void drawCurveTo(QPainter &painter, QPolygon curve, int end, const QColor &color) {
    if (!curve.isEmpty() && end > curve.last().x()) {
        curve.append(QPoint(end, curve.last().y()));
    }
    drawCurve(painter, curve, color);
}

/// Whether an amount makes a point of a curve.
bool isDrawn(double amount) {
    return isUsable(amount) && !isZero(amount);
}

/// The points of a curve by index, of which `column` gives the pixel. What is no number makes no point.
template <class Values, class Column>
QPolygon curveOf(const Values &values, const CurveScale &scale, int height, Column column) {
    QPolygon curve;
    for (const auto &value : values) {
        if (isUsable(value.second)) {
            curve.append(QPoint(column(value.first), curveRow(value.second, scale, height)));
        }
    }
    return curve;
}

QColor themeColor(const char *key) {
    return GZ::CUiResource::instance().getColor(QLatin1String(key));
}

} // namespace

template <class Value>
TradingOrder<Value> CRealtimeData::inTradingOrder(const std::map<int, Value> &byMinute) const {
    TradingOrder<Value> values;
    for (const auto &value : byMinute) {
        values.emplace(mUiParam->getIndexByTime(value.first), value.second);
    }
    return values;
}

void CRealtimeData::drawAmountCurves(QPainter &painter, const QRect &rect, const LinkageScope &scope) {
    mUiParam->mLinkageAmounts.clear();
    const TimedAmounts totals = CSingletonT<CLinkageManager>::instance().getTotalBuySellAmounts(
        scope.instruments, scope.accounts, scope.strategies, scope.filter);
    if (totals.empty()) {
        return;
    }
    for (const auto &total : totals) {
        mUiParam->mLinkageAmounts[mUiParam->getIndexByTime(total.first)] = total.second;
    }
    const int now = mUiParam->getXAxisByIndex(mUiParam->getIndexByTime(hostNow().time()));
    if (mUiParam->mLinkageShow[eShowTotals]) {
        drawTotalAmounts(painter, rect, totals, now);
    }
    if (mUiParam->mLinkageShow[eShowNet]) {
        drawNetAmount(painter, rect, totals, now);
    }
}

void CRealtimeData::drawTotalAmounts(QPainter &painter, const QRect &rect, const TimedAmounts &totals,
                                     int now) const {
    const auto ordered = inTradingOrder(totals);
    const CurveScale scale = totalAmountScale(ordered);
    QPolygon buys;
    QPolygon sells;
    for (const auto &total : ordered) {
        const int x = mUiParam->getXAxisByIndex(total.first);
        if (isDrawn(total.second.first)) {
            buys.append(QPoint(x, curveRow(total.second.first, scale, rect.height())));
        }
        if (isDrawn(total.second.second)) {
            sells.append(QPoint(x, curveRow(total.second.second, scale, rect.height())));
        }
    }
    drawCurveTo(painter, buys, now, themeColor("tc_clr_total_buyamount"));
    drawCurveTo(painter, sells, now, themeColor("tc_clr_total_sellamount"));
}

void CRealtimeData::drawNetAmount(QPainter &painter, const QRect &rect, const TimedAmounts &totals,
                                  int now) const {
    TimedValues net; // by minute
    for (const auto &total : totals) {
        const auto &[buy, sell] = total.second;
        if (isUsable(buy) && isUsable(sell) && (!isZero(buy) || !isZero(sell))) {
            net[total.first] = buy - sell;
        }
    }
    const auto column = [this](int index) { return mUiParam->getXAxisByIndex(index); };
    drawCurveTo(painter, curveOf(byIndex(net), balancedScale(net), rect.height(), column), now,
                themeColor("tc_clr_buyamount"));
}

/// Values by minute as values by index: the last of those that share one.
TimedValues CRealtimeData::byIndex(const TimedValues &byMinute) const {
    TimedValues values;
    for (const auto &value : byMinute) {
        values[mUiParam->getIndexByTime(value.first)] = value.second;
    }
    return values;
}

void CRealtimeData::drawProfitCurve(QPainter &painter, const QRect &rect, const LinkageScope &scope) {
    const TimedValues profits = CSingletonT<CLinkageManager>::instance().getTotalProfits(
        scope.instruments, scope.accounts, scope.strategies, scope.filter);
    mUiParam->mLinkageProfits = byIndex(profits);
    drawMinuteCurve(painter, rect, profits, balancedScale(profits), kProfitColor);
}

void CRealtimeData::drawBalanceCurve(QPainter &painter, const QRect &rect, const LinkageScope &scope) {
    const TimedValues balances = CSingletonT<CLinkageManager>::instance().getTotalBalances(
        scope.instruments, scope.accounts, scope.strategies, scope.filter);
    mUiParam->mLinkageBalances = byIndex(balances);
    drawMinuteCurve(painter, rect, balances, positiveScale(balances), kBalanceColor);
}

void CRealtimeData::drawMinuteCurve(QPainter &painter, const QRect &rect, const TimedValues &values,
                                    const CurveScale &scale, const QColor &color) const {
    const auto column = [this](int index) { return mUiParam->getXAxisByIndex(index); };
    drawCurve(painter, curveOf(inTradingOrder(values), scale, rect.height(), column), color);
}

} // namespace TC
